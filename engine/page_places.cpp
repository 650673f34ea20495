#include "engine/page_places.h"

#include <algorithm>

#include "engine/characters.h"

namespace tessaril {
namespace {

std::size_t CountColumns(std::string_view bytes, PageEncoding encoding) {
  if (encoding == PageEncoding::kEightBit) return bytes.size();
  return bytes.size() - static_cast<std::size_t>(std::count_if(bytes.begin(), bytes.end(), IsContinuation));
}

// Counted in stretches that a byte can count, so that many are compared at once.
std::size_t CountLineFeeds(std::string_view text) {
  constexpr std::size_t kMostInByte = 255;
  std::size_t count = 0;
  while (!text.empty()) {
    unsigned char here = 0;
    const std::string_view stretch = text.substr(0, kMostInByte);
    for (const char c : stretch) here = static_cast<unsigned char>(here + (c == '\n' ? 1 : 0));
    count += here;
    text.remove_prefix(stretch.size());
  }
  return count;
}

// The place behind the first line end in `before` from `begin` on; npos when there is none. A CR at the very
// end is one half of a line end when LF follows, which the next look will find.
std::size_t BehindLineEnd(std::string_view before, std::size_t begin, bool is_followed_by_lf) {
  std::size_t mark = begin;
  while (mark < before.size() && before[mark] != '\r' && before[mark] != '\n') ++mark;
  if (mark == before.size()) return std::string_view::npos;
  if (before[mark] == '\n') return mark + 1;
  if (mark + 1 == before.size()) return is_followed_by_lf ? std::string_view::npos : mark + 1;
  return before[mark + 1] == '\n' ? mark + 2 : mark + 1;
}

}  // namespace

PagePlace PagePlaces::At(PageText& page, std::size_t offset) {
  const auto behind = std::upper_bound(known_.begin(), known_.end(), offset,
                                       [](std::size_t at, const Known& known) { return at < known.offset; });
  const Known from = *(behind - 1);
  // An edit may reach back from the place; one well in front of it stays.
  if (offset > from.offset + 2 * kApart) return GoOn(page, GoOn(page, from, offset - kApart), offset).place;
  return GoOn(page, from, offset).place;
}

PagePlaces::Known PagePlaces::GoOn(PageText& page, const Known& from, std::size_t offset) {
  const PageEncoding encoding = page.Encoding();
  const std::string_view text = page.Tail(from.offset);
  const std::string_view before = text.substr(0, offset - from.offset);
  PagePlace place = from.place;
  std::size_t begin = 0;  // of what counts in the line of the place
  if (from.offset == 0 && encoding == PageEncoding::kUtf8 && text.starts_with(kByteOrderMark)) {
    begin = std::min(before.size(), kByteOrderMark.size());
  }
  if (before.find('\r') == std::string_view::npos) {
    const std::size_t mark = before.rfind('\n');
    if (mark != std::string_view::npos) {
      begin = mark + 1;
      place = {place.line + CountLineFeeds(before), 1};
    }
  } else {
    const bool is_followed_by_lf = text.substr(before.size()).starts_with('\n');
    for (;;) {
      const std::size_t end = BehindLineEnd(before, begin, is_followed_by_lf);
      if (end == std::string_view::npos) break;
      begin = end;
      place = {place.line + 1, 1};
    }
  }
  place.column += CountColumns(before.substr(begin), encoding);
  const Known reached{offset, place};
  if (!before.ends_with('\r')) Remember(reached);
  return reached;
}

// A place behind a CR is not worth it: what is written there may make the line end another one.
void PagePlaces::Remember(const Known& known) {
  if (known.offset >= known_.back().offset + kApart) known_.push_back(known);
}

void PagePlaces::NoteChange(std::size_t begin) {
  while (known_.back().offset > begin) known_.pop_back();
}

}  // namespace tessaril
