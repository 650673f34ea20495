#include "engine/page_places.h"

#include <algorithm>

#include "engine/characters.h"

namespace tessaril {
namespace {

std::size_t CountColumns(std::string_view bytes, PageEncoding encoding) {
  if (encoding == PageEncoding::kEightBit) return bytes.size();
  return bytes.size() - static_cast<std::size_t>(std::count_if(bytes.begin(), bytes.end(), IsContinuation));
}

}  // namespace

PagePlace PagePlaces::At(PageText& page, std::size_t offset) {
  const PageEncoding encoding = page.Encoding();
  const auto behind = std::upper_bound(known_.begin(), known_.end(), offset,
                                       [](std::size_t at, const Known& known) { return at < known.offset; });
  const Known from = *(behind - 1);
  const std::string_view text = page.Tail(from.offset);
  const std::string_view before = text.substr(0, offset - from.offset);
  PagePlace place = from.place;
  std::size_t begin = 0;  // of what counts in the line of the place
  if (from.offset == 0 && encoding == PageEncoding::kUtf8 && text.starts_with(kByteOrderMark)) {
    begin = std::min(before.size(), kByteOrderMark.size());
  }
  for (;;) {
    const std::size_t mark = before.find_first_of("\r\n", begin);
    if (mark == std::string_view::npos) break;
    const std::size_t end = mark + (text.substr(mark, 2) == "\r\n" ? 2 : 1);
    if (end > before.size()) break;
    begin = end;
    place = {place.line + 1, 1};
    if (before[end - 1] == '\n') Remember({from.offset + end, place});
  }
  place.column += CountColumns(before.substr(begin), encoding);
  if (!before.ends_with('\r')) Remember({offset, place});
  return place;
}

// A place behind a CR is not worth it: what is written there may make the line end another one.
void PagePlaces::Remember(const Known& known) {
  constexpr std::size_t kApart = 1024;  // bytes, at least
  if (known.offset >= known_.back().offset + kApart) known_.push_back(known);
}

void PagePlaces::NoteChange(std::size_t begin) {
  while (known_.back().offset > begin) known_.pop_back();
}

}  // namespace tessaril
