#include "printing/text_pages.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "engine/characters.h"

namespace tessaril {
namespace {

constexpr double kColumn = 100;  // twips, of every character
constexpr double kRow = 250;     // twips
constexpr double kLeft = 1134;
constexpr double kTopAndSides = 850.5;

// Paper that has room for so many columns and rows between its margins and keeps what is printed on it.
class RecordingDevice : public PrintDevice {
 public:
  RecordingDevice(int columns, double rows)
      : width_(kLeft + kTopAndSides + columns * kColumn), height_(2 * kTopAndSides + rows * kRow) {}

  std::vector<std::string> pages{""};  // each line as "ROW TEXT|", with its x where it is not the left margin
  std::string font;
  int pages_until_failure = 1 << 30;
  bool ended = false;
  mutable std::size_t measured = 0;  // bytes

  void SetFont(const std::string& name, float size) override { font = name + " " + std::to_string(size); }
  double PageWidth() const override { return width_; }
  double PageHeight() const override { return height_; }
  double TextWidth(std::string_view text) const override {
    measured += text.size();
    std::size_t characters = 0;
    for (const char c : text) characters += IsContinuation(c) ? 0 : 1;
    return static_cast<double>(characters) * kColumn;
  }
  double TextHeight(std::string_view) const override { return kRow; }
  void MoveTo(double x, double y) override {
    x_ = x;
    y_ = y;
  }
  void Print(std::string_view text) override {
    const double row = (y_ - kTopAndSides) / kRow;
    if (x_ != kLeft) pages.back() += "x=" + std::to_string(x_) + " ";
    if (row != std::floor(row)) pages.back() += "y=" + std::to_string(y_) + " ";
    pages.back() += std::to_string(static_cast<int>(row)) + " " + std::string(text) + "|";
  }
  void PrintAndMoveOn(std::string_view text) override {
    Print(text);
    MoveTo(0, y_ + kRow);
  }
  Status NewPage() override {
    if (--pages_until_failure == 0) return Status::Failure("No paper");
    pages.emplace_back();
    MoveTo(0, 0);
    return {};
  }
  Status End() override {
    ended = true;
    return {};
  }

 private:
  double width_;
  double height_;
  double x_ = 0;
  double y_ = 0;
};

PrintJob Job(std::string_view text) {
  return {text, "T", "1.2.", "Font", 12, 1, [](std::string_view line) { return std::string(line); }};
}

std::string Times(int count, std::string_view text) {
  std::string all;
  for (int i = 0; i < count; ++i) all += text;
  return all;
}

// What stands below the header of a single page of 16 columns, line by line.
std::string LinesOf(std::string_view text) {
  RecordingDevice device(16, 100);
  EXPECT_TRUE(PrintPages(device, Job(text)).ok());
  EXPECT_EQ(device.pages.size(), 1u);
  std::string lines = device.pages[0];
  const std::string head = "0 1.2. - T  Page 1|1 " + Times(16, "\xE2\x80\x94") + "|2 |";
  EXPECT_EQ(lines.substr(0, head.size()), head);
  lines.erase(0, head.size());
  for (std::size_t row = 3, at = 0; at < lines.size(); ++row, at = lines.find('|', at) + 1) {
    const std::string number = std::to_string(row) + " ";
    EXPECT_EQ(lines.substr(at, number.size()), number) << lines;
    lines.erase(at, number.size());
  }
  return lines;
}

TEST(TextPages, WrapsAtTheLastBlankThatFits) {
  const struct {
    std::string text;
    std::string lines;
  } rows[] = {
      {"aaaa bbbb cccc", "aaaa bbbb cccc|"},
      {"aaaa bbbb cccc d", "aaaa bbbb cccc|d|"},            // exactly the printable width
      {"aaaabbbbccccdddd", "aaaabbbbccccdddd|"},            // the same without a blank
      {"aaaa bbbb cccc d eee", "aaaa bbbb cccc d|eee|"},    // a piece of exactly that width fits
      {"aaaa bbbb cccc dd eee", "aaaa bbbb cccc|dd eee|"},  // one that is wider does not
      {"aaaa bbbbbbbbbbbbbbb", "aaaa|bbbbbbbbbbbbbbb|"},    // the last piece is too wide
      {"aaaa  bbbbbbbbbbbbbbb", "aaaa |bbbbbbbbbbbbbbb|"},  // only the blank at the break goes
      {"aaaa bbbb cccc d \r\nx", "aaaa bbbb cccc d||x|"},   // the rest is empty
      {"aaaa bbbb cccc d ", "aaaa bbbb cccc d|"},           // and outside the text
      {" bbbbbbbbbbbbbbbbb c", "|bbbbbbbbbbbbbbbbb|c|"},    // the longest piece that fits is empty
      {"a " + Times(30, "b") + " c d", "a|" + Times(24, "b") + "|c d|"},  // to the paper's edge
      {Times(30, "\xC3\xA9") + "\r\nc", Times(24, "\xC3\xA9") + "|c|"},
      {"\r\n", "|"},
      {"a\r\n\r\n\r\nb\r\n", "a|||b|"},
      {"a\nb\n\nc", "a|b||c|"},
      {"a\r\nb\nc\rd\r\r\ne", "a|b|c d |e|"},
      {"a\tb c", "a       b c|"},
      {"\xC3\xA9\tb", "\xC3\xA9       b|"},
      {"12345678\tb", "12345678        b|"},
      {"aaaa bbbb cccc d\te", "aaaa bbbb cccc|d       e|"},  // counted from the piece's start
  };
  for (const auto& row : rows) EXPECT_EQ(LinesOf(row.text), row.lines) << row.text;
}

// The same, blank by blank.
std::string PlainLinesOf(std::string rest, std::size_t columns) {
  std::string lines;
  while (rest.size() >= columns) {
    std::size_t piece = rest.find(' ');
    for (std::size_t blank = piece; blank <= columns; blank = rest.find(' ', blank + 1)) piece = blank;
    lines += rest.substr(0, std::min(piece, columns + 8)) + "|";
    rest.erase(0, std::max(piece, piece + 1));
    if (piece == std::string::npos || rest.empty()) return lines;
  }
  return lines + rest + "|";
}

TEST(TextPages, WrapsAsBlankByBlank) {
  std::mt19937 random(7);
  for (int round = 0; round < 2000; ++round) {
    std::string text(1 + random() % 100, 'x');
    const std::uint_fast32_t words = 1 + random() % 30;
    for (char& c : text) c = random() % words == 0 ? ' ' : 'x';
    EXPECT_EQ(LinesOf(text), PlainLinesOf(text, 16)) << text;
  }
}

TEST(TextPages, HeadsEachPageOfEachCopy) {
  const std::string rule = Times(20, "\xE2\x80\x94");
  RecordingDevice device(20, 6);
  PrintJob job = Job("a\r\nb\r\nc\r\nd\r\ne");  // the third line fills page 1, the fifth page 2
  job.copies = 2;
  EXPECT_TRUE(PrintPages(device, job).ok());
  EXPECT_TRUE(device.ended);
  const std::vector<std::string> copy = {"0 1.2. - T  Page 1|1 " + rule + "|2 |3 a|4 b|5 c|",
                                         "0 1.2. - T  Page 2|2 " + rule + "|4 d|5 e|",
                                         "0 1.2. - T  Page 3|2 " + rule + "|"};
  std::vector<std::string> both = copy;
  both.insert(both.end(), copy.begin(), copy.end());
  EXPECT_EQ(device.pages, both);

  RecordingDevice narrow(10, 6);
  EXPECT_TRUE(PrintPages(narrow, Job("a")).ok());
  EXPECT_EQ(narrow.pages[0].substr(0, 13), "0 1.2. - T  |");
}

TEST(TextPages, PutsALineOnEachPageHoweverSmall) {
  for (const double rows : {0.0, 2.0, 4.0}) {
    RecordingDevice device(3, rows);
    EXPECT_TRUE(PrintPages(device, Job("a\r\nb\r\nc")).ok());
    ASSERT_EQ(device.pages.size(), 4u) << rows;
    EXPECT_TRUE(device.pages[1].ends_with("4 b|")) << device.pages[1];
  }
}

TEST(TextPages, StopsAtTheFirstFailure) {
  for (const int pages : {1, 2, 3}) {
    RecordingDevice device(20, 6);
    device.pages_until_failure = pages;
    PrintJob job = Job("a\r\nb\r\nc\r\nd");
    job.copies = 3;
    EXPECT_EQ(PrintPages(device, job).reason(), "No paper");
    EXPECT_EQ(device.pages.size(), static_cast<std::size_t>(pages));
    EXPECT_FALSE(device.ended);
  }
}

TEST(TextPages, TakesASizeForOneThatIsNone) {
  for (const float size : {0.0F, -3.0F, std::numeric_limits<float>::quiet_NaN(), 8.5F}) {
    RecordingDevice device(20, 6);
    PrintJob job = Job("a");
    job.font_size = size;
    EXPECT_TRUE(PrintPages(device, job).ok());
    EXPECT_EQ(device.font, size == 8.5F ? "Font 8.500000" : "Font 10.000000");
  }
}

// The cost of a long line grows with its length, not with its square.
TEST(TextPages, DoesNotMeasureALongLineAgainAndAgain) {
  for (const std::string& text :
       {Times(50000, "word\tand "), std::string(400000, 'x'), std::string(400000, ' ')}) {
    RecordingDevice device(80, 50);
    EXPECT_TRUE(PrintPages(device, Job(text)).ok());
    EXPECT_LT(device.measured, 20 * text.size());
  }
}

}  // namespace
}  // namespace tessaril
