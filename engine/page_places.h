#ifndef TESSARIL_ENGINE_PAGE_PLACES_H_
#define TESSARIL_ENGINE_PAGE_PLACES_H_

#include <cstddef>
#include <vector>

#include "engine/finding_kinds.h"
#include "engine/page_text.h"

namespace tessaril {

/// Lines and columns of places in a page; a byte order mark does not count. Asked in rising order, with edits
/// between that go through the page from front to back, they cost one way through the page.
class PagePlaces {
 public:
  /// The place of the byte at `offset`, which is at most the size of the page.
  PagePlace At(PageText& page, std::size_t offset);

  /// The page has changed from `begin` on.
  void NoteChange(std::size_t begin);

 private:
  struct Known {
    std::size_t offset;
    PagePlace place;
  };
  static constexpr std::size_t kApart = 1024;  // bytes between two of those that are kept, at least

  Known GoOn(PageText& page, const Known& from, std::size_t offset);
  void Remember(const Known& known);

  std::vector<Known> known_{{0, {1, 1}}};  // rising
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_PAGE_PLACES_H_
