#ifndef TESSARIL_UI_PRINTING_PRINT_TEXT_H_
#define TESSARIL_UI_PRINTING_PRINT_TEXT_H_

#include <QWidget>
#include <string>

#include "engine/status.h"
#include "ui/shared/session.h"

namespace tessaril {

/// Prints a text, any bytes, on the printer or into the PDF file that the user chooses, in the session's
/// printer font and with `title` (bytes) above each page. Characters are those that the text box shows.
/// Returns when all is printed, or when the user chose not to print; the window says meanwhile that it is
/// printing. On failure nothing is printed, and an old file stays as it was. An empty text is not printed,
/// which is told.
Status PrintText(QWidget* window, const Session& session, const std::string& text, const std::string& title);

}  // namespace tessaril

#endif  // TESSARIL_UI_PRINTING_PRINT_TEXT_H_
