#include "engine/safe_colours.h"

#include <gtest/gtest.h>

namespace tessaril {
namespace {

TEST(SafeColours, FindsTheLevelsAroundAPiece) {
  const struct {
    const char* piece;
    int upper, lower;
  } rows[] = {
      {"00", 0, 0},     {"33", 51, 51},   {"34", 102, 51}, {"FF", 255, 255},
      {"FE", 255, 204}, {"cd", 255, 204}, {"7", 51, 0},    {"7G", 51, 0},
      {"G7", 0, 0},     {"", 0, 0},       {"-5", 0, 0},    {"100", 7, 9},  // above 255: left as they were
  };
  for (const auto& row : rows) {
    SafeLevels levels{7, 9};
    SafeNeighbours(PieceValue(row.piece), levels);
    EXPECT_EQ(levels.upper, row.upper) << row.piece;
    EXPECT_EQ(levels.lower, row.lower) << row.piece;
  }
}

TEST(SafeColours, ListsTheNeighboursOfAColour) {
  const auto digits = [](const ColourPieces& pieces) {
    std::string all;
    for (const Colour& colour : NeighbourColours(pieces)) all += HexDigits(colour) + " ";
    return all;
  };
  EXPECT_EQ(digits({"12", "34", "56"}), "336666 006666 333366 003366 336633 006633 333333 003333 ");
  EXPECT_EQ(digits({"FF", "33", "99"}), "FF3399 FF3399 FF3399 FF3399 FF3399 FF3399 FF3399 FF3399 ");
  EXPECT_EQ(digits({"0A", "D", "\">"}), "333300 003300 330000 000000 333300 003300 330000 000000 ");
}

TEST(SafeColours, RoundsTheShareOfAComponent) {
  EXPECT_EQ(SliderCaption('R', 0), "R: 0% h00");
  EXPECT_EQ(SliderCaption('G', 1), "G: 0% h01");
  EXPECT_EQ(SliderCaption('G', 2), "G: 1% h02");
  EXPECT_EQ(SliderCaption('B', 51), "B: 20% h33");
  EXPECT_EQ(SliderCaption('B', 254), "B: 100% hFE");
  EXPECT_EQ(SliderCaption('B', 255), "B: 100% hFF");
}

TEST(SafeColours, PutsTheChosenDigitsInThePlaceOfTheOld) {
  const struct {
    const char* text;
    std::size_t sign;
    const char* chosen;
    const char* result;
  } rows[] = {
      {"a=\"#123456\" #123456", 3, "336666", "a=\"#336666\" #123456"},
      {"#abcdef0", 0, "99CCFF", "#99CCFF0"},        // no seventh digit is taken
      {"x #12", 2, "003333", "x #003333"},          // the text ends
      {"<b c=#1f>", 5, "003333", "<b c=#003333>"},  // the markup behind a short colour stays
      {"<b c=#red>", 5, "003333", "<b c=#003333red>"},
      {"<b c=#red>", 5, "RED>", "<b c=#red>"},  // an old colour that is none, kept
      {"<b c=#1f>", 5, "1F>", "<b c=#1F>"},
      {"#", 0, "003333", "#003333"},
  };
  for (const auto& row : rows) {
    const RecolouredText put = PutDigits(row.text, row.sign, row.chosen);
    EXPECT_EQ(put.text, row.result);
    EXPECT_EQ(put.selection.start, row.sign);
    EXPECT_EQ(put.selection.length, 7u);
  }
}

}  // namespace
}  // namespace tessaril
