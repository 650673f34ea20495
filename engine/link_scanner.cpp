#include "engine/link_scanner.h"

#include <algorithm>

#include "engine/ascii.h"
#include "engine/find_chain.h"

namespace tessaril {
namespace {

constexpr std::size_t kLongestScheme = 7;  // bytes, ":" included
constexpr std::size_t kQuoteWithin = 10;   // bytes behind the separator

// The keywords, each with the separator that follows it.
const std::array<Chain, 6>& Keywords() {
  static const std::array<Chain, 6> keywords = {Chain("href", "="),      Chain("src", "="),
                                                Chain("url", "="),       Chain("window.open", "("),
                                                Chain(".location", "="), Chain("background", "=")};
  return keywords;
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

bool Link::HasScheme(std::string_view name) const {
  return scheme.size() == name.size() && std::equal(scheme.begin(), scheme.end(), name.begin(),
                                                    [](char a, char b) { return ToLower(a) == ToLower(b); });
}

bool Link::IsExternal() const {
  if (scheme.empty() || scheme.back() != ':') return false;
  constexpr std::string_view kExternal[] = {
      "HTTP:", "FTP:", "GOPHER:", "HTTPS:", "SHTTP:", "TELNET:", "WAIS:", "NNTP:"};
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

// The separator of the keyword that stands first.
std::size_t LinkScanner::FindSeparator(std::string_view text) {
  const FoundKeyword* first = nullptr;
  for (std::size_t i = 0; i < kKeywords; ++i) {
    FoundKeyword& found = keywords_[i];
    if (!found.keyword.HoldsFor(position_)) {
      const std::optional<Chain::Place> place = FindChain(Keywords()[i], text, position_);
      found = {{position_, place ? place->begin : kNone}, place ? place->last : kNone};
    }
    if (first == nullptr || found.keyword.place < first->keyword.place) first = &found;
  }
  return first->separator;
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
