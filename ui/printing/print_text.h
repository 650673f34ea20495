#ifndef TESSARIL_UI_PRINTING_PRINT_TEXT_H_
#define TESSARIL_UI_PRINTING_PRINT_TEXT_H_

#include <QWidget>
#include <string>

#include "ui/shared/session.h"

namespace tessaril {

/// Prints a text, any bytes, on the printer or into the PDF file that the user chooses, in the session's
/// printer font and with `title` (bytes) above each page. Characters are those that the text box shows.
/// Returns when all is printed; the window says meanwhile that it is printing. What fails is told.
void PrintText(QWidget* window, const Session& session, const std::string& text, const std::string& title);

}  // namespace tessaril

#endif  // TESSARIL_UI_PRINTING_PRINT_TEXT_H_
