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

// What a browser takes a name for. Of UTF-16 it takes UTF-8 where a page bears it in its own text.
DeclaredEncoding Meaning(std::string_view name) {
  constexpr std::array<std::string_view, 9> kUtf8 = {"utf-8",         "utf8",          "unicode-1-1-utf-8",
                                                     "unicode11utf8", "unicode20utf8", "x-unicode20utf8",
                                                     "utf-16",        "utf-16le",      "utf-16be"};
  constexpr std::array<std::string_view, 17> kWindows1252 = {
      "ansi_x3.4-1968", "ascii",        "cp1252",   "cp819",      "csisolatin1",     "ibm819", "iso-8859-1",
      "iso-ir-100",     "iso8859-1",    "iso88591", "iso_8859-1", "iso_8859-1:1987", "l1",     "latin1",
      "us-ascii",       "windows-1252", "x-cp1252"};
  const std::string lower = ToLower(WithoutBlanks(name));
  const auto is_one_of = [&lower](const auto& names) {
    return std::find(names.begin(), names.end(), lower) != names.end();
  };
  if (is_one_of(kUtf8)) return DeclaredEncoding::kUtf8;
  if (is_one_of(kWindows1252)) return DeclaredEncoding::kEightBit;
  return lower.empty() ? DeclaredEncoding::kNone : DeclaredEncoding::kOther;
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

DeclaredEncoding DeclaredEncodingOf(std::string_view page) {
  if (page.starts_with(kByteOrderMark)) return DeclaredEncoding::kUtf8;
  const std::string_view head = page.substr(0, kWhere);
  HtmlTokenizer tokens(head);
  for (auto token = tokens.Next(); token != HtmlTokenizer::Token::kEnd; token = tokens.Next()) {
    if (token != HtmlTokenizer::Token::kStartTag || !EqualsLower(tokens.name(), "meta")) continue;
    if (const std::string_view name = EncodingOf(tokens); !name.empty()) return Meaning(name);
  }
  if (!head.starts_with("<?xml")) return DeclaredEncoding::kNone;
  return Meaning(NameBehind("encoding", head.substr(0, head.find('>'))));
}

}  // namespace tessaril
