#ifndef TESSARIL_TESTS_SUPPORT_PLAIN_TOKENIZER_H_
#define TESSARIL_TESTS_SUPPORT_PLAIN_TOKENIZER_H_

#include <cstddef>
#include <string>
#include <vector>

#include "engine/html_tokenizer.h"

// The standards for HTML, XML's own sections and CSS read plainly, state by state and byte by byte, with no
// thought of speed: what the engine's readers of pages and style sheets are held against.

namespace tessaril {

struct PlainToken {
  HtmlTokenizer::Token kind{};
  std::size_t begin = 0, end = 0;
  std::string name;
  std::vector<std::string> attributes;  // name, "=" and the value in its quotes, as written
  bool self_closing = false;
  bool operator==(const PlainToken&) const = default;
};

/// The tokens of an HTML text (scripting off), with the trees that decide what a text is; of texts that
/// follow one another one. Of trees it knows enough for pages without tables, select, framesets, template and
/// formatting elements.
std::vector<PlainToken> PlainHtmlTokens(const std::string& text, bool is_xml);

/// What the engine's reader makes of a text, in the same form.
std::vector<PlainToken> TokensOf(const std::string& text, HtmlTokenizer::Syntax syntax);

/// "<a {href='x'} />", "</a>", "!<!-- a comment -->", and texts: "a & b" and, when references do not count,
/// "=a & b"; parted by " | ".
std::string ShownTokens(const std::string& text, const std::vector<PlainToken>& tokens);

/// The links of a style sheet.
std::vector<std::string> PlainCssLinks(const std::string& css);

}  // namespace tessaril

#endif  // TESSARIL_TESTS_SUPPORT_PLAIN_TOKENIZER_H_
