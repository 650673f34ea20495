#ifndef TESSARIL_ENGINE_PHRASE_SEARCH_H_
#define TESSARIL_ENGINE_PHRASE_SEARCH_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "engine/byte_search.h"
#include "engine/page_text.h"
#include "engine/phrase_match.h"

namespace tessaril {

/// Finds a text, which is a phrase when it has a blank in it, in a page. The search run and the editor's find
/// share this.
class PhraseSearch {
 public:
  /// `text` are bytes of the page's own code. Letter case counts for the text's first word only: the rest of
  /// a phrase is always compared exactly.
  PhraseSearch(std::string_view text, LetterCase letter_case);

  const std::string& text() const { return text_; }
  void UseLetterCase(LetterCase letter_case);

  struct Occurrence {
    std::size_t place;  // from 0
    PhraseMatch match;
  };
  /// The first occurrence that begins at or behind `from` (from 0). An empty text is at every place of a page
  /// where a character begins, and at its end.
  std::optional<Occurrence> FindNext(PageText& page, std::size_t from) const;

 private:
  std::optional<PhraseMatch> MatchAt(PageText& page, std::size_t place, std::string_view text) const;

  std::string text_;
  bool multi_word_;
  bool may_hold_break_;  // the text itself has what could be a line end or "&nbsp;"
  ByteSearch key_;
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_PHRASE_SEARCH_H_
