#include "engine/characters.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace tessaril {
namespace {

// Windows-1252, codes 128 to 159. The five codes that it leaves unused are 81, 8D, 8F, 90 and 9D.
constexpr std::array<char16_t, 32> kWindows1252 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

unsigned char Code(char c) {
  return static_cast<unsigned char>(c);
}

}  // namespace

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
  const char32_t code = CodePoint(bytes.substr(0, length));
  if (length == 3 && code < 0x800) return 0;
  if (length == 4 && code < 0x10000) return 0;
  return IsCharacter(code) ? length : 0;
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

char32_t CodePoint(std::string_view sequence) {
  if (sequence.size() == 1) return Code(sequence[0]);
  char32_t code = Code(sequence[0]) & (0x7FU >> sequence.size());
  for (const char c : sequence.substr(1)) code = code << 6 | (Code(c) & 0x3FU);
  return code;
}

char32_t TakeCharacter(std::string_view& text) {
  const std::size_t length = std::max<std::size_t>(SequenceLength(text), 1);
  const char32_t code = CodePoint(text.substr(0, length));
  text.remove_prefix(length);
  return code;
}

void AppendUtf8(char32_t code, std::string& out) {
  if (code < 0x80) {
    out += static_cast<char>(code);
    return;
  }
  const char32_t rest = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;  // bytes behind the first
  const auto lead = static_cast<unsigned char>(0xFF00U >> (rest + 1));
  out += static_cast<char>(lead | static_cast<unsigned char>(code >> (6 * rest)));
  for (char32_t left = rest; left > 0; --left) {
    out += static_cast<char>(0x80 | static_cast<unsigned char>(code >> (6 * (left - 1)) & 0x3F));
  }
}

std::optional<char> EightBitCode(char32_t code) {
  if (code < 0x80 || (code >= 0xA0 && code <= 0xFF)) return static_cast<char>(code);
  const auto* const found = std::find(kWindows1252.begin(), kWindows1252.end(), code);
  if (found == kWindows1252.end()) return std::nullopt;
  return static_cast<char>(0x80 + (found - kWindows1252.begin()));
}

char32_t EightBitCharacter(char c) {
  const unsigned char code = Code(c);
  return code >= 0x80 && code < 0xA0 ? kWindows1252[code - 0x80U] : char32_t{code};
}

}  // namespace tessaril
