#ifndef TESSARIL_UI_SHARED_BUTTON_H_
#define TESSARIL_UI_SHARED_BUTTON_H_

#include <QPushButton>

namespace tessaril {

/// A button whose focus can always be seen, not only after the first press of Tab.
class Button : public QPushButton {
 public:
  using QPushButton::QPushButton;

 protected:
  void initStyleOption(QStyleOptionButton* option) const override;
};

}  // namespace tessaril

#endif  // TESSARIL_UI_SHARED_BUTTON_H_
