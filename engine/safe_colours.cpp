#include "engine/safe_colours.h"

#include <algorithm>

namespace tessaril {
namespace {

constexpr std::string_view kDigits = "0123456789ABCDEF";
constexpr std::size_t kDigitCount = 6;  // of a colour
constexpr int kMost = 255;              // of a component

std::string_view LeadingDigits(std::string_view text) {
  return text.substr(0, std::min(text.find_first_not_of("0123456789ABCDEFabcdef"), text.size()));
}

std::string TwoDigits(int component) {
  const auto value = static_cast<std::size_t>(component);
  return {kDigits[value / 16], kDigits[value % 16]};
}

}  // namespace

int PieceValue(std::string_view piece) {
  const std::string digits(LeadingDigits(piece).substr(0, kDigitCount));
  return digits.empty() ? 0 : std::stoi(digits, nullptr, 16);
}

Colour ColourOf(const ColourPieces& pieces) {
  return {PieceValue(pieces[0]), PieceValue(pieces[1]), PieceValue(pieces[2])};
}

std::string HexDigits(const Colour& colour) {
  return TwoDigits(colour.red) + TwoDigits(colour.green) + TwoDigits(colour.blue);
}

void SafeNeighbours(int value, SafeLevels& levels) {
  if (value > kMost) return;
  levels.lower = value / kSafeStep * kSafeStep;
  levels.upper = value == levels.lower ? value : levels.lower + kSafeStep;
}

std::array<Colour, 8> NeighbourColours(const ColourPieces& pieces) {
  std::array<SafeLevels, 3> levels;
  for (std::size_t i = 0; i < pieces.size(); ++i) SafeNeighbours(PieceValue(pieces[i]), levels[i]);
  std::array<Colour, 8> colours;
  for (std::size_t i = 0; i < colours.size(); ++i) {
    colours[i] = {i % 2 == 0 ? levels[0].upper : levels[0].lower,
                  i / 2 % 2 == 0 ? levels[1].upper : levels[1].lower,
                  i < 4 ? levels[2].upper : levels[2].lower};
  }
  return colours;
}

std::string SliderCaption(char letter, int component) {
  const int share = (component * 40 + kSafeStep) / (2 * kSafeStep);  // component * 20 / 51, rounded half up
  return std::string(1, letter) + ": " + std::to_string(share) + "% h" + TwoDigits(component);
}

RecolouredText PutDigits(std::string_view text, std::size_t sign, std::string_view chosen) {
  const std::size_t begin = std::min(sign + 1, text.size());
  const std::string_view old = LeadingDigits(text.substr(begin, kDigitCount));
  std::string result(text.substr(0, begin));
  result.append(LeadingDigits(chosen)).append(text.substr(begin + old.size()));
  return {std::move(result), {sign, 1 + kDigitCount}};
}

}  // namespace tessaril
