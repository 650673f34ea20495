#ifndef TESSARIL_ENGINE_REFERENCE_TEXTS_H_
#define TESSARIL_ENGINE_REFERENCE_TEXTS_H_

#include <cstddef>
#include <string_view>
#include <vector>

namespace tessaril {

/// A part of a page in which browsers read character references: text between tags, or the value of an
/// attribute. In bytes from 0.
struct ReferenceText {
  std::size_t begin;
  std::size_t end;
  bool in_attribute;
};

/// Those parts of a page, in their order, that hold a "&" or, when `high_bytes`, a byte above 127. Comments,
/// scripts, style sheets and tags besides their attributes' values hold none.
std::vector<ReferenceText> FindReferenceTexts(std::string_view page, bool high_bytes);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_REFERENCE_TEXTS_H_
