#include "engine/page_places.h"

#include <gtest/gtest.h>

#include <random>

#include "engine/characters.h"

namespace tessaril {
namespace {

PagePlace Counted(std::string_view page, std::size_t offset, bool utf8) {
  PagePlace place{1, 1};
  for (std::size_t i = 0; i < offset; ++i) {
    const bool in_pair = page[i] == '\r' && i + 1 < page.size() && page[i + 1] == '\n';
    if (page[i] == '\n' || (page[i] == '\r' && !in_pair)) {
      place = {place.line + 1, 1};
    } else if (!utf8 || !IsContinuation(page[i])) {
      ++place.column;
    }
  }
  return place;
}

TEST(PagePlaces, CountWhilePagesChange) {
  std::mt19937 random(5);
  const std::string_view pieces[] = {"\r\n", "\n", "\r", "words of a line", "\xC3\xA9", "-"};
  for (int round = 0; round < 60; ++round) {
    const bool long_lines = round % 2 == 0;
    std::string plain = "\xC3\xA9";
    while (plain.size() < 9000) plain += pieces[random() % 100 < 90 && long_lines ? 3 : random() % 6];
    ByteBuffer buffer;
    buffer.Reserve(plain.size());
    plain.copy(buffer.data(), plain.size());
    buffer.SetSize(plain.size());
    const bool utf8 = random() % 2 == 0;
    PageText page(buffer, utf8 ? PageEncoding::kUtf8 : PageEncoding::kEightBit, "\n");
    PagePlaces places;
    for (std::size_t at = 0; at < plain.size(); at += random() % 700) {
      const PagePlace place = places.At(page, at);
      const PagePlace counted = Counted(plain, at, utf8);
      ASSERT_TRUE(place.line == counted.line && place.column == counted.column) << at;
      if (random() % 3 != 0) continue;
      const std::size_t begin = at - std::min<std::size_t>(at, random() % 1500);
      const std::string_view piece = pieces[random() % 6];
      page.Replace(begin, std::min(begin + random() % 3, plain.size()), piece);
      plain.clear();
      for (const std::string_view part : page.Pieces()) plain += part;
      places.NoteChange(begin);
    }
  }
}

}  // namespace
}  // namespace tessaril
