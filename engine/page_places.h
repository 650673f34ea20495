#ifndef TESSARIL_ENGINE_PAGE_PLACES_H_
#define TESSARIL_ENGINE_PAGE_PLACES_H_

#include <cstddef>
#include <vector>

#include "engine/finding_kinds.h"
#include "engine/page_text.h"

namespace tessaril {

/// Lines and columns of places in a page. Asked in rising order they cost one way through the page.
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
  std::vector<Known> known_{{0, {1, 1}}};  // rising
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_PAGE_PLACES_H_
