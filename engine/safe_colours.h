#ifndef TESSARIL_ENGINE_SAFE_COLOURS_H_
#define TESSARIL_ENGINE_SAFE_COLOURS_H_

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "engine/run_host.h"

// The rules of the colour palette: which web-safe colours lie around a colour, how a colour is written, and
// how a chosen one takes the place of the old one in a text.

namespace tessaril {

/// Web-safe components are the multiples of this, from 0 to 255.
constexpr int kSafeStep = 51;

/// The pieces of a colour as `HexErr` leaves them: red, green, blue.
using ColourPieces = std::array<std::string, 3>;

/// Components from 0 to 255.
struct Colour {
  int red = 0;
  int green = 0;
  int blue = 0;
};

/// The number that a piece stands for: that of its hexadecimal digits up to the first other character, 0 when
/// there is none.
int PieceValue(std::string_view piece);

Colour ColourOf(const ColourPieces& pieces);

/// Six upper-case hexadecimal digits, red first.
std::string HexDigits(const Colour& colour);

/// The web-safe components next to a component: both are the component itself when it is web-safe.
struct SafeLevels {
  int upper = 0;
  int lower = 0;
};

/// Sets `levels` to those around `value`. A value above 255 lies between no two and leaves them as they were.
void SafeNeighbours(int value, SafeLevels& levels);

/// The web-safe colours around a colour, the one with the upper levels of all components first. Red changes
/// with each colour, green with every second, blue with the fourth.
std::array<Colour, 8> NeighbourColours(const ColourPieces& pieces);

/// What stands under a slider: "R: 20% h33" for red ('R') at 51.
std::string SliderCaption(char letter, int component);

/// A text and what is to be selected in it.
struct RecolouredText {
  std::string text;
  Selection selection;
};

/// Puts chosen digits in the place of the old ones: of the hexadecimal digits, six at most, that follow the
/// "#" at `sign` (bytes from 0) in `text`. The "#" and the digits are selected. Of `chosen` only its leading
/// hexadecimal digits count, so that an old colour that is none ("#red") is put back as it stood.
RecolouredText PutDigits(std::string_view text, std::size_t sign, std::string_view chosen);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_SAFE_COLOURS_H_
