#include "engine/page_places.h"

#include <algorithm>

#include "engine/characters.h"

namespace tessaril {

PagePlace PagePlaces::At(PageText& page, std::size_t offset) {
  const auto behind = std::upper_bound(known_.begin(), known_.end(), offset,
                                       [](std::size_t at, const Known& known) { return at < known.offset; });
  Known at = *(behind - 1);
  // Only what lies between is looked at: the page moves its gap no farther, and lines may be long.
  const std::string_view text = page.Tail(at.offset);
  const std::string_view between = text.substr(0, offset - at.offset);
  std::size_t line = 0;  // where the last line begins
  for (;;) {
    std::size_t end = between.find_first_of("\r\n", line);
    if (end == std::string_view::npos) break;
    end += text.substr(end, 2) == "\r\n" ? 2 : 1;
    if (end > between.size()) break;
    line = end;
    at.place = {at.place.line + 1, 1};
  }
  const std::string_view before = between.substr(line);
  at.offset = offset;
  at.place.column += page.Encoding() == PageEncoding::kEightBit
                         ? before.size()
                         : before.size() - static_cast<std::size_t>(
                                               std::count_if(before.begin(), before.end(), IsContinuation));
  constexpr std::size_t kApart = 1024;  // bytes between the places that are kept, at least
  if (offset >= known_.back().offset + kApart && !between.ends_with('\r')) known_.push_back(at);
  return at.place;
}

void PagePlaces::NoteChange(std::size_t begin) {
  while (known_.size() > 1 && known_.back().offset >= begin) known_.pop_back();
}

}  // namespace tessaril
