// Pages and style sheets taken apart, held against the plain reading.
// Input: a byte that chooses, the text.
//
// The plain reading knows no tables, templates and formatting elements: pages that hold one where it would
// matter, beside SVG or MathML, are not compared.

#include "engine/css_links.h"
#include "fuzz/input.h"
#include "tests/support/plain_text.h"
#include "tests/support/plain_tokenizer.h"

namespace tessaril {
namespace {

bool HasForeign(const std::string& text) {
  const std::string lower = Lower(text);
  return lower.find("<svg") != std::string::npos || lower.find("<math") != std::string::npos;
}

bool IsKnown(const std::string& text) {
  static const std::string known =
      " svg math foreignobject desc title mi mtext g script style textarea p div br annotation-xml mglyph ";
  static const std::string known_starts = " font path ";
  for (const PlainToken& token : PlainHtmlTokens(text, false)) {
    const std::string name = " " + Lower(token.name) + " ";
    const bool is_start = token.kind == HtmlTokenizer::Token::kStartTag;
    if (!token.name.empty() && known.find(name) == std::string::npos &&
        !(is_start && known_starts.find(name) != std::string::npos))
      return false;
  }
  return true;
}

// Neither reader keeps account of what is open around SVG: whatever "</div>" closes is there.
std::string WithinDivs(const std::string& text) {
  std::string divs = "<div>";
  for (std::size_t at = text.find("</"); at != std::string::npos; at = text.find("</", at + 1))
    divs += "<div>";
  return divs + text;
}

void CompareTokens(const std::string& text, bool is_xml) {
  const auto syntax = is_xml ? HtmlTokenizer::Syntax::kXml : HtmlTokenizer::Syntax::kHtml;
  const auto plain = PlainHtmlTokens(text, is_xml);
  const auto tokens = TokensOf(text, syntax);
  if (tokens != plain) RequireEqual(ShownTokens(text, tokens), ShownTokens(text, plain), "the tokens");
  Require(tokens == plain, "the places of the tokens");
}

void CompareCss(const std::string& text) {
  std::vector<std::string_view> found;
  FindCssLinks(text, found);
  std::string links;
  std::string plain;
  for (const std::string_view link : found) links.append(link).append("|");
  for (const std::string& link : PlainCssLinks(text)) plain.append(link).append("|");
  RequireEqual(links, plain, "the links of a style sheet");
  for (const std::string_view link : found) (void)ResolveCssEscapes(link);
}

}  // namespace
}  // namespace tessaril

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tessaril;
  Input input(data, size);
  const std::size_t kind = input.Below(3);
  const std::string text = input.Rest();
  if (kind == 2) {
    CompareCss(text);
  } else if (kind == 1 || !HasForeign(text)) {
    CompareTokens(text, kind == 1);
  } else if (IsKnown(WithinDivs(text))) {
    CompareTokens(WithinDivs(text), false);
  }
  return 0;
}
