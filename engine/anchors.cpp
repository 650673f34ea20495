#include "engine/anchors.h"

#include <algorithm>

#include "engine/ascii.h"
#include "engine/find_chain.h"

namespace tessaril {
namespace {

// Bytes of a name that the order of the starts goes by. Beyond them, all that are equal so far are tried.
constexpr std::size_t kMostSorted = 1024;

}  // namespace

Anchors::Anchors(std::string_view text, std::size_t longest_name) : longest_name_(longest_name) {
  static const Chain anchor("<a", "name", "=");
  for (std::optional<Chain::Place> place = FindChain(anchor, text, 0); place;
       place = FindChain(anchor, text, place->last + 1)) {
    Enter(text, place->last);
  }
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

bool Anchors::Has(std::string_view name) const {
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
