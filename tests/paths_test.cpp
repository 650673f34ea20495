#include "engine/paths.h"

#include <gtest/gtest.h>

namespace tessaril {
namespace {

TEST(Paths, AreMadeAbsoluteByTheirText) {
  const char* const rows[][3] = {
      {"/home", "site", "/home/site"},
      {"/home", ".", "/home"},
      {"/home", "..", "/"},
      {"/home", "../../x", "/x"},
      {"/home", "a//b/./c/", "/home/a/b/c"},
      {"/", "a", "/a"},
      {"/home", "/var/../etc", "/etc"},
      {"/home", "/", "/"},
      {"/home", "a/...", "/home/a/..."},
  };
  for (const auto& row : rows) EXPECT_EQ(AbsolutePath(row[0], row[1]), row[2]);
}

TEST(Paths, AreTakenApartAndShortened) {
  EXPECT_EQ(JoinPath("/", "a"), "/a");
  EXPECT_EQ(JoinPath("/s", "a"), "/s/a");
  EXPECT_EQ(FolderOf("/a"), "/");
  EXPECT_EQ(FolderOf("/s/a"), "/s");
  EXPECT_EQ(NameOf("/s/a"), "a");
  const std::string path49 = "/" + std::string(48, 'p');
  EXPECT_EQ(ShortenedPath(path49), path49);
  EXPECT_EQ(ShortenedPath(path49 + "q"), "...  " + std::string(46, 'p') + "q");
  // Characters count: 49 of them in 97 bytes are shown whole, unless they are no UTF-8.
  std::string accents = "/";
  for (int i = 0; i < 48; ++i) accents += "\xC3\xA9";
  EXPECT_EQ(ShortenedPath(accents), accents);
  EXPECT_EQ(ShortenedPath(accents + "\xE9"), "...  " + accents.substr(51) + "\xE9");
}

}  // namespace
}  // namespace tessaril
