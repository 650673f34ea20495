#include "tests/support/faulty_run.h"

#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <utility>

#include "engine/disk_files.h"
#include "engine/search_run.h"
#include "tests/support/program_entities.h"
#include "tests/support/watched_files.h"
#include "undo/undoable_files.h"

namespace tessaril {

namespace fs = std::filesystem;

SiteOfAllKinds::SiteOfAllKinds(bool by_today) {
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

std::string SiteOfAllKinds::CheckAttributes() const {
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

Contents SiteOfAllKinds::All() const {
  Contents all;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(root())) {
    if (entry.is_regular_file() && !entry.is_symlink()) all[entry.path()] = ContentOf(entry.path());
  }
  return all;
}

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

}  // namespace tessaril
