#ifndef TESSARIL_ENGINE_PHRASE_MATCH_H_
#define TESSARIL_ENGINE_PHRASE_MATCH_H_

#include <cstddef>
#include <optional>
#include <string_view>

// A phrase, a text with a blank in it, is found also where the page breaks the line, writes "&nbsp;" or, next
// to such a break, has several blanks in the place of one. The search run and the editor's find share this.

namespace tessaril {

/// The part of `phrase` that is looked for first, by the rule for letter case that the user chose: up to the
/// first blank behind the first character, or the whole of it when there is none.
std::string_view PhraseKey(std::string_view phrase);

/// Whether letter case matters for the key even where the user ticked that it does not. It does when
/// nothing in the key can be a break: the phrase is always compared exactly, and such a key is never touched
/// by what turns breaks into blanks.
bool KeyIsComparedExactly(std::string_view phrase);

struct PhraseMatch {
  std::size_t length;       // bytes of the text that the phrase covers there
  std::size_t first_break;  // from 1: the first line end or "&nbsp;" among them; 0 when there is none
};

/// How a place compares with a phrase before any break is looked at. Most places are decided by it.
enum class PlainComparison { kEqual, kDifferent, kOpen };
PlainComparison ComparePlain(std::string_view phrase, std::string_view text);

/// How many bytes beyond the phrase's own length are looked at for breaks.
inline constexpr std::size_t kRoomForBreaks = 100;

/// Whether `phrase` (not empty) stands at the start of `window`, the bytes of a page from the place of a key
/// on, as many as the phrase has and kRoomForBreaks more, whole characters. Line ends (`line_end`, the page's
/// own) and "&nbsp;" become blanks one after the other, after each the doubled blanks are halved, and the
/// result is compared with the phrase, letter case included.
std::optional<PhraseMatch> MatchPhrase(std::string_view phrase, std::string_view window,
                                       std::string_view line_end);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_PHRASE_MATCH_H_
