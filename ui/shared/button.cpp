#include "ui/shared/button.h"

#include <QShortcutEvent>
#include <QStyleOptionButton>

namespace tessaril {

bool Button::event(QEvent* event) {
  if (event->type() != QEvent::Shortcut) return QPushButton::event(event);
  const auto& key = static_cast<const QShortcutEvent&>(*event);
  if (key.isAmbiguous()) return QPushButton::event(event);
  setShortcutAutoRepeat(key.shortcutId(), false);
  click();
  return true;
}

void Button::initStyleOption(QStyleOptionButton* option) const {
  QPushButton::initStyleOption(option);
  option->state |= QStyle::State_KeyboardFocusChange;
}

}  // namespace tessaril
