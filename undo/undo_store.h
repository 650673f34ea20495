#ifndef TESSARIL_UNDO_UNDO_STORE_H_
#define TESSARIL_UNDO_UNDO_STORE_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "engine/file_handle.h"
#include "engine/status.h"
#include "undo/journal.h"
#include "undo/journal_writer.h"

namespace tessaril {

/// A run that can be undone.
struct UndoableRun {
  unsigned number = 0;
  Journal journal;
  bool goes_on = false;  // a program is still at it
  Status reading;        // why its journal cannot be read
};

/// What was changed by the last runs: a folder with one folder a run, named by its number, with its journal.
/// Runs of all programs of the user are there; numbers grow in the order in which they began.
class UndoStore {
 public:
  static constexpr std::size_t kMostRuns = 20;
  static constexpr std::uint64_t kMostBytes = 500'000'000;

  /// `folder` is absolute; it and those above it are created, for the user alone, when they are needed.
  explicit UndoStore(std::string folder) : folder_(std::move(folder)) {}

  const std::string& folder() const { return folder_; }

  /// Begins a run with the next number.
  Status Begin(std::string_view what, unsigned& number, JournalWriter& journal) const;

  /// The runs that have changed something, the newest first. One whose journal cannot be read may have, too.
  Status List(std::vector<UndoableRun>& runs) const;

  /// Reads one run and leaves its journal open in `file`.
  Status Open(unsigned number, UndoableRun& run, FileHandle& file) const;

  /// Removes what has become too much: runs that changed nothing, then the oldest, until there are at most
  /// kMostRuns in at most kMostBytes. The newest stays whatever its size, and so does one that goes on.
  void Prune() const;

 private:
  std::string PathOf(unsigned number) const;
  std::string JournalOf(unsigned number) const;
  Status Numbers(std::vector<unsigned>& numbers) const;
  FileHandle Lock() const;
  void Remove(unsigned number) const;

  std::string folder_;
};

}  // namespace tessaril

#endif  // TESSARIL_UNDO_UNDO_STORE_H_
