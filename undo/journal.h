#ifndef TESSARIL_UNDO_JOURNAL_H_
#define TESSARIL_UNDO_JOURNAL_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "undo/content_mark.h"

// The journal of one run: what was run, and before each change how to take it back, old contents included. A
// file of lines, whose words are parted by one blank and are percent-encoded where they need to be. The last
// word of each is its check (see LineCheck):
//
//   tessaril-undo 1
//   begun SECONDS            since 1970
//   what TEXT
//   page SIZE PATH           is about to be changed for the first time; behind the line SIZE bytes, its
//                            content, and a line end
//   old MARK                 of that content
//   left PAGE MARK           the content that it is about to get; pages count from 0
//   renamed FOLDER OLD NEW MARK   is about to be
//   failed                   the change that was announced last was not made
//
// It only grows. What stands at its end incompletely was never done; a damaged line ends what can be undone.

namespace tessaril {

inline constexpr const char* kJournalName = "journal";
inline constexpr std::string_view kJournalFirstLine = "tessaril-undo 1";

/// A change that a run announced.
struct JournalChange {
  enum class Kind { kPage, kRename };
  Kind kind = Kind::kPage;
  std::string path;               // of the page; of a renamed file before
  std::string new_path;           // of a renamed file after
  ContentMark old;                // of the content before
  std::vector<ContentMark> left;  // of a page: the contents that it was to get, one after the other
  std::uint64_t offset = 0;       // of a page's old content in the journal, in bytes
};

/// What a journal holds.
struct Journal {
  std::int64_t begun = 0;  // seconds since 1970
  std::string what;
  std::vector<JournalChange> changes;  // in their order; none that is known to have failed
};

/// When a run began, in local time: "2026-11-26 06:39:02".
std::string DateOf(const Journal& journal);

/// How many files a run changed, each counted once by the path that it had before.
std::size_t CountFiles(const Journal& journal);

}  // namespace tessaril

#endif  // TESSARIL_UNDO_JOURNAL_H_
