#include "engine/near_names.h"

#include <algorithm>
#include <array>
#include <vector>

#include "engine/ascii.h"

namespace tessaril {
namespace {

constexpr std::size_t kCountingLetters = 64;  // as long as so many comparisons of sizes

std::size_t StepsFor(std::size_t size) {
  constexpr std::size_t kShort = 5;
  constexpr std::size_t kMiddle = 9;
  return size <= kShort ? 1 : size <= kMiddle ? 2 : 3;
}

// How many bytes of each kind one has more than the other, at the least steps apart.
std::size_t LeastSteps(std::string_view a, std::string_view b) {
  std::array<int, 256> counts{};
  for (const char c : a) ++counts[static_cast<unsigned char>(c)];
  for (const char c : b) --counts[static_cast<unsigned char>(c)];
  std::size_t more = 0;
  std::size_t less = 0;
  for (const int count : counts) {
    if (count > 0) more += static_cast<std::size_t>(count);
    if (count < 0) less += static_cast<std::size_t>(-count);
  }
  return std::max(more, less);
}

// The steps from one to the other; more than `most` when there are more.
std::size_t Steps(std::string_view a, std::string_view b, std::size_t most) {
  std::vector<std::size_t> before(b.size() + 1);
  std::vector<std::size_t> last(b.size() + 1);
  std::vector<std::size_t> row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) last[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    row[0] = i;
    std::size_t least = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1)});
      const bool swapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
      if (swapped) row[j] = std::min(row[j], before[j - 2] + 1);
      least = std::min(least, row[j]);
    }
    if (least > most) return most + 1;
    std::swap(before, last);
    std::swap(last, row);
  }
  return last[b.size()];
}

}  // namespace

NearestName::NearestName(std::string_view sought, std::size_t& work)
    : sought_(ToLower(sought)), work_(work), most_(StepsFor(sought.size())), best_(most_ + 1) {}

void NearestName::Offer(std::string_view name) {
  Work(1);
  const std::size_t longer = std::max(name.size(), sought_.size());
  if (longer - std::min(name.size(), sought_.size()) > most_ || IsSpent()) return;
  Work(kCountingLetters);
  const std::string lower = ToLower(name);
  if (LeastSteps(sought_, lower) > most_) return;
  Work(kCountingLetters * longer);
  const std::size_t steps = Steps(sought_, lower, most_);
  if (steps > most_ || steps > best_) return;
  is_unique_ = steps < best_;
  best_ = steps;
  most_ = steps;
  found_ = name;
}

std::optional<std::string> NearestName::Found() const {
  return is_unique_ && !IsSpent() ? found_ : std::nullopt;
}

}  // namespace tessaril
