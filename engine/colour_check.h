#ifndef TESSARIL_ENGINE_COLOUR_CHECK_H_
#define TESSARIL_ENGINE_COLOUR_CHECK_H_

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "engine/html_page.h"
#include "engine/run.h"

namespace tessaril {

/// Whether the colour whose "#" stands at `a` (from 0) in the text `t` is not web-safe: whether one of its
/// three pieces, two characters each, is none of "00", "33", "66", "99", "CC", "FF". Letters are compared
/// exactly. `parts` becomes the pieces, red, green and blue, shorter or empty where `t` ends.
bool HexErr(std::string_view t, std::size_t a, std::array<std::string, 3>& parts);

/// Finds the colours of one page that are not web-safe: all in its BODY tag, and those of the COLOR
/// attributes behind it. Each is put to the user, who may replace it; the page is then written at once.
Status CheckColours(HtmlPage& page, RunContext& run);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_COLOUR_CHECK_H_
