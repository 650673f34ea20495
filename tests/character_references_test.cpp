#include "engine/character_references.h"

#include <gtest/gtest.h>

#include "engine/named_references.h"

namespace tessaril {
namespace {

using enum CharacterReference::Fault;

const std::string kLost = "\xEF\xBF\xBD";  // U+FFFD

TEST(CharacterReferences, AreReadAsBrowsersReadThem) {
  struct Row {
    std::string text;
    std::size_t length;
    std::string characters;
    CharacterReference::Fault fault;
  };
  const Row rows[] = {
      {"&", 0, "", kNone},
      {"& b", 0, "", kNone},
      {"&;", 0, "", kNone},
      {"&T", 0, "", kNone},
      {"&x\xC3\xA9;", 0, "", kNone},
      {"&eacute;s", 8, "\xC3\xA9", kNone},
      {"&NotEqualTilde;", 15, "\xE2\x89\x82\xCC\xB8", kNone},
      {"&Eacute;&", 8, "\xC3\x89", kNone},
      {"&eACUTE;", 0, "", kUnknown},
      {"&quot", 5, "\"", kUnclosed},
      {"&notit;", 4, "\xC2\xAC", kUnclosed},
      {"&notin;", 7, "\xE2\x88\x89", kNone},
      {"&frac123", 7, "\xC2\xBD", kUnclosed},
      {"&hearts", 0, "", kNone},
      {"&x;", 0, "", kUnknown},
      {"&" + std::string(1000, 'a') + ";", 0, "", kUnknown},
      {"&#233;", 6, "\xC3\xA9", kNone},
      {"&#XE9;", 6, "\xC3\xA9", kNone},
      {"&#x1f600g", 8, "\xF0\x9F\x98\x80", kUnclosed},
      {"&#9;", 4, "\t", kNone},
      {"&#13;", 5, "\r", kNoCharacter},
      {"&#65a;", 4, "A", kUnclosed},
      {"&#;", 0, "", kNoCharacter},
      {"&#x;", 0, "", kNoCharacter},
      {"&#xg", 0, "", kNoCharacter},
      {"&#-1;", 0, "", kNoCharacter},
      {"&#0;", 4, kLost, kNoCharacter},
      {"&#xD800", 7, kLost, kNoCharacter},
      {"&#1114111;", 10, "\xF4\x8F\xBF\xBF", kNoCharacter},
      {"&#1114112;", 10, kLost, kNoCharacter},
      {"&#4294967361;", 13, kLost, kNoCharacter},  // 65 in 32 bits
      {"&#x110000000000000041;", 22, kLost, kNoCharacter},
      {"&#xFDD0;", 8, "\xEF\xB7\x90", kNoCharacter},
      {"&#xFFFD;", 8, kLost, kNone},
      {"&#127;", 6, "\x7F", kNoCharacter},
      {"&#128;", 6, "\xE2\x82\xAC", kNoCharacter},
      {"&#x9f", 5, "\xC5\xB8", kNoCharacter},
      {"&#129;", 6, "\xC2\x81", kNoCharacter},
      {"&#160;", 6, "\xC2\xA0", kNone},
  };
  for (const Row& row : rows) {
    for (const bool in_attribute : {false, true}) {
      if (in_attribute && (row.text.starts_with("&notit") || row.text.starts_with("&frac"))) continue;
      const CharacterReference read = ReadCharacterReference(row.text, in_attribute);
      EXPECT_EQ(read.length, row.length) << row.text;
      EXPECT_EQ(read.characters, row.characters) << row.text;
      EXPECT_EQ(read.fault, row.fault) << row.text;
    }
  }
}

TEST(CharacterReferences, AreAllFound) {
  std::string_view all = NamedReferences();
  while (!all.empty()) {
    const std::size_t mark = all.find_first_of(",;");
    const std::size_t end = all.find(' ', mark);
    const std::string name = "&" + std::string(all.substr(0, mark));
    const std::string_view characters = all.substr(mark + 1, end - mark - 1);
    EXPECT_EQ(ReadCharacterReference(name + ";", true).characters, characters) << name;
    const CharacterReference unclosed = ReadCharacterReference(name, true);
    EXPECT_EQ(unclosed.characters, all[mark] == ',' ? characters : "") << name;
    EXPECT_EQ(unclosed.fault, all[mark] == ',' ? kUnclosed : kNone) << name;
    all.remove_prefix(end + 1);
  }
}

TEST(CharacterReferences, AreResolvedInAttributes) {
  const std::string rows[][2] = {
      {"", ""},
      {"\xC3\xA9", "\xC3\xA9"},
      {"a?b&c=d&amp;e=f", "a?b&c=d&e=f"},
      {"&amp;lt;&#38;lt;", "&lt;&lt;"},
      {"?a&copy=1&copyb&copy2&copy.&copy", "?a&copy=1&copyb&copy2\xC2\xA9.\xC2\xA9"},
      {"&notit;&notin;", "&notit;\xE2\x88\x89"},
      {"&#47;x&#x2fy&#;&&", "/x/y&#;&&"},
  };
  for (const auto& [value, resolved] : rows) EXPECT_EQ(ResolveReferences(value), resolved);
}

}  // namespace
}  // namespace tessaril
