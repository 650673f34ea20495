// Texts on pages, printed on paper that keeps them, held against a plain reading of how lines are wrapped.
// Input: four bytes for the paper, the copies and a failure, the title, the text.

#include "printing/text_pages.h"

#include <vector>

#include "engine/characters.h"
#include "engine/page_encoding.h"
#include "fuzz/input.h"

namespace tessaril {
namespace {

using Lines = std::vector<std::string>;

constexpr double kColumn = 100;  // twips, of every character
constexpr double kRow = 250;     // twips
constexpr double kLeft = 1134;
constexpr double kTopAndSides = 850.5;

std::size_t Count(std::string_view text) {
  return static_cast<std::size_t>(std::ranges::count_if(text, [](char c) { return !IsContinuation(c); }));
}

// Watches that all stands where it may, and keeps the lines below the headers.
class Paper : public PrintDevice {
 public:
  Paper(std::size_t columns, std::size_t rows, int pages)
      : columns_(columns), height_(2 * kTopAndSides + static_cast<double>(rows) * kRow), pages_left_(pages) {}

  Lines lines;
  std::vector<std::string> headers;
  bool ended = false;
  bool failed = false;

  void SetFont(const std::string&, float size) override { Require(size > 0, "a font without a size"); }
  double PageWidth() const override { return kLeft + kTopAndSides + static_cast<double>(columns_) * kColumn; }
  double PageHeight() const override { return height_; }
  double TextWidth(std::string_view text) const override {
    Require(text.find_first_of("\r\n\t") == std::string_view::npos, "a line end or tab is measured");
    return static_cast<double>(Count(text)) * kColumn;
  }
  double TextHeight(std::string_view) const override { return kRow; }
  void MoveTo(double x, double y) override {
    x_ = x;
    y_ = y;
  }
  void Print(std::string_view text) override {
    Require(!ended && !failed, "something is printed behind the end");
    Require(IsUtf8(text), "half a character is printed");
    Require(x_ == kLeft && y_ >= kTopAndSides, "a text outside the margins");
    Require(Count(text) <= columns_ + 8, "a text beyond the paper's edge");  // the right margin takes 8 more
    if (on_page_ == 0) {
      headers.emplace_back(text);
      Require(Count(text) <= columns_, "a header beyond the margin");
    }
    if (++on_page_ <= header_lines_) return;
    const bool is_first = on_page_ == header_lines_ + 1;
    Require(is_first || y_ + kRow <= height_ - kTopAndSides, "a line below the margin");
    lines.emplace_back(text);
  }
  void PrintAndMoveOn(std::string_view text) override {
    if (on_page_ == 0) header_lines_ = 2;
    Print(text);
    MoveTo(0, y_ + kRow);
  }
  Status NewPage() override {
    Require(!failed, "a page behind a failure");
    failed = --pages_left_ == 0;
    if (failed) return Status::Failure("No paper");
    on_page_ = 0;
    header_lines_ = kFirstHeader;
    MoveTo(0, 0);
    return {};
  }
  Status End() override {
    ended = true;
    return {};
  }

 private:
  std::size_t columns_;
  double height_;
  int pages_left_;
  double x_ = 0;
  double y_ = 0;
  static constexpr int kFirstHeader = 3;  // of a copy: an empty line is printed behind it
  int on_page_ = 0;
  int header_lines_ = kFirstHeader;
};

std::string Expanded(const std::string& text) {
  std::string expanded;
  for (const char c : text) {
    if (c != '\t') expanded += c;
    if (c == '\t') do
        expanded += ' ';
      while (Count(expanded) % 8 != 0);
  }
  return expanded;
}

std::string Beginning(const std::string& text, std::size_t characters) {
  std::size_t end = 0;
  for (; end < text.size() && (characters > 0 || IsContinuation(text[end])); ++end)
    characters -= IsContinuation(text[end]) ? 0 : 1;
  return text.substr(0, end);
}

// One line of the text, blank by blank.
void AddPlainLines(std::string rest, bool is_last, std::size_t columns, Lines& lines) {
  for (;;) {
    if (Count(Expanded(rest)) < columns) return lines.push_back(Expanded(rest));
    std::size_t piece = rest.find(' ');
    for (std::size_t blank = piece; blank != std::string::npos; blank = rest.find(' ', blank + 1)) {
      if (Count(Expanded(rest.substr(0, blank))) <= columns) piece = blank;
    }
    lines.push_back(Beginning(Expanded(rest.substr(0, piece)), columns + 8));
    if (piece == std::string::npos) return;
    rest.erase(0, piece + 1);
    if (rest.empty() && is_last) return;
  }
}

Lines PlainLines(std::string text, std::size_t columns) {
  Lines lines;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    const bool is_last = end == std::string::npos;
    std::string line = text.substr(0, end);
    text.erase(0, is_last ? text.size() : end + 1);
    if (!is_last && line.ends_with('\r')) line.pop_back();
    std::string shown;
    for (Input rest(line); !rest.empty();) {
      const std::string piece = rest.Field('\r');
      shown += EnteredText(piece) + ' ';
    }
    if (!line.ends_with('\r') && !shown.empty()) shown.pop_back();
    AddPlainLines(shown, is_last, columns, lines);
  }
  return lines;
}

}  // namespace
}  // namespace tessaril

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tessaril;
  Input input(data, size);
  const std::size_t columns = input.Below(40);
  const std::size_t rows = input.Below(16);
  const int copies = static_cast<int>(input.Below(3));
  const int failing_page = static_cast<int>(input.Below(32));  // none at 0
  PrintJob job;
  job.title = EnteredText(input.Field());
  std::erase_if(job.title, [](char c) { return c == '\r' || c == '\n'; });
  const std::string text = input.Rest();
  job.text = text;
  job.date = "1.2.";
  job.copies = copies;
  job.shown = [](std::string_view line) { return EnteredText(line); };

  Paper paper(columns, rows, failing_page);
  const Status status = PrintPages(paper, job);
  Require(status.ok() == !paper.failed && paper.ended == status.ok(), "a failure is not told");
  const Lines once = PlainLines(text, columns);
  Lines expected;
  for (int copy = 0; copy < copies; ++copy) expected.insert(expected.end(), once.begin(), once.end());
  if (paper.failed) expected.resize(std::min(expected.size(), paper.lines.size()));
  for (std::size_t i = 0; i < std::min(expected.size(), paper.lines.size()); ++i)
    RequireEqual(paper.lines[i], expected[i], "line " + std::to_string(i));
  Require(paper.lines.size() == expected.size(), "lines are missing or too many");
  for (std::size_t i = 0; i < paper.headers.size(); ++i) {
    const std::string& header = paper.headers[i];
    Require(std::string("1.2. - ").starts_with(header.substr(0, 7)), "a header without the date");
  }
  return 0;
}
