#ifndef TESSARIL_ENGINE_NEAR_NAMES_H_
#define TESSARIL_ENGINE_NEAR_NAMES_H_

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tessaril {

/// Looks for the name nearest in spelling: a letter more, less or another, or two letters swapped, counts as
/// one step; letter case counts for nothing. Up to 5 bytes one step is near, up to 9 two, beyond that three.
class NearestName {
 public:
  /// `work` is what is left of the comparisons of sizes that a run affords: letters take more of it.
  /// When it is used up, nothing is near any more.
  NearestName(std::string_view sought, std::size_t& work);

  void Offer(std::string_view name);

  bool IsSpent() const { return work_ == 0; }

  /// The one that is nearest; nothing when none is near or two are equally so.
  std::optional<std::string> Found() const;

 private:
  void Work(std::size_t amount) { work_ -= std::min(work_, amount); }

  std::string sought_;  // in lower case
  std::size_t& work_;
  std::size_t most_;  // steps that the next must stay below or reach
  std::size_t best_;
  std::optional<std::string> found_;
  bool is_unique_ = true;
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_NEAR_NAMES_H_
