#include "ui/browser/addresses.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include "engine/paths.h"

namespace tessaril {
namespace {

constexpr QLatin1String kFileScheme("file://");

// A path, or the part of a path before an anchor, that names something on the disk.
struct ExistingFile {
  std::string path;  // empty when there is none
  QString anchor;    // without "#"
};

ExistingFile FindFile(const QString& path, const std::string& folder) {
  const auto find = [&folder](const QString& candidate) {
    const std::string found = AbsolutePath(folder, QFile::encodeName(candidate).toStdString());
    const bool exists = !candidate.isEmpty() && QFileInfo::exists(QFile::decodeName(found.c_str()));
    return exists ? found : std::string();
  };
  if (const std::string found = find(path); !found.empty()) return {found, {}};
  const qsizetype anchor = path.indexOf('#');
  if (anchor < 0) return {};
  return {find(path.left(anchor)), path.mid(anchor + 1)};
}

QString WithBlanks(QString path) {
  return path.replace("%20", " ");
}

}  // namespace

QUrl FileAddress(const std::string& path) {
  return QUrl::fromEncoded("file://" + QByteArray::fromStdString(path).toPercentEncoding("/"));
}

QUrl TypedAddress(const QString& text, const std::string& folder) {
  const QString typed = text.trimmed();
  for (const QString& path : {typed, WithBlanks(typed)}) {
    const ExistingFile file = FindFile(path, folder);
    if (file.path.empty()) continue;
    QUrl address = FileAddress(file.path);
    if (!file.anchor.isEmpty()) address.setFragment(file.anchor);
    return address;
  }
  if (typed.startsWith(kSeparator)) return FileAddress(QFile::encodeName(WithBlanks(typed)).toStdString());
  return QUrl::fromUserInput(typed);
}

std::string FileOfAddress(const QString& address, const std::string& folder) {
  const QString text = address.trimmed();
  if (text.startsWith(kFileScheme, Qt::CaseInsensitive)) {
    static const QRegularExpression kBehindPath("[?#].*");
    QString path = text.mid(kFileScheme.size());
    path.remove(kBehindPath);
    if (path.startsWith("localhost/", Qt::CaseInsensitive)) path.remove(0, path.indexOf(kSeparator));
    if (!path.startsWith(kSeparator)) return {};  // another machine's
    return QByteArray::fromPercentEncoding(path.toUtf8()).toStdString();
  }
  for (const QString& path : {text, WithBlanks(text)}) {
    if (const std::string found = FindFile(path, folder).path; !found.empty()) return found;
  }
  return AbsolutePath(folder, QFile::encodeName(WithBlanks(text)).toStdString());
}

}  // namespace tessaril
