#include "engine/run.h"

#include <cstdint>
#include <limits>
#include <new>
#include <stdexcept>

namespace tessaril {
void RunState::MakeRoom(std::size_t bytes) {
  constexpr std::size_t kMost = std::numeric_limits<std::int32_t>::max();  // bytes of a report
  const std::size_t unlinked = 2 * UnlinkedList.text().size();             // more than is made of it
  const std::size_t needed = Results.size() + bytes + RoomForEnd + unlinked;
  if (needed <= Results.capacity()) return;
  if (needed > kMost) throw std::length_error("report");
  // A large report gets room for the largest at once: what is not used of it costs nothing, while growing
  // step by step would copy it again and again and hold it twice.
  constexpr std::size_t kLarge = std::size_t{1} << 25;
  if (needed > kLarge) {
    try {
      Results.reserve(kMost);
      return;
    } catch (const std::bad_alloc&) {
    }
  }
  Results.reserve(needed);
}

}  // namespace tessaril
