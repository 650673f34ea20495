#include "ui/editor/edit_box.h"

#include <QMouseEvent>

#include "ui/shared/fonts.h"

namespace tessaril {

EditBox::EditBox(QWidget* parent) : ByteTextBox(parent) {
  setTabChangesFocus(false);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  UseMonospacedFont(false);
  SetTyping(encoding_, line_end_);
  connect(this, &QPlainTextEdit::cursorPositionChanged, this, &EditBox::CaretMoved);
}

void EditBox::Load(std::string_view bytes, PageEncoding encoding, std::string_view line_end) {
  encoding_ = encoding;
  line_end_ = line_end;
  SetTyping(encoding, line_end);
  SetBytes(bytes);
  emit CaretPut();
}

void EditBox::Move(const Selection& selection) {
  Select(selection);
  emit CaretPut();
}

long EditBox::CaretLine() const {
  const std::string before = BytesBeforeCaret();
  long line = 1;
  for (std::size_t at = before.find(line_end_); at != std::string::npos;
       at = before.find(line_end_, at + line_end_.size())) {
    ++line;
  }
  return line;
}

void EditBox::UseMonospacedFont(bool monospaced) {
  constexpr int kTabWidth = 8;  // characters
  setFont(FontOfText(monospaced, font()));
  setTabStopDistance(kTabWidth * QFontMetricsF(font()).horizontalAdvance('x'));
}

void EditBox::mousePressEvent(QMouseEvent* event) {
  ByteTextBox::mousePressEvent(event);
  emit CaretMoved();
}

void EditBox::mouseReleaseEvent(QMouseEvent* event) {
  ByteTextBox::mouseReleaseEvent(event);
  if (event->button() == Qt::LeftButton) emit Clicked();
}

}  // namespace tessaril
