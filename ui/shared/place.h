#ifndef TESSARIL_UI_SHARED_PLACE_H_
#define TESSARIL_UI_SHARED_PLACE_H_

#include <QRect>
#include <QSize>
#include <QWidget>

// Places and sizes of the windows are designed in twips, 1/1440 inch. This is the one way from there to
// pixels.

namespace tessaril {

/// A length in pixels. 15 twips are one pixel in a font in which the tightest captions of the design fit;
/// in a larger font everything grows with it, so that no caption is clipped.
int Pixels(int twips);

/// A control's place in its window, in twips.
struct Place {
  int left;
  int top;
  int width;
  int height;
};

QRect PixelRect(const Place& place);

/// Gives a control its name, which is its object name, and its place.
void Put(QWidget& control, const char* name, const Place& place);

}  // namespace tessaril

#endif  // TESSARIL_UI_SHARED_PLACE_H_
