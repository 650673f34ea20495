#include "engine/html_text.h"

namespace tessaril {
namespace {

std::string Escaped(std::string_view text, bool and_too) {
  std::string escaped;
  escaped.reserve(text.size());
  for (const char c : text) {
    if (c == '<') {
      escaped += "&lt;";
    } else if (c == '>') {
      escaped += "&gt;";
    } else if (c == '"') {
      escaped += "&quot;";
    } else if (c == '&' && and_too) {
      escaped += "&amp;";
    } else {
      escaped += c;
    }
  }
  return escaped;
}

}  // namespace

std::string EscapedPath(std::string_view path) {
  return Escaped(path, true);
}

std::string EscapedValue(std::string_view value) {
  return Escaped(value, false);
}

}  // namespace tessaril
