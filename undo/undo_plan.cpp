#include "undo/undo_plan.h"

#include <algorithm>
#include <cerrno>
#include <initializer_list>
#include <map>
#include <new>
#include <set>
#include <utility>

#include "engine/file_replacement.h"
#include "engine/paths.h"
#include "undo/journal_reader.h"

namespace tessaril {
namespace {

using Kind = JournalChange::Kind;

// A file that could not be read when it was renamed has no mark; any content will do.
bool Fits(const ContentMark& wanted, const ContentMark& mark) {
  return wanted == ContentMark() || wanted == mark;
}

bool Is(const Status& status, std::initializer_list<int> errors) {
  return std::ranges::any_of(errors,
                             [&](int error) { return status.reason() == Status::System(error).reason(); });
}

bool IsGone(const Status& status) {
  return Is(status, {ENOENT, ENOTDIR});
}

// Whether something else than the file is there now, as opposed to one that cannot be read.
bool IsNoFileAnyMore(const Status& status) {
  return IsGone(status) || Is(status, {EISDIR, ELOOP}) || status.reason() == kNoRegularFile;
}

// Paths, each once, in the order in which they came.
class Paths {
 public:
  bool Add(const std::string& path) {
    const bool is_new = known_.insert(path).second;
    if (is_new) order_.push_back(path);
    return is_new;
  }

  // A file that is in the list is called by another name from now on.
  void Rename(const std::string& from, const std::string& to) {
    if (known_.erase(from) > 0) std::erase(order_, from);
    Add(to);
  }

  std::vector<std::string> Take() { return std::move(order_); }

 private:
  std::set<std::string> known_;
  std::vector<std::string> order_;
};

}  // namespace

// Goes through the changes from the last to the first, and keeps in mind what files would hold meanwhile.
class UndoPlan::Maker {
 public:
  Maker(UndoPlan& plan, Files& files) : plan_(plan), files_(files) {}

  void Make() {
    const std::vector<JournalChange>& changes = plan_.run_.journal.changes;
    for (const JournalChange& change : changes) {
      if (change.kind == Kind::kRename) LookWhetherItIsBack(change);
    }
    for (auto change = changes.rbegin(); change != changes.rend(); ++change) {
      if (change->kind == Kind::kPage) {
        AddPage(*change);
      } else {
        AddRename(*change);
      }
    }
    plan_.restored_ = restored_.Take();
    std::ranges::reverse(plan_.restored_);  // as the run went
    std::ranges::reverse(plan_.left_alone_);
    std::ranges::reverse(plan_.unread_);
  }

 private:
  struct Content {
    ContentMark mark;
    Status status;  // why there is none
  };

  Content& ContentOf(const std::string& path) {
    const auto [known, is_new] = contents_.try_emplace(path);
    FileStamp stamp;
    if (is_new) known->second.status = MarkFile(files_, path, memory_, stamp, known->second.mark);
    return known->second;
  }

  // A file that has its old name, and not the new one, was undone already; another one is not that file.
  void LookWhetherItIsBack(const JournalChange& rename) {
    if (!IsGone(ContentOf(rename.new_path).status)) return;
    const Content& old = ContentOf(PlaceOf(rename.path));
    if (old.status.ok() && Fits(rename.old, old.mark)) back_[rename.new_path] = rename.path;
  }

  // Where a file is that had this path at some time of the run.
  const std::string& PlaceOf(const std::string& path) const {
    if (const auto moved = moved_.find(path); moved != moved_.end()) return moved->second;
    const auto back = back_.find(path);
    return back == back_.end() ? path : PlaceOf(back->second);
  }

  void LeaveAlone(const std::string& path, const std::string& reason) {
    if (told_.Add(path)) plan_.left_alone_.push_back({path, reason});
  }

  // A file in whose place there is nothing that could be read.
  void LeaveAlone(const std::string& path, const Status& status) {
    if (IsNoFileAnyMore(status)) return LeaveAlone(path, status.reason());
    if (told_.Add(path)) plan_.unread_.push_back({path, status.reason()});
  }

  void AddPage(const JournalChange& change) {
    const std::string& path = PlaceOf(change.path);
    Content& content = ContentOf(path);
    if (!content.status.ok()) return LeaveAlone(path, content.status);
    if (content.mark == change.old) return;  // the run did not get that far, or it was undone already
    if (std::find(change.left.begin(), change.left.end(), content.mark) == change.left.end()) {
      return LeaveAlone(path, "It was changed since");
    }
    plan_.steps_.push_back({&change, path, content.mark});
    content.mark = change.old;
    restored_.Add(path);
  }

  void AddRename(const JournalChange& change) {
    if (back_.contains(change.new_path)) return;
    const std::string& path = PlaceOf(change.new_path);
    Content& now = ContentOf(path);
    Content& before = ContentOf(change.path);
    std::string obstacle;
    if (path != change.new_path) {
      obstacle = "It has another name";
    } else if (now.status.ok() && !IsGone(before.status)) {
      obstacle = "There is a file again that has its old name";
    } else if (now.status.ok() && !Fits(change.old, now.mark)) {
      obstacle = "It was changed since";
    }
    if (!obstacle.empty() || !now.status.ok()) {
      moved_[change.path] = path;
      return obstacle.empty() ? LeaveAlone(path, now.status) : LeaveAlone(path, obstacle);
    }
    plan_.steps_.push_back({&change, path, now.mark});
    before = std::exchange(now, {{}, Status::System(ENOENT)});
    restored_.Rename(path, change.path);
  }

  UndoPlan& plan_;
  Files& files_;
  ByteBuffer memory_;
  std::map<std::string, Content> contents_;
  std::map<std::string, std::string> moved_;  // by renames that are left alone
  std::map<std::string, std::string> back_;   // renamed back already: from the new path to the old one
  Paths restored_, told_;
};

Status UndoPlan::Make(const UndoStore& store, unsigned number, Files& files) {
  if (Status status = store.Open(number, run_, journal_); !status.ok()) return status;
  if (run_.goes_on) return Status::Failure("The run still goes on");
  Maker(*this, files).Make();
  return {};
}

UndoEnd UndoPlan::Perform(Files& files, const std::function<bool()>& stop) const {
  UndoEnd end;
  end.left_alone = left_alone_;
  end.failed = unread_;
  Paths restored, failed;
  const auto note = [&](const std::string& path, const Status& status) {
    if (!status.ok() && failed.Add(path)) end.failed.push_back({path, status.reason()});
  };
  ByteBuffer memory;
  for (const Step& step : steps_) {
    end.stopped = stop();
    if (end.stopped) break;
    Status status;
    try {
      // So that a folder is flushed once for all its files.
      const std::string folder(FolderOf(step.path));
      const bool is_current = folder == files.CurrentFolder();
      if (!is_current) note(files.CurrentFolder(), files.FlushFolder());
      // The current one is entered again if it was moved. Where another cannot be entered, its file fails,
      // too.
      const Status entered = files.EnterFolder(folder);
      if (is_current) note(folder, entered);
      status = TakeBack(step, files, memory);
    } catch (const std::bad_alloc&) {
      status = Status::System(ENOMEM);
    }
    note(step.path, status);
    if (!status.ok()) continue;
    if (step.change->kind == Kind::kRename) {
      restored.Rename(step.path, step.change->path);
    } else {
      restored.Add(step.path);
    }
  }
  end.restored = restored.Take();
  note(files.CurrentFolder(), files.FlushFolder());
  return end;
}

Status UndoPlan::TakeBack(const Step& step, Files& files, ByteBuffer& memory) const {
  FileStamp stamp;
  ContentMark mark;
  if (Status status = MarkFile(files, step.path, memory, stamp, mark); !status.ok()) return status;
  if (!Fits(step.expected, mark)) return FileWasChanged();
  if (step.change->kind == Kind::kRename) {
    const std::string folder(FolderOf(step.path));
    return files.Rename(folder, std::string(NameOf(step.path)), std::string(NameOf(step.change->path)));
  }
  if (Status status = ReadOldContent(journal_.get(), *step.change, memory); !status.ok()) return status;
  const std::string_view content = memory.view();
  return files.ReplaceContent(step.path, stamp, {&content, 1});
}

}  // namespace tessaril
