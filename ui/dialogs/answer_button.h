#ifndef TESSARIL_UI_DIALOGS_ANSWER_BUTTON_H_
#define TESSARIL_UI_DIALOGS_ANSWER_BUTTON_H_

#include "ui/shared/button.h"

namespace tessaril {

/// A button that Enter presses while it has the focus, as Space does, in a dialog without a default button. A
/// key that is held down presses once. Arrow keys are left to the dialog.
class AnswerButton : public Button {
  Q_OBJECT

 public:
  explicit AnswerButton(QWidget* parent);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace tessaril

#endif  // TESSARIL_UI_DIALOGS_ANSWER_BUTTON_H_
