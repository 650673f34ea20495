#ifndef TESSARIL_TESTS_SUPPORT_FAULTY_RUN_H_
#define TESSARIL_TESTS_SUPPORT_FAULTY_RUN_H_

#include <algorithm>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/status.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/system_faults.h"
#include "tests/support/writing_runs.h"
#include "undo/undo_plan.h"

namespace tessaril {

using Contents = std::map<std::string, std::string>;  // of all files of a tree, by their paths

/// A small site on the disk with every kind of page that is written in a way of its own.
class SiteOfAllKinds {
 public:
  explicit SiteOfAllKinds(bool by_today);

  std::string site() const { return scratch_ / "site"; }
  /// Of the site and what its links lead to outside.
  const std::string& root() const { return scratch_.path(); }

  /// Which attribute was lost of the page that has some; nothing when all are there.
  std::string CheckAttributes() const;
  Contents All() const;

 private:
  ScratchFolder scratch_;
  bool has_attributes_ = false;
  bool has_other_owner_ = false;
};

/// One run over a new tree, with what fails in it.
class FaultyRun {
 public:
  explicit FaultyRun(const WritingRun& run) : run_(run) {}

  using Door = std::function<Status(std::string_view call, const std::string& path)>;
  void Go(SystemFaults::Decide decide, Door door = {});

  /// Each check adds what it finds wrong to `wrong`.
  void CheckAlways();
  /// Takes the run back, over a disk in order.
  void CheckUndo();
  void CheckUndone(bool has_kept);
  /// Takes the run back while something fails, and tells what became of it. Each file is whole then.
  UndoEnd UndoWith(SystemFaults::Decide decide);
  void CheckOthersAsIn(const FaultyRun& whole);
  bool Tells(const std::string& words) const;
  bool ReportsAs(const FaultyRun& whole) const;
  bool IsUnrenamed() const { return contents_.contains(site_ + "/Up.htm"); }

  std::string Everything() const;
  const Contents& contents() const { return contents_; }
  const std::string& site() const { return site_; }
  const CorrectingHost& host() const { return host_; }
  /// Why no undo could be kept, where that was asked.
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
  std::optional<SiteOfAllKinds> tree_;
  std::string root_;
  std::string site_;
  CorrectingHost host_;
  RunState state_;
  Contents before_;
  Contents contents_;
};

}  // namespace tessaril

#endif  // TESSARIL_TESTS_SUPPORT_FAULTY_RUN_H_
