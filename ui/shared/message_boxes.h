#ifndef TESSARIL_UI_SHARED_MESSAGE_BOXES_H_
#define TESSARIL_UI_SHARED_MESSAGE_BOXES_H_

#include <QWidget>
#include <string>

// The message boxes of the program. Texts are bytes with CR LF between lines and are shown as plain text; the
// title is "Tessaril" unless another is given. Each waits for the user. What the screen has no room for is
// among the details.

namespace tessaril {

void Tell(QWidget* parent, const std::string& text);

/// With an exclamation icon.
void Warn(QWidget* parent, const std::string& text);

/// OK or Cancel; true for OK. `details`, of any length, are shown when the user wants to see them.
bool AskOkCancel(QWidget* parent, const std::string& text, const std::string& details = {});

/// Yes or No; true for Yes.
bool AskYesNo(QWidget* parent, const std::string& text, const char* title);

}  // namespace tessaril

#endif  // TESSARIL_UI_SHARED_MESSAGE_BOXES_H_
