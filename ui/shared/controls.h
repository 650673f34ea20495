#ifndef TESSARIL_UI_SHARED_CONTROLS_H_
#define TESSARIL_UI_SHARED_CONTROLS_H_

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QMenu>
#include <QPushButton>

#include "ui/shared/place.h"

// Controls with their name, place, caption and tooltip. In captions "&" stands before the access key.

namespace tessaril {

/// The dynamic property in which a control keeps its tag, where it has one.
inline constexpr char kTag[] = "Tag";

/// A label shows its text as it stands, unless it is tied to a control: then "&" is an access key.
QLabel* MakeLabel(QWidget* parent, const char* name, const Place& place, const char* text);

QCheckBox* MakeCheckBox(QWidget* parent, const char* name, const Place& place, const char* caption,
                        const char* tooltip);

/// Enter presses the button, too, when it has the focus.
QPushButton* MakeButton(QWidget* parent, const char* name, const Place& place, const char* caption,
                        const char* tooltip);

/// Gives a button another role.
void SetRole(QPushButton& button, const char* caption, const char* tooltip);

QAction* AddItem(QMenu& menu, const char* name, const char* caption);

/// Says that `label` names `control`.
void Tie(QLabel& label, QWidget& control);

}  // namespace tessaril

#endif  // TESSARIL_UI_SHARED_CONTROLS_H_
