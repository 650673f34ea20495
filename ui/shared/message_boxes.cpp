#include "ui/shared/message_boxes.h"

#include <QMessageBox>
#include <QRegularExpression>

#include "ui/shared/texts.h"

namespace tessaril {
namespace {

// A file's name may be wider than the screen. It may go on in a new line where a space of no width stands.
QString BreakLongWords(QString text) {
  static const QRegularExpression piece("([^\\s/]{60})(?=[^\\s/])");
  return text.replace(piece, QString("\\1") + QChar(0x200B));
}

QMessageBox::StandardButton Show(QWidget* parent, const std::string& text, const char* title,
                                 QMessageBox::Icon icon, QMessageBox::StandardButtons buttons) {
  QMessageBox box(icon, title, {}, buttons, parent);
  box.setTextFormat(Qt::PlainText);
  box.setText(BreakLongWords(ShownLines(text)));
  return static_cast<QMessageBox::StandardButton>(box.exec());
}

}  // namespace

void Tell(QWidget* parent, const std::string& text) {
  Show(parent, text, "Tessaril", QMessageBox::NoIcon, QMessageBox::Ok);
}

void Warn(QWidget* parent, const std::string& text) {
  Show(parent, text, "Tessaril", QMessageBox::Warning, QMessageBox::Ok);
}

bool AskOkCancel(QWidget* parent, const std::string& text) {
  return Show(parent, text, "Tessaril", QMessageBox::NoIcon, QMessageBox::Ok | QMessageBox::Cancel) ==
         QMessageBox::Ok;
}

bool AskYesNo(QWidget* parent, const std::string& text, const char* title) {
  return Show(parent, text, title, QMessageBox::NoIcon, QMessageBox::Yes | QMessageBox::No) ==
         QMessageBox::Yes;
}

}  // namespace tessaril
