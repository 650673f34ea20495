#include "engine/anchors.h"

#include <algorithm>

#include "engine/ascii.h"
#include "engine/find_chain.h"

namespace tessaril {
namespace {

// Bytes of a name that the order of the starts goes by. Beyond them, all that are equal so far are tried.
constexpr std::size_t kMostSorted = 1024;

}  // namespace

// A page may have a thousand links for each anchor. So NAME is looked for, and the rest of the chain near it.
Anchors::Anchors(std::string_view text, std::size_t longest_name) : longest_name_(longest_name) {
  constexpr std::string_view kName = "name";
  constexpr std::size_t kMostAhead = 2 + Chain::kMostBetween;                  // bytes from "<A" to NAME
  constexpr std::size_t kMostBehind = kName.size() + Chain::kMostBetween + 1;  // bytes from NAME behind "="
  static const Chain anchor("<a", kName, "=");
  static const ByteSearch name(kName, LetterCase::kFolded);
  std::size_t from = 0;
  for (std::size_t at = name.Find(text, from); at != ByteSearch::kNone; at = name.Find(text, from)) {
    from = std::max(from, at - std::min(at, kMostAhead));
    const std::optional<Chain::Place> place = FindChain(anchor, text.substr(0, at + kMostBehind), from);
    if (place) Enter(text, place->last);
    from = (place ? place->last : at) + 1;
  }
}

void Anchors::Sort() {
  sorted_ = true;
  const std::size_t most = std::min(longest_name_, kMostSorted);
  std::sort(starts_.begin(), starts_.end(),
            [this, most](std::size_t a, std::size_t b) { return NameAt(a, most) < NameAt(b, most); });
}

void Anchors::Enter(std::string_view text, std::size_t equals_sign) {
  const std::size_t begin = equals_sign + 1;
  const std::size_t left = text.size() - begin;
  const std::size_t end = begin + std::min(left, std::min(longest_name_, left) + Chain::kMostBetween);
  entered_end_ = std::max(entered_end_, begin);
  if (end > entered_end_) {
    text_ += ToLower(text.substr(entered_end_, end - entered_end_));
    entered_end_ = end;
  }
  const std::size_t first = text_.size() - (entered_end_ - begin);
  for (std::size_t i = 0; i <= Chain::kMostBetween && i < left; ++i) starts_.push_back(first + i);
}

bool Anchors::Has(std::string_view name) {
  if (!sorted_) Sort();
  const std::size_t most = std::min(name.size(), kMostSorted);
  const std::string_view beginning = name.substr(0, most);
  const auto first = std::lower_bound(
      starts_.begin(), starts_.end(), beginning,
      [this, most](std::size_t start, std::string_view n) { return NameAt(start, most) < n; });
  for (auto start = first; start != starts_.end() && NameAt(*start, most) == beginning; ++start) {
    if (NameAt(*start, name.size()) == name) return true;
  }
  return false;
}

}  // namespace tessaril
