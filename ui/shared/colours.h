#ifndef TESSARIL_UI_SHARED_COLOURS_H_
#define TESSARIL_UI_SHARED_COLOURS_H_

#include <QColor>
#include <QWidget>

// The few colours that the design gives; all others are the desktop's.

namespace tessaril {

/// Gives a control's caption a colour of the design, made lighter where the desktop is dark.
void SetTextColour(QWidget& control, const QColor& colour);

/// Gives a text box a background, and with it black text, so that it can be read on any desktop.
void SetBackground(QWidget& box, const QColor& background);

}  // namespace tessaril

#endif  // TESSARIL_UI_SHARED_COLOURS_H_
