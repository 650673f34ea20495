#include "engine/page_encoding.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "engine/ascii.h"

namespace tessaril {
namespace {

// Windows-1252, codes 128 to 159. The five codes that it leaves unused (81, 8D, 8F, 90, 9D) stand for
// themselves.
constexpr std::array<char16_t, 32> kWindows1252 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

unsigned char Code(char c) {
  return static_cast<unsigned char>(c);
}

bool IsContinuation(char c) {
  return (Code(c) & 0xC0) == 0x80;
}

// How many bytes at the start are ASCII.
std::size_t AsciiPrefix(std::string_view bytes) {
  constexpr std::size_t kBlock = 64;
  std::size_t done = 0;
  for (; done + kBlock <= bytes.size(); done += kBlock) {
    std::array<std::uint64_t, kBlock / 8> words;
    std::memcpy(words.data(), bytes.data() + done, kBlock);
    std::uint64_t all = 0;
    for (const std::uint64_t word : words) all |= word;
    if ((all & 0x8080808080808080U) != 0) break;
  }
  while (done < bytes.size() && Code(bytes[done]) < 0x80) ++done;
  return done;
}

// The code point of the valid sequence of `length` bytes at the start of `bytes`.
char32_t Decode(std::string_view bytes, std::size_t length) {
  if (length == 1) return Code(bytes[0]);
  char32_t code = Code(bytes[0]) & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) code = code << 6 | (Code(bytes[i]) & 0x3FU);
  return code;
}

void AppendUtf8(char32_t code, std::string& out) {
  const auto put = [&out](char32_t byte) { out += static_cast<char>(static_cast<unsigned char>(byte)); };
  if (code < 0x80) {
    put(code);
  } else if (code < 0x800) {
    put(0xC0 | code >> 6);
    put(0x80 | (code & 0x3F));
  } else {
    put(0xE0 | code >> 12);
    put(0x80 | (code >> 6 & 0x3F));
    put(0x80 | (code & 0x3F));
  }
}

std::optional<char> EightBitCode(char32_t code) {
  if (code < 0x80 || (code >= 0xA0 && code <= 0xFF)) return static_cast<char>(code);
  const auto* const found = std::find(kWindows1252.begin(), kWindows1252.end(), code);
  if (found == kWindows1252.end()) return std::nullopt;
  return static_cast<char>(0x80 + (found - kWindows1252.begin()));
}

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

std::size_t SequenceLength(std::string_view bytes) {
  if (bytes.empty()) return 0;
  const unsigned char lead = Code(bytes[0]);
  if (lead < 0x80) return 1;
  std::size_t length = 0;
  if (lead >= 0xC2 && lead <= 0xDF) length = 2;
  if (lead >= 0xE0 && lead <= 0xEF) length = 3;
  if (lead >= 0xF0 && lead <= 0xF4) length = 4;
  if (length == 0 || bytes.size() < length) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if (!IsContinuation(bytes[i])) return 0;
  }
  const char32_t code = Decode(bytes, length);
  if (length == 3 && (code < 0x800 || (code >= 0xD800 && code <= 0xDFFF))) return 0;
  if (length == 4 && (code < 0x10000 || code > 0x10FFFF)) return 0;
  return length;
}

bool IsUtf8(std::string_view bytes) {
  for (std::size_t done = AsciiPrefix(bytes); done < bytes.size();) {
    const std::size_t length = SequenceLength(bytes.substr(done));
    if (length == 0) return false;
    done += length;
    if (length == 1) done += AsciiPrefix(bytes.substr(done));
  }
  return true;
}

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
  for (const char c : bytes) {
    const unsigned char code = Code(c);
    AppendUtf8(code >= 0x80 && code < 0xA0 ? kWindows1252[code - 0x80U] : char32_t{code}, text);
  }
  return text;
}

std::string EnteredText(std::string_view bytes) {
  return IsUtf8(bytes) ? std::string(bytes) : EightBitToUtf8(bytes);
}

std::optional<std::string> SoughtBytes(std::string_view text, PageEncoding encoding) {
  if (encoding == PageEncoding::kUtf8 || IsAscii(text)) return std::string(text);
  std::string bytes;
  while (!text.empty()) {
    const std::size_t length = std::max<std::size_t>(SequenceLength(text), 1);
    const std::optional<char> code = EightBitCode(Decode(text, length));
    if (!code) return std::nullopt;
    bytes += *code;
    text.remove_prefix(length);
  }
  return bytes;
}

std::string WrittenBytes(std::string_view text, PageEncoding encoding) {
  if (encoding == PageEncoding::kUtf8 || IsAscii(text)) return std::string(text);
  std::string bytes;
  while (!text.empty()) {
    const std::size_t length = std::max<std::size_t>(SequenceLength(text), 1);
    const char32_t character = Decode(text, length);
    if (const std::optional<char> code = EightBitCode(character)) {
      bytes += *code;
    } else {
      bytes += "&#" + std::to_string(static_cast<std::uint32_t>(character)) + ";";
    }
    text.remove_prefix(length);
  }
  return bytes;
}

}  // namespace tessaril
