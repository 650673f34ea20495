#ifndef TESSARIL_UNDO_UNDO_PLAN_H_
#define TESSARIL_UNDO_UNDO_PLAN_H_

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "engine/file_handle.h"
#include "engine/files.h"
#include "undo/undo_store.h"

namespace tessaril {

/// A file and why it is not restored.
struct FileLeft {
  std::string path;
  std::string reason;
};

/// How an undo ended.
struct UndoEnd {
  std::vector<std::string> restored;  // paths that the files have now
  std::vector<FileLeft> left_alone;   // not as the run left them any more
  std::vector<FileLeft>
      failed;  // could not be read or written, and are as they were; folders that could not be flushed
  bool stopped = false;
};

/// The undo of a run: its changes are taken back one by one, the last one first, each only where the file is
/// still as the run left it. Nothing is changed before Perform.
class UndoPlan {
 public:
  /// Looks at all files of the run. Fails when its journal cannot be read or the run still goes on.
  Status Make(const UndoStore& store, unsigned number, Files& files);

  const UndoableRun& run() const { return run_; }

  /// The files that will be restored, each once, by the paths that they will have then.
  const std::vector<std::string>& restored() const { return restored_; }
  /// The files that were changed since the run, and what is seen of that.
  const std::vector<FileLeft>& left_alone() const { return left_alone_; }
  /// The files that could not be read, and are left alone, too.
  const std::vector<FileLeft>& unread() const { return unread_; }

  /// Restores what still is as it was when the plan was made. `stop` is asked before each change.
  UndoEnd Perform(Files& files, const std::function<bool()>& stop) const;

  /// What the store calls this undo.
  std::string Description() const { return "undo " + std::to_string(run_.number); }

 private:
  // One change that is taken back.
  struct Step {
    const JournalChange* change;
    std::string path;      // of the file now
    ContentMark expected;  // that it has just before
  };
  class Maker;

  Status TakeBack(const Step& step, Files& files, ByteBuffer& memory) const;

  UndoableRun run_;
  FileHandle journal_;
  std::vector<Step> steps_;
  std::vector<std::string> restored_;
  std::vector<FileLeft> left_alone_;
  std::vector<FileLeft> unread_;
};

}  // namespace tessaril

#endif  // TESSARIL_UNDO_UNDO_PLAN_H_
