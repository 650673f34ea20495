#include "engine/page_places.h"

#include <algorithm>

#include "engine/characters.h"

namespace tessaril {

PagePlace PagePlaces::At(PageText& page, std::size_t offset) {
  const auto behind = std::upper_bound(known_.begin(), known_.end(), offset,
                                       [](std::size_t at, const Known& known) { return at < known.offset; });
  Known at = *(behind - 1);
  const std::string_view text = page.Tail(0);
  for (;;) {
    std::size_t end = text.find_first_of("\r\n", at.offset);
    if (end == std::string_view::npos) break;
    end += text.substr(end, 2) == "\r\n" ? 2 : 1;
    if (end > offset) break;
    at = {end, {at.place.line + 1, 1}};
  }
  const std::string_view before = text.substr(at.offset, offset - at.offset);
  at.offset = offset;
  at.place.column += page.Encoding() == PageEncoding::kEightBit
                         ? before.size()
                         : before.size() - static_cast<std::size_t>(
                                               std::count_if(before.begin(), before.end(), IsContinuation));
  constexpr std::size_t kApart = 1024;  // bytes between the places that are kept, at least
  const bool in_line_end = offset > 0 && text[offset - 1] == '\r';
  if (offset >= known_.back().offset + kApart && !in_line_end) known_.push_back(at);
  return at.place;
}

void PagePlaces::NoteChange(std::size_t begin) {
  while (known_.size() > 1 && known_.back().offset >= begin) known_.pop_back();
}

}  // namespace tessaril
