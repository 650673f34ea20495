#ifndef TESSARIL_UI_PRINTING_PRINTER_FONT_H_
#define TESSARIL_UI_PRINTING_PRINTER_FONT_H_

#include <QFont>
#include <QWidget>
#include <string>

#include "ui/shared/session.h"

namespace tessaril {

/// The font to print in. In place of a name (UTF-8) that is not installed stands the platform's sans-serif.
/// The size in points is that of PrintedFontSize, but at least 1 and at most 1000.
QFont PrinterFont(const std::string& name, float size);

/// Lets the user choose name and size of the font that everything is printed in. False, with nothing changed,
/// when the user chose none.
bool ChoosePrinterFont(QWidget* window, Session& session);

}  // namespace tessaril

#endif  // TESSARIL_UI_PRINTING_PRINTER_FONT_H_
