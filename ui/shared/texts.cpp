#include "ui/shared/texts.h"

#include <QStringList>

#include "engine/page_encoding.h"
#include "ui/shared/stand_ins.h"

namespace tessaril {

QString Shown(std::string_view bytes) {
  return Harmless(Characters(bytes));
}

QString ShownLines(std::string_view bytes) {
  QStringList lines = Characters(bytes).split("\r\n");
  for (QString& line : lines) line = Harmless(line);
  return lines.join('\n');
}

QString Characters(std::string_view bytes) {
  return QString::fromStdString(EnteredText(bytes));
}

std::string Entered(const QString& text) {
  return text.toStdString();
}

QString AsMarkup(const QString& text) {
  return "<p style='white-space:pre-wrap'>" + text.toHtmlEscaped() + "</p>";
}

QString AsCaption(const QString& text) {
  return QString(text).replace("&", "&&");
}

}  // namespace tessaril
