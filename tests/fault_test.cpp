// Whatever fails on the disk, and wherever in a run: no page is lost, and what is told is what happened.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <system_error>

#include "engine/disk_files.h"
#include "engine/search_run.h"
#include "tests/support/long_form.h"
#include "tests/support/other_user.h"
#include "tests/support/program_entities.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/system_faults.h"
#include "tests/support/watched_files.h"
#include "tests/support/writing_runs.h"
#include "ui/shared/save_file.h"
#include "undo/undo_plan.h"
#include "undo/undoable_files.h"

namespace tessaril {
namespace {

namespace fs = std::filesystem;
using Contents = std::map<std::string, std::string>;  // of all files of a tree, by their paths

std::string Words(int error) {
  return std::generic_category().message(error);
}

// A small site on the disk with every kind of page that is written in a way of its own.
class Tree {
 public:
  explicit Tree(bool by_today) {
    const std::string page(kWritingPage);
    for (const char* name : {"a.htm", "hard.htm", "readonly.htm", "sub/b.htm", "Up.htm", "z.htm"})
      scratch_.Write(std::string("site/") + name, page);
    scratch_.Write("site/a.htm", page + "<a href=\"Up.htm\">up</a><a href=\"good.htm#there\">to</a>");
    scratch_.Write("site/good.htm", "<a name=\"there\">good</a>");
    scratch_.Write("site/sub/other.htm", "other");
    if (by_today) {
      // Neither of the two is certain to be meant.
      for (const char* name : {"A.gif", "a.gif"}) scratch_.Write(std::string("site/two/") + name, "");
      scratch_.Write("site/sub/good.htm", "what is corrected is right at once");
      scratch_.Write("site/z.htm", page + "<img src=\"two/A.GIF\">");
    }
    scratch_.Write("site/sub/sub/other.htm", "other");
    scratch_.Write("outside/target.htm", page);
    fs::create_hard_link(site() + "/hard.htm", scratch_ / "outside/twin.htm");
    fs::create_symlink("../outside/target.htm", site() + "/link.htm");
    chmod((site() + "/a.htm").c_str(), 0640);
    chmod((site() + "/readonly.htm").c_str(), 0444);
    has_attributes_ = setxattr((site() + "/a.htm").c_str(), "user.note", "kept", 4, 0) == 0;
    if (geteuid() == 0) has_other_owner_ = chown((site() + "/a.htm").c_str(), 12, 34) == 0;
  }

  std::string site() const { return scratch_ / "site"; }
  const std::string& root() const { return scratch_.path(); }

  // The attributes of the page that has some: whole with either content.
  std::string CheckAttributes() const {
    struct stat info {};
    const std::string path = site() + "/a.htm";
    std::array<char, 8> value{};
    stat(path.c_str(), &info);
    if ((info.st_mode & 07777) != 0640) return "mode";
    if (has_other_owner_ && (info.st_uid != 12 || info.st_gid != 34)) return "owner";
    if (has_attributes_ && getxattr(path.c_str(), "user.note", value.data(), value.size()) != 4)
      return "attribute";
    return fs::hard_link_count(site() + "/hard.htm") == 2 ? "" : "names";
  }

  Contents All() const {
    Contents all;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(root())) {
      if (entry.is_regular_file() && !entry.is_symlink()) all[entry.path()] = ContentOf(entry.path());
    }
    return all;
  }

 private:
  ScratchFolder scratch_;
  bool has_attributes_ = false;
  bool has_other_owner_ = false;
};

// One run over a new tree, with what fails in it.
class FaultyRun {
 public:
  explicit FaultyRun(const WritingRun& run) : run_(run) {}

  using Door = std::function<Status(std::string_view call, const std::string& path)>;
  void Go(SystemFaults::Decide decide, Door door = {});

  // Each check adds what it finds wrong to `wrong`.
  void CheckAlways();
  // Takes the run back, over a disk in order.
  void CheckUndo();
  void CheckUndone(bool has_kept);
  // Takes the run back while something fails, and tells what became of it. Each file is whole then.
  UndoEnd UndoWith(SystemFaults::Decide decide);
  void CheckOthersAsIn(const FaultyRun& whole);
  bool Tells(const std::string& words) const;
  bool ReportsAs(const FaultyRun& whole) const;
  bool IsUnrenamed() const { return contents_.contains(site_ + "/Up.htm"); }

  std::string Everything() const;
  const Contents& contents() const { return contents_; }
  const std::string& site() const { return site_; }
  const CorrectingHost& host() const { return host_; }
  // Why no undo could be kept, where that was asked.
  const std::string& asked() const { return asked_; }
  const RunState& state() const { return state_; }

  std::vector<std::string> wrong;

 private:
  std::string Relative(const std::string& path) const {
    return path.substr(std::min(path.size(), root_.size()));
  }
  // The path in the site of a file of the tree.
  std::string ListedAs(const std::string& path) const {
    if (path == root_ + "/outside/target.htm") return site_ + "/link.htm";
    return path == root_ + "/outside/twin.htm" ? site_ + "/hard.htm" : path;
  }
  void CheckTold();

  const WritingRun& run_;
  ScratchFolder user_;
  UndoStore store_{user_ / "undo"};
  std::string asked_;
  std::optional<Tree> tree_;
  std::string root_;
  std::string site_;
  CorrectingHost host_;
  RunState state_;
  Contents before_;
  Contents contents_;
};

void FaultyRun::Go(SystemFaults::Decide decide, Door door) {
  tree_.emplace(run_.by_today);
  root_ = tree_->root();
  before_ = tree_->All();
  site_ = tree_->site();
  host_.unasked = !run_.asks;
  host_.takes_proposals = true;
  {
    DiskFiles disk;
    WatchedFiles files(disk);
    files.before = std::move(door);
    const RunOptions options = OptionsOf(run_, site_);
    const SystemFaults faults(std::move(decide));
    UndoableFiles undoable(files, store_, "run", [this](const std::string& reason) {
      asked_ += reason + "\n";
      return true;
    });
    SearchRun(undoable, host_, ProgramEntities(), options, state_);
    wrong = files.violations;
  }
  contents_ = tree_->All();
}

std::string FaultyRun::Everything() const {
  std::string all;
  for (const std::string& failure : host_.failures) all += failure + "\n";
  return all + asked_ + state_.Results;
}

// What the run put away is restored; what it could not put away is as the run left it.
void FaultyRun::CheckUndo() {
  DiskFiles files;
  std::vector<UndoableRun> runs;
  UndoPlan plan;
  if (!store_.List(runs).ok() || runs.size() > 1) wrong.emplace_back("the store is damaged");
  UndoEnd end;
  if (!runs.empty() && plan.Make(store_, runs.front().number, files).ok())
    end = plan.Perform(files, [] { return false; });
  for (const FileLeft& file : end.failed) wrong.push_back("not undone: " + file.path + ": " + file.reason);
  CheckUndone(!asked_.empty() || Tells("its old content is in "));
  for (const auto& [path, content] : tree_->All()) {
    if (fs::path(path).filename().string()[0] == '.') continue;
    if (content != before_[path] && content != contents_[path]) wrong.push_back("undone wrongly: " + path);
  }
}

// All is as before the run, but for a page that a message names.
void FaultyRun::CheckUndone(bool has_kept) {
  Contents undone = tree_->All();
  std::erase_if(undone, [](const auto& file) { return fs::path(file.first).filename().string()[0] == '.'; });
  if (!has_kept && undone != before_) wrong.emplace_back("the undo leaves something");
}

UndoEnd FaultyRun::UndoWith(SystemFaults::Decide decide) {
  DiskFiles disk;
  WatchedFiles files(disk);
  UndoEnd end;
  {
    const SystemFaults faults(std::move(decide));
    UndoPlan plan;
    std::vector<UndoableRun> runs;
    Status read = store_.List(runs);
    const bool is_listed = read.ok() && !runs.empty() && runs.back().number == 1;
    if (read.ok() && !is_listed) wrong.emplace_back("the run is not listed");
    if (is_listed) read = runs.back().reading;
    if (read.ok()) read = plan.Make(store_, 1, disk);
    if (!read.ok()) {
      end.failed.push_back({store_.folder(), read.reason()});
      return end;
    }
    UndoableFiles undoable(files, store_, "undo", [this](const std::string& reason) {
      asked_ += reason + "\n";
      return true;
    });
    end = plan.Perform(undoable, [] { return false; });
  }
  wrong.insert(wrong.end(), files.violations.begin(), files.violations.end());
  return end;
}

bool FaultyRun::Tells(const std::string& words) const {
  return Everything().find(words) != std::string::npos;
}

void FaultyRun::CheckAlways() {
  if (const std::string lost = tree_->CheckAttributes(); !lost.empty()) wrong.push_back("lost: " + lost);
  if (contents_[root_ + "/outside/twin.htm"] != contents_[site_ + "/hard.htm"]) wrong.emplace_back("twin");
  for (const auto& [path, content] : contents_) {
    const std::string name = fs::path(path).filename();
    if (name.starts_with(".tessaril-") && !Tells(name)) wrong.push_back("stays untold: " + name);
  }
  for (const std::string& failure : host_.failures) {
    if (!failure.starts_with(site_)) wrong.push_back("names no file: " + failure);
  }
  CheckTold();
}

// The report claims what the pages show.
void FaultyRun::CheckTold() {
  std::map<std::string, std::size_t> told;
  for (const auto& [path, count] : ChangesTold(state_.Results)) {
    if (count == 0) continue;
    std::string there = fs::exists(path) ? path : site_ + "/up.htm";  // the page that is renamed
    told[fs::canonical(there)] += count;
  }
  for (const auto& [path, content] : contents_) {
    if (path.find("/.tessaril-") != std::string::npos || path.ends_with("/twin.htm")) continue;
    std::string reason;
    for (const std::string& failure : host_.failures) {
      if (failure.starts_with(ListedAs(path) + ": ")) reason = failure;
    }
    const std::size_t changes = CountMarks(run_, ContentOf(WatchedFiles::KeptAt(path, reason)));
    const bool has_good_links =
        path.ends_with("/a.htm") && run_.function == Function::kLinks && run_.marks.size() > 1;
    const std::size_t made = changes - (has_good_links ? 1 : 0);
    if (made != told[path])
      wrong.push_back(Relative(path) + " has " + std::to_string(made) + " changes, told " +
                      std::to_string(told[path]));
  }
}

bool FaultyRun::ReportsAs(const FaultyRun& whole) const {
  std::string all = Everything();
  for (std::size_t at = 0; (at = all.find(root_, at)) != std::string::npos;)
    all.replace(at, root_.size(), whole.root_);
  return all == whole.Everything();
}

// A page that no message names is as it is after a run in which nothing failed.
void FaultyRun::CheckOthersAsIn(const FaultyRun& whole) {
  const bool names_folder = std::any_of(
      host_.failures.begin(), host_.failures.end(),
      [](const auto& failure) { return fs::is_directory(failure.substr(0, failure.find(": "))); });
  for (const auto& [path, content] : whole.contents()) {
    const std::string here = root_ + whole.Relative(path);
    if (const auto found = contents_.find(here); found != contents_.end() && found->second == content)
      continue;
    const std::string listed = ListedAs(here);
    bool is_told = false;
    for (const std::string& failure : host_.failures) {
      const std::string named = failure.substr(0, failure.find(": "));
      is_told = is_told || listed.starts_with(named) || listed == site_ + "/up.htm";
    }
    // Where a folder could not be listed, the renaming of a file in it is not offered, and no link into it is
    // certain to be meant otherwise.
    if (here == site_ + "/up.htm" && IsUnrenamed()) continue;
    // Nor is what it is called there told.
    std::string in_doubt = content;
    if (const std::size_t at = in_doubt.find("two/A.gif"); at != std::string::npos)
      in_doubt.replace(at, 9, "two/A.GIF");
    if (names_folder && contents_[here] == in_doubt) continue;
    const auto old = before_.find(here);
    if (names_folder && old != before_.end() && contents_[here] == old->second) continue;
    if (!is_told && host_.failures.empty())
      wrong.push_back(Relative(here) + " differs, and nothing says why");
    if (!is_told && !host_.failures.empty()) wrong.push_back(Relative(here) + " differs, too");
  }
}

std::string Report(const FaultyRun& run, const WritingRun& what, const std::string& fault) {
  std::string text = std::string(what.name) + ", " + fault + "\n";
  for (const std::string& wrong : run.wrong) text += "  " + wrong + "\n";
  return text + run.Everything();
}

TEST(Faults, OneSystemCallFails) {
  ProgramEntities();
  for (const WritingRun& what : AllWritingRuns()) {
    int all_calls = 0;
    FaultyRun whole(what);
    whole.Go([&](std::string_view, int number) { return all_calls = number, SystemFaults::kNone; });
    whole.CheckAlways();
    ASSERT_TRUE(whole.wrong.empty() && whole.host().failures.empty()) << Report(whole, what, "no fault");
    const int step = IsLongForm() ? 1 : 97;
    int offset = 0;
    for (const int error : {EIO, ENOSPC, EACCES, EINTR, SystemFaults::kShort}) {
      for (int nth = 1 + offset++ * 19 % step; nth <= all_calls; nth += step) {
        std::string failed;
        FaultyRun run(what);
        run.Go([&](std::string_view call, int number) {
          if (number != nth) return SystemFaults::kNone;
          failed = call;
          return error;
        });
        run.CheckAlways();
        run.CheckOthersAsIn(whole);
        run.CheckUndo();
        const bool heals = error == SystemFaults::kShort ||
                           (error == EINTR && (failed == "read" || failed == "write" || failed == "fsync"));
        const std::string words = heals ? "" : Words(error);
        if (heals && !run.host().failures.empty()) run.wrong.emplace_back("tells of what it overcame");
        const bool offers_less = what.name == "links, asked" && run.IsUnrenamed();
        if (!run.Tells(words) && run.host().failures.empty() && !offers_less && !run.ReportsAs(whole))
          run.wrong.emplace_back("says nothing");
        EXPECT_TRUE(run.wrong.empty()) << Report(
            run, what, failed + " (" + std::to_string(nth) + ") fails with " + (heals ? "little" : words));
        if (testing::Test::HasFailure() && std::getenv("ALL_FAULTS") == nullptr) return;
      }
    }
  }
}

// How many system calls a run makes in which none fails.
int CallsOf(const WritingRun& what) {
  int calls = 0;
  FaultyRun run(what);
  run.Go([&](std::string_view, int number) { return calls = number, SystemFaults::kNone; });
  return calls;
}

// The disk is gone, full, or no longer to be written, from some moment on.
TEST(Faults, AllFailsFromSomeCallOn) {
  ProgramEntities();
  struct Row {
    int error;
    bool (*concerns)(std::string_view call);
  };
  const auto is_any = [](std::string_view) { return true; };
  const auto grows = [](std::string_view call) {
    return call == "write" || call == "openat to create" || call == "fallocate" || call == "fsetxattr" ||
           call == "linkat";
  };
  const auto changes = [](std::string_view call) {
    constexpr std::string_view kCalls[] = {
        "write",     "openat to create", "fallocate", "fsetxattr", "linkat",       "ftruncate", "renameat",
        "renameat2", "unlinkat",         "fchmod",    "fchown",    "fremovexattr", "fsync"};
    return std::find(std::begin(kCalls), std::end(kCalls), call) != std::end(kCalls);
  };
  const Row rows[] = {{EIO, is_any}, {ENOSPC, grows}, {EROFS, changes}};
  const int step = IsLongForm() ? 1 : 41;
  int kept_copies = 0;
  for (const WritingRun& what : AllWritingRuns()) {
    for (const Row& row : rows) {
      int all_calls = CallsOf(what);
      for (int from = 1; from <= all_calls; from += step) {
        std::string failed;
        FaultyRun run(what);
        run.Go([&](std::string_view call, int number) {
          all_calls = std::max(all_calls, number);
          if (number < from || !row.concerns(call)) return SystemFaults::kNone;
          failed = call;
          return row.error;
        });
        run.CheckAlways();
        run.CheckUndo();
        const bool matters = !failed.empty() && failed != "close" && failed != "flock" && failed != "stat";
        if (matters && row.error != EIO && !run.Tells(Words(row.error)))
          run.wrong.emplace_back("says nothing");
        kept_copies += run.Tells("its old content is in .tessaril-old-");
        EXPECT_TRUE(run.wrong.empty()) << Report(run, what,
                                                 "all calls from " + std::to_string(from) + " on, " + failed +
                                                     " last, fail with " + Words(row.error));
        if (testing::Test::HasFailure()) return;
      }
    }
  }
  EXPECT_GT(kept_copies, 0);
}

// A journal that cannot be cut back is given up: no second one parts the run in two.
TEST(Faults, TheJournalCannotBeCutBack) {
  ProgramEntities();
  for (const WritingRun& what : AllWritingRuns()) {
    if (what.function != Function::kReplace) continue;
    const int all_calls = CallsOf(what);
    for (int nth = 1; nth <= all_calls; nth += IsLongForm() ? 1 : 7) {
      FaultyRun run(what);
      run.Go([&](std::string_view call, int number) {
        return call == "ftruncate" || number == nth ? EIO : SystemFaults::kNone;
      });
      run.CheckAlways();
      run.CheckUndo();
      EXPECT_TRUE(run.wrong.empty()) << Report(run, what, "call " + std::to_string(nth));
      if (testing::Test::HasFailure()) return;
    }
  }
}

// What an undo needs is on the disk before the new page is begun, and that before it takes the old one's
// place.
TEST(Faults, FlushesInOrder) {
  ProgramEntities();
  for (const WritingRun& what : AllWritingRuns()) {
    std::vector<std::string> calls;
    FaultyRun run(what);
    run.Go([&](std::string_view call, int) {
      if (call == "write" || call == "fsync" || call == "openat to create" || call.starts_with("renameat"))
        calls.emplace_back(call);
      return SystemFaults::kNone;
    });
    int pages = 0;
    for (std::size_t i = 2; i < calls.size(); ++i) {
      const bool is_create = calls[i] == "openat to create";
      EXPECT_TRUE(!calls[i].starts_with("renameat") || calls[i - 1] == "fsync") << what.name << i;
      EXPECT_TRUE(!is_create || calls[i - 1] != "write") << what.name << i;
      pages += is_create && calls[i - 2] == "write";
    }
    EXPECT_GT(pages, 0) << what.name;
  }
}

// The same at the door, whatever lies behind it.
TEST(Faults, OneCallAtTheDoorFails) {
  ProgramEntities();
  int started = 0;
  for (const WritingRun& what : AllWritingRuns()) {
    FaultyRun whole(what);
    int all_calls = 0;
    const auto no_fault = [](std::string_view, int) { return SystemFaults::kNone; };
    whole.Go(no_fault, [&](std::string_view, const std::string&) { return ++all_calls, Status(); });
    for (int nth = 1 + (IsLongForm() ? 0 : started++); nth <= all_calls; nth += IsLongForm() ? 1 : 9) {
      std::string failed;
      int number = 0;
      FaultyRun run(what);
      run.Go(no_fault, [&](std::string_view call, const std::string& path) {
        if (++number != nth) return Status();
        failed = std::string(call) + " of " + path;
        return Status::Failure("The door is shut");
      });
      run.CheckAlways();
      run.CheckOthersAsIn(whole);
      const bool offers_less = what.name == "links, asked" && run.IsUnrenamed();
      if (!run.Tells("The door is shut") && run.host().failures.empty() && !offers_less &&
          !run.ReportsAs(whole))
        run.wrong.emplace_back("says nothing");
      EXPECT_TRUE(run.wrong.empty()) << Report(run, what,
                                               failed + " (" + std::to_string(nth) + ") fails with it");
      if (testing::Test::HasFailure()) return;
    }
  }
}

// An undo in which something fails leaves each file whole, and another undo does the rest.
TEST(Faults, AnUndoFails) {
  ProgramEntities();
  for (const WritingRun& what : AllWritingRuns()) {
    if (what.function == Function::kEntities || what.function == Function::kColours) continue;  // as replace
    const int step = IsLongForm() ? 1 : 89;
    int offset = 0;
    for (const int error : {EIO, ENOSPC, EACCES, EINTR, SystemFaults::kShort}) {
      int nth = 1 + offset++ * 23 % step;
      for (int all_calls = nth; nth <= all_calls; nth += step) {
        std::string failed;
        FaultyRun run(what);
        run.Go([](std::string_view, int) { return SystemFaults::kNone; });
        const UndoEnd end = run.UndoWith([&](std::string_view call, int number) {
          all_calls = std::max(all_calls, number);
          if (number != nth) return SystemFaults::kNone;
          failed = call;
          return error;
        });
        std::string told = run.asked();
        for (const FileLeft& file : end.failed) told += file.path + ": " + file.reason + "\n";
        if (error == SystemFaults::kShort && !told.empty())
          run.wrong.push_back("tells of what it overcame: " + told);
        const bool has_kept = told.find("its old content is in ") != std::string::npos;
        const UndoEnd rest = run.UndoWith([](std::string_view, int) { return SystemFaults::kNone; });
        if (!rest.failed.empty() || (!rest.left_alone.empty() && !has_kept))
          run.wrong.push_back("does not do the rest: " + told);
        if (!rest.restored.empty() && told.empty()) run.wrong.emplace_back("says nothing");
        run.CheckUndone(has_kept);
        EXPECT_TRUE(run.wrong.empty())
            << Report(run, what, "undo, " + failed + " (" + std::to_string(nth) + ")");
        if (testing::Test::HasFailure()) return;
      }
    }
  }
}

// A user who may not write a page, or not in its folder.
TEST(Faults, WhatMayNotBeWrittenStays) {
  if (geteuid() != 0) GTEST_SKIP() << "only the superuser can give pages away";
  ProgramEntities();
  for (const WritingRun& what : AllWritingRuns()) {
    const ScratchFolder scratch;
    const std::string site = scratch / "site";
    for (const char* name : {"free/a.htm", "free/b.htm", "shut/c.htm"})
      scratch.Write(std::string("site/") + name, std::string(kWritingPage));
    scratch.Write("site/free/sub/other.htm", "");
    for (const char* path : {"/free", "/free/a.htm", "/shut/c.htm"}) {
      ASSERT_EQ(chown((site + path).c_str(), 65534, 65534), 0);
    }
    chmod((site + "/free/b.htm").c_str(), 0444);
    CorrectingHost host;
    host.unasked = !what.asks;
    host.takes_proposals = true;
    RunState state;
    {
      const OtherUser user(true);
      DiskFiles files;
      SearchRun(files, host, ProgramEntities(), OptionsOf(what, site), state);
    }
    EXPECT_GT(CountMarks(what, ContentOf(site + "/free/a.htm")), 0U) << what.name;
    EXPECT_EQ(ContentOf(site + "/free/b.htm"), kWritingPage);
    EXPECT_EQ(ContentOf(site + "/shut/c.htm"), kWritingPage);
    const std::string denied = ": " + Words(EACCES);
    const bool shut_is_written = what.name != "links by today's rules";  // nothing in it is certain
    std::vector<std::string> told{site + "/free/b.htm" + denied};
    if (shut_is_written) told.insert(told.begin(), site + "/shut/c.htm" + denied);
    EXPECT_EQ(host.failures, told) << what.name;
    EXPECT_EQ(ChangesTold(state.Results)[site + "/free/b.htm"], 0U);
  }
}

// The editor's save, of a new file, a page, one of two names, and one behind a link.
TEST(Faults, AFileIsSavedWholeOrNot) {
  for (const std::string name : {"new.htm", "page.htm", "hard.htm", "link.htm"}) {
    for (const int error : {EIO, ENOSPC, EACCES, EINTR, SystemFaults::kShort}) {
      int all_calls = 1;
      for (int nth = 1; nth <= all_calls; ++nth) {
        const ScratchFolder scratch, user;
        const UndoStore store(user / "undo");
        for (const char* old : {"page.htm", "hard.htm", "target.htm"}) scratch.Write(old, "old");
        fs::create_hard_link(scratch / "hard.htm", scratch / "twin.htm");
        fs::create_symlink("target.htm", scratch / "link.htm");
        const std::vector<std::string> names = scratch.Names();
        std::string failed;
        std::string asked;
        Status status;
        DiskFiles disk;
        {
          const SystemFaults faults([&](std::string_view call, int number) {
            all_calls = std::max(all_calls, number);
            if (number != nth) return SystemFaults::kNone;
            failed = call;
            return error;
          });
          UndoableFiles files(disk, store, "editor", [&](const std::string& reason) {
            asked = reason;
            return true;
          });
          status = SaveFile(files, scratch / name, "the new content");
        }
        const std::string fault = name + ", " + failed + " (" + std::to_string(nth) + "): " + status.reason();
        const std::string content = scratch.Read(name);
        const std::string old_content = name == "new.htm" ? "" : "old";
        const bool is_late = failed == "fsync" || failed == "unlinkat";  // the page is replaced already
        EXPECT_TRUE(content == "the new content" || (!status.ok() && content == old_content)) << fault;
        EXPECT_TRUE(status.ok() || is_late || content == old_content) << fault;
        for (const std::string& present : scratch.Names()) {
          const bool is_known = std::find(names.begin(), names.end(), present) != names.end();
          EXPECT_TRUE(is_known || present == name || status.reason().find(present) != std::string::npos)
              << fault << " " << present;
        }
        const std::string told = status.reason() + asked;
        const bool tells = told.find(Words(std::max(error, 0))) != std::string::npos;
        EXPECT_TRUE(told.empty() || (tells && error != SystemFaults::kShort)) << fault;
        UndoPlan plan;
        if (name == "new.htm" || content == old_content || !asked.empty()) continue;
        EXPECT_TRUE(plan.Make(store, 1, disk).ok() &&
                    plan.Perform(disk, [] { return false; }).restored.size() == 1)
            << fault;
        EXPECT_EQ(scratch.Read(name), "old") << fault;
      }
    }
  }
}

}  // namespace
}  // namespace tessaril
