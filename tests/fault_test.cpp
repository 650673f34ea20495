// Whatever fails on the disk, and wherever in a run: no page is lost, and what is told is what happened.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "engine/disk_files.h"
#include "engine/search_run.h"
#include "tests/support/faulty_run.h"
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

std::string Words(int error) {
  return std::generic_category().message(error);
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
      const OtherUser user;
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
