#ifndef TESSARIL_ENGINE_FOREIGN_CONTENT_H_
#define TESSARIL_ENGINE_FOREIGN_CONTENT_H_

#include <cstdint>
#include <string_view>
#include <vector>

namespace tessaril {

/// Keeps count of where in a page SVG and MathML begin and end, by the rules of the HTML standard for the
/// construction of trees as far as they change how a text is taken apart: in these two, script, style and
/// title hold ordinary text, and CDATA sections are known.
class ForeignContent {
 public:
  /// Whether what follows stands in SVG or MathML.
  bool IsInside() const { return !open_.empty() && open_.back() != kHtmlInside; }

  /// A tag with this name, as written, was read.
  void TakeStartTag(std::string_view name, bool self_closing) {
    if (!open_.empty() || IsRoot(name)) Open(name, self_closing);
  }
  void TakeEndTag(std::string_view name) {
    if (!open_.empty()) Close(name);
  }

 private:
  enum Kind : std::uint8_t { kSvg, kMath, kHtmlInside };
  static bool IsRoot(std::string_view name) {
    return (name.size() == 3 && (name[0] | 0x20) == 's') || (name.size() == 4 && (name[0] | 0x20) == 'm');
  }
  void Open(std::string_view name, bool self_closing);
  void Close(std::string_view name);

  std::vector<Kind> open_;
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_FOREIGN_CONTENT_H_
