#include "ui/dialogs/colour_field.h"

#include <QKeyEvent>
#include <QPainter>

namespace tessaril {

ColourField::ColourField(QWidget* parent) : QAbstractButton(parent) {
  setFocusPolicy(Qt::StrongFocus);
}

void ColourField::SetColour(const Colour& colour) {
  colour_ = QColor(colour.red, colour.green, colour.blue);
  update();
}

void ColourField::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (!enter) {
    QAbstractButton::keyPressEvent(event);
  } else if (!event->isAutoRepeat()) {
    click();
  }
}

void ColourField::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), colour_);
  const auto frame = [&](int inset, const QColor& colour) {
    painter.setPen(colour);
    painter.drawRect(rect().adjusted(inset, inset, -inset - 1, -inset - 1));
  };
  frame(0, Qt::gray);
  if (!hasFocus()) return;
  for (int inset = 1; inset < 5; ++inset) frame(inset, inset < 3 ? Qt::black : Qt::white);
}

}  // namespace tessaril
