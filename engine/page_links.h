#ifndef TESSARIL_ENGINE_PAGE_LINKS_H_
#define TESSARIL_ENGINE_PAGE_LINKS_H_

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// What a page says of other files and of itself: its links, anchors and base, as a browser finds them.

namespace tessaril {

/// As what a file of a site is read, by its name.
enum class PageForm {
  kNone,  // not at all: a picture, a script, an archive ...
  kHtml,
  kXml,  // XHTML and SVG
  kCss
};

/// The form of a file that is a page or style sheet by its extension; kNone for every other.
PageForm FormOfName(std::string_view name);

/// The same for a file that the user wants to have checked: what has no extension that speaks against it is
/// taken for a page.
PageForm FormOfListed(std::string_view name);

/// How the bytes of a link or anchor stand for its text.
enum class Spelling {
  kAttribute,    // with character references
  kCss,          // with escapes of CSS
  kCssAttribute  // with both
};

struct PageLink {
  std::string_view value;  // as it stands in the page, without blanks around it
  Spelling spelling = Spelling::kAttribute;
  bool is_map = false;  // names a `map` of the page, not an address
};

struct PageAnchor {
  std::string_view value;     // as it stands in the page
  bool is_map = false;        // the name of a `map`: only a link that names maps leads there
  bool counts_twice = false;  // a second one of that name is a fault
};

/// All of one page, in its order. The views are of the page's text.
struct PageLinks {
  std::vector<PageLink> links;
  std::vector<PageAnchor> anchors;
  std::optional<std::string_view> base;  // the address that links are relative to, as it stands in the page

  void Clear() {
    links.clear();
    anchors.clear();
    base.reset();
  }
};

/// Fills `found` anew. The form must not be kNone.
void FindPageLinks(std::string_view text, PageForm form, PageLinks& found);

/// The text of a link or anchor: references and escapes resolved. Plain ones, which most are, come back as
/// they are; for the others `memory` is used. Bytes above 127 stay as they are.
std::string_view ResolveSpelling(std::string_view value, Spelling spelling, std::string& memory);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_PAGE_LINKS_H_
