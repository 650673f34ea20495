#ifndef TESSARIL_ENGINE_ANCHOR_SET_H_
#define TESSARIL_ENGINE_ANCHOR_SET_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tessaril {

/// The anchors of one page, compared byte by byte, in little memory: there may be a million in a site.
class AnchorSet {
 public:
  /// False when it is there already.
  bool Add(std::string_view name);
  bool Has(std::string_view name) const;

  std::size_t size() const { return ends_.size(); }

  /// In the order in which they were added.
  std::string_view operator[](std::size_t index) const {
    const std::size_t begin = index == 0 ? 0 : ends_[index - 1];
    return std::string_view(names_).substr(begin, ends_[index] - begin);
  }

  /// Gives back what memory was kept for more anchors.
  void Shrink();

 private:
  std::size_t Slot(std::string_view name) const;
  void Grow();

  std::string names_;                 // one behind the other
  std::vector<std::uint32_t> ends_;   // where each ends
  std::vector<std::uint32_t> slots_;  // by hash: 1 more than an index, or 0; at most half of them are taken
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_ANCHOR_SET_H_
