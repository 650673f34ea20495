#include "engine/phrase_search.h"

#include <algorithm>

namespace tessaril {
namespace {

ByteSearch KeyOf(std::string_view text, LetterCase letter_case) {
  const std::string_view key = PhraseKey(text);
  const bool exactly = KeyIsComparedExactly(text);
  if (exactly && key.size() + 1 < text.size()) return ByteSearch::ForFirstWord(key, text[key.size() + 1]);
  return {key, exactly ? LetterCase::kExact : letter_case};
}

}  // namespace

PhraseSearch::PhraseSearch(std::string_view text, LetterCase letter_case)
    : text_(text),
      multi_word_(text.find(' ') != std::string_view::npos),
      may_hold_break_(text.find_first_of("\r\n&") != std::string_view::npos),
      key_(KeyOf(text, letter_case)) {}

void PhraseSearch::UseLetterCase(LetterCase letter_case) {
  key_ = KeyOf(text_, letter_case);
}

std::optional<PhraseSearch::Occurrence> PhraseSearch::FindNext(PageText& page, std::size_t from) const {
  if (from > page.size()) return std::nullopt;
  if (text_.empty()) return Occurrence{page.CharacterAtOrAfter(from), {0, 0}};
  const std::string_view text = page.Tail(from);
  for (std::size_t at = 0;; ++at) {
    at = key_.Find(text, at);
    if (at == ByteSearch::kNone) return std::nullopt;
    if (!multi_word_) return Occurrence{from + at, {text_.size(), 0}};
    if (const auto match = MatchAt(page, from + at, text.substr(at))) return Occurrence{from + at, *match};
  }
}

// `text` is all of the page from `place` on.
std::optional<PhraseMatch> PhraseSearch::MatchAt(PageText& page, std::size_t place,
                                                 std::string_view text) const {
  const PlainComparison comparison = ComparePlain(text_, text);
  if (comparison == PlainComparison::kDifferent) return std::nullopt;
  if (comparison == PlainComparison::kEqual && !may_hold_break_) return PhraseMatch{text_.size(), 0};
  const std::size_t window_end =
      page.CharacterAtOrAfter(std::min(place + text_.size() + kRoomForBreaks, page.size()));
  return MatchPhrase(text_, text.substr(0, window_end - place), page.LineEnd());
}

}  // namespace tessaril
