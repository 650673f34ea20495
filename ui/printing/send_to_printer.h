#ifndef TESSARIL_UI_PRINTING_SEND_TO_PRINTER_H_
#define TESSARIL_UI_PRINTING_SEND_TO_PRINTER_H_

#include <QPrinter>
#include <string_view>

#include "engine/status.h"

namespace tessaril {

/// Hands a PDF document to the print system as one job, with what the user has chosen for `printer`, but in
/// `copies` copies. Fails in the print system's words when it does not take the job; nothing is printed then.
Status SendToPrinter(QPrinter& printer, std::string_view pdf, int copies);

}  // namespace tessaril

#endif  // TESSARIL_UI_PRINTING_SEND_TO_PRINTER_H_
