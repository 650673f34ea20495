#include "engine/foreign_content.h"

#include <algorithm>
#include <array>
#include <string>

#include "engine/ascii.h"

namespace tessaril {
namespace {

// Start tags of HTML that end SVG and MathML where they are met, sorted.
constexpr std::array<std::string_view, 44> kBreakouts = {
    "b",     "big",   "blockquote", "body",   "br",   "center", "code",  "dd", "div",  "dl",   "dt",
    "em",    "embed", "h1",         "h2",     "h3",   "h4",     "h5",    "h6", "head", "hr",   "i",
    "img",   "li",    "listing",    "menu",   "meta", "nobr",   "ol",    "p",  "pre",  "ruby", "s",
    "small", "span",  "strike",     "strong", "sub",  "sup",    "table", "tt", "u",    "ul",   "var"};

// Elements of SVG and MathML in which HTML stands again.
bool HoldsHtml(std::string_view lower_name) {
  constexpr std::string_view kNames[] = {"foreignobject", "desc",          "title", "mi", "mo", "mn", "ms",
                                         "mtext",         "annotation-xml"};
  return std::find(std::begin(kNames), std::end(kNames), lower_name) != std::end(kNames);
}

}  // namespace

void ForeignContent::Open(std::string_view name, bool self_closing) {
  const std::string lower = ToLower(name);
  if (IsInside() && std::binary_search(kBreakouts.begin(), kBreakouts.end(), lower)) {
    while (IsInside()) open_.pop_back();
    return;
  }
  if (self_closing) return;
  if (lower == "svg") {
    open_.push_back(kSvg);
  } else if (lower == "math") {
    open_.push_back(kMath);
  } else if (IsInside() && HoldsHtml(lower)) {
    open_.push_back(kHtmlInside);
  }
}

void ForeignContent::Close(std::string_view name) {
  const std::string lower = ToLower(name);
  const Kind kind = lower == "svg" ? kSvg : lower == "math" ? kMath : kHtmlInside;
  if (kind == kHtmlInside && !HoldsHtml(lower)) return;
  const auto last = std::find(open_.rbegin(), open_.rend(), kind);
  if (last != open_.rend()) open_.erase(last.base() - 1, open_.end());
}

}  // namespace tessaril
