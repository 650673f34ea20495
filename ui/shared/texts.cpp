#include "ui/shared/texts.h"

#include "engine/page_encoding.h"

namespace tessaril {

QString Shown(std::string_view bytes) {
  return QString::fromStdString(EnteredText(bytes));
}

QString ShownLines(std::string_view bytes) {
  return Shown(bytes).replace("\r\n", "\n");
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
