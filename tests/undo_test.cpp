// What runs change can be taken back, to the byte, and nothing else is touched by that.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>

#include "engine/disk_files.h"
#include "engine/search_run.h"
#include "tests/support/file_size_limit.h"
#include "tests/support/program.h"
#include "tests/support/program_entities.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/watched_files.h"
#include "tests/support/writing_runs.h"
#include "undo/undo_plan.h"
#include "undo/undoable_files.h"

namespace tessaril {
namespace {

namespace fs = std::filesystem;

class UndoTest : public testing::Test {
 protected:
  // A change of pages at the door, as a run of its own.
  void InRun(const std::function<void(Files& files)>& change, bool goes_on = false) {
    DiskFiles disk;
    UndoableFiles files(disk, store, "test", [&](const std::string& reason) {
      asked.push_back(reason);
      return goes_on;
    });
    change(files);
  }

  static Status Replace(Files& files, const std::string& path, const std::string& content) {
    ByteBuffer bytes;
    FileStamp stamp;
    if (Status status = files.Read(path, bytes, stamp); !status.ok()) return status;
    const std::string_view piece = content;
    return files.ReplaceContent(path, stamp, {&piece, 1});
  }

  UndoPlan LastRun() const {
    std::vector<UndoableRun> runs;
    EXPECT_TRUE(store.List(runs).ok());
    DiskFiles disk;
    UndoPlan plan;
    EXPECT_TRUE(!runs.empty() && plan.Make(store, runs.front().number, disk).ok());
    return plan;
  }

  UndoEnd Undo(const UndoPlan& plan) {
    UndoEnd end;
    InRun([&](Files& files) { end = plan.Perform(files, [] { return false; }); });
    return end;
  }
  UndoEnd UndoLast() { return Undo(LastRun()); }

  // The paths and contents of the site, links by where they lead.
  std::map<std::string, std::string> Site() const {
    std::map<std::string, std::string> site;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(scratch / "site")) {
      const std::string path = entry.path();
      site[path] = entry.is_symlink() ? "to " + fs::read_symlink(path).string() : ContentOf(path);
    }
    return site;
  }

  std::string Page(const std::string& name) const { return scratch / ("site/" + name); }
  std::vector<unsigned> Numbers() const {
    std::vector<UndoableRun> runs;
    EXPECT_TRUE(store.List(runs).ok());
    std::vector<unsigned> numbers;
    for (const UndoableRun& run : runs) numbers.push_back(run.number);
    return numbers;
  }

  ScratchFolder scratch;
  UndoStore store{scratch / "user/undo"};
  std::vector<std::string> asked;
};

TEST_F(UndoTest, TakesBackWhatEachWritingRunDid) {
  for (const WritingRun& run : AllWritingRuns()) {
    fs::remove_all(scratch / "site");
    fs::remove(scratch / "twin.htm");
    for (const char* name : {"a.htm", "hard.htm", "Up.htm", "sub/b.htm"})
      scratch.Write(std::string("site/") + name, std::string(kWritingPage) + "<a href=Up.htm>\r\n\0\xFF");
    for (const char* name : {"good.htm", "sub/other.htm", "sub/sub/other.htm"})
      scratch.Write(std::string("site/") + name, "x");
    scratch.Write("target.htm", std::string(kWritingPage));
    fs::create_symlink("../target.htm", Page("link.htm"));
    fs::create_hard_link(Page("hard.htm"), scratch / "twin.htm");
    const auto before = Site();
    InRun([&](Files& files) {
      CorrectingHost host;
      host.unasked = !run.asks;
      host.takes_proposals = true;
      RunState state;
      SearchRun(files, host, ProgramEntities(), OptionsOf(run, scratch / "site"), state);
    });
    const auto after = Site();
    const std::string target = scratch.Read("target.htm");
    ASSERT_NE(before, after) << run.name;
    for (const auto& [wanted, its_target] :
         {std::pair(before, std::string(kWritingPage)), std::pair(after, target)}) {
      const UndoEnd end = UndoLast();  // at the second time, of the undo
      EXPECT_TRUE(end.failed.empty() && end.left_alone.empty()) << run.name;
      EXPECT_EQ(Site(), wanted) << run.name;
      EXPECT_EQ(scratch.Read("target.htm"), its_target) << run.name;
      EXPECT_EQ(scratch.Read("twin.htm"), scratch.Read("site/hard.htm"));
    }
    EXPECT_EQ(fs::hard_link_count(Page("hard.htm")), 2U);
  }
}

TEST_F(UndoTest, TakesBackChangesOfOneFileInTheirOrder) {
  scratch.Write("site/A.htm", "first");
  const auto change = [&](Files& files) {
    const auto rename = [&](const char* from, const char* to) {
      EXPECT_TRUE(files.Rename(scratch / "site", from, to).ok());
    };
    EXPECT_TRUE(Replace(files, Page("A.htm"), "second").ok());
    rename("A.htm", "b.htm");
    EXPECT_TRUE(Replace(files, Page("b.htm"), "third").ok());
    EXPECT_TRUE(Replace(files, Page("b.htm"), "fourth").ok());
    rename("b.htm", "c.htm");
  };
  InRun(change);
  EXPECT_EQ(LastRun().restored(), std::vector<std::string>{Page("A.htm")});
  EXPECT_EQ(UndoLast().restored, std::vector<std::string>{Page("A.htm")});
  EXPECT_EQ(scratch.Read("site/A.htm"), "first");
  EXPECT_EQ(UndoLast().restored, std::vector<std::string>{Page("c.htm")});
  EXPECT_EQ(Site(), (std::map<std::string, std::string>{{Page("c.htm"), "fourth"}}));
}

TEST_F(UndoTest, LeavesAloneWhatIsNotAsTheRunLeftIt) {
  struct Row {
    const char* what;
    std::function<void(const std::string& page)> mutate;
    const char* reason;
  };
  const Row rows[] = {
      {"changed", [&](const std::string&) { scratch.Write("site/b.htm", "mine"); }, "It was changed since"},
      {"removed", [](const std::string& page) { fs::remove(page); }, "No such file or directory"},
      {"folder",
       [](const std::string& page) {
         fs::remove(page);
         fs::create_directory(page);
       },
       "Is a directory"},
      {"pipe",
       [](const std::string& page) {
         fs::remove(page);
         ASSERT_EQ(mkfifo(page.c_str(), 0600), 0);
       },
       "Not a regular file"},
      {"restored by hand", [&](const std::string&) { scratch.Write("site/b.htm", "old"); }, ""},
  };
  for (const Row& row : rows) {
    for (const bool is_late : {false, true}) {  // when the plan is made already
      fs::remove_all(scratch / "site");
      for (const char* name : {"a.htm", "b.htm", "c.htm"}) scratch.Write(std::string("site/") + name, "old");
      InRun([&](Files& files) {
        for (const char* name : {"a.htm", "b.htm", "c.htm"})
          EXPECT_TRUE(Replace(files, Page(name), "new").ok());
      });
      UndoPlan plan;
      if (is_late) plan = LastRun();
      row.mutate(Page("b.htm"));
      auto wanted = Site();
      wanted[Page("a.htm")] = wanted[Page("c.htm")] = "old";
      if (!is_late) plan = LastRun();
      const UndoEnd end = Undo(plan);
      EXPECT_EQ(Site(), wanted) << row.what;
      EXPECT_EQ(end.restored.size(), 2U);
      const std::vector<FileLeft>& told = is_late ? end.failed : end.left_alone;
      ASSERT_EQ(told.size(), is_late || *row.reason != '\0' ? 1U : 0U) << row.what;
      if (told.empty()) continue;
      EXPECT_EQ(told[0].path, Page("b.htm"));
      EXPECT_TRUE(is_late || told[0].reason == row.reason) << told[0].reason;
    }
  }
}

TEST_F(UndoTest, FollowsNoFolderThatIsMoved) {
  for (const char* name : {"site/sub/a.htm", "site/sub/b.htm"}) scratch.Write(name, "old");
  InRun([&](Files& files) {
    for (const char* name : {"sub/a.htm", "sub/b.htm"}) EXPECT_TRUE(Replace(files, Page(name), "new").ok());
  });
  const UndoPlan plan = LastRun();
  DiskFiles disk;
  int changes = 0;
  const UndoEnd end = plan.Perform(disk, [&] {
    if (++changes == 2) {
      fs::rename(Page("sub"), Page("moved"));
      fs::create_directory(Page("sub"));
    }
    return false;
  });
  EXPECT_EQ(end.restored, std::vector<std::string>{Page("sub/b.htm")});
  ASSERT_EQ(end.failed.size(), 1U);
  EXPECT_EQ(end.failed[0].path, Page("sub/a.htm"));
  EXPECT_EQ(scratch.Read("site/moved/a.htm"), "new");
}

TEST_F(UndoTest, TakesNoRenameBackOverAnotherFile) {
  scratch.Write("site/A.htm", "text");
  InRun([&](Files& files) { EXPECT_TRUE(files.Rename(scratch / "site", "A.htm", "a.htm").ok()); });
  const UndoPlan early = LastRun();
  scratch.Write("site/A.htm", "another");
  const auto site = Site();
  EXPECT_EQ(Undo(early).failed.size(), 1U);
  ASSERT_EQ(UndoLast().left_alone.size(), 1U);
  EXPECT_EQ(LastRun().left_alone()[0].reason, "There is a file again that has its old name");
  EXPECT_EQ(Site(), site);
  fs::remove(Page("a.htm"));
  ASSERT_EQ(LastRun().left_alone().size(), 1U);  // the other one is not the file that was renamed
  EXPECT_EQ(LastRun().left_alone()[0].path, Page("a.htm"));
}

TEST_F(UndoTest, AsksOnceWhetherToGoOnWithout) {
  for (const bool goes_on : {true, false}) {
    for (const char* why : {"Not a directory", "File too large"}) {
      const std::string text(5000, '.');
      for (const char* name : {"a.htm", "b.htm", "c.htm"}) scratch.Write(std::string("site/") + name, text);
      fs::remove_all(scratch / "user");
      if (*why == 'N') scratch.Write("user/undo", "a file");
      asked.clear();
      InRun(
          [&](Files& files) {
            const FileSizeLimit limit(8000);
            for (const char* name : {"a.htm", "b.htm", "c.htm"}) {
              const bool is_kept = *why == 'F' && *name == 'a';
              EXPECT_EQ(Replace(files, Page(name), "new").reason(),
                        goes_on || is_kept ? "" : "No undo can be kept: " + store.folder() + ": " + why);
            }
          },
          goes_on);
      EXPECT_EQ(asked, std::vector<std::string>{store.folder() + ": " + why});
      EXPECT_EQ(scratch.Read("site/c.htm"), goes_on ? "new" : text);
      if (*why == 'N') continue;
      EXPECT_EQ(UndoLast().restored, std::vector<std::string>{Page("a.htm")});
      EXPECT_EQ(scratch.Read("site/a.htm"), text);
    }
  }
}

TEST_F(UndoTest, KeepsTheLastRuns) {
  scratch.Write("site/a.htm", "0");
  const auto change = [&](int number) {
    InRun([&](Files& files) { EXPECT_TRUE(Replace(files, Page("a.htm"), std::to_string(number)).ok()); });
  };
  InRun([&](Files& files) { EXPECT_TRUE(static_cast<UndoableFiles&>(files).Begin().ok()); });
  EXPECT_EQ(fs::exists(store.folder() + "/1"), false);  // it changed nothing
  DiskFiles disk;
  auto first = std::make_unique<UndoableFiles>(disk, store, "goes on", nullptr);
  EXPECT_TRUE(Replace(*first, Page("a.htm"), "x").ok());
  EXPECT_FALSE(UndoPlan().Make(store, 1, disk).ok());
  for (int number = 1; number <= 22; ++number) change(number);
  std::vector<unsigned> kept;
  for (unsigned number = 23; number >= 4; --number) kept.push_back(number);
  kept.push_back(1);
  EXPECT_EQ(Numbers(), kept);
  first.reset();
  kept.pop_back();
  EXPECT_EQ(Numbers(), kept);
  // A journal may be larger than all may be together; what is behind its last line does not matter here.
  const auto enlarge = [&](unsigned number, std::uintmax_t size) {
    fs::resize_file(store.folder() + "/" + std::to_string(number) + "/journal", size);
  };
  enlarge(20, 300'000'000);
  change(24);
  EXPECT_EQ(Numbers().size(), 20U);
  enlarge(22, 201'000'000);
  change(25);
  EXPECT_EQ(Numbers(), (std::vector<unsigned>{25, 24, 23, 22, 21}));
  enlarge(25, 600'000'000);
  store.Prune();
  EXPECT_EQ(Numbers(), std::vector<unsigned>{25});
  // Runs that were killed before they had begun their journal count for nothing, not even as the newest.
  for (unsigned number = 26; number <= 50; ++number) {
    if (number % 2 == 0) scratch.Write("user/undo/" + std::to_string(number) + "/journal", "");
    fs::create_directories(store.folder() + "/" + std::to_string(number));
  }
  store.Prune();
  EXPECT_EQ(Numbers(), std::vector<unsigned>{25});
  EXPECT_FALSE(fs::exists(store.folder() + "/49") || fs::exists(store.folder() + "/50"));
  fs::create_directories(store.folder() + "/4294967295");  // after which there is no number
  change(26);
  EXPECT_EQ(Numbers(), std::vector<unsigned>{26});
}

TEST_F(UndoTest, TellsOfFoldersThatAreNotFlushed) {
  for (const char* name : {"site/a.htm", "site/sub/b.htm", "site/c.htm"}) scratch.Write(name, "old");
  InRun([&](Files& files) {
    for (const char* name : {"a.htm", "sub/b.htm", "c.htm"})
      EXPECT_TRUE(Replace(files, Page(name), "new").ok());
  });
  DiskFiles disk;
  WatchedFiles files(disk);
  files.before = [&](std::string_view call, const std::string& path) {
    return call == "FlushFolder" && path == Page("sub") ? Status::Failure("no flush") : Status();
  };
  const UndoEnd end = LastRun().Perform(files, [] { return false; });
  EXPECT_EQ(end.restored.size(), 3U);
  ASSERT_EQ(end.failed.size(), 1U);
  EXPECT_EQ(end.failed[0].path + ": " + end.failed[0].reason, Page("sub") + ": no flush");
}

// Whatever becomes of the journal, a page is restored to what it was, or stays.
TEST_F(UndoTest, RestoresNothingWrongOutOfADamagedJournal) {
  const std::string old_text = "old\nfailed\nleft 0 1:\n";
  for (const char* name : {"a.htm", "b.htm"}) scratch.Write(std::string("site/") + name, old_text);
  scratch.Write("site/C.htm", old_text);
  InRun([&](Files& files) {
    EXPECT_TRUE(Replace(files, Page("a.htm"), "new").ok());
    EXPECT_TRUE(files.Rename(scratch / "site", "C.htm", "c.htm").ok());
    EXPECT_TRUE(Replace(files, Page("b.htm"), "new").ok());
  });
  const std::string name = "user/undo/1/journal";
  const std::string whole = scratch.Read(name);
  std::size_t most_restored = 0;
  const auto check = [&](const std::string& journal, const std::string& what) {
    scratch.Write(name, journal);
    UndoPlan plan;
    DiskFiles disk;
    if (!plan.Make(store, 1, disk).ok()) return;
    const UndoEnd end = plan.Perform(disk, [] { return false; });
    most_restored = std::max(most_restored, end.restored.size());
    const bool is_renamed_back = fs::exists(Page("C.htm"));
    EXPECT_EQ(scratch.Read(is_renamed_back ? "site/C.htm" : "site/c.htm"), old_text) << what;
    for (const char* page : {"a.htm", "b.htm"}) {
      const std::string text = scratch.Read(std::string("site/") + page);
      EXPECT_TRUE(text == old_text || text == "new") << what << text;
      scratch.Write(std::string("site/") + page, "new");
    }
    if (is_renamed_back) fs::rename(Page("C.htm"), Page("c.htm"));
    EXPECT_EQ(Site().size(), 3U) << what;
  };
  for (std::size_t size = 0; size < whole.size(); ++size)
    check(whole.substr(0, size), "first " + std::to_string(size));
  EXPECT_EQ(most_restored, 2U);  // the last line is not complete
  for (std::size_t at = 0; at < whole.size(); ++at) {
    std::string damaged = whole;
    damaged[at] = whole[at] == '9' ? '\n' : '9';
    check(damaged, "damaged at " + std::to_string(at));
  }
  EXPECT_EQ(most_restored, 3U);
}

class TslUndo : public testing::Test {
 protected:
  // The user's folder of all tests is not for these, which ask for the last run.
  ProgramEnd Run(const Words& arguments) const {
    return RunTsl(arguments, [this] { setenv("XDG_DATA_HOME", (scratch / "user").c_str(), 1); });
  }
  ScratchFolder scratch;
  const std::string folder = scratch / "site";
};

TEST_F(TslUndo, RestoresAndTells) {
  const std::string a = scratch / "site/a.htm";
  const auto fill = [&](const std::string& text) {
    scratch.Write("site/a.htm", text);
    scratch.Write("site/b\n.htm", text);
  };
  fill("hit");
  EXPECT_EQ(Run({"undo"}).err, "tsl: There is no run to undo.\n");
  EXPECT_EQ(Run({"undo", "--list"}).status, 1);
  EXPECT_EQ(Run({"search", "hit", folder}).status, 0);
  EXPECT_EQ(Run({"replace", "hit", "new", folder}).status, 0);  // only reports
  EXPECT_FALSE(fs::exists(scratch / "user/tessaril/undo/1"));
  EXPECT_EQ(Run({"replace", "hit", "new", folder, "--yes", "--no-undo"}).status, 0);
  EXPECT_FALSE(fs::exists(scratch / "user/tessaril/undo/1"));
  fill("hit");
  EXPECT_EQ(Run({"replace", "hit", "new", folder, "--yes"}).status, 0);
  ProgramEnd end = Run({"undo", "--list"});
  EXPECT_EQ(end.status, 0);
  EXPECT_EQ(end.out.substr(0, 3), "1  ");
  EXPECT_TRUE(end.out.ends_with("  replace \"hit\" \"new\" " + folder + "  (2 files)\n")) << end.out;
  end = Run({"undo"});  // nobody answers
  EXPECT_EQ(end.status, 3);
  EXPECT_TRUE(end.out.ends_with("To be restored:\n  " + a + "\n  " + folder + "/b\\x0A.htm\n")) << end.out;
  EXPECT_EQ(scratch.Read("site/a.htm"), "new");
  scratch.Write("site/b\n.htm", "mine");
  end = Run({"undo", "--yes"});
  EXPECT_EQ(end.status, 1);
  EXPECT_NE(end.out.find("Changed since, left alone:\n"), std::string::npos) << end.out;
  EXPECT_TRUE(end.out.ends_with(": It was changed since\n1 file restored.\n")) << end.out;
  EXPECT_EQ(scratch.Read("site/a.htm"), "hit");
  EXPECT_EQ(scratch.Read("site/b\n.htm"), "mine");
  EXPECT_EQ(Run({"undo", "2", "--yes"}).status, 0);  // the undo
  EXPECT_EQ(scratch.Read("site/a.htm"), "new");
  end = Run({"undo", "99"});
  EXPECT_EQ(end.status, 2);
  EXPECT_EQ(end.err, "tsl: run 99: There is no such run\n");
  for (const char* wrong : {"", "0", "-1", "1x", "99999999999"})
    EXPECT_EQ(Run({"undo", wrong, "--yes"}).status, 2) << wrong;
}

TEST_F(TslUndo, TellsWhatCannotBeReadAndTakesNoOtherRunForIt) {
  for (const char* name : {"site/a.htm", "site/b.htm"}) scratch.Write(name, "hit");
  EXPECT_EQ(Run({"replace", "hit", "new", folder, "--yes"}).status, 0);
  const std::string b = scratch / "site/b.htm";
  fs::remove(b);
  fs::create_symlink("/proc/self/mem", b);
  const ProgramEnd end = Run({"undo", "--yes"});
  EXPECT_EQ(end.status, 2);
  EXPECT_EQ(end.err, "tsl: " + b + ": Input/output error\n");
  EXPECT_NE(end.out.find("Could not be read, left alone:\n  " + b), std::string::npos) << end.out;
  EXPECT_EQ(scratch.Read("site/a.htm"), "hit");
  EXPECT_EQ(Run({"undo", "1", "--yes"}).status, 2);  // nothing else is left to restore
  EXPECT_EQ(Run({"replace", "hit", "new", scratch / "site/a.htm", "--yes"}).status, 0);
  const std::string journal = scratch / "user/tessaril/undo/3/journal";
  fs::remove(journal);
  fs::create_directory(journal);
  EXPECT_EQ(Run({"undo", "--yes"}).err, "tsl: run 3: Is a directory\n");
  EXPECT_TRUE(Run({"undo", "--list"}).out.starts_with("3  Is a directory\n2  "));
  EXPECT_EQ(scratch.Read("site/a.htm"), "new");
}

TEST_F(TslUndo, ChangesNothingWhereNoUndoCanBeKept) {
  scratch.Write("user/tessaril", "a file");
  scratch.Write("site/a.htm", "hit \xE9 <a href=gone.htm>x</a>");
  const std::string text = scratch.Read("site/a.htm");
  scratch.Write("report", "old");
  const Words runs[] = {{"replace", "hit", "new"}, {"entities"}, {"links", "--rules", "today"}, {"undo"}};
  for (const Words& run : runs) {
    Words words = run;
    if (run[0] != "undo") words.insert(words.end(), {folder, "--report", scratch / "report"});
    words.emplace_back("--yes");
    const ProgramEnd end = Run(words);
    EXPECT_EQ(end.status, 2) << run[0];
    EXPECT_NE(end.err.find("Not a directory"), std::string::npos) << end.err;
    EXPECT_EQ(scratch.Read("site/a.htm"), text);
    EXPECT_EQ(scratch.Read("report"), "old");
    EXPECT_EQ(end.out, "");
  }
  EXPECT_EQ(Run({"replace", "hit", "new", folder, "--yes", "--no-undo"}).status, 0);
  EXPECT_EQ(scratch.Read("site/a.htm").substr(0, 3), "new");
  fs::remove(scratch / "user/tessaril");
  // Before the journal is begun, and in the middle of the run.
  scratch.Write("site/a.htm", "new" + std::string(3000, ' '));
  for (const rlim_t most : {rlim_t{0}, rlim_t{2000}}) {
    const ProgramEnd end = RunTsl({"replace", "new", "hit", folder, "--yes"}, [&] {
      setenv("XDG_DATA_HOME", (scratch / "user").c_str(), 1);
      const rlimit limit{most, most};
      setrlimit(RLIMIT_FSIZE, &limit);
    });
    EXPECT_EQ(end.status, 2);
    EXPECT_TRUE(end.err.starts_with("tsl: no undo can be kept: ")) << end.err;
    EXPECT_NE(end.err.find("undo: File too large (--no-undo goes on without)\n"), std::string::npos)
        << end.err;
    EXPECT_EQ(scratch.Read("site/a.htm").substr(0, 3), "new");
  }
}

}  // namespace
}  // namespace tessaril
