#include "engine/site_patterns.h"

#include <algorithm>

#include "engine/characters.h"

namespace tessaril {
namespace {

// Goes through pattern and path once for each "*" or "**" at most: a mismatch gives the last "*" one byte
// more, where it must not take any, the last "**". "**/" also stands for nothing.
bool Matches(std::string_view pattern, std::string_view path) {
  constexpr std::size_t kNone = std::string_view::npos;
  std::size_t at = 0;
  std::size_t pos = 0;
  std::size_t star = kNone;  // behind the last "*" of a name, and what it has taken up to
  std::size_t star_pos = 0;
  std::size_t stars = kNone;  // the same for the last "**"
  std::size_t stars_pos = 0;
  while (pos < path.size() || at < pattern.size()) {
    if (pattern.substr(at, 2) == "**") {
      const bool begins_name = at == 0 || pattern[at - 1] == '/';
      at += begins_name && pattern.substr(at, 3) == "**/" ? 3 : 2;
      stars = at;
      stars_pos = pos;
      star = kNone;
      continue;
    }
    if (at < pattern.size() && pattern[at] == '*') {
      star = ++at;
      star_pos = pos;
      continue;
    }
    if (pos < path.size() && at < pattern.size()) {
      const bool any = pattern[at] == '?' && path[pos] != '/';
      if (any || pattern[at] == path[pos]) {
        pos += any ? std::max<std::size_t>(SequenceLength(path.substr(pos)), 1) : 1;
        ++at;
        continue;
      }
    }
    if (star != kNone && star_pos < path.size() && path[star_pos] != '/') {
      pos = ++star_pos;
      at = star;
    } else if (stars != kNone && stars_pos < path.size()) {
      // Behind "**/" a name begins.
      const bool whole_names = pattern[stars - 1] == '/';
      do {
        ++stars_pos;
      } while (whole_names && stars_pos < path.size() && path[stars_pos - 1] != '/');
      if (whole_names && path[stars_pos - 1] != '/') return false;
      pos = stars_pos;
      at = stars;
      star = kNone;
    } else {
      return false;
    }
  }
  return true;
}

}  // namespace

SitePatterns::SitePatterns(const std::vector<std::string>& patterns) {
  for (std::string text : patterns) {
    const bool names_only = text.find('/') == std::string::npos && text.find("**") == std::string::npos;
    if (text.starts_with('/')) text.erase(0, 1);
    if (text.ends_with('/')) text += "**";
    if (!text.empty()) patterns_.push_back({std::move(text), names_only});
  }
}

bool SitePatterns::Match(std::string_view path) const {
  const std::string_view name = path.substr(path.rfind('/') + 1);
  return std::any_of(patterns_.begin(), patterns_.end(), [&](const Pattern& pattern) {
    return Matches(pattern.text, pattern.names_only ? name : path);
  });
}

bool SitePatterns::MatchText(std::string_view text) const {
  if (text.starts_with('/')) text.remove_prefix(1);
  return std::any_of(patterns_.begin(), patterns_.end(),
                     [text](const Pattern& pattern) { return Matches(pattern.text, text); });
}

}  // namespace tessaril
