#include "engine/page_encoding.h"

#include <algorithm>
#include <cstring>

#include "engine/ascii.h"
#include "engine/characters.h"

namespace tessaril {
namespace {

// "charset", "=" with blanks around it, a quote or none, "utf-8" and nothing that makes it another name.
bool SaysUtf8(std::string_view bytes) {
  constexpr std::size_t kWhere = 1024;
  const std::string head = ToLower(bytes.substr(0, kWhere));
  const auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
  for (std::size_t at = head.find("charset"); at != std::string::npos; at = head.find("charset", at + 1)) {
    std::size_t p = at + std::strlen("charset");
    while (p < head.size() && blank(head[p])) ++p;
    if (p >= head.size() || head[p] != '=') continue;
    ++p;
    while (p < head.size() && blank(head[p])) ++p;
    if (p < head.size() && (head[p] == '"' || head[p] == '\'')) ++p;
    if (head.compare(p, 5, "utf-8") != 0) continue;
    p += 5;
    const char next = p < bytes.size() ? bytes[p] : '\0';
    if (!IsAsciiLetter(next) && !(next >= '0' && next <= '9') && next != '-' && next != '_') return true;
  }
  return false;
}

}  // namespace

PageEncoding DetectEncoding(std::string_view bytes) {
  const std::size_t ascii = AsciiPrefix(bytes);
  const bool utf8 = ascii == bytes.size() ? SaysUtf8(bytes) : IsUtf8(bytes.substr(ascii));
  return utf8 ? PageEncoding::kUtf8 : PageEncoding::kEightBit;
}

std::size_t CountCharacters(std::string_view text) {
  if (!IsUtf8(text)) return text.size();
  return static_cast<std::size_t>(
      std::count_if(text.begin(), text.end(), [](char c) { return !IsContinuation(c); }));
}

std::string_view LastCharacters(std::string_view text, std::size_t count) {
  const bool utf8 = IsUtf8(text);
  std::size_t begin = text.size();
  while (begin > 0 && count > 0) {
    --begin;
    if (!utf8 || !IsContinuation(text[begin])) --count;
  }
  return text.substr(begin);
}

std::string EightBitToUtf8(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size());
  for (const char c : bytes) AppendUtf8(EightBitCharacter(c), text);
  return text;
}

std::string EnteredText(std::string_view bytes) {
  return IsUtf8(bytes) ? std::string(bytes) : EightBitToUtf8(bytes);
}

std::optional<std::string> SoughtBytes(std::string_view text, PageEncoding encoding) {
  if (encoding == PageEncoding::kUtf8 || IsAscii(text)) return std::string(text);
  std::string bytes;
  while (!text.empty()) {
    const std::optional<char> code = EightBitCode(TakeCharacter(text));
    if (!code) return std::nullopt;
    bytes += *code;
  }
  return bytes;
}

std::string WrittenBytes(std::string_view text, PageEncoding encoding) {
  if (encoding == PageEncoding::kUtf8 || IsAscii(text)) return std::string(text);
  std::string bytes;
  while (!text.empty()) {
    const char32_t character = TakeCharacter(text);
    if (const std::optional<char> code = EightBitCode(character)) {
      bytes += *code;
    } else {
      bytes += "&#" + std::to_string(static_cast<std::uint32_t>(character)) + ";";
    }
  }
  return bytes;
}

}  // namespace tessaril
