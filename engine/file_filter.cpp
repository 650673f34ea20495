#include "engine/file_filter.h"

#include <algorithm>

#include "engine/ascii.h"
#include "engine/characters.h"

namespace tessaril {
namespace {

// `pattern` is in lower case. On a mismatch the last "*" takes one byte more; earlier ones need never be
// tried again. Inside a sequence nothing but "?" could match, and that takes whole characters.
bool Matches(std::string_view pattern, std::string_view name) {
  const bool by_sequence = pattern.find('?') != std::string_view::npos && IsUtf8(name);
  const auto character = [by_sequence](std::string_view rest) {
    return by_sequence ? SequenceLength(rest) : 1;
  };
  std::string_view after_star;
  std::string_view retry;
  bool star = false;
  while (!name.empty()) {
    if (!pattern.empty() && pattern.front() == '*') {
      pattern.remove_prefix(1);
      after_star = pattern;
      retry = name;
      star = true;
    } else if (!pattern.empty() && pattern.front() == '?') {
      pattern.remove_prefix(1);
      name.remove_prefix(character(name));
    } else if (!pattern.empty() && pattern.front() == ToLower(name.front())) {
      pattern.remove_prefix(1);
      name.remove_prefix(1);
    } else if (star) {
      retry.remove_prefix(character(retry));
      pattern = after_star;
      name = retry;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of('*') == std::string_view::npos;
}

}  // namespace

FileFilter::FileFilter(std::string_view text) {
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(';'), text.size());
    const std::string_view pattern = Trimmed(text.substr(0, end));
    if (!pattern.empty()) patterns_.push_back(pattern == "*.*" ? "*" : ToLower(pattern));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
}

bool FileFilter::Lists(std::string_view name) const {
  return std::any_of(patterns_.begin(), patterns_.end(),
                     [name](const std::string& pattern) { return Matches(pattern, name); });
}

bool LooksLikeHtmlFilter(std::string_view text) {
  const std::string_view start = text.substr(0, 5);
  return start == "*.htm" || start == "*.xxx" || start == "*.txt";
}

}  // namespace tessaril
