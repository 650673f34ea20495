#include "ui/dialogs/answer_button.h"

#include <QKeyEvent>

namespace tessaril {

AnswerButton::AnswerButton(QWidget* parent) : Button(parent) {
  setAutoDefault(false);
}

void AnswerButton::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (!event->isAutoRepeat()) click();
      return;
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
      event->ignore();
      return;
    default:
      Button::keyPressEvent(event);
  }
}

}  // namespace tessaril
