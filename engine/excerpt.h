#ifndef TESSARIL_ENGINE_EXCERPT_H_
#define TESSARIL_ENGINE_EXCERPT_H_

#include <cstddef>

#include "engine/page_text.h"

namespace tessaril {

/// The part of a page that is shown with a link which begins at `begin` and ends before `end`: 21 bytes
/// before it and 80 behind, widened to whole characters.
PageText::Span ExcerptOf(PageText& page, std::size_t begin, std::size_t end);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_EXCERPT_H_
