#include "ui/printing/printer_font.h"

#include <QFontDatabase>
#include <QFontDialog>
#include <QFontInfo>
#include <algorithm>

#include "printing/text_pages.h"

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
  font.setPointSizeF(std::clamp(PrintedFontSize(size), kSmallest, kLargest));
  return font;
}

bool ChoosePrinterFont(QWidget* window, Session& session) {
  const QFont font = PrinterFont(session.PrinterFontName, session.PrinterFontSize);
  QFont styled(font);
  styled.setStyleName(QFontInfo(font).styleName());  // else the dialog may propose another, an oblique one
  QFontDialog dialog(styled, window);
  dialog.setOptions(QFontDialog::ScalableFonts | QFontDialog::NonScalableFonts);
  const QFont proposed = dialog.currentFont();
  if (dialog.exec() != QDialog::Accepted) return false;
  const QFont chosen = dialog.selectedFont();
  // The dialog counts whole points; a size that it could not show stays when the user has not changed it.
  const bool same_size = chosen.pointSizeF() == proposed.pointSizeF();
  session.PrinterFontName = chosen.family().toStdString();
  session.PrinterFontSize = static_cast<float>(same_size ? font.pointSizeF() : chosen.pointSizeF());
  return true;
}

}  // namespace tessaril
