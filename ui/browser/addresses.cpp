#include "ui/browser/addresses.h"

#include <QFile>
#include <QFileInfo>

#include "engine/paths.h"

namespace tessaril {
namespace {

// A path, or the part of a path before an anchor, that names something on the disk.
QUrl ExistingFile(const QString& path, const std::string& folder) {
  const auto exists = [&folder](const QString& candidate, std::string& found) {
    found = AbsolutePath(folder, QFile::encodeName(candidate).toStdString());
    return !candidate.isEmpty() && QFileInfo::exists(QFile::decodeName(found.c_str()));
  };
  std::string found;
  if (exists(path, found)) return FileAddress(found);
  const qsizetype anchor = path.indexOf('#');
  if (anchor < 0 || !exists(path.left(anchor), found)) return {};
  QUrl address = FileAddress(found);
  address.setFragment(path.mid(anchor + 1));
  return address;
}

}  // namespace

QUrl FileAddress(const std::string& path) {
  return QUrl::fromEncoded("file://" + QByteArray::fromStdString(path).toPercentEncoding("/"));
}

QUrl TypedAddress(const QString& text, const std::string& folder) {
  const QString typed = text.trimmed();
  const QString with_blanks = QString(typed).replace("%20", " ");
  for (const QString& path : {typed, with_blanks}) {
    if (const QUrl file = ExistingFile(path, folder); !file.isEmpty()) return file;
  }
  if (typed.startsWith(kSeparator)) return FileAddress(QFile::encodeName(with_blanks).toStdString());
  return QUrl::fromUserInput(typed);
}

}  // namespace tessaril
