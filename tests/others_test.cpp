// Other programs change pages while a run works on them: what they wrote stays, and nothing is written
// elsewhere.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <utility>

#include "engine/disk_files.h"
#include "engine/search_run.h"
#include "tests/support/long_form.h"
#include "tests/support/other_user.h"
#include "tests/support/program_entities.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/system_faults.h"
#include "tests/support/watched_files.h"
#include "tests/support/writing_runs.h"
#include "undo/undo_plan.h"
#include "undo/undoable_files.h"

namespace tessaril {
namespace {

namespace fs = std::filesystem;
using Reasons = std::vector<std::string>;

constexpr std::string_view kTheirs = "somebody's";
constexpr mode_t kReadOnly = 0444;

// Of the size that the page has, so that only its time and number tell that it is another.
std::string Theirs(std::size_t size) {
  std::string theirs(kTheirs);
  theirs.resize(std::max(size, theirs.size()), '.');
  return theirs;
}

// What another program does to the page at `path`, and what is to be there in the end.
struct Change {
  std::string_view name;
  std::function<void(const std::string& path)> make;
  std::function<bool(const std::string& path)> stands;
  Reasons reasons;  // of a page that is not written
  bool keeps_content = false;
};

bool HoldsTheirs(const std::string& path) {
  return fs::is_regular_file(fs::symlink_status(path)) && ContentOf(path).starts_with(kTheirs);
}

bool LeadsTo(const std::string& path, const std::string& target) {
  return fs::is_symlink(path) && fs::read_symlink(path) == target;
}

std::vector<Change> AllChanges() {
  const std::string changed = "The file was changed on disk since it was read";
  const std::string gone = "No such file or directory";
  const std::string other = "Not a regular file";
  const auto write = [](const std::string& path, std::size_t size) {
    std::ofstream(path, std::ios::binary) << Theirs(size);
  };
  const auto link = [](const std::string& path, const std::string& target) {
    fs::remove(path);
    fs::create_symlink(target, path);
  };
  return {
      {"written anew", [=](const std::string& path) { write(path, 0); }, HoldsTheirs, {changed}},
      {"written anew in the same size",
       [=](const std::string& path) { write(path, kWritingPage.size()); },
       HoldsTheirs,
       {changed}},
      {"replaced",
       [=](const std::string& path) {
         write(path + ".theirs", kWritingPage.size());
         fs::rename(path + ".theirs", path);
       },
       HoldsTheirs,
       {changed}},
      {"removed",
       [](const std::string& path) { fs::remove(path); },
       [](const std::string& path) { return !fs::exists(fs::symlink_status(path)); },
       {gone}},
      {"a folder now",
       [](const std::string& path) {
         fs::remove(path);
         fs::create_directory(path);
       },
       [](const std::string& path) { return fs::is_directory(path); },
       {other, "Is a directory"}},
      {"a pipe now",
       [](const std::string& path) {
         fs::remove(path);
         mkfifo(path.c_str(), 0644);
       },
       [](const std::string& path) { return fs::is_fifo(fs::symlink_status(path)); },
       {other}},
      {"a link to another page now",
       [=](const std::string& path) { link(path, "q.htm"); },
       [](const std::string& path) { return LeadsTo(path, "q.htm"); },
       {changed, other, "Too many levels of symbolic links"}},
      {"a link to nowhere now",
       [=](const std::string& path) { link(path, "nowhere"); },
       [](const std::string& path) { return LeadsTo(path, "nowhere") && !fs::exists(path); },
       {gone, other, "Too many levels of symbolic links"}},
      {"a link to itself now",
       [=](const std::string& path) { link(path, "p.htm"); },
       [](const std::string& path) { return LeadsTo(path, "p.htm"); },
       {other, "Too many levels of symbolic links"}},
      {"not to be written now",
       [](const std::string& path) { chmod(path.c_str(), kReadOnly); },
       [](const std::string& path) { return fs::status(path).permissions() == fs::perms(kReadOnly); },
       {changed, "Permission denied"},
       true},
  };
}

// A run over two pages of a site, whose first, or the file that it leads to, is changed at some moment.
struct DisturbedRun {
  explicit DisturbedRun(const WritingRun& writing, bool can_be_undone)
      : what(writing), has_undo(can_be_undone) {
    for (const char* name : {"p.htm", "q.htm"}) scratch.Write(name, std::string(kWritingPage));
    for (const char* name : {"good.htm", "sub/other.htm"}) scratch.Write(name, "");
    const timespec long_ago[2] = {{1000000000, 0}, {1000000000, 0}};
    utimensat(AT_FDCWD, path.c_str(), long_ago, 0);
    host.unasked = !what.asks;
    host.takes_proposals = true;
  }

  void Go() {
    DiskFiles disk;
    WatchedFiles files(disk);
    files.alone = false;
    const RunOptions options = OptionsOf(what, scratch.path());
    const SystemFaults faults([this](std::string_view call, int number) {
      if (at_system) at_system(call, number);
      return SystemFaults::kNone;
    });
    const auto go_on_without = [this](const std::string& reason) {
      host.failures.push_back(reason);
      return false;
    };
    if (has_undo) {
      UndoableFiles undoable(files, store, "run", go_on_without);
      SearchRun(undoable, host, ProgramEntities(), options, state);
    } else {
      SearchRun(files, host, ProgramEntities(), options, state);
    }
    is_written = files.written.contains(path);
  }

  // What is wrong at the end.
  std::string Check(const Change& change, const std::string& whole) {
    if (!change.stands(path)) return "what somebody did is gone";
    if (change.keeps_content && !IsOldOrNew(ContentOf(path), whole)) return "the page is neither old nor new";
    if (ContentOf(scratch / "q.htm") != whole) return "the other page is not as it should be";
    const bool is_told_changed = ChangesTold(state.Results)[path] > 0;
    if (is_told_changed && !is_written) return "tells of a change that was not made";
    for (const std::string& name : scratch.Names()) {
      if (name.starts_with(".tessaril-")) return "a temporary file stays";
    }
    if (fs::exists(scratch / "nowhere")) return "something was written elsewhere";
    for (const std::string& failure : host.failures) {
      const auto is_it = [&](const std::string& reason) { return failure == path + ": " + reason; };
      if (std::none_of(change.reasons.begin(), change.reasons.end(), is_it))
        return "wrong message: " + failure;
    }
    at_system = {};
    return has_undo ? CheckUndo(change, Undo()) : "";
  }

  // Checks of links write a page after each correction.
  bool IsOldOrNew(const std::string& content, const std::string& whole) const {
    const bool ended_early = what.function == Function::kLinks && is_written && !host.failures.empty();
    return content == kWritingPage || content == whole || (ended_early && CountMarks(what, content) == 1);
  }

  UndoEnd Undo() {
    const SystemFaults faults([this](std::string_view call, int number) {
      if (at_system) at_system(call, number);
      return SystemFaults::kNone;
    });
    DiskFiles files;
    UndoPlan plan;
    if (const Status made = plan.Make(store, 1, files); !made.ok()) return {{}, {}, {{"", made.reason()}}};
    UndoableFiles undoable(files, store, "undo", [](const std::string&) { return false; });
    return plan.Perform(undoable, [] { return false; });
  }

  // After an undo, while or before which the page was changed.
  std::string CheckUndo(const Change& change, const UndoEnd& end) {
    if (!change.stands(path)) return "the undo takes what somebody did";
    if (ContentOf(scratch / "q.htm") != kWritingPage) return "the other page is not undone";
    const auto is_page = [this](const FileLeft& file) { return file.path == path; };
    const bool is_told =
        std::ranges::any_of(end.failed, is_page) || std::ranges::any_of(end.left_alone, is_page);
    const bool is_restored = std::ranges::find(end.restored, path) != end.restored.end();
    if (is_written && is_told == is_restored) return "says nothing of the page, or too much";
    if (change.keeps_content && is_restored != (ContentOf(path) == kWritingPage) && is_written)
      return "the page is not undone";
    for (const std::string& name : scratch.Names()) {
      if (name.starts_with(".tessaril-")) return "a temporary file stays";
    }
    return "";
  }

  const WritingRun& what;
  const bool has_undo;
  ScratchFolder scratch;
  ScratchFolder user;
  const UndoStore store{user / "undo"};
  const std::string path = scratch / "p.htm";
  CorrectingHost host;
  RunState state;
  std::function<void(std::string_view call, int number)> at_system;
  bool is_written = false;
};

// Right before each system call of a run but the very rename, which nothing can be put in front of.
void ChangeAtAnyMoment(const WritingRun& what, bool has_undo, int& started) {
  const std::vector<Change> changes = AllChanges();
  DisturbedRun whole(what, has_undo);
  std::vector<std::string> calls;
  whole.at_system = [&](std::string_view call, int) { calls.emplace_back(call); };
  whole.Go();
  const std::string new_content = ContentOf(whole.scratch / "q.htm");
  ASSERT_GT(CountMarks(what, new_content), 0U) << what.name;
  ASSERT_TRUE(whole.is_written && whole.host.failures.empty()) << what.name;
  int refused_in_all = 0;
  for (const Change& change : changes) {
    int refused = 0;
    ++started;
    for (int nth = 1; nth <= static_cast<int>(calls.size()); ++nth) {
      const int step = has_undo ? 37 : 13;
      // Between its stamp and its content a page is found neither old nor new.
      const bool is_torn = &change == &changes.front() && calls[static_cast<std::size_t>(nth - 1)] == "read";
      if (!IsLongForm() && !is_torn && (nth + started) % step != 0) continue;
      DisturbedRun run(what, has_undo);
      std::string moment;
      run.at_system = [&](std::string_view call, int number) {
        if (number != nth || call == "renameat") return;
        moment = call;
        change.make(run.path);
      };
      run.Go();
      if (moment.empty()) continue;
      refused += !run.host.failures.empty();
      EXPECT_EQ(run.Check(change, new_content), "")
          << what.name << (has_undo ? " with undo, " : ", ") << change.name << " before " << moment << " ("
          << nth << ")";
      if (testing::Test::HasFailure()) return;
    }
    EXPECT_TRUE(refused > 0 || !IsLongForm()) << what.name << ", " << change.name;
    refused_in_all += refused;
  }
  EXPECT_GT(refused_in_all, 0) << what.name;
}

TEST(Others, ChangeAPageAtAnyMoment) {
  ProgramEntities();
  const OtherUser user;
  int started = 0;
  for (const WritingRun& what : AllWritingRuns()) {
    for (const bool has_undo : {false, true}) ChangeAtAnyMoment(what, has_undo, started);
  }
}

// The same in an undo, the looks at the pages before it among them.
TEST(Others, ChangeAPageWhileItIsUndone) {
  ProgramEntities();
  const OtherUser user;
  int started = 0;
  for (const WritingRun& what : AllWritingRuns()) {
    if (what.name != "replace" && what.name != "links, asked") continue;  // one change and several
    int calls = 0;
    DisturbedRun whole(what, true);
    whole.Go();
    whole.at_system = [&](std::string_view, int number) { calls = number; };
    ASSERT_EQ(whole.Undo().restored.size(), 2U);
    for (const Change& change : AllChanges()) {
      const int step = IsLongForm() ? 1 : 29;
      for (int nth = 1 + started++ % step; nth <= calls; nth += step) {
        DisturbedRun run(what, true);
        run.Go();
        std::string moment;
        run.at_system = [&](std::string_view call, int number) {
          if (number != nth || call == "renameat") return;
          moment = call;
          change.make(run.path);
        };
        const UndoEnd end = run.Undo();
        if (moment.empty()) continue;
        EXPECT_EQ(run.CheckUndo(change, end), "")
            << what.name << ", " << change.name << " before " << moment << " (" << nth << ") of the undo";
        if (testing::Test::HasFailure()) return;
      }
    }
  }
}

// At the moments that last: a page is listed, read, put to the user.
TEST(Others, ChangeAPageWhileTheUserThinks) {
  ProgramEntities();
  const OtherUser user;
  for (const WritingRun& what : AllWritingRuns()) {
    DisturbedRun whole(what, false);
    whole.Go();
    const std::string new_content = ContentOf(whole.scratch / "q.htm");
    for (const Change& change : AllChanges()) {
      for (const bool while_asked : {false, true}) {
        if (while_asked && !what.asks && what.function != Function::kEntities) continue;
        DisturbedRun run(what, true);
        bool made = false;
        const auto make = [&] {
          if (!std::exchange(made, true)) change.make(run.path);
        };
        if (while_asked) {
          run.host.on_proposal = [&] {
            if (run.host.files.back() == run.path) make();
          };
        } else {
          run.host.on_file = [&](const std::string& file) {
            if (file == run.path) make();
          };
        }
        run.Go();
        EXPECT_TRUE(made);
        EXPECT_EQ(run.Check(change, new_content), "") << what.name << ", " << change.name << while_asked;
        if (while_asked && !run.is_written) {
          EXPECT_EQ(run.host.failures.size(), 1U) << what.name << ", " << change.name;
        }
      }
    }
  }
}

// What a killed run left goes when a page of its folder is changed; whatever may be anything else stays.
TEST(Others, LeftoversGoAndNothingElse) {
  ScratchFolder scratch;
  scratch.Write("p.htm", "hit");
  const timespec an_hour_ago[2] = {{std::time(nullptr) - 3600, 0}, {std::time(nullptr) - 3600, 0}};
  const Reasons stay{".tessaril-1a2b-young", ".tessaril-old-1a2b-0", ".tessaril-1a2b-", ".tessaril-1A2B-0",
                     ".tessaril--0",         ".tessaril-1a2b-0.htm", ".tessaril-a",     "tessaril-1-0",
                     ".tessaril-9-9",        ".tessaril-9-a"};
  Reasons all{"p.htm"};
  for (const std::string& name : stay) scratch.Write(name, "x");
  for (const char* name : {".tessaril-1a2b-0", ".tessaril-ffffffff-ff"}) scratch.Write(name, "half a page");
  fs::create_hard_link(scratch / ".tessaril-9-9", scratch / "its other name");
  fs::create_directory(scratch / ".tessaril-1-1");
  fs::create_symlink("p.htm", scratch / ".tessaril-1-2");
  mkfifo((scratch / ".tessaril-1-3").c_str(), 0644);
  for (const std::string& name : scratch.Names())
    utimensat(AT_FDCWD, (scratch / name).c_str(), an_hour_ago, AT_SYMLINK_NOFOLLOW);
  scratch.Write(".tessaril-9-a", "of a run that goes on");
  Reasons left = scratch.Names();
  CorrectingHost host;
  RunState state;
  RunOptions options = OptionsOf(AllWritingRuns().front(), scratch.path());
  options.function = Function::kSearch;
  for (const bool writes : {false, true}) {
    DiskFiles files;
    SearchRun(files, host, {}, options, state);
    EXPECT_EQ(scratch.Names(), left);
    options.function = Function::kReplace;
    std::erase(left, ".tessaril-1a2b-0");
    std::erase(left, ".tessaril-ffffffff-ff");
    EXPECT_EQ(scratch.Read("p.htm"), writes ? "new" : "hit");
  }
  EXPECT_TRUE(host.failures.empty());
}

}  // namespace
}  // namespace tessaril
