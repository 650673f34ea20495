#include "ui/main/search_text_box.h"

#include <QFocusEvent>
#include <QMouseEvent>

#include "ui/shared/controls.h"

namespace tessaril {

SearchTextBox::SearchTextBox(const char* hint, QWidget* parent) : QLineEdit(hint, parent) {
  setToolTip(hint);
  setProperty(kTag, "");
  connect(this, &QLineEdit::textEdited, this, [this] { setProperty(kTag, "X"); });
}

void SearchTextBox::mousePressEvent(QMouseEvent* event) {
  if (property(kTag).toString().isEmpty()) {
    setProperty(kTag, "X");
    clear();
  }
  QLineEdit::mousePressEvent(event);
}

void SearchTextBox::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  if (event->reason() != Qt::MouseFocusReason && property(kTag).toString().isEmpty()) selectAll();
}

}  // namespace tessaril
