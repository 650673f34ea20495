#include "engine/phrase_match.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

namespace tessaril {
namespace {

constexpr std::string_view kNbsp = "&nbsp;";

bool MayBeginBreak(char c) {
  return c == '\r' || c == '\n' || c == '&';
}
bool IsInert(char c) {
  return c != ' ' && !MayBeginBreak(c);
}

// A byte that neither begins a break nor belongs to a run of blanks keeps its value and its place whatever is
// done to the rest, as long as all before it do.
bool IsSettled(std::string_view text, std::size_t at) {
  if (text[at] != ' ') return !MayBeginBreak(text[at]);
  return at + 1 == text.size() || IsInert(text[at + 1]);
}

// How many bytes at the start are settled and those of the phrase.
std::size_t SettledAndEqual(std::string_view phrase, std::string_view text) {
  const std::size_t most = std::min(phrase.size(), text.size());
  std::size_t count = 0;
  while (count < most && text[count] == phrase[count] && IsSettled(text, count)) ++count;
  return count;
}

// How many bytes of `text` at its start are a break in some page, 0 for none.
std::size_t BreakLength(std::string_view text) {
  for (const std::string_view sequence : {std::string_view("\r\n"), std::string_view("\n"), kNbsp}) {
    if (text.starts_with(sequence)) return sequence.size();
  }
  return 0;
}

// Decides most of the places where a word stands at the end of a line. Where the phrase has a blank and the
// text what may be a break, either it is none in this page and stays different, or it becomes a blank, alone
// or halved with one that follows, and then the byte behind it is settled, too.
bool IsDifferentBehindBreak(std::string_view phrase, std::string_view text, std::size_t at) {
  const std::string_view rest = text.substr(at);
  const std::size_t length = BreakLength(rest);
  if (length == 0 || at + 1 >= phrase.size() || phrase[at] != ' ') return false;
  const std::size_t next = rest.substr(length).starts_with(' ') ? length + 1 : length;
  return rest.size() > next && IsInert(rest[next]) && rest[next] != phrase[at + 1];
}

// The bytes that are compared with the phrase, while breaks in them turn into blanks one by one. What is
// settled and equal is dropped from the front, so that a break costs no more than what lies before it. For
// each byte it knows where in the page the bytes end that became it. Positions count from 1 and include what
// was dropped.
class Candidate {
 public:
  Candidate(std::string_view phrase, std::string_view bytes)
      : phrase_(phrase),
        bytes_(bytes),
        ends_(bytes.size()),
        doubled_end_(bytes.find("  ") != std::string_view::npos ? bytes.size() : 0) {
    for (std::size_t i = 0; i < ends_.size(); ++i) ends_[i] = static_cast<std::uint32_t>(i + 1);
  }

  PlainComparison Compare() {
    const std::size_t settled = SettledAndEqual(phrase_, Rest());
    phrase_.remove_prefix(settled);
    dropped_ += settled;
    front_ += settled;
    return ComparePlain(phrase_, Rest());
  }

  // Where the phrase ends in the page, after Compare found it equal.
  std::size_t EndInPage() const { return ends_[front_ + phrase_.size() - 1]; }

  struct Break {
    std::size_t position;  // 0 when there is none
    std::size_t length;
  };
  // The first break at or after `from`.
  Break FindBreak(std::string_view line_end, bool entity_is_break, std::size_t from) const {
    const std::string_view rest = Rest();
    for (std::size_t at = std::max(from, dropped_ + 1) - dropped_ - 1; at < rest.size(); ++at) {
      const char c = rest[at];
      if (c != line_end[0] && c != '&') continue;
      const std::string_view here = rest.substr(at);
      if (here.starts_with(line_end)) return {dropped_ + at + 1, line_end.size()};
      if (entity_is_break && here.starts_with(kNbsp)) return {dropped_ + at + 1, kNbsp.size()};
    }
    return {0, 0};
  }

  // One blank in the place of the `length` bytes at `position`; then, of every two blanks in a row the first
  // is dropped, once from front to back: three blanks leave two.
  void PutBlank(const Break& where) {
    const bool is_doubled = doubled_end_ > front_;
    const std::size_t blank = front_ + (where.position - dropped_ - 1) + (where.length - 1);
    ShiftFront(blank - (where.length - 1), where.length - 1);
    bytes_[blank] = ' ';
    if (is_doubled) {
      doubled_end_ = std::max(doubled_end_, blank + (IsBlankAt(blank + 1) ? 2 : 1));
      HalveAll();
    } else {
      HalveRun(blank);
    }
  }

 private:
  std::string_view Rest() const { return std::string_view(bytes_).substr(front_); }

  // Moves what lies between the front and `end` to the back by `count`.
  void ShiftFront(std::size_t end, std::size_t count) {
    std::copy_backward(bytes_.begin() + Offset(front_), bytes_.begin() + Offset(end),
                       bytes_.begin() + Offset(end + count));
    std::copy_backward(ends_.begin() + Offset(front_), ends_.begin() + Offset(end),
                       ends_.begin() + Offset(end + count));
    front_ += count;
  }

  bool IsBlankAt(std::size_t at) const { return at < bytes_.size() && bytes_[at] == ' '; }

  // What lies behind the last run keeps its place.
  void HalveAll() {
    const std::size_t end = doubled_end_;
    std::size_t kept = front_;
    std::size_t doubled = front_;  // behind the last run that there is still
    for (std::size_t i = front_; i < end; ++i) {
      if (bytes_[i] == ' ' && i + 1 < end && bytes_[i + 1] == ' ') ++i;
      if (bytes_[i] == ' ' && kept > front_ && bytes_[kept - 1] == ' ') doubled = kept + 1;
      bytes_[kept] = bytes_[i];
      ends_[kept] = ends_[i];
      ++kept;
    }
    doubled_end_ = doubled + (end - kept);
    ShiftFront(kept, end - kept);
  }

  // The blank at `at` and its neighbours, at most one on each side, are the only run there is.
  void HalveRun(std::size_t at) {
    const bool before = at > front_ && bytes_[at - 1] == ' ';
    const bool behind = IsBlankAt(at + 1);
    if (before) {
      ShiftFront(at - 1, 1);
      doubled_end_ = behind ? at + 2 : 0;
    } else if (behind) {
      ShiftFront(at, 1);
    }
  }

  static std::ptrdiff_t Offset(std::size_t index) { return static_cast<std::ptrdiff_t>(index); }

  std::string_view phrase_;  // what of it is still to be compared
  std::string bytes_;
  std::vector<std::uint32_t> ends_;
  std::size_t front_ = 0;    // where in bytes_ the candidate begins
  std::size_t dropped_ = 0;  // bytes that were settled and equal
  std::size_t doubled_end_;  // behind this place there are no two blanks in a row, before it there may be
};

PhraseMatch Accept(std::string_view covered, std::string_view line_end) {
  const std::size_t at = std::min(covered.find(line_end), covered.find(kNbsp));
  return {covered.size(), at == std::string_view::npos ? 0 : at + 1};
}

}  // namespace

std::string_view PhraseKey(std::string_view phrase) {
  return phrase.substr(0, phrase.find(' ', 1));
}

bool KeyIsComparedExactly(std::string_view phrase) {
  const std::string_view key = PhraseKey(phrase);
  return key.size() < phrase.size() && std::all_of(key.begin(), key.end(), IsInert);
}

PlainComparison ComparePlain(std::string_view phrase, std::string_view text) {
  const std::size_t settled = SettledAndEqual(phrase, text);
  if (settled == phrase.size() || text.starts_with(phrase)) return PlainComparison::kEqual;
  if (settled == text.size() || IsSettled(text, settled)) return PlainComparison::kDifferent;
  return IsDifferentBehindBreak(phrase, text, settled) ? PlainComparison::kDifferent : PlainComparison::kOpen;
}

std::optional<PhraseMatch> MatchPhrase(std::string_view phrase, std::string_view window,
                                       std::string_view line_end) {
  if (window.starts_with(phrase)) return Accept(window.substr(0, phrase.size()), line_end);
  const bool entity_is_blank = phrase.find(kNbsp) == std::string_view::npos;
  Candidate candidate(phrase, window);
  for (std::size_t p = 0;;) {
    const Candidate::Break found = candidate.FindBreak(line_end, entity_is_blank, p + 1);
    if (found.position == 0) return std::nullopt;
    candidate.PutBlank(found);
    p = found.position;
    const PlainComparison comparison = candidate.Compare();
    if (comparison == PlainComparison::kEqual)
      return Accept(window.substr(0, candidate.EndInPage()), line_end);
    if (comparison == PlainComparison::kDifferent) return std::nullopt;
  }
}

}  // namespace tessaril
