#include "engine/phrase_match.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/support/plain_search.h"

namespace tessaril {
namespace {

struct Row {
  const char* phrase;
  const char* text;
  const char* line_end;
  std::size_t length;  // 0: no match
  std::size_t first_break;
};

TEST(PhraseMatch, TakesBreaksForBlanks) {
  const Row rows[] = {
      {"foo bar", "foo bar", "\r\n", 7, 0},
      {"foo bar", "foo\r\nbar", "\r\n", 8, 4},
      {"foo bar", "foo&nbsp;bar", "\r\n", 12, 4},
      {"foo bar", "foo\nbar", "\n", 7, 4},
      {"foo bar", "foo\nbar", "\r\n", 0, 0},  // not this page's line end
      {"foo bar", "foo  bar", "\r\n", 0, 0},
      {"foo bar", "foo  bar and\r\n", "\r\n", 8, 0},
      {"foo bar", "foo\r\n  bar", "\r\n", 0, 0},
      {"foo bar", "foo\r\n  bar\r\n", "\r\n", 10, 4},
      {"foo bar", "foo \r\nbar", "\r\n", 9, 5},
      {"foo&nbsp;bar", "foo bar", "\r\n", 0, 0},
      {"a b&nbsp;c", "a\r\nb&nbsp;c", "\r\n", 11, 2},
      {"Foo bar", "foo bar", "\r\n", 0, 0},
      {" foo", " foo", "\r\n", 4, 0},
      {"a b c", "a&nbsp;b\r\nc", "\r\n", 11, 2},
      {"a\r\nb c", "a\r\nb c", "\r\n", 6, 2},
  };
  for (const Row& row : rows) {
    const auto match = MatchPhrase(row.phrase, row.text, row.line_end);
    EXPECT_EQ(match ? match->length : 0, row.length) << row.phrase << "|" << row.text;
    EXPECT_EQ(match ? match->first_break : 0, row.first_break) << row.phrase << "|" << row.text;
  }
}

TEST(PhraseMatch, GivesWhatThePlainRuleGives) {
  std::mt19937 random(7);
  const char* const blanks[] = {" ", "\r\n", "\n", "&nbsp;", " \r\n", "\n ", "  ", "\r\n  "};
  const char* const pieces[] = {"a", "b", " ", "  ", "\r\n", "\n", "&nbsp;", "&", "\r", "a b"};
  const auto text_of = [&](std::size_t most) {
    std::string text;
    for (std::size_t i = random() % (most + 1); i > 0; --i) text += pieces[random() % std::size(pieces)];
    return text;
  };
  int matches = 0;
  for (int round = 0; round < 60000; ++round) {
    const std::string phrase = "a " + text_of(round % 3 == 0 ? 20 : 3);
    const std::string line_end = round % 2 == 0 ? "\r\n" : "\n";
    // Every other text is the phrase itself with something in the place of each blank.
    std::string text = round % 4 < 2 ? "a" + text_of(round % 50 == 0 ? 120 : 12) : std::string();
    for (const char c : round % 4 < 2 ? std::string() : phrase) {
      text += c == ' ' ? blanks[random() % std::size(blanks)] : std::string(1, c);
    }
    if (round % 4 == 3) text += text_of(12);
    const auto plain = PlainPhrase(phrase, text, line_end);
    const auto match = MatchPhrase(phrase, text.substr(0, phrase.size() + kRoomForBreaks), line_end);
    ASSERT_EQ(match.has_value(), plain.has_value()) << phrase << "|" << text;
    ASSERT_EQ(match ? match->length : 0, plain.value_or(0)) << phrase << "|" << text;
    matches += plain ? 1 : 0;
  }
  EXPECT_GT(matches, 10000);
}

TEST(PhraseMatch, KnowsItsKey) {
  EXPECT_EQ(PhraseKey("foo bar"), "foo");
  EXPECT_EQ(PhraseKey(" foo bar"), " foo");
  EXPECT_EQ(PhraseKey(" foo"), " foo");
}

}  // namespace
}  // namespace tessaril
