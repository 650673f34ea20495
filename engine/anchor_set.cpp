#include "engine/anchor_set.h"

#include <bit>
#include <functional>

namespace tessaril {

// Where the name is, or would be.
std::size_t AnchorSet::Slot(std::string_view name) const {
  const std::size_t mask = slots_.size() - 1;
  std::size_t slot = std::hash<std::string_view>()(name) & mask;
  while (slots_[slot] != 0 && (*this)[slots_[slot] - 1] != name) slot = (slot + 1) & mask;
  return slot;
}

bool AnchorSet::Add(std::string_view name) {
  if (2 * (size() + 1) > slots_.size()) Grow();
  std::uint32_t& slot = slots_[Slot(name)];
  if (slot != 0) return false;
  names_ += name;
  ends_.push_back(static_cast<std::uint32_t>(names_.size()));
  slot = static_cast<std::uint32_t>(ends_.size());
  return true;
}

bool AnchorSet::Has(std::string_view name) const {
  return !slots_.empty() && slots_[Slot(name)] != 0;
}

void AnchorSet::Grow() {
  constexpr std::size_t kFewest = 8;
  slots_.assign(std::max(kFewest, std::bit_ceil(4 * size())), 0);
  for (std::size_t index = 0; index < size(); ++index) {
    slots_[Slot((*this)[index])] = static_cast<std::uint32_t>(index + 1);
  }
}

void AnchorSet::Shrink() {
  names_.shrink_to_fit();
  ends_.shrink_to_fit();
}

}  // namespace tessaril
