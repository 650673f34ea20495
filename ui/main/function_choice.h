#ifndef TESSARIL_UI_MAIN_FUNCTION_CHOICE_H_
#define TESSARIL_UI_MAIN_FUNCTION_CHOICE_H_

#include "ui/main/options_panel.h"

namespace tessaril {

/// What the choice of a function shows and hides on the options panel, and the captions and tooltips that go
/// with it. Labels of text boxes are left for ShowLabelsOfTexts.
void ApplyFunction(Function function, OptionsPanel& panel);

/// A label is shown where its text box is.
void ShowLabelsOfTexts(OptionsPanel& panel);

}  // namespace tessaril

#endif  // TESSARIL_UI_MAIN_FUNCTION_CHOICE_H_
