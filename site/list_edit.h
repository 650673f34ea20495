#ifndef TESSARIL_SITE_LIST_EDIT_H_
#define TESSARIL_SITE_LIST_EDIT_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "site/toml_text.h"

// A list in a TOML text, changed element by element: comments between the elements, and the way in which
// those that stay are written, are their author's.

namespace tessaril {

/// A piece of a text and what is to stand in its place.
struct TextEdit {
  std::size_t begin;  // bytes of the text as it was
  std::size_t end;
  std::string by;
};

/// What makes `list` of `text`, which holds texts only, hold `texts`. No two edits overlap; those of one
/// place are in the order in which they shall stand.
std::vector<TextEdit> EditsOfList(std::string_view text, const TomlValue& list,
                                  const std::vector<std::string>& texts);

/// `text` with all edits made, which are sorted by their begin in the process.
std::string Edited(std::string_view text, std::vector<TextEdit> edits);

}  // namespace tessaril

#endif  // TESSARIL_SITE_LIST_EDIT_H_
