// Filter patterns for file names, and those of the site's rules, held against plain readings.
// Input: the patterns, a name.

#include "engine/file_filter.h"

#include <vector>

#include "engine/ascii.h"
#include "engine/characters.h"
#include "engine/page_encoding.h"
#include "engine/site_patterns.h"
#include "fuzz/input.h"

namespace tessaril {
namespace {

using Characters = std::vector<std::string>;

// Sequences where all is UTF-8, else bytes.
Characters CharactersOf(const std::string& text) {
  Characters characters;
  const bool is_utf8 = IsUtf8(text);
  for (const char c : text) {
    if (is_utf8 && IsContinuation(c)) {
      characters.back() += c;
    } else {
      characters.emplace_back(1, c);
    }
  }
  return characters;
}

// Whether each beginning of the name fits the pattern, pattern character by pattern character.
bool PlainlyMatches(const Characters& pattern, const Characters& name) {
  std::vector<char> fits(name.size() + 1, 0);
  fits[0] = 1;
  for (const std::string& p : pattern) {
    std::vector<char> next(name.size() + 1, 0);
    for (std::size_t i = 0; i <= name.size(); ++i) {
      if (fits[i] == 0) continue;
      if (p == "*") std::fill(next.begin() + static_cast<std::ptrdiff_t>(i), next.end(), 1);
      if (p != "*" && i < name.size() && (p == "?" || p == name[i])) next[i + 1] = 1;
    }
    fits = next;
  }
  return fits.back() != 0;
}

bool PlainlyLists(std::string patterns, const std::string& name) {
  const Characters characters = CharactersOf(ToLower(name));
  for (patterns += ';'; !patterns.empty(); patterns.erase(0, patterns.find(';') + 1)) {
    const std::string pattern(Trimmed(patterns.substr(0, patterns.find(';'))));
    if (pattern.empty()) continue;
    if (pattern == "*.*" || PlainlyMatches(CharactersOf(ToLower(pattern)), characters)) return true;
  }
  return false;
}

// Valid sequences, and bytes between them.
Characters SequencesOf(const std::string& text) {
  Characters characters;
  for (std::size_t at = 0; at < text.size(); at += characters.back().size())
    characters.push_back(
        text.substr(at, std::max<std::size_t>(SequenceLength(std::string_view(text).substr(at)), 1)));
  return characters;
}

// A pattern of the site's rules against a path, in the same way: "**" for any run, "**/" where a name begins
// for any run of whole folders, also none.
bool PlainlyMatchesPath(std::string pattern, const std::string& path) {
  if (pattern.starts_with('/')) pattern.erase(0, 1);
  if (pattern.ends_with('/')) pattern += "**";
  if (pattern.empty()) return false;
  const Characters name = SequencesOf(path);
  std::vector<char> fits(name.size() + 1, 0);
  fits[0] = 1;
  const Characters characters = SequencesOf(pattern);
  for (std::size_t at = 0; at < characters.size(); ++at) {
    const bool stars = characters[at] == "*" && at + 1 < characters.size() && characters[at + 1] == "*";
    const bool folders = stars && (at == 0 || characters[at - 1] == "/") && at + 2 < characters.size() &&
                         characters[at + 2] == "/";
    std::vector<char> next(name.size() + 1, 0);
    for (std::size_t i = 0; i <= name.size(); ++i) {
      if (fits[i] == 0) continue;
      if (characters[at] == "*") {
        next[i] = 1;
        for (std::size_t j = i; j < name.size() && (stars || name[j] != "/"); ++j)
          if (!folders || name[j] == "/") next[j + 1] = 1;
      } else if (i < name.size() &&
                 (characters[at] == name[i] || (characters[at] == "?" && name[i] != "/"))) {
        next[i + 1] = 1;
      }
    }
    fits = next;
    at += folders ? 2 : stars ? 1 : 0;
  }
  return fits.back() != 0;
}

void CheckPathPattern(const std::string& pattern, const std::string& path) {
  const SitePatterns patterns({pattern});
  const bool names_only = pattern.find('/') == std::string::npos && pattern.find("**") == std::string::npos;
  const std::string name = names_only ? path.substr(path.rfind('/') + 1) : path;
  Require(patterns.Match(path) == PlainlyMatchesPath(pattern, name),
          "whether " + Readable(pattern) + " matches " + Readable(path));
}

}  // namespace
}  // namespace tessaril

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tessaril;
  Input input(data, size);
  const std::string patterns = EnteredText(input.Field());
  const std::string name = input.Rest();
  (void)LooksLikeHtmlFilter(patterns);
  CheckPathPattern(patterns, name);
  // A name that is not UTF-8 is compared byte by byte, also with what is.
  if (!IsUtf8(name) && !IsAscii(patterns)) {
    (void)FileFilter(patterns).Lists(name);
    return 0;
  }
  Require(FileFilter(patterns).Lists(name) == PlainlyLists(patterns, name),
          "whether " + Readable(patterns) + " lists " + Readable(name));
  return 0;
}
