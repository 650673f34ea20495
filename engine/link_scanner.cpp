#include "engine/link_scanner.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>

#include "engine/ascii.h"
#include "engine/byte_search.h"
#include "engine/find_chain.h"

namespace tessaril {
namespace {

constexpr std::size_t kLongestScheme = 7;  // bytes, ":" included
constexpr std::size_t kQuoteWithin = 10;   // bytes behind the separator

struct Keyword {
  std::string_view word;  // in lower case
  char separator;         // what follows it, with few bytes between
};
constexpr std::array<Keyword, 6> kKeywords = {{{"href", '='},
                                               {"src", '='},
                                               {"url", '='},
                                               {"window.open", '('},
                                               {".location", '='},
                                               {"background", '='}}};

// For each byte the keywords that have it at a place counted from their end, a bit for each keyword.
using KeywordBits = std::array<std::uint8_t, 256>;
constexpr KeywordBits KeywordsWith(std::size_t from_end) {
  KeywordBits result{};
  for (std::size_t i = 0; i < kKeywords.size(); ++i) {
    const std::string_view word = kKeywords[i].word;
    const char c = word[word.size() - from_end];
    for (const char either_case : {c, ToUpper(c)}) {
      auto& bits = result[static_cast<unsigned char>(either_case)];
      bits = static_cast<std::uint8_t>(bits | 1U << i);
    }
  }
  return result;
}
constexpr KeywordBits kLastByte = KeywordsWith(1);
constexpr KeywordBits kLastByteButOne = KeywordsWith(2);

// The keywords whose last two bytes are the ones in front of `end`, which is at least 2.
inline unsigned CandidatesBefore(std::size_t end, std::string_view text) {
  return kLastByte[static_cast<unsigned char>(text[end - 1])] &
         kLastByteButOne[static_cast<unsigned char>(text[end - 2])];
}

constexpr bool IsQuote(char c) {
  return c == '\'' || c == '"';
}

// With a delimiter behind the separator the value stands in quotes.
constexpr bool IsOpeningDelimiter(char c) {
  return c == ' ' || c == '\r' || c == '\n' || IsQuote(c);
}

constexpr bool EndsUnquoted(char c) {
  return c == ' ' || c == '\r' || c == '\n' || c == '>';
}

// The first place at or after `start` whose byte `accepts` takes.
template <typename Accepts>
std::size_t FindFirstOf(std::size_t start, std::string_view text, Accepts accepts) {
  if (start >= text.size()) return std::string_view::npos;
  const auto found = std::find_if(text.begin() + static_cast<std::ptrdiff_t>(start), text.end(), accepts);
  return found == text.end() ? std::string_view::npos : static_cast<std::size_t>(found - text.begin());
}

}  // namespace

bool Link::IsExternal() const {
  if (scheme.empty() || scheme.back() != ':') return false;
  constexpr std::string_view kExternal[] = {
      "http:", "ftp:", "gopher:", "https:", "shttp:", "telnet:", "wais:", "nntp:"};
  return std::any_of(std::begin(kExternal), std::end(kExternal),
                     [this](std::string_view name) { return HasScheme(name); });
}

LinkScanner::Pass LinkScanner::Next(std::string_view text, Link& link) {
  const std::size_t separator = FindSeparator(text);
  if (separator == kNone) return Pass::kEnd;
  const std::size_t begin = separator + 1;
  char quote = '\0';
  link.start = begin;
  if (begin < text.size() && IsOpeningDelimiter(text[begin])) {
    const std::size_t opening = FindOpeningQuote(text, begin);
    if (opening == kNone) {
      position_ = begin + kQuoteWithin;
      return Pass::kSkipped;
    }
    quote = text[opening];
    link.start = opening + 1;
  }
  link.end = FindValueEnd(text, link.start, quote);
  if (link.end == kNone) return Pass::kEnd;
  position_ = link.start + 1;
  link.value = text.substr(link.start, link.end - link.start);
  if (link.value.empty() || link.value.back() == ';') return Pass::kSkipped;
  if (!question_mark_.HoldsFor(link.start)) question_mark_ = {link.start, text.find('?', link.start)};
  if (question_mark_.place < link.end) link.value = link.value.substr(0, question_mark_.place - link.start);
  link.scheme = text.substr(link.start, kLongestScheme);
  if (const std::size_t colon = link.scheme.find(':'); colon != kNone) {
    link.scheme = link.scheme.substr(0, colon + 1);
  }
  return Pass::kLink;
}

void LinkScanner::Restart(std::size_t place) {
  *this = LinkScanner();
  position_ = place;
}

// The separator of the keyword that stands first. Keywords are looked for from their separators backwards: of
// two that share one, or whose separators are of one kind, the one with the first separator begins first.
std::size_t LinkScanner::FindSeparator(std::string_view text) const {
  for (std::size_t place = FindEither('=', '(', text, position_); place != kNone;
       place = FindEither('=', '(', text, place + 1)) {
    const std::size_t begin = KeywordBefore(place, text);
    if (begin == kNone) continue;
    // One that begins earlier may have its separator, of the other kind, a little later.
    for (std::size_t later = place + 1; later <= place + Chain::kMostBetween && later < text.size();
         ++later) {
      const bool separates = text[later] == '=' || text[later] == '(';
      if (separates && KeywordBefore(later, text) < begin) return later;
    }
    return place;
  }
  return kNone;
}

// Where the keyword begins that has its separator at `separator`; of several the first.
std::size_t LinkScanner::KeywordBefore(std::size_t separator, std::string_view text) const {
  constexpr std::size_t kShortest = 3;  // bytes of a keyword
  // Most have no keyword in front; that is told without a look at each place.
  constexpr std::size_t kAllPlaces = Chain::kMostBetween + kShortest;
  if (separator >= position_ + kAllPlaces) {
    unsigned any = 0;
    for (std::size_t between = 0; between <= Chain::kMostBetween; ++between) {
      any |= CandidatesBefore(separator - between, text);
    }
    if (any == 0) return kNone;
  }
  std::size_t first = kNone;
  for (std::size_t between = 0; between <= Chain::kMostBetween; ++between) {
    if (separator < position_ + between + kShortest) break;
    const std::size_t end = separator - between;
    for (unsigned bits = CandidatesBefore(end, text); bits != 0; bits &= bits - 1) {
      const Keyword& keyword = kKeywords[static_cast<std::size_t>(std::countr_zero(bits))];
      if (keyword.separator != text[separator] || end - position_ < keyword.word.size()) continue;
      const std::size_t begin = end - keyword.word.size();
      if (EqualsLower(text.substr(begin, keyword.word.size()), keyword.word)) first = std::min(first, begin);
    }
  }
  return first;
}

std::size_t LinkScanner::FindOpeningQuote(std::string_view text, std::size_t begin) const {
  const std::size_t quote = FindFirstOf(0, text.substr(begin, kQuoteWithin), IsQuote);
  return quote == kNone ? kNone : begin + quote;
}

// Where the value that begins at `start` ends. A closing quote is looked for behind the value's first byte.
std::size_t LinkScanner::FindValueEnd(std::string_view text, std::size_t start, char quote) {
  if (quote == '\0') {
    if (!unquoted_end_.HoldsFor(start)) unquoted_end_ = {start, FindFirstOf(start, text, EndsUnquoted)};
    return unquoted_end_.place;
  }
  Found& found = quote == '"' ? double_quote_ : apostrophe_;
  if (!found.HoldsFor(start + 1)) found = {start + 1, text.find(quote, start + 1)};
  return found.place;
}

}  // namespace tessaril
