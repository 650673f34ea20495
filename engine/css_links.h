#ifndef TESSARIL_ENGINE_CSS_LINKS_H_
#define TESSARIL_ENGINE_CSS_LINKS_H_

#include <string>
#include <string_view>
#include <vector>

// The links of a style sheet: url(...) and @import, told apart by the rules of the CSS Syntax standard.
// Comments, other texts in quotes, the addresses of @namespace and the old property "behavior" are no links,
// and neither is a url() that browsers drop as malformed.

namespace tessaril {

/// Appends the links of `css` as they stand, in their order. All are views of `css`.
void FindCssLinks(std::string_view css, std::vector<std::string_view>& links);

/// The text that a link of a style sheet stands for: its escapes ("\26 ") resolved, to UTF-8.
std::string ResolveCssEscapes(std::string_view link);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_CSS_LINKS_H_
