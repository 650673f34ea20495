#include "engine/excerpt.h"

#include <algorithm>

namespace tessaril {

PageText::Span ExcerptOf(PageText& page, std::size_t begin, std::size_t end) {
  constexpr std::size_t kBefore = 21;  // bytes
  constexpr std::size_t kMore = 101;   // bytes besides those of what is shown
  const std::size_t first = begin - std::min(begin, kBefore);
  return page.WholeCharacters(first, first + (end - begin) + kMore);
}

}  // namespace tessaril
