#include "ui/shared/button.h"

#include <QStyleOptionButton>

namespace tessaril {

void Button::initStyleOption(QStyleOptionButton* option) const {
  QPushButton::initStyleOption(option);
  option->state |= QStyle::State_KeyboardFocusChange;
}

}  // namespace tessaril
