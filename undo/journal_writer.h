#ifndef TESSARIL_UNDO_JOURNAL_WRITER_H_
#define TESSARIL_UNDO_JOURNAL_WRITER_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "engine/byte_buffer.h"
#include "engine/file_handle.h"
#include "engine/files.h"
#include "undo/content_mark.h"

namespace tessaril {

/// Whether the writer of an open journal is at it.
bool IsJournalHeld(int file);

/// Writes the journal of a run. What a call has noted is on the disk when it returns; a call that fails
/// leaves the journal as it was, and the reason is what is wrong with the journal, not with the page.
class JournalWriter {
 public:
  /// Creates the journal in an open folder of its own and keeps it locked until the object goes. `begun` in
  /// seconds since 1970.
  Status Create(int folder, std::int64_t begun, std::string_view what);

  /// Notes a page, which must be the one of `stamp`, with the content that it has and the mark of the one
  /// that it gets; `page` becomes its number. When the page itself cannot be read, or is not that one,
  /// `unread` tells why, and nothing is noted.
  Status AddPage(Files& files, const std::string& path, const FileStamp& stamp, const ContentMark& left,
                 std::size_t& page, Status& unread);

  /// Notes one more content that a page gets.
  Status AddLeft(std::size_t page, const ContentMark& left);

  /// Notes that a file of `folder`, whose content has the mark, gets another name.
  Status AddRename(const std::string& folder, const std::string& from, const std::string& to,
                   const ContentMark& mark);

  /// The change that was noted last was not made.
  void NoteFailed();

  bool is_open() const { return file_.is_open(); }

 private:
  Status CopyPage(Files& files, const std::string& path, const FileStamp& stamp, ContentMark& old,
                  Status& unread);
  Status Write(std::string_view bytes);
  Status Settle(Status written);
  Status Note(const std::string& line);

  FileHandle file_;
  std::uint64_t size_ = 0;  // bytes of complete lines
  std::uint64_t end_ = 0;   // bytes that were written
  std::size_t pages_ = 0;
  ByteBuffer memory_;
};

}  // namespace tessaril

#endif  // TESSARIL_UNDO_JOURNAL_WRITER_H_
