#ifndef TESSARIL_UI_MAIN_FUNCTION_BUTTONS_H_
#define TESSARIL_UI_MAIN_FUNCTION_BUTTONS_H_

#include <QRadioButton>
#include <QWidget>
#include <array>
#include <functional>

#include "engine/functions.h"

namespace tessaril {

/// The seven option buttons `Option1`, one of which is selected. Only a press of the mouse or of Space
/// chooses a function; arrows and access keys move the selection.
class FunctionButtons {
 public:
  /// Puts them into `frame`, which owns them.
  explicit FunctionButtons(QWidget* frame);

  Function Selected() const;
  void Select(Function function);
  QRadioButton* Button(Function function) const;

  /// Called when a function is chosen, which is selected by then.
  std::function<void(Function)> on_choose;

  /// Called when the selection was moved without choosing.
  std::function<void()> on_move;

 private:
  void Move(Function from, int step);

  std::array<QRadioButton*, 7> Option1{};  // by index
};

}  // namespace tessaril

#endif  // TESSARIL_UI_MAIN_FUNCTION_BUTTONS_H_
