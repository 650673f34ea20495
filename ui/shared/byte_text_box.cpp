#include "ui/shared/byte_text_box.h"

namespace tessaril {

ByteTextBox::ByteTextBox(QWidget* parent) : QPlainTextEdit(parent) {}

void ByteTextBox::SetBytes(std::string_view bytes) {
  setPlainText(QString::fromStdString(EnteredText(bytes)));
}

std::string ByteTextBox::Bytes() const {
  return toPlainText().toStdString();
}

void ByteTextBox::SetTyping(PageEncoding, std::string_view) {}

void ByteTextBox::Select(const Selection&) {}

Selection ByteTextBox::Selected() const {
  return {};
}

}  // namespace tessaril
