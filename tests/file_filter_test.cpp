#include "engine/file_filter.h"

#include <gtest/gtest.h>

namespace tessaril {
namespace {

TEST(FileFilter, ListsNames) {
  struct Row {
    const char* filter;
    const char* name;
    bool listed;
  };
  const Row rows[] = {
      {"*.htm*;shtm*", "page.htm", true},
      {"*.htm*;shtm*", "page.HTML", true},
      {"*.htm*;shtm*", "shtmlist.txt", true},
      {"*.htm*;shtm*", "page.shtml", false},
      {"*.htm*;shtm*", "page.htm.bak", true},
      {"*.*", "readme", true},
      {" *.* ", "readme", true},
      {"*.*;", "readme", true},
      {"*.txt ; *.htm", "a.htm", true},
      {";", "a", false},
      {"", "", false},
      {"*.TXT", "a.txt", true},
      {"?.htm", "\xC3\xA9.htm", true},  // one character, two bytes
      {"?.htm", "\xE9.htm", true},      // no UTF-8: one byte
      {"??.htm", "\xC3\xA9.htm", false},
      {"*?b*c", "ab.abbc", true},
      {"*ab*ab", "ab", false},
      {"a b.htm", "a b.htm", true},
      {"***", "x", true},
      {"*.\xC3\xA9*", "x.\xC3\xA9t\xC3\xA9", true},
  };
  for (const Row& row : rows)
    EXPECT_EQ(FileFilter(row.filter).Lists(row.name), row.listed) << row.filter << " " << row.name;
}

TEST(FileFilter, IsLookedAtAsTyped) {
  for (const char* filter : {"*.htm*;shtm*", "*.txt", "*.xxx", "*.html"})
    EXPECT_TRUE(LooksLikeHtmlFilter(filter));
  for (const char* filter : {"*.*", "*.HTM", " *.htm", "", "*.ht"}) EXPECT_FALSE(LooksLikeHtmlFilter(filter));
}

}  // namespace
}  // namespace tessaril
