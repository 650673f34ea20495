#include "ui/dialogs/site_fields.h"

#include <QStringList>

#include "ui/shared/texts.h"

namespace tessaril {

QString AsLines(const std::vector<std::string>& entries) {
  QStringList lines;
  for (const std::string& entry : entries) lines << Characters(entry);
  return lines.join('\n');
}

std::vector<std::string> EntriesOf(const QString& lines) {
  std::vector<std::string> entries;
  for (const QString& line : lines.split('\n')) {
    const QString entry = line.trimmed();
    if (!entry.isEmpty()) entries.push_back(Entered(entry));
  }
  return entries;
}

Status CheckIndexNames(const std::vector<std::string>& names) {
  for (const std::string& name : names) {
    if (name.find('/') != std::string::npos) {
      return Status::Failure("An index file is given by its name, without folders:\r\n" + name);
    }
  }
  return {};
}

}  // namespace tessaril
