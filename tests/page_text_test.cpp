#include "engine/page_text.h"

#include <gtest/gtest.h>

#include <random>

#include "engine/page_encoding.h"

namespace tessaril {
namespace {

void Fill(ByteBuffer& buffer, const std::string& text) {
  buffer.SetSize(0);
  buffer.Reserve(text.size());
  text.copy(buffer.data(), text.size());
  buffer.SetSize(text.size());
}

std::string Whole(const PageText& page) {
  return std::string(page.Pieces()[0]) + std::string(page.Pieces()[1]);
}

TEST(PageText, EditsLikeAString) {
  std::mt19937 random(3);
  ByteBuffer buffer;
  for (int round = 0; round < 300; ++round) {
    std::string plain(random() % 300, 'x');
    for (char& c : plain) c = static_cast<char>('a' + random() % 26);
    Fill(buffer, plain);
    PageText page(buffer);
    for (int edit = 0; edit < 40; ++edit) {
      const std::size_t begin = random() % (plain.size() + 1);
      const std::size_t end = begin + random() % (plain.size() - begin + 1);
      // Now and then so much that the buffer must grow.
      const std::string text(edit == 20 ? std::size_t{17} << 20 : random() % 30,
                             static_cast<char>('0' + edit % 10));
      if (edit == 20 && round > 1) continue;
      page.Replace(begin, end, text);
      plain.replace(begin, end - begin, text);
      ASSERT_EQ(page.size(), plain.size());
      const std::size_t from = random() % (plain.size() + 1);
      ASSERT_TRUE(page.Tail(from) == std::string_view(plain).substr(from));
      std::string slice;
      page.AppendSlice(from, from + 50, slice);
      ASSERT_EQ(slice, plain.substr(from, 50));
    }
    ASSERT_TRUE(Whole(page) == plain);
  }
}

TEST(PageText, TellsEncodings) {
  struct Row {
    const char* text;
    PageEncoding encoding;
  };
  const Row rows[] = {
      {"plain", PageEncoding::kEightBit},
      {"caf\xC3\xA9", PageEncoding::kUtf8},
      {"caf\xE9", PageEncoding::kEightBit},
      {"caf\xC3\xA9 and caf\xE9", PageEncoding::kEightBit},
      {"\xC0\xAF", PageEncoding::kEightBit},          // over-long
      {"\xED\xA0\x80", PageEncoding::kEightBit},      // a surrogate
      {"\xF4\x90\x80\x80", PageEncoding::kEightBit},  // above U+10FFFF
      {"\xF0\x9F\x98\x80", PageEncoding::kUtf8},
      {"cut \xE2\x82", PageEncoding::kEightBit},
      {"<META CharSet = \"UTF-8\">", PageEncoding::kUtf8},
      {"charset=utf-8", PageEncoding::kUtf8},
      {"charset=utf-80", PageEncoding::kEightBit},
      {"charset=utf8", PageEncoding::kEightBit},
      {"charset utf-8", PageEncoding::kEightBit},
      {"charset=iso-8859-1 charset=utf-8;", PageEncoding::kUtf8},
  };
  for (const Row& row : rows) EXPECT_EQ(DetectEncoding(row.text), row.encoding) << row.text;
  EXPECT_EQ(DetectEncoding(std::string(1011, ' ') + "charset=utf-8"), PageEncoding::kUtf8);
  EXPECT_EQ(DetectEncoding(std::string(1012, ' ') + "charset=utf-8"), PageEncoding::kEightBit);
}

TEST(PageText, KnowsLineEndsAndCharactersOfThePageAsRead) {
  ByteBuffer buffer;
  Fill(buffer, "a\nb\r\n\xE2\x82\xAC.");
  PageText page(buffer);
  EXPECT_EQ(page.LineEnd(), "\r\n");
  EXPECT_EQ(page.CharacterAtOrBefore(6), 5U);
  EXPECT_EQ(page.CharacterAtOrAfter(7), 8U);
  EXPECT_EQ(page.CharacterAtOrBefore(5), 5U);
  EXPECT_EQ(page.CharacterAtOrAfter(9), 9U);
  Fill(buffer, "a\r\n\xC3\xA9");
  PageText edited(buffer);
  edited.Replace(0, 5, "\xE9\n");  // what the page was as read counts, whoever asks first
  EXPECT_EQ(edited.LineEnd(), "\r\n");
  EXPECT_EQ(edited.Encoding(), PageEncoding::kUtf8);
  Fill(buffer, "a\nb\r\n\xE2\x82\xAC.");
  PageText stray(buffer);
  stray.Replace(0, 5, "\xAC");  // a stray byte is a character by itself
  EXPECT_EQ(stray.CharacterAtOrBefore(0), 0U);
  EXPECT_EQ(stray.CharacterAtOrAfter(2), 4U);
}

TEST(PageText, TurnsEnteredCharactersIntoThePagesBytes) {
  EXPECT_EQ(EnteredText("caf\xE9 \x80"), "caf\xC3\xA9 \xE2\x82\xAC");
  EXPECT_EQ(SoughtBytes("\xE2\x82\xAC\xC3\xA9", PageEncoding::kEightBit), "\x80\xE9");
  EXPECT_EQ(SoughtBytes("\xC4\x8D", PageEncoding::kEightBit), std::nullopt);
  EXPECT_EQ(SoughtBytes("\xC4\x8D", PageEncoding::kUtf8), "\xC4\x8D");
  EXPECT_EQ(WrittenBytes("\xC4\x8D\xC2\x81\xF0\x9F\x98\x80\xC2\x85", PageEncoding::kEightBit),
            "&#269;\x81&#128512;&#133;");
  for (int code = 0; code < 256; ++code) {
    const std::string byte(1, static_cast<char>(code));
    EXPECT_EQ(SoughtBytes(EightBitToUtf8(byte), PageEncoding::kEightBit), byte) << code;
  }
}

}  // namespace
}  // namespace tessaril
