#include "ui/shared/place.h"

#include <QApplication>
#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

namespace tessaril {
namespace {

constexpr double kTwipsPerPixel = 15;  // 1440 twips and 96 pixels an inch

// The pixels a twip takes in the application's font: as many as the tightest captions of the design ask for.
double Scale() {
  static QFont font;
  static double scale = 0;
  if (scale > 0 && font == QApplication::font()) return scale;
  font = QApplication::font();
  const QFontMetricsF metrics(font);
  constexpr double kBorders = 12;  // pixels to both sides of a button's caption
  const double label = metrics.horizontalAdvance("R: 100% hFF") / 948;
  const double button = (metrics.horizontalAdvance("Keep old & Stop !") + kBorders) / 1488;
  const double line = metrics.height() / 228;
  scale = std::max({1 / kTwipsPerPixel, label, button, line});
  return scale;
}

}  // namespace

int Pixels(int twips) {
  return static_cast<int>(std::lround(twips * Scale()));
}

QRect PixelRect(const Place& place) {
  const int left = Pixels(place.left);
  const int top = Pixels(place.top);
  return {left, top, Pixels(place.left + place.width) - left, Pixels(place.top + place.height) - top};
}

void Put(QWidget& control, const char* name, const Place& place) {
  control.setObjectName(name);
  control.setGeometry(PixelRect(place));
}

}  // namespace tessaril
