#ifndef TESSARIL_ENGINE_ASCII_H_
#define TESSARIL_ENGINE_ASCII_H_

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

// Letter case folds A to Z only, everywhere in the program; every other byte stands for itself. A blank is
// the space, and nothing else.

namespace tessaril {

/// The line end of all texts that the program makes itself.
inline constexpr std::string_view CrLf = "\r\n";

/// Without the blanks at both ends.
constexpr std::string_view Trimmed(std::string_view text) {
  const std::size_t begin = std::min(text.find_first_not_of(' '), text.size());
  return text.substr(begin, text.find_last_not_of(' ') + 1 - begin);
}

constexpr bool IsAsciiLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

constexpr char ToLower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

inline std::string ToLower(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) c = ToLower(c);
  return lower;
}

constexpr bool HasUpperCase(std::string_view text) {
  for (const char c : text) {
    if (ToLower(c) != c) return true;
  }
  return false;
}

/// Whether `text` in lower case is `lower`. Looks at many bytes before it decides, so that long texts are
/// compared fast.
constexpr bool EqualsLower(std::string_view text, std::string_view lower) {
  constexpr std::size_t kAtOnce = 256;
  if (text.size() != lower.size()) return false;
  for (std::size_t begin = 0; begin < text.size(); begin += kAtOnce) {
    const std::size_t end = begin + std::min(kAtOnce, text.size() - begin);
    unsigned char different = 0;
    for (std::size_t i = begin; i < end; ++i) {
      different = static_cast<unsigned char>(different | (ToLower(text[i]) ^ lower[i]));
    }
    if (different != 0) return false;
  }
  return true;
}

/// The value of a hexadecimal digit, 0 to 15; -1 for any other byte.
constexpr int HexadecimalDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  const char lower = ToLower(c);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

constexpr char ToUpper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c;
}

inline std::string ToUpper(std::string_view text) {
  std::string upper(text);
  for (char& c : upper) c = ToUpper(c);
  return upper;
}

constexpr bool IsAscii(std::string_view text) {
  unsigned char all = 0;
  for (const char c : text) all = static_cast<unsigned char>(all | static_cast<unsigned char>(c));
  return all < 0x80;
}

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_ASCII_H_
