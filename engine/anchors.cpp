#include "engine/anchors.h"

#include <algorithm>
#include <array>
#include <functional>
#include <utility>

#include "engine/ascii.h"
#include "engine/find_chain.h"

namespace tessaril {
namespace {

// Bytes of a name that the order of the starts goes by. Beyond them, all that are equal so far are tried.
constexpr std::size_t kMostSorted = 8192;

// Texts that were met before, as far as they were not met too long ago and are not too long to be compared.
class Recent {
 public:
  bool Has(std::string_view text) {
    constexpr std::size_t kHashed = 32;  // bytes
    if (text.size() > kMostSorted) return false;
    std::string_view& last = last_[std::hash<std::string_view>()(text.substr(0, kHashed)) % last_.size()];
    return std::exchange(last, text) == text;
  }

 private:
  std::array<std::string_view, 256> last_;
};

}  // namespace

void Anchors::Take(std::string_view piece, bool last) {
  if (last && pieces_.empty()) {
    Collect(piece, true);
    return;
  }
  pieces_ += piece;
  Collect(pieces_, last);
  pieces_.erase(0, last ? pieces_.size() : next_);
  entered_end_ -= std::min(entered_end_, next_);
  next_ = 0;
}

// Enters the anchors of `text`, unless more has to follow before they can be told. A page may have a thousand
// links for each anchor: so NAME is looked for, and the rest of the chain near it.
void Anchors::Collect(std::string_view text, bool last) {
  constexpr std::string_view kName = "name";
  constexpr std::size_t kMostAhead = 2 + Chain::kMostBetween;                  // bytes from "<A" to NAME
  constexpr std::size_t kMostBehind = kName.size() + Chain::kMostBetween + 1;  // bytes from NAME behind "="
  static const Chain anchor("<a", kName, "=");
  static const ByteSearch name(kName, LetterCase::kFolded);
  Recent recent;
  for (std::size_t at = name.Find(text, next_); at != ByteSearch::kNone; at = name.Find(text, next_)) {
    next_ = std::max(next_, at - std::min(at, kMostAhead));
    if (!last && text.size() - at < kMostBehind + longest_name_ + Chain::kMostBetween) return;
    const std::optional<Chain::Place> place = FindChain(anchor, text.substr(0, at + kMostBehind), next_);
    // An anchor that reads like one before it, as far as names are looked up, adds nothing.
    if (place && !recent.Has(text.substr(place->last + 1, MostBehind(text, place->last + 1)))) {
      Enter(text, place->last + 1);
    }
    next_ = (place ? place->last : at) + 1;
  }
  // What follows may begin with the rest of a NAME.
  constexpr std::size_t kKept = kMostAhead + kName.size() - 1;
  next_ = std::max(next_, text.size() - std::min(text.size(), kKept));
}

// The bytes of `text` at `begin` that are needed to look names up.
std::size_t Anchors::MostBehind(std::string_view text, std::size_t begin) const {
  const std::size_t left = text.size() - begin;
  return std::min(left, std::min(longest_name_, left) + Chain::kMostBetween);
}

void Anchors::Enter(std::string_view text, std::size_t begin) {
  const std::size_t end = begin + MostBehind(text, begin);
  entered_end_ = std::max(entered_end_, begin);
  if (end > entered_end_) {
    text_ += ToLower(text.substr(entered_end_, end - entered_end_));
    entered_end_ = end;
  }
  firsts_.push_back(text_.size() - (entered_end_ - begin));
}

void Anchors::Sort() {
  sorted_ = true;
  for (const std::size_t first : firsts_) {
    for (std::size_t i = 0; i <= Chain::kMostBetween && first + i < text_.size(); ++i) {
      starts_.push_back(first + i);
    }
  }
  const std::size_t most = std::min(longest_name_, kMostSorted);
  std::sort(starts_.begin(), starts_.end(),
            [this, most](std::size_t a, std::size_t b) { return NameAt(a, most) < NameAt(b, most); });
}

bool Anchors::Has(std::string_view name) {
  if (!sorted_) Sort();
  const std::size_t most = std::min(name.size(), kMostSorted);
  const std::string beginning = ToLower(name.substr(0, most));
  const std::string_view rest = name.substr(most);
  const auto first = std::lower_bound(
      starts_.begin(), starts_.end(), std::string_view(beginning),
      [this, most](std::size_t start, std::string_view n) { return NameAt(start, most) < n; });
  for (auto start = first; start != starts_.end() && NameAt(*start, most) == beginning; ++start) {
    if (EqualsLower(rest, NameAt(*start + most, rest.size()))) return true;
  }
  return false;
}

}  // namespace tessaril
