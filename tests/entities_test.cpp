#include "engine/entities.h"

#include <gtest/gtest.h>

#include "tests/support/memory_files.h"
#include "tests/support/program_entities.h"

namespace tessaril {
namespace {

using Lines = std::vector<std::string>;

TEST(Entities, ReadsWhatCanBeUsedAndTellsTheRest) {
  MemoryFiles files;
  files.contents["/d/alphatg1.dat"] =
      "nbsp,#160\r\nno comma\r\neacute,\xE9\r\ncomma,,\r\n\r\nwide,\xC3\xA9\r\nhigh,#256\r\nhigh,#255.5\r\n"
      "none,#\r\nempty,\r\nhex,#x41\r\nagrave,#224.4\nand,&\nand2,#38\n,#65\r\nB,#66";
  files.contents["/d/alphatg2.dat"] = "hearts\r\neacute\n\r\nspades\r\n";
  Entities entities;
  Lines notices;
  ASSERT_TRUE(entities.Load(files, "/d", notices).ok());
  const std::string skipped = "not one character of a code from 0 to 255; the line is skipped";
  Lines expected{"/d/alphatg1.dat:2: no comma; the line is skipped",
                 "/d/alphatg1.dat:5: no comma; the line is skipped"};
  for (const char* line : {"6", "7", "8", "9", "10", "11"})
    expected.push_back("/d/alphatg1.dat:" + std::string(line) + ": " + skipped);
  expected.push_back("/d/alphatg1.dat:15: no name; the table ends here");
  expected.push_back("/d/alphatg2.dat:3: no name; the list ends here");
  EXPECT_EQ(notices, expected);
  EXPECT_EQ(entities.NameForNumeric('\xA0'), "nbsp");
  EXPECT_EQ(entities.NameForCharacter('\xA0'), "");
  EXPECT_EQ(entities.NameForCharacter('\xE9'), "eacute");
  EXPECT_EQ(entities.NameForCharacter('\xE0'), "agrave");
  EXPECT_EQ(entities.NameForCharacter('&'), "and");  // the first of two
  EXPECT_EQ(entities.NameForCharacter('B'), "");
  EXPECT_TRUE(entities.IsGood("nbsp") && entities.IsGood("and2") && entities.IsDoubtful("eacute"));
  EXPECT_FALSE(entities.IsGood("") || entities.IsGood("B") || entities.IsGood("Eacute"));
  EXPECT_FALSE(entities.IsDoubtful("") || entities.IsDoubtful("spades"));
  EXPECT_EQ(entities.EncodeEntities("\xC2\xA0\xC3\xA9&,"), "\xC2\xA0&eacute;&and;&comma;");
}

TEST(Entities, IgnoresRowsTooMany) {
  MemoryFiles files;
  for (int i = 0; i < 250; ++i) {
    files.contents["/d/alphatg1.dat"] += "n" + std::to_string(i) + ",#" + std::to_string(i) + "\r\n";
    files.contents["/d/alphatg2.dat"] += "n" + std::to_string(i) + "\r\n";
  }
  Entities entities;
  Lines notices;
  ASSERT_TRUE(entities.Load(files, "/d", notices).ok());
  EXPECT_EQ(notices, (Lines{"/d/alphatg1.dat:132: more than 131 rows; the rest is ignored",
                            "/d/alphatg2.dat:202: more than 201 rows; the rest is ignored"}));
  EXPECT_TRUE(entities.IsGood("n130") && entities.IsDoubtful("n200"));
  EXPECT_FALSE(entities.IsGood("n131") || entities.IsDoubtful("n201"));
  files.contents.erase("/d/alphatg2.dat");
  EXPECT_EQ(entities.Load(files, "/d", notices).reason(),
            "No such file or directory\r\nCan't find file /d/alphatg2.dat");
  EXPECT_TRUE(entities.IsGood("n130"));
}

TEST(Entities, ReadsCodes) {
  constexpr std::uint32_t kGreatest = 4294967295;
  struct Row {
    const char* text;
    std::optional<std::uint32_t> decimal;
    std::optional<std::uint32_t> hexadecimal;
  };
  const Row rows[] = {{"233", 233, 0x233},
                      {"0233", 233, 0x233},
                      {"", {}, {}},
                      {"233.5", 234, {}},
                      {"233.49", 233, {}},
                      {".5", {}, {}},
                      {"2.", {}, {}},
                      {"1.2.3", {}, {}},
                      {"-1", {}, {}},
                      {" 1", {}, {}},
                      {"e9", {}, 0xE9},
                      {"aF", {}, 0xAF},
                      {"g", {}, {}},
                      {"4294967296", kGreatest, kGreatest},
                      {"4294967295.5", kGreatest, {}}};
  for (const Row& row : rows) {
    EXPECT_EQ(DecimalCode(row.text), row.decimal) << row.text;
    EXPECT_EQ(HexadecimalCode(row.text), row.hexadecimal) << row.text;
  }
}

TEST(Entities, WritesCharactersOfATextAsEntities) {
  const Entities& entities = ProgramEntities();
  EXPECT_EQ(entities.EncodeEntities("\xC3\xA9\xC3\xA9 a"), "&eacute;&eacute; a");
  EXPECT_EQ(entities.EncodeEntities("\xE2\x82\xAC \xE2\x80\x93"), "&euro; &ndash;");
  EXPECT_EQ(entities.EncodeEntities("<a href=\"?x&y\">&eacute;"), "<a href=\"?x&y\">&eacute;");
  EXPECT_EQ(entities.EncodeEntities("\xC2\xA0 \xC4\x8D \xC2\x96 \xE2\x99\xA5"),
            "\xC2\xA0 \xC4\x8D \xC2\x96 \xE2\x99\xA5");  // no-break space, c caron, a control, a heart
}

}  // namespace
}  // namespace tessaril
