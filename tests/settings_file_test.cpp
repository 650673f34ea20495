#include "settings/settings_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <memory>
#include <thread>
#include <vector>

#include "settings/temporary_page.h"
#include "tests/support/file_size_limit.h"
#include "tests/support/scratch_folder.h"

namespace tessaril {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

const Settings kSettings{"/home/kaj/", 8.25F, "Sans", "cgi", false, true};

// Nothing is forbidden to root: what is to be forbidden is done as somebody else.
class Unprivileged {
 public:
  Unprivileged() { is_changed_ = geteuid() == 0 && seteuid(65534) == 0; }
  ~Unprivileged() {
    if (is_changed_ && seteuid(0) != 0) abort();
  }
  Unprivileged(const Unprivileged&) = delete;
  Unprivileged& operator=(const Unprivileged&) = delete;

 private:
  bool is_changed_;
};

std::string DefaultFile() {
  return std::string(DefaultSettingsText()) + "\r\n";
}

class SettingsFileTest : public testing::Test {
 protected:
  ScratchFolder scratch;
};
using TemporaryPageTest = SettingsFileTest;

TEST_F(SettingsFileTest, IsMadeWhenMissingAndReplacedAsAWhole) {
  const SettingsFile file(scratch.path(), scratch / "user");
  EXPECT_EQ(file.folder(), scratch.path());
  EXPECT_EQ(file.Load().PrinterFontName, "Arial");
  EXPECT_EQ(scratch.Read("TSL32.ini"), DefaultFile());
  chmod((scratch / "TSL32.ini").c_str(), 0640);
  ASSERT_TRUE(file.Save(kSettings).ok());
  EXPECT_EQ(scratch.Read("TSL32.ini"), SettingsText(kSettings));
  EXPECT_EQ(fs::status(scratch / "TSL32.ini").permissions(), fs::perms(0640));
  EXPECT_EQ(file.Load().PrinterFontName, "Sans");
  EXPECT_EQ(scratch.Names(), Names{"TSL32.ini"});
  // Damage: what was read before it is kept by the program, not by the file.
  scratch.Write("TSL32.ini", "[LastDir]=/home\r\n[Font]Size=9\r\nName=Sans\r\n");
  EXPECT_EQ(file.Load().PrinterFontName, "Sans");
  EXPECT_EQ(scratch.Read("TSL32.ini"), DefaultFile());
}

TEST_F(SettingsFileTest, StaysALink) {
  fs::create_directories(scratch / "program");
  fs::create_symlink("../kept/link.ini", scratch / "program/TSL32.ini");
  scratch.Write("kept/other", "");
  fs::create_symlink("real.ini", scratch / "kept/link.ini");  // leads nowhere yet
  const SettingsFile file(scratch / "program", scratch / "user");
  EXPECT_EQ(file.Load().PrinterFontName, "Arial");
  EXPECT_EQ(scratch.Read("kept/real.ini"), DefaultFile());
  ASSERT_TRUE(file.Save(kSettings).ok());
  EXPECT_EQ(scratch.Read("kept/real.ini"), SettingsText(kSettings));
  EXPECT_TRUE(fs::is_symlink(scratch / "program/TSL32.ini"));
  EXPECT_TRUE(fs::is_symlink(scratch / "kept/link.ini"));
}

TEST_F(SettingsFileTest, LivesInTheUsersFolderWhereTheProgramsCannotBeWritten) {
  scratch.Write("program/TSL32.ini", SettingsText(kSettings));
  chmod((scratch / "program").c_str(), 0555);
  const Unprivileged unprivileged;
  const SettingsFile file(scratch / "program", scratch / "home/share/tessaril");
  EXPECT_EQ(file.folder(), scratch / "home/share/tessaril");
  EXPECT_EQ(fs::status(scratch / "home").permissions(), fs::perms(0700));
  EXPECT_EQ(fs::status(file.folder()).permissions(), fs::perms(0700));
  Settings settings = file.Load();  // the one beside the program
  EXPECT_EQ(settings.PrinterFontName, "Sans");
  EXPECT_TRUE(fs::is_empty(file.folder()));
  settings.PrinterFontName = "Mine";
  fs::remove(file.folder());
  ASSERT_TRUE(file.Save(settings).ok());
  EXPECT_EQ(file.Load().PrinterFontName, "Mine");
  EXPECT_EQ(scratch.Read("program/TSL32.ini"), SettingsText(kSettings));
  chmod((scratch / "program").c_str(), 0755);
}

TEST_F(SettingsFileTest, FailsWithoutATrace) {
  scratch.Write("file", "");
  EXPECT_EQ(SettingsFile(scratch / "file", scratch / "file/user").Save(kSettings).reason(),
            "Not a directory");
  fs::create_directories(scratch / "a/TSL32.ini");
  EXPECT_EQ(SettingsFile(scratch / "a", "/").Save(kSettings).reason(), "Is a directory");
  fs::create_directory(scratch / "b");
  mkfifo((scratch / "b/TSL32.ini").c_str(), 0666);
  const SettingsFile pipe(scratch / "b", "/");
  EXPECT_EQ(pipe.Load().PrinterFontName, "Arial");
  EXPECT_EQ(pipe.Save(kSettings).reason(), "Not a regular file");
  // The disk is full, as far as this process can tell, in the middle of writing.
  scratch.Write("c/TSL32.ini", "old");
  {
    const FileSizeLimit limit(10);
    EXPECT_EQ(SettingsFile(scratch / "c", "/").Save(kSettings).reason(), "File too large");
  }
  chmod((scratch / "c").c_str(), 0777);
  chmod((scratch / "c/TSL32.ini").c_str(), 0444);
  const Unprivileged unprivileged;
  const SettingsFile read_only(scratch / "c", "/");
  EXPECT_EQ(read_only.folder(), scratch / "c");
  EXPECT_EQ(read_only.Save(kSettings).reason(), "Permission denied");
  EXPECT_EQ(scratch.Read("c/TSL32.ini"), "old");
  for (const char* folder : {"a", "b", "c"}) {
    EXPECT_EQ(std::distance(fs::directory_iterator(scratch / folder), {}), 1) << folder;
  }
}

TEST_F(TemporaryPageTest, EachProgramHasItsOwn) {
  auto first = std::make_unique<TemporaryPage>(scratch.path());
  const TemporaryPage second(scratch.path());
  auto third = std::make_unique<TemporaryPage>(scratch.path());
  EXPECT_EQ(third->path(), scratch / "~TSLtemp-3.htm");
  ASSERT_TRUE(first->Write("longer content").ok());
  ASSERT_TRUE(first->Write(std::string_view("1\0\n", 3)).ok());
  ASSERT_TRUE(second.Write("2").ok());
  third->Delete();  // never written
  EXPECT_EQ(scratch.Read("~TSLtemp.htm"), std::string("1\0\n", 3));
  first->Delete();
  first.reset();
  third.reset();
  EXPECT_EQ(scratch.Names(), (Names{".~TSLtemp-2.lock", "~TSLtemp-2.htm"}));
  EXPECT_EQ(TemporaryPage(scratch.path()).path(), scratch / "~TSLtemp.htm");
  EXPECT_EQ(TemporaryPage(scratch / "none").Write("x").reason(), "No such file or directory");
}

TEST_F(TemporaryPageTest, ACrashedProgramLeavesItsNameToTheNext) {
  const pid_t child = fork();
  if (child == 0) {
    const TemporaryPage page(scratch.path());
    _exit(page.Write("left").ok() ? 0 : 1);
  }
  int status = -1;
  waitpid(child, &status, 0);
  ASSERT_EQ(status, 0);
  EXPECT_EQ(scratch.Names(), (Names{".~TSLtemp.lock", "~TSLtemp.htm"}));
  {
    const TemporaryPage page(scratch.path());
    EXPECT_EQ(page.path(), scratch / "~TSLtemp.htm");
    page.Delete();
  }
  EXPECT_TRUE(scratch.Names().empty());
}

// A lock on a file that somebody has just removed is no lock: the next program would take the name again.
TEST_F(TemporaryPageTest, NoNameIsHadByARemovedLockWhileProgramsComeAndGo) {
  std::atomic<int> removed = 0;
  const auto come_and_go = [&] {
    for (int i = 0; i < 2000; ++i) {
      const TemporaryPage page(scratch.path());
      const std::string stem = fs::path(page.path()).stem();
      removed += fs::exists(scratch / ("." + stem + ".lock")) ? 0 : 1;
    }
  };
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) threads.emplace_back(come_and_go);
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(removed, 0);
  EXPECT_TRUE(scratch.Names().empty());
}

}  // namespace
}  // namespace tessaril
