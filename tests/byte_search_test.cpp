#include "engine/byte_search.h"

#include <gtest/gtest.h>

#include <random>

#include "engine/ascii.h"

namespace tessaril {
namespace {

// Texts of up to three widths of the fast comparison, of few letters, so that keys stand at every offset and
// across every border.
TEST(ByteSearch, FindsWhatAPlainSearchFinds) {
  std::mt19937 random(1);
  const auto text_of = [&random](std::size_t most) {
    std::string text;
    for (std::size_t i = random() % (most + 1); i > 0; --i) text += "aAbB@`[{ \n&"[random() % 11];
    return text;
  };
  for (int round = 0; round < 20000; ++round) {
    const std::string key = text_of(round % 2 == 0 ? 2 : 12);
    std::string text = text_of(110);
    if (round % 3 == 0 && !text.empty()) text.insert(random() % text.size(), key);
    const std::size_t from = random() % (text.size() + 2);
    const auto plain = [&](const std::string& k, const std::string& t) {
      return k.empty() ? ByteSearch::kNone : t.find(k, from);
    };
    ASSERT_EQ(ByteSearch(key, LetterCase::kExact).Find(text, from), plain(key, text)) << key << "|" << text;
    ASSERT_EQ(ByteSearch(key, LetterCase::kFolded).Find(text, from), plain(ToLower(key), ToLower(text)));
    if (key.empty() || key.find_first_of(" \n&") != std::string::npos) continue;
    // A phrase that begins with the key stands at no place that the search passes over.
    const std::size_t found = ByteSearch::ForFirstWord(key, 'a').Find(text, from);
    for (const char* rest : {" a", "\na", "&nbsp;a", "  a"}) {
      const std::size_t phrase = plain(key + rest, text);
      ASSERT_TRUE(phrase == ByteSearch::kNone || found <= phrase) << key << "|" << text;
    }
  }
}

TEST(ByteSearch, FindsBytesAboveAsciiAndAMark) {
  for (const char found : {'&', '\x80', '\xFF'}) {
    for (std::size_t size = 0; size < 70; ++size) {
      std::string text(size, '\x7F');
      EXPECT_EQ(FindHighByteOr('&', text), ByteSearch::kNone);
      for (std::size_t place = 0; place < size; ++place) {
        text[place] = found;
        ASSERT_EQ(FindHighByteOr('&', text), place);
        text[place] = "\0%'"[place % 3];
      }
    }
  }
}

}  // namespace
}  // namespace tessaril
