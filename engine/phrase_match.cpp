#include "engine/phrase_match.h"

#include <algorithm>
#include <cstdint>
#include <memory>

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

// The candidate: the bytes that are compared with the phrase, while breaks in them turn into blanks one by
// one. What lies before the break in hand has been made; the rest is still as the page has it, but for its
// blanks, which were halved as often as breaks were turned: of a run, only each second, fourth, eighth one
// and so on is left, and the last. So a break costs no more than what lies before the next one. Positions
// count from 1.
class Candidate {
 public:
  Candidate(std::string_view phrase, std::string_view window, std::string_view line_end)
      : phrase_(phrase),
        window_(window),
        line_end_(line_end),
        entity_is_break_(phrase.find(kNbsp) == std::string_view::npos),
        made_(std::make_unique_for_overwrite<char[]>(window.size())),
        ends_(std::make_unique_for_overwrite<std::uint32_t[]>(window.size())) {}

  // Turns the first break at or behind `from` into a blank; then, of every two blanks in a row the first is
  // dropped, once from front to back: three blanks leave two. Returns where the break was, 0 when there is
  // none.
  std::size_t TurnBreak(std::size_t from) {
    const std::size_t length = MakeUntilBreak(from);
    if (length == 0) return 0;
    read_ += length;
    const std::size_t run = RunBefore(size_);
    Make(' ', read_);
    const std::size_t position = size_;
    MakeBlanks();
    doubled_ = std::min(doubled_, run);
    step_ = std::min(2 * step_, kLongestStep);
    Halve();
    return position;
  }

  // Whether the candidate begins with the phrase. It is different when no further break can change that.
  PlainComparison Compare() {
    bool is_settled = true;  // all that was compared stays as it is
    std::size_t at = equal_;
    for (; at < size_ && at < phrase_.size(); ++at) {
      is_settled = is_settled && at < doubled_;
      if (made_[at] != phrase_[at]) return is_settled ? PlainComparison::kDifferent : PlainComparison::kOpen;
      if (is_settled) equal_ = at + 1;
    }
    if (at < phrase_.size()) return CompareUnmade(at, is_settled);
    end_in_page_ = ends_[at - 1];
    return PlainComparison::kEqual;
  }

  // Where the phrase ends in the page, after Compare found it equal.
  std::size_t EndInPage() const { return end_in_page_; }

 private:
  static constexpr std::size_t kNowhere = std::string_view::npos;
  static constexpr std::size_t kLongestStep = std::size_t{1} << 30;

  std::size_t BreakAt(std::size_t at) const {
    if (at >= window_.size() || (window_[at] != line_end_[0] && window_[at] != '&')) return 0;
    const std::string_view here = window_.substr(at);
    if (here.starts_with(line_end_)) return line_end_.size();
    return entity_is_break_ && here.starts_with(kNbsp) ? kNbsp.size() : 0;
  }

  std::size_t EndOfBlanks(std::size_t at) const {
    return std::min(window_.find_first_not_of(' ', at), window_.size());
  }

  void Make(char c, std::size_t end) {
    made_[size_] = c;
    ends_[size_] = static_cast<std::uint32_t>(end);
    ++size_;
  }

  void MakeBlanks() {
    const std::size_t begin = read_;
    read_ = EndOfBlanks(begin);
    for (std::size_t end = begin + step_; end < read_; end += step_) Make(' ', end);
    if (begin < read_) Make(' ', read_);
  }

  // The length of the break; 0 when there is none.
  std::size_t MakeUntilBreak(std::size_t from) {
    while (read_ < window_.size()) {
      if (window_[read_] == ' ') {
        const std::size_t run = size_;
        MakeBlanks();
        if (size_ - run > 1) doubled_ = std::min(doubled_, run);
        continue;
      }
      const std::size_t length = size_ + 1 >= from ? BreakAt(read_) : 0;
      if (length > 0) return length;
      ++read_;
      Make(window_[read_ - 1], read_);
    }
    return 0;
  }

  std::size_t RunBefore(std::size_t at) const {
    while (at > 0 && made_[at - 1] == ' ') --at;
    return at;
  }

  void Halve() {
    std::size_t kept = doubled_;
    std::size_t doubled = kNowhere;
    for (std::size_t i = kept; i < size_; ++i) {
      if (made_[i] == ' ' && i + 1 < size_ && made_[i + 1] == ' ') ++i;
      if (doubled == kNowhere && made_[i] == ' ' && kept > doubled_ && made_[kept - 1] == ' ')
        doubled = kept - 1;
      made_[kept] = made_[i];
      ends_[kept] = ends_[i];
      ++kept;
    }
    size_ = kept;
    doubled_ = doubled;
  }

  // Compares the phrase from `at` on with what has not been made yet.
  PlainComparison CompareUnmade(std::size_t at, bool is_settled) {
    for (std::size_t read = read_; at < phrase_.size();) {
      if (read >= window_.size()) return PlainComparison::kDifferent;  // it never gets longer
      std::size_t next = read + 1;
      std::size_t left = 1;  // of a run of blanks
      if (window_[read] == ' ') {
        next = EndOfBlanks(read);
        left = (next - read + step_ - 1) / step_;
        is_settled = is_settled && left == 1;
      } else {
        is_settled = is_settled && BreakAt(read) == 0;
      }
      for (std::size_t i = 1; i <= left && at < phrase_.size(); ++i, ++at) {
        if (phrase_[at] != window_[read])
          return is_settled ? PlainComparison::kDifferent : PlainComparison::kOpen;
        end_in_page_ = i < left ? read + i * step_ : next;
      }
      read = next;
    }
    return PlainComparison::kEqual;
  }

  std::string_view phrase_;
  std::string_view window_;
  std::string_view line_end_;
  bool entity_is_break_;
  // The bytes made, never more than the window has, and where in the page the bytes end that became each.
  std::unique_ptr<char[]> made_;
  std::unique_ptr<std::uint32_t[]> ends_;
  std::size_t size_ = 0;
  std::size_t read_ = 0;            // what lies in front in the window has been made
  std::size_t step_ = 1;            // of a run of blanks that has not been made each so many-th is left
  std::size_t doubled_ = kNowhere;  // where the first run of several blanks begins among those made
  std::size_t equal_ = 0;           // so many bytes made are settled and the phrase's
  std::size_t end_in_page_ = 0;
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
  Candidate candidate(phrase, window, line_end);
  for (std::size_t p = 0;;) {
    p = candidate.TurnBreak(p + 1);
    if (p == 0) return std::nullopt;
    const PlainComparison comparison = candidate.Compare();
    if (comparison == PlainComparison::kEqual) {
      return Accept(window.substr(0, candidate.EndInPage()), line_end);
    }
    if (comparison == PlainComparison::kDifferent) return std::nullopt;
  }
}

}  // namespace tessaril
