#ifndef TESSARIL_UI_SHARED_BUTTON_H_
#define TESSARIL_UI_SHARED_BUTTON_H_

#include <QPushButton>

namespace tessaril {

/// A button whose focus can always be seen, not only after the first press of Tab. Its access key presses it
/// at once, and only once while it is held down: the toolkit would press it a tenth of a second later, in a
/// dialog that may have been closed by then, or may ask something else.
class Button : public QPushButton {
 public:
  using QPushButton::QPushButton;

 protected:
  bool event(QEvent* event) override;
  void initStyleOption(QStyleOptionButton* option) const override;
};

}  // namespace tessaril

#endif  // TESSARIL_UI_SHARED_BUTTON_H_
