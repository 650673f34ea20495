#include "undo/undoable_files.h"

#include <cerrno>
#include <new>

#include "engine/paths.h"

namespace tessaril {

std::string DescribeRun(const RunOptions& options) {
  const auto quoted = [](const std::string& text) { return " \"" + text + "\""; };
  std::string what(RowOf(options.function).command);
  const bool replaces = options.function == Function::kReplace;
  if (replaces || options.function == Function::kSearch) what += quoted(options.SearchTekst);
  if (replaces) what += quoted(options.ReplaceText);
  return what + " " + (options.MarkedOnly ? JoinPath(options.dirList, options.filList) : options.dirList);
}

UndoableFiles::UndoableFiles(Files& files, const UndoStore& store, std::string what,
                             GoOnWithout go_on_without)
    : files_(files), store_(store), what_(std::move(what)), go_on_without_(std::move(go_on_without)) {}

UndoableFiles::~UndoableFiles() {
  if (!begun_) return;
  journal_ = {};  // gives its lock up
  try {
    store_.Prune();
  } catch (const std::bad_alloc&) {  // the next run will
  }
}

Status UndoableFiles::Begin() {
  if (journal_.is_open()) return {};
  // A journal that was given up keeps what it holds; a second one would part the run in two.
  if (begun_) return Status::Failure(store_.folder() + ": The journal cannot be written any more");
  unsigned number = 0;
  Status status = store_.Begin(what_, number, journal_);
  begun_ = status.ok();
  return begun_ ? status : Status::Failure(store_.folder() + ": " + status.reason());
}

// Has something noted in the journal. Where that fails the user decides.
Status UndoableFiles::Noted(const std::function<Status()>& note) {
  if (without_) return {};
  if (!refused_.ok()) return refused_;
  Status status = Begin();
  if (status.ok()) {
    status = note();
    if (status.ok()) return status;
    status = Status::Failure(store_.folder() + ": " + status.reason());
  }
  without_ = go_on_without_(status.reason());
  if (!without_) refused_ = Status::Failure("No undo can be kept: " + status.reason());
  return refused_;
}

Status UndoableFiles::ReplaceContent(const std::string& path, FileStamp& stamp,
                                     std::span<const std::string_view> pieces) {
  std::size_t page = 0;
  Status unread;
  Status status = Noted([&] {
    try {
      return NotePage(path, stamp, MarkOf(pieces), page, unread);
    } catch (const std::bad_alloc&) {
      return Status::System(ENOMEM);
    }
  });
  if (!status.ok() || !unread.ok()) return status.ok() ? unread : status;
  if (without_) return files_.ReplaceContent(path, stamp, pieces);
  const auto [slot, is_new] = pages_.try_emplace({stamp.device, stamp.inode});  // memory comes first
  status = files_.ReplaceContent(path, stamp, pieces);
  if (!status.ok()) {
    if (is_new) pages_.erase(slot);
    journal_.NoteFailed();
    return status;
  }
  auto known = pages_.extract(slot);
  known.key() = {stamp.device, stamp.inode};
  known.mapped() = {stamp, page};
  pages_.erase(known.key());
  pages_.insert(std::move(known));
  return status;
}

// A page that is still as this run left it was noted with its first content.
Status UndoableFiles::NotePage(const std::string& path, const FileStamp& stamp, const ContentMark& left,
                               std::size_t& page, Status& unread) {
  const auto known = pages_.find({stamp.device, stamp.inode});
  if (known == pages_.end() || known->second.stamp != stamp) {
    return journal_.AddPage(files_, path, stamp, left, page, unread);
  }
  page = known->second.page;
  return journal_.AddLeft(page, left);
}

Status UndoableFiles::Rename(const std::string& folder, const std::string& from, const std::string& to) {
  // A file that cannot be read can be renamed all the same; it has no mark then.
  ContentMark mark;
  FileStamp stamp;
  const std::string path = JoinPath(folder, from);
  if (!MarkFile(files_, path, memory_, stamp, mark).ok()) mark = {};
  Status status = Noted([&] { return journal_.AddRename(folder, from, to, mark); });
  if (!status.ok()) return status;
  status = files_.Rename(folder, from, to);
  if (without_) return status;
  if (!status.ok()) journal_.NoteFailed();
  // Changed again it is a page of its own, so that all is undone one after the other.
  if (files_.Examine(JoinPath(folder, to), stamp).ok()) pages_.erase({stamp.device, stamp.inode});
  return status;
}

}  // namespace tessaril
