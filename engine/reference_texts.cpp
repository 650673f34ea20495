#include "engine/reference_texts.h"

#include "engine/byte_search.h"
#include "engine/html_tokenizer.h"

namespace tessaril {

std::vector<ReferenceText> FindReferenceTexts(std::string_view page, bool high_bytes) {
  std::vector<ReferenceText> texts;
  const auto is_wanted = [high_bytes](std::string_view text) {
    return (high_bytes ? FindHighByteOr('&', text) : text.find('&')) != std::string_view::npos;
  };
  if (!is_wanted(page)) return texts;
  const auto add = [&](std::size_t begin, std::size_t end, bool in_attribute) {
    if (is_wanted(page.substr(begin, end - begin))) texts.push_back({begin, end, in_attribute});
  };
  HtmlTokenizer tokens(page);
  for (auto token = tokens.Next(); token != HtmlTokenizer::Token::kEnd; token = tokens.Next()) {
    if (token == HtmlTokenizer::Token::kText) add(tokens.begin(), tokens.end(), false);
    if (token != HtmlTokenizer::Token::kStartTag) continue;
    for (const HtmlAttribute& attribute : tokens.attributes()) {
      if (attribute.value.empty()) continue;
      const std::size_t begin = tokens.PositionOf(attribute.value);
      add(begin, begin + attribute.value.size(), true);
    }
  }
  return texts;
}

}  // namespace tessaril
