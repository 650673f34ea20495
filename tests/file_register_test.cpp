#include "engine/file_register.h"

#include <gtest/gtest.h>

#include <random>

namespace tessaril {
namespace {

TEST(FileRegister, LooksPathsUpAsPiecesOfItsText) {
  FileRegister files;
  files.AddChecked("/s/a.html");
  files.AddChecked("/s/a.html");
  files.MarkLinked("/s/b.htm");
  files.MarkLinked("/s/b.htm");
  EXPECT_EQ(files.text(), "\r\nU /s/a.html\r\nR /s/b.htm");
  files.AddChecked("/s/b.htm");  // linked before it is checked
  files.MarkLinked("/s/a.htm");  // found where a longer name begins
  files.AddChecked("/t/s/c.htm");
  files.MarkLinked("/s/c.htm");  // found inside another entry
  EXPECT_EQ(files.text(), "\r\nR /s/a.html\r\nR /s/b.htm\r\nU /t/s/c.htm");
  files.MarkLinked("/s/b.htm\r\nU /t");  // over two entries
  EXPECT_EQ(files.text(), "\r\nR /s/a.html\r\nR /s/b.htm\r\nU /t/s/c.htm");
}

TEST(FileRegister, FindsWhatASearchOfItsTextFinds) {
  std::mt19937 random(5);
  const char* const steps[] = {"/a", "/b", "/ab", "/a.b", "/a/b", "b", "a", "/"};
  int contained = 0;
  for (int round = 0; round < 3000; ++round) {
    FileRegister files;
    std::string plain;
    for (int entry = 0; entry < 12; ++entry) {
      std::string path = "/";
      for (auto count = random() % 5; count > 0; --count) path += steps[random() % std::size(steps)];
      const std::size_t at = plain.find(path);
      contained += at != std::string::npos;
      if (random() % 2 == 0) {
        files.AddChecked(path);
        if (at == std::string::npos) plain += "\r\nU " + path;
      } else {
        files.MarkLinked(path);
        if (at == std::string::npos) {
          plain += "\r\nR " + path;
        } else if (plain[at - 1] == ' ') {
          plain[at - 2] = 'R';
        }
      }
      ASSERT_EQ(files.text(), plain) << path;
    }
  }
  EXPECT_GT(contained, 10000);
}

}  // namespace
}  // namespace tessaril
