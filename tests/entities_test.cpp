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
      "none,#\r\nempty,\r\nhex,#x41\r\nagrave,#224.4\nand,&\nand2,#38\nAT&T,&\r\n,#65\r\nB,#66";
  files.contents["/d/alphatg2.dat"] = "\xEF\xBB\xBFhearts\r\neacute\n\r\nspades\r\n";
  Entities entities;
  Lines notices;
  ASSERT_TRUE(entities.Load(files, "/d", notices).ok());
  ASSERT_EQ(notices.size(), 11U);
  for (const std::size_t i : {0U, 1U})
    EXPECT_EQ(notices[i], "/d/alphatg1.dat:" + std::to_string(2 + 3 * i) + ": no comma; the line is skipped");
  for (std::size_t i = 2; i < 8; ++i)
    EXPECT_TRUE(notices[i].starts_with("/d/alphatg1.dat:" + std::to_string(4 + i) + ": not one character"));
  EXPECT_EQ(notices[8], "/d/alphatg1.dat:15: a name that is a finding itself; the line is skipped");
  EXPECT_EQ(notices[9], "/d/alphatg1.dat:16: no name; names are looked up no further");
  EXPECT_EQ(notices[10], "/d/alphatg2.dat:3: no name; the list ends here");
  EXPECT_EQ(entities.NameForNumeric('\xA0'), "nbsp");
  EXPECT_EQ(entities.NameForCharacter('\xA0'), "");
  EXPECT_EQ(entities.NameForCharacter('\xE9'), "eacute");
  EXPECT_EQ(entities.NameForCharacter('\xE0'), "agrave");
  EXPECT_EQ(entities.NameForCharacter('&'), "and");  // the first of two
  EXPECT_EQ(entities.NameForCharacter('B'), "");
  EXPECT_TRUE(entities.IsGood("nbsp") && entities.IsGood("and2") && entities.IsDoubtful("eacute"));
  EXPECT_TRUE(entities.IsDoubtful("hearts"));
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
  files.contents = {{"/d/alphatg1.dat", std::string(15, '\n')}, {"/d/alphatg2.dat", ""}};
  notices.clear();
  ASSERT_TRUE(entities.Load(files, "/d", notices).ok());
  ASSERT_EQ(notices.size(), 12U);  // the first ten
  EXPECT_EQ(notices[10], "/d/alphatg1.dat: no names of characters");
  EXPECT_EQ(notices[11], "/d/alphatg1.dat: 5 more lines are skipped");
  files.contents["/d/alphatg1.dat"] = ",#160\neacute,\xE9\n";  // row 0 without a name
  ASSERT_TRUE(entities.Load(files, "/d", notices).ok());
  EXPECT_EQ(entities.NameForCharacter('\xE9'), "eacute");
  EXPECT_EQ(entities.NameForNumeric('\xE9'), "");
  EXPECT_FALSE(entities.IsGood("eacute"));
}

TEST(Entities, ReadsCodes) {
  constexpr std::uint32_t kGreatest = 4294967295;
  EXPECT_EQ(DecimalCode("0233"), 233U);
  EXPECT_EQ(DecimalCode("233.49"), 233U);
  EXPECT_EQ(DecimalCode("233.5"), 234U);
  EXPECT_EQ(DecimalCode("4294967296"), kGreatest);
  EXPECT_EQ(DecimalCode("4294967295.5"), kGreatest);
  EXPECT_EQ(HexadecimalCode("0aF"), 0xAFU);
  const auto none = std::nullopt;
  for (const char* text : {"", ".5", "2.", "1.2.3", "-1", " 1", "e9"}) EXPECT_EQ(DecimalCode(text), none);
  for (const char* text : {"", "g", "1.5"}) EXPECT_EQ(HexadecimalCode(text), none) << text;
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
