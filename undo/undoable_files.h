#ifndef TESSARIL_UNDO_UNDOABLE_FILES_H_
#define TESSARIL_UNDO_UNDOABLE_FILES_H_

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <utility>

#include "engine/files.h"
#include "engine/run.h"
#include "undo/undo_store.h"

namespace tessaril {

/// What the store calls a run: the command of `tsl`, its texts, and where.
std::string DescribeRun(const RunOptions& options);

/// The door to the disk in a run that can be undone: before a file is changed, its old content is in the
/// journal of the run, and on the disk.
class UndoableFiles : public Files {
 public:
  /// Asked once, when the store cannot be written, with the reason: whether to go on without undo. When not,
  /// this change and all later ones fail.
  using GoOnWithout = std::function<bool(const std::string& reason)>;

  /// `files` and `store` must outlive the object; `what` is the name of the run.
  UndoableFiles(Files& files, const UndoStore& store, std::string what, GoOnWithout go_on_without);

  /// Ends the run. What the store need not keep is removed.
  ~UndoableFiles() override;
  UndoableFiles(const UndoableFiles&) = delete;
  UndoableFiles& operator=(const UndoableFiles&) = delete;

  /// Makes sure that the store can be written, for who wants to know before the first change.
  Status Begin();

  Status ListFolder(const std::string& folder, std::vector<FolderEntry>& entries, FileStamp& stamp) override {
    return files_.ListFolder(folder, entries, stamp);
  }
  bool FolderIsUnchanged(const std::string& folder, const FileStamp& stamp) override {
    return files_.FolderIsUnchanged(folder, stamp);
  }
  Status EnterFolder(const std::string& folder) override { return files_.EnterFolder(folder); }
  const std::string& CurrentFolder() const override { return files_.CurrentFolder(); }
  Status Read(const std::string& path, ByteBuffer& bytes, FileStamp& stamp) override {
    return files_.Read(path, bytes, stamp);
  }
  Status ReadStart(const std::string& path, std::size_t most, ByteBuffer& bytes, FileStamp& stamp) override {
    return files_.ReadStart(path, most, bytes, stamp);
  }
  Status Examine(const std::string& path, FileStamp& stamp) override { return files_.Examine(path, stamp); }
  Status ReadPieces(const std::string& path, FileStamp& stamp, ByteBuffer& memory,
                    const UsePiece& use) override {
    return files_.ReadPieces(path, stamp, memory, use);
  }
  Status Rename(const std::string& folder, const std::string& from, const std::string& to) override;
  Status ReplaceContent(const std::string& path, FileStamp& stamp,
                        std::span<const std::string_view> pieces) override;
  Status FlushFolder() override { return files_.FlushFolder(); }

 private:
  // Which file it is, by whatever path.
  using Identity = std::pair<std::uint64_t, std::uint64_t>;  // device and inode
  struct KnownPage {
    FileStamp stamp;  // as the run left it
    std::size_t page;
  };

  Status Noted(const std::function<Status()>& note);
  Status NotePage(const std::string& path, const FileStamp& stamp, const ContentMark& left, std::size_t& page,
                  Status& unread);

  Files& files_;
  const UndoStore& store_;
  std::string what_;
  GoOnWithout go_on_without_;
  JournalWriter journal_;
  std::map<Identity, KnownPage> pages_;
  bool begun_ = false;    // the journal
  bool without_ = false;  // the user goes on without undo
  Status refused_;        // why nothing is changed any more
  ByteBuffer memory_;
};

}  // namespace tessaril

#endif  // TESSARIL_UNDO_UNDOABLE_FILES_H_
