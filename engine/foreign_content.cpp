#include "engine/foreign_content.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "engine/ascii.h"

namespace tessaril {
namespace {

using Name = std::string_view;

// Browsers nest no deeper; here it bounds what an end tag without a start tag costs.
constexpr std::size_t kDeepest = 512;

// All lists are sorted.

// Start tags of HTML that end SVG and MathML where they are met.
constexpr Name kBreakouts[] = {
    "b",     "big",   "blockquote", "body",   "br",   "center", "code",  "dd", "div",  "dl",   "dt",
    "em",    "embed", "h1",         "h2",     "h3",   "h4",     "h5",    "h6", "head", "hr",   "i",
    "img",   "li",    "listing",    "menu",   "meta", "nobr",   "ol",    "p",  "pre",  "ruby", "s",
    "small", "span",  "strike",     "strong", "sub",  "sup",    "table", "tt", "u",    "ul",   "var"};

// Elements without an end tag, and those that are there already.
constexpr Name kNeverOpened[] = {"area", "base", "body",  "br",     "col",   "embed",
                                 "head", "hr",   "html",  "img",    "input", "keygen",
                                 "link", "meta", "param", "source", "track", "wbr"};

// Elements of HTML whose end tag closes all that is open in them; other end tags stop at these.
constexpr Name kSpecial[] = {
    "address", "applet", "article", "aside",   "blockquote", "button",  "caption",  "center",     "dd",
    "details", "dialog", "dir",     "div",     "dl",         "dt",      "fieldset", "figcaption", "figure",
    "footer",  "form",   "h1",      "h2",      "h3",         "h4",      "h5",       "h6",         "header",
    "hgroup",  "li",     "listing", "main",    "marquee",    "menu",    "nav",      "object",     "ol",
    "p",       "pre",    "search",  "section", "select",     "summary", "table",    "tbody",      "td",
    "tfoot",   "th",     "thead",   "tr",      "ul"};

// Other elements of HTML that stand around pictures and formulas.
constexpr Name kAround[] = {"a", "b",     "big",  "code",   "em",     "font", "i",   "label", "nobr",
                            "s", "small", "span", "strike", "strong", "sub",  "sup", "tt",    "u"};

// Start tags that end a paragraph.
constexpr Name kEndsParagraph[] = {
    "address",   "article",    "aside",  "blockquote", "center",  "details", "dialog", "dir", "div", "dl",
    "fieldset",  "figcaption", "figure", "footer",     "form",    "h1",      "h2",     "h3",  "h4",  "h5",
    "h6",        "header",     "hgroup", "hr",         "listing", "main",    "menu",   "nav", "ol",  "p",
    "plaintext", "pre",        "search", "section",    "summary", "ul",      "xmp"};

template <std::size_t size>
bool Lists(const Name (&names)[size], Name lower) {
  return std::binary_search(std::begin(names), std::end(names), lower);
}

// Elements that hold a text of their own, which other end tags do not leave.
constexpr Name kTexts[] = {"iframe", "noembed", "noframes", "noscript", "plaintext",
                           "script", "style",   "textarea", "title",    "xmp"};

bool IsMathText(Name lower) {
  constexpr Name kNames[] = {"mi", "mn", "mo", "ms", "mtext"};
  return Lists(kNames, lower);
}

bool SaysHtml(const std::vector<HtmlAttribute>& attributes) {
  for (const HtmlAttribute& attribute : attributes) {
    if (!EqualsLower(attribute.name, "encoding")) continue;
    return EqualsLower(attribute.value, "text/html") || EqualsLower(attribute.value, "application/xhtml+xml");
  }
  return false;
}

// A font that says how it looks is one of HTML.
bool IsHtmlFont(Name lower, const std::vector<HtmlAttribute>& attributes) {
  return lower == "font" && std::any_of(attributes.begin(), attributes.end(), [](const HtmlAttribute& one) {
           return EqualsLower(one.name, "color") || EqualsLower(one.name, "face") ||
                  EqualsLower(one.name, "size");
         });
}

}  // namespace

bool ForeignContent::Open(std::string_view name, const std::vector<HtmlAttribute>& attributes,
                          bool self_closing) {
  const std::string lower = ToLower(name);
  if (MakesHtml(lower)) return OpenHtml(name, lower, self_closing);
  if (Lists(kBreakouts, lower) || IsHtmlFont(lower, attributes)) {
    LeaveForeign();
    return OpenHtml(name, lower, self_closing);
  }
  if (self_closing) return true;
  const Space space = open_.back().space;
  Holds holds = kItsOwn;
  if (space == kSvg) {
    if (lower == "foreignobject" || lower == "desc" || lower == "title") holds = kHtmlTags;
  } else if (IsMathText(lower)) {
    holds = kTextTags;
  } else if (lower == "annotation-xml") {
    holds = SaysHtml(attributes) ? kHtmlTags : kPictureTag;
  }
  open_.push_back({name, space, holds, holds == kItsOwn ? kNone : kAll});
  return true;
}

// Whether a start tag is one of HTML where the page is now.
bool ForeignContent::MakesHtml(std::string_view lower) const {
  if (open_.empty()) return true;
  const Element& at_hand = open_.back();
  switch (at_hand.holds) {
    case kItsOwn:
      return at_hand.space == kHtml;
    case kHtmlTags:
      return true;
    case kTextTags:
      return lower != "mglyph" && lower != "malignmark";
    case kPictureTag:
      return lower == "svg";
  }
  return true;
}

bool ForeignContent::OpenHtml(std::string_view name, std::string_view lower, bool self_closing) {
  if (!open_.empty() && Lists(kEndsParagraph, lower)) CloseHtml("p");
  if (lower == "svg" || lower == "math") {
    if (!self_closing) open_.push_back({name, lower == "svg" ? kSvg : kMath, kItsOwn, kNone});
    return true;
  }
  if (open_.empty() || Lists(kNeverOpened, lower)) return false;
  Stops stops = Lists(kSpecial, lower) || Lists(kTexts, lower) ? kMinorOnes : kNone;
  if (lower == "button") stops = kParagraphs;
  if (lower == "object" || lower == "applet" || lower == "marquee") stops = kAll;
  open_.push_back({name, kHtml, kItsOwn, stops});
  return false;
}

// To where HTML stands again.
void ForeignContent::LeaveForeign() {
  while (IsInside() && open_.back().holds != kHtmlTags && open_.back().holds != kTextTags) open_.pop_back();
}

// The index of the last element that an end tag may close.
std::size_t ForeignContent::Lowest() const {
  return open_.size() > kDeepest ? open_.size() - kDeepest : 0;
}

void ForeignContent::Close(std::string_view name) {
  const std::string lower = ToLower(name);
  if (lower == "br" || lower == "p") LeaveForeign();
  for (std::size_t i = open_.size(); i > Lowest() && open_[i - 1].space != kHtml; --i) {
    if (!EqualsLower(open_[i - 1].name, lower)) continue;
    open_.resize(i - 1);
    return;
  }
  if (!open_.empty()) CloseHtml(lower);
}

// An end tag by the rules of HTML: to its element, but not out of an element that holds HTML.
void ForeignContent::CloseHtml(std::string_view lower) {
  const bool closes_all = Lists(kSpecial, lower);
  const Stops stopping = !closes_all ? kMinorOnes : lower == "p" ? kParagraphs : kAll;
  for (std::size_t i = open_.size(); i > Lowest(); --i) {
    const Element& element = open_[i - 1];
    if (element.space == kHtml && EqualsLower(element.name, lower)) {
      open_.resize(i - 1);
      return;
    }
    if (element.stops >= stopping) return;
  }
  if (Lowest() == 0 && lower != "p" && (closes_all || Lists(kAround, lower))) open_.clear();
}

}  // namespace tessaril
