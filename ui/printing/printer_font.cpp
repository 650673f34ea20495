#include "ui/printing/printer_font.h"

#include <QFontDatabase>
#include <QFontDialog>
#include <algorithm>

namespace tessaril {

QFont PrinterFont(const std::string& name, float size) {
  constexpr float kSmallest = 1;
  constexpr float kLargest = 1000;
  const QString family = QString::fromStdString(name);
  const bool known =
      QFontDatabase::hasFamily(family) || QFontDatabase::families().contains(family, Qt::CaseInsensitive);
  QFont font;
  font.setFamilies({known ? family : "sans-serif"});
  font.setStyleHint(QFont::SansSerif);
  font.setLetterSpacing(QFont::PercentageSpacing, 100);  // unchanged, but letters are not joined
  font.setPointSizeF(std::clamp(size, kSmallest, kLargest));
  return font;
}

bool ChoosePrinterFont(QWidget* window, Session& session) {
  QFontDialog dialog(PrinterFont(session.PrinterFontName, session.PrinterFontSize), window);
  dialog.setOptions(QFontDialog::ScalableFonts | QFontDialog::NonScalableFonts);
  if (dialog.exec() != QDialog::Accepted) return false;
  session.PrinterFontName = dialog.selectedFont().family().toStdString();
  session.PrinterFontSize = static_cast<float>(dialog.selectedFont().pointSizeF());
  return true;
}

}  // namespace tessaril
