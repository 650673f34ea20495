#include "printing/text_pages.h"

#include <algorithm>
#include <cmath>

#include "engine/characters.h"

namespace tessaril {
namespace {

constexpr double kTwipsPerMillimetre = 56.7;
constexpr double kLeftMargin = 20 * kTwipsPerMillimetre;
constexpr double kRightMargin = 15 * kTwipsPerMillimetre;
constexpr double kTopMargin = 15 * kTwipsPerMillimetre;
constexpr double kBottomMargin = 15 * kTwipsPerMillimetre;
constexpr std::string_view kEmDash = "\xE2\x80\x94";
constexpr std::size_t kTabStop = 8;  // characters

// The first `size` bytes at most, and no part of a character.
std::string_view Beginning(std::string_view text, std::size_t size) {
  if (size >= text.size()) return text;
  while (size > 0 && IsContinuation(text[size])) --size;
  return text.substr(0, size);
}

std::string WithTabsExpanded(std::string_view text) {
  std::string expanded;
  std::size_t column = 0;
  for (const char byte : text) {
    if (byte == '\t') {
      const std::size_t blanks = kTabStop - column % kTabStop;
      expanded.append(blanks, ' ');
      column += blanks;
    } else {
      expanded += byte;
      if (!IsContinuation(byte)) ++column;
    }
  }
  return expanded;
}

// The job under way: where on which page it is.
class TextPages {
 public:
  TextPages(PrintDevice& device, const PrintJob& job);

  void PrintCopy();
  void BeginNextCopy() { status_ = device_.NewPage(); }
  const Status& status() const { return status_; }

 private:
  double Width(std::string_view text, double limit) const;
  std::string_view Clipped(std::string_view text, double width) const;
  std::string Header() const;
  std::string Shown(std::string_view line) const;

  void GoTo(double y);
  void PrintLine(std::string_view text);
  void BeginNextPage(double line_height);
  void PrintTextLine(std::string_view line, bool is_last);
  std::string_view LongestPiece(std::string_view rest);

  PrintDevice& device_;
  const PrintJob& job_;
  const double printable_width_;
  const double paper_width_;  // from the left margin to the paper's right edge
  const double bottom_limit_;
  std::string rule_;
  int page_ = 1;
  double y_ = 0;
  bool has_text_ = false;           // the page, below its header
  std::size_t usual_length_ = 100;  // bytes, of a part of a line that was too wide
  Status status_;
};

TextPages::TextPages(PrintDevice& device, const PrintJob& job)
    : device_(device),
      job_(job),
      printable_width_(device.PageWidth() - kLeftMargin - kRightMargin),
      paper_width_(device.PageWidth() - kLeftMargin),
      bottom_limit_(device.PageHeight() - kBottomMargin) {
  const double dash = device.TextWidth(kEmDash);
  const double dashes = dash > 0 ? std::floor(printable_width_ / dash) : 0;
  for (double i = 0; i < dashes; ++i) rule_ += kEmDash;
}

// The width of a text; of one that is wider than `limit` perhaps only that of a beginning that is, too.
double TextPages::Width(std::string_view text, double limit) const {
  constexpr std::size_t kFirstLook = 128;  // bytes, about a line
  // What follows may move back a little (kerning, marks), but not by a fifth.
  constexpr double kSurely = 1.25;
  for (std::size_t size = kFirstLook; size < text.size(); size *= 2) {
    const double width = device_.TextWidth(WithTabsExpanded(Beginning(text, size)));
    if (width > kSurely * limit) return width;
  }
  return device_.TextWidth(WithTabsExpanded(text));
}

// The longest beginning of whole characters that is at most so wide.
std::string_view TextPages::Clipped(std::string_view text, double width) const {
  if (Width(text, width) <= width) return text;
  std::size_t fits = 0;
  std::size_t too_long = text.size();
  while (too_long - fits > 1) {
    const std::size_t middle = fits + (too_long - fits) / 2;
    (Width(Beginning(text, middle), width) <= width ? fits : too_long) = middle;
  }
  return Beginning(text, fits);
}

std::string TextPages::Header() const {
  const std::string header =
      WithTabsExpanded(job_.date + " - " + job_.title + "  Page " + std::to_string(page_));
  return std::string(Clipped(header, printable_width_));
}

std::string TextPages::Shown(std::string_view line) const {
  std::string shown;
  for (std::size_t cr = line.find('\r'); cr != std::string_view::npos; cr = line.find('\r')) {
    shown += job_.shown(line.substr(0, cr)) + ' ';
    line.remove_prefix(cr + 1);
  }
  return shown + job_.shown(line);
}

void TextPages::GoTo(double y) {
  y_ = y;
  device_.MoveTo(kLeftMargin, y_);
}

void TextPages::PrintLine(std::string_view text) {
  device_.Print(text);
  const double height = device_.TextHeight(text);
  GoTo(y_ + height);
  if (has_text_ && y_ > bottom_limit_ - height) BeginNextPage(height);
}

void TextPages::BeginNextPage(double line_height) {
  status_ = device_.NewPage();
  if (!status_.ok()) return;
  has_text_ = false;
  ++page_;
  GoTo(kTopMargin);
  for (const std::string& line : {Header(), rule_}) {
    device_.PrintAndMoveOn(line);
    GoTo(y_ + device_.TextHeight(line) + line_height);
  }
}

// The part of a line that is too wide which is printed next: up to the last blank before which the text fits,
// or to the first one when there is none, or all of it. The search begins where the last such part ended,
// since texts grow with each word and lines are much alike.
std::string_view TextPages::LongestPiece(std::string_view rest) {
  constexpr std::size_t kNone = std::string_view::npos;
  const auto fits = [&](std::size_t blank) {
    return Width(rest.substr(0, blank), printable_width_) <= printable_width_;
  };
  std::size_t end = rest.rfind(' ', usual_length_);
  while (end != kNone && !fits(end)) end = end == 0 ? kNone : rest.rfind(' ', end - 1);
  std::size_t next = rest.find(' ', end == kNone ? 0 : end + 1);
  for (; next != kNone && fits(next); next = rest.find(' ', next + 1)) end = next;
  if (end == kNone) return rest.substr(0, next);
  usual_length_ = end;
  return rest.substr(0, end);
}

void TextPages::PrintTextLine(std::string_view line, bool is_last) {
  std::size_t start = 0;
  do {
    const std::string_view rest = line.substr(start);
    const bool fits = Width(rest, printable_width_) < printable_width_;
    const std::string_view piece = fits ? rest : LongestPiece(rest);
    const std::string expanded = WithTabsExpanded(piece);
    has_text_ = true;
    PrintLine(fits ? expanded : Clipped(expanded, paper_width_));
    start += piece.size() + 1;
  } while (status_.ok() && (start < line.size() || (start == line.size() && !is_last)));
}

void TextPages::PrintCopy() {
  page_ = 1;
  has_text_ = false;
  GoTo(kTopMargin);
  for (const std::string& line : {Header(), rule_, std::string()}) PrintLine(line);
  std::string_view rest = job_.text;
  while (status_.ok() && !rest.empty()) {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    const bool is_last = end == rest.size();
    const bool ends_in_cr = !is_last && end > 0 && rest[end - 1] == '\r';
    PrintTextLine(Shown(rest.substr(0, ends_in_cr ? end - 1 : end)), is_last);
    rest.remove_prefix(is_last ? end : end + 1);
  }
}

}  // namespace

Status PrintPages(PrintDevice& device, const PrintJob& job) {
  device.SetFont(job.font_name, PrintedFontSize(job.font_size));
  TextPages pages(device, job);
  for (int copy = 0; copy < job.copies && pages.status().ok(); ++copy) {
    if (copy > 0) pages.BeginNextCopy();
    if (pages.status().ok()) pages.PrintCopy();
  }
  return pages.status().ok() ? device.End() : pages.status();
}

}  // namespace tessaril
