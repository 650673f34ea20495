#ifndef TESSARIL_ENGINE_HTML_ATTRIBUTE_H_
#define TESSARIL_ENGINE_HTML_ATTRIBUTE_H_

#include <string_view>

namespace tessaril {

/// An attribute of a start tag; both texts as they stand in the page.
struct HtmlAttribute {
  std::string_view name;
  // Without quotes, character references not resolved; empty, behind the name, when there is none.
  std::string_view value;
  bool has_value = false;  // a "=" follows the name
  char quote = '\0';       // around the value: ', " or none
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_HTML_ATTRIBUTE_H_
