#include "engine/declared_encoding.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>

#include "engine/ascii.h"
#include "engine/characters.h"
#include "engine/html_tokenizer.h"

namespace tessaril {
namespace {

constexpr std::size_t kWhere = 1024;
constexpr std::string_view kBlanks = " \t\n\f\r";

std::string_view WithoutBlanks(std::string_view text) {
  const std::size_t begin = std::min(text.find_first_not_of(kBlanks), text.size());
  return text.substr(begin, text.find_last_not_of(kBlanks) + 1 - begin);
}

// Names of UTF-8, and of UTF-16, for which browsers take UTF-8 where a page bears it in its own text.
bool MeansUtf8(std::string_view name) {
  constexpr std::array<std::string_view, 9> kNames = {"utf-8",         "utf8",          "unicode-1-1-utf-8",
                                                      "unicode11utf8", "unicode20utf8", "x-unicode20utf8",
                                                      "utf-16",        "utf-16le",      "utf-16be"};
  const std::string lower = ToLower(WithoutBlanks(name));
  return std::find(kNames.begin(), kNames.end(), lower) != kNames.end();
}

// The value in `text` of `key`, "=" and a name with quotes or without; empty when there is none.
std::string_view NameBehind(std::string_view key, std::string_view text) {
  const std::string lower = ToLower(text);
  for (std::size_t at = lower.find(key); at != std::string::npos; at = lower.find(key, at + 1)) {
    std::string_view rest = WithoutBlanks(text.substr(at + key.size()));
    if (!rest.starts_with('=')) continue;
    rest = WithoutBlanks(rest.substr(1));
    if (rest.empty()) return {};
    if (rest[0] != '"' && rest[0] != '\'') return rest.substr(0, rest.find_first_of(" \t\n\f\r;"));
    const std::size_t end = rest.find(rest[0], 1);
    return end == std::string_view::npos ? std::string_view() : rest.substr(1, end - 1);
  }
  return {};
}

// The name of the encoding in a `meta` element; empty when it bears none.
std::string_view EncodingOf(const HtmlTokenizer& meta) {
  std::string_view content;
  bool is_content_type = false;
  for (const HtmlAttribute& attribute : meta.attributes()) {
    if (EqualsLower(attribute.name, "charset")) return attribute.value;
    if (EqualsLower(attribute.name, "content")) content = attribute.value;
    if (EqualsLower(attribute.name, "http-equiv")) {
      is_content_type = EqualsLower(attribute.value, "content-type");
    }
  }
  return is_content_type ? NameBehind("charset", content) : std::string_view();
}

}  // namespace

bool DeclaresUtf8(std::string_view page) {
  if (page.starts_with(kByteOrderMark)) return true;
  const std::string_view head = page.substr(0, kWhere);
  HtmlTokenizer tokens(head);
  for (auto token = tokens.Next(); token != HtmlTokenizer::Token::kEnd; token = tokens.Next()) {
    if (token != HtmlTokenizer::Token::kStartTag || !EqualsLower(tokens.name(), "meta")) continue;
    if (const std::string_view name = EncodingOf(tokens); !name.empty()) return MeansUtf8(name);
  }
  if (!head.starts_with("<?xml")) return false;
  return MeansUtf8(NameBehind("encoding", head.substr(0, head.find('>'))));
}

}  // namespace tessaril
