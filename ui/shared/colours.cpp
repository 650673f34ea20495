#include "ui/shared/colours.h"

#include <QPalette>

namespace tessaril {
namespace {

constexpr int kMiddle = 128;  // of lightness, 0 to 255

bool IsDark(const QPalette& palette) {
  return palette.color(QPalette::Window).lightness() < kMiddle;
}

}  // namespace

void SetTextColour(QWidget& control, const QColor& colour) {
  constexpr int kReadableOnDark = 205;
  QPalette palette = control.palette();
  QColor shown = colour;
  if (IsDark(palette)) shown.setHsl(colour.hslHue(), colour.hslSaturation(), kReadableOnDark);
  palette.setColor(QPalette::WindowText, shown);
  control.setPalette(palette);
}

void SetBackground(QWidget& box, const QColor& background) {
  QPalette palette = box.palette();
  palette.setColor(QPalette::Base, background);
  palette.setColor(QPalette::Text, Qt::black);
  box.setPalette(palette);
}

}  // namespace tessaril
