#include "ui/shared/fonts.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetrics>

namespace tessaril {

QFont FixedFont() {
  QFont font = QApplication::font();
  font.setFamilies({"Courier New"});
  font.setStyleHint(QFont::Monospace);
  font.setFixedPitch(true);
  return font;
}

QFont SansSerifFont() {
  constexpr char kFamily[] = "MS Sans Serif";
  QFont font = QApplication::font();
  if (QFontDatabase::hasFamily(kFamily)) font.setFamilies({kFamily});
  return font;
}

QFont FontOfText(bool monospaced, const QFont& now) {
  QFont font = monospaced ? FixedFont() : SansSerifFont();
  font.setPointSizeF(now.pointSizeF());
  return font;
}

QFont FittedFont(QFont font, const QString& text, int width) {
  constexpr int kSmallest = 6;  // pixels
  int size = QFontInfo(font).pixelSize();
  while (size > kSmallest && QFontMetrics(font).horizontalAdvance(text) > width) font.setPixelSize(--size);
  return font;
}

}  // namespace tessaril
