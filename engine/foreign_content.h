#ifndef TESSARIL_ENGINE_FOREIGN_CONTENT_H_
#define TESSARIL_ENGINE_FOREIGN_CONTENT_H_

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "engine/html_attribute.h"

namespace tessaril {

/// Knows where in a page SVG and MathML stand, by the rules of the HTML standard for the construction of
/// trees as far as they change how a text is taken apart: in these two, script, style and title hold ordinary
/// text, and CDATA sections are known. The elements are followed from the first `svg` or `math` on to where
/// it ends; what is open around it is not known. An end tag that belongs to nothing inside is therefore taken
/// for the one of an HTML element around, where its name is one of HTML.
class ForeignContent {
 public:
  /// Whether the element at hand is one of SVG or MathML.
  bool IsInside() const { return !open_.empty() && open_.back().space != kHtml; }

  /// A start tag was read; all texts are views of the page. Whether it made an element of SVG or MathML.
  bool TakeStartTag(std::string_view name, const std::vector<HtmlAttribute>& attributes, bool self_closing) {
    return (!open_.empty() || IsRoot(name)) && Open(name, attributes, self_closing);
  }
  void TakeEndTag(std::string_view name) {
    if (!open_.empty()) Close(name);
  }

 private:
  enum Space : std::uint8_t { kHtml, kSvg, kMath };
  // What start tags in an element become.
  enum Holds : std::uint8_t {
    kItsOwn,
    kHtmlTags,   // HTML elements
    kTextTags,   // HTML elements but for those of MathML that stand in its texts
    kPictureTag  // of its own, but for svg
  };
  // Which end tags of HTML go no further than this element.
  enum Stops : std::uint8_t { kNone, kMinorOnes, kParagraphs, kAll };
  struct Element {
    std::string_view name;  // as written
    Space space;
    Holds holds;
    Stops stops;
  };

  static bool IsRoot(std::string_view name) {
    return (name.size() == 3 && (name[0] | 0x20) == 's') || (name.size() == 4 && (name[0] | 0x20) == 'm');
  }
  bool Open(std::string_view name, const std::vector<HtmlAttribute>& attributes, bool self_closing);
  bool OpenHtml(std::string_view name, std::string_view lower, bool self_closing);
  bool MakesHtml(std::string_view lower) const;
  void Close(std::string_view name);
  void CloseHtml(std::string_view lower);
  void LeaveForeign();
  std::size_t Lowest() const;

  std::vector<Element> open_;  // from the `svg` or `math` on
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_FOREIGN_CONTENT_H_
