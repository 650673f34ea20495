#ifndef TESSARIL_TESTS_SUPPORT_PLAIN_TEXT_H_
#define TESSARIL_TESTS_SUPPORT_PLAIN_TEXT_H_

#include <cctype>
#include <string>

// Strings with positions from 1, for plain readings of the rules.

namespace tessaril {

inline std::string Mid(const std::string& text, std::size_t from, std::size_t count = std::string::npos) {
  return from > text.size() ? "" : text.substr(from - 1, count);
}

inline std::string Upper(std::string text) {
  for (char& c : text) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
  return text;
}

inline std::string Lower(std::string text) {
  for (char& c : text) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
  return text;
}

/// Position of `what` at or after `from`, 0 when there is none.
inline std::size_t InStr(std::size_t from, const std::string& text, const std::string& what) {
  if (from > text.size()) return 0;
  const std::size_t at = text.find(what, from - 1);
  return at == std::string::npos ? 0 : at + 1;
}

}  // namespace tessaril

#endif  // TESSARIL_TESTS_SUPPORT_PLAIN_TEXT_H_
