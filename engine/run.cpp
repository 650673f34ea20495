#include "engine/run.h"

#include <sys/mman.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <new>
#include <stdexcept>

namespace tessaril {
namespace {

constexpr std::size_t kMost = std::numeric_limits<std::int32_t>::max();  // bytes of a report
constexpr std::size_t kLarge = std::size_t{1} << 20;                     // bytes

// A large report gets room for the largest at once: what is not used of it costs nothing, while growing step
// by step would copy it again and again and hold it twice.
void Grow(std::size_t needed, std::string& text) {
  if (needed > kLarge) {
    try {
      text.reserve(kMost);
      return;
    } catch (const std::bad_alloc&) {
    }
  }
  text.reserve(needed);
}

// Asks the system for memory in one call instead of piece by piece as it is written to. That it may not know
// how does not matter.
void AskFor(const char* begin, const char* end) {
#ifdef MADV_POPULATE_WRITE
  constexpr std::uintptr_t kPage = 4096;
  const auto first = (reinterpret_cast<std::uintptr_t>(begin) + kPage - 1) / kPage * kPage;
  const auto last = reinterpret_cast<std::uintptr_t>(end) / kPage * kPage;
  if (first < last) (void)madvise(reinterpret_cast<void*>(first), last - first, MADV_POPULATE_WRITE);
#endif
}

}  // namespace

void RunState::MakeRoom(std::size_t bytes) {
  const std::size_t unlinked = 2 * UnlinkedList.text().size();  // more than is made of it
  const std::size_t needed = Results.size() + bytes + RoomForEnd + unlinked;
  if (needed > Results.capacity()) {
    if (needed > kMost) throw std::length_error("report");
    Grow(needed, Results);
    asked_for_ = 0;
  }
  constexpr std::size_t kAhead = std::size_t{1} << 22;  // bytes
  if (Results.size() + bytes <= asked_for_ || Results.capacity() <= kLarge) return;
  const std::size_t begin = std::max(asked_for_, Results.size());
  asked_for_ = std::min(Results.size() + bytes + kAhead, Results.capacity());
  AskFor(Results.data() + begin, Results.data() + asked_for_);
}

}  // namespace tessaril
