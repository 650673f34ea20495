#include "undo/journal_writer.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <initializer_list>
#include <new>

#include "engine/file_replacement.h"
#include "engine/web_address.h"
#include "undo/journal.h"

namespace tessaril {
namespace {

// The lock of a journal goes with the file's handle. Others can look at it without having it for a moment,
// in which its writer would not get it.
struct flock WholeFile() {
  struct flock lock {};
  lock.l_type = F_WRLCK;
  lock.l_whence = SEEK_SET;
  return lock;
}

// A text as one word of a line.
std::string Word(std::string_view text) {
  std::string word;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte <= ' ' || c == '%' || byte == 0x7f) {
      AppendPercentEncoded(c, word);
    } else {
      word += c;
    }
  }
  return word;
}

std::string Line(std::initializer_list<std::string_view> words) {
  std::string line;
  for (const std::string_view word : words) {
    if (!line.empty()) line += ' ';
    line += word;
  }
  return line += " " + LineCheck(line) + "\n";
}

}  // namespace

bool IsJournalHeld(int file) {
  struct flock lock = WholeFile();
  return fcntl(file, F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

Status JournalWriter::Create(int folder, std::int64_t begun, std::string_view what) {
  FileHandle file(openat(folder, kJournalName, O_RDWR | O_APPEND | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
  if (!file.is_open()) return Status::System(errno);
  // Where locks are not known, no other run will be able to tell that this one goes on; it is the newest.
  struct flock lock = WholeFile();
  (void)fcntl(file.get(), F_OFD_SETLK, &lock);
  file_ = std::move(file);
  Status status =
      Note(Line({kJournalFirstLine}) + Line({"begun", std::to_string(begun)}) + Line({"what", Word(what)}));
  if (!status.ok()) file_.Close();
  return status;
}

Status JournalWriter::AddPage(Files& files, const std::string& path, const FileStamp& stamp,
                              const ContentMark& left, std::size_t& page, Status& unread) {
  try {
    ContentMark old;
    Status written = CopyPage(files, path, stamp, old, unread);
    if (unread.ok() && written.ok()) {
      written =
          Write("\n" + Line({"old", MarkText(old)}) + Line({"left", std::to_string(pages_), MarkText(left)}));
    }
    if (!unread.ok()) {
      (void)Settle(unread);
      return {};
    }
    if (Status status = Settle(std::move(written)); !status.ok()) return status;
  } catch (const std::bad_alloc&) {
    return Settle(Status::System(ENOMEM));
  }
  page = pages_++;
  return {};
}

Status JournalWriter::CopyPage(Files& files, const std::string& path, const FileStamp& stamp,
                               ContentMark& old, Status& unread) {
  Status written = Write(Line({"page", std::to_string(stamp.size), Word(path)}));
  ContentMarker marker;
  FileStamp now;
  unread = ReadContent(files, path, now, memory_, [&](std::string_view piece) {
    marker.Add(piece);
    if (written.ok()) written = Write(piece);
  });
  old = marker.Mark();
  if (unread.ok() && (now != stamp || old.size != stamp.size)) unread = FileWasChanged();
  return written;
}

Status JournalWriter::AddLeft(std::size_t page, const ContentMark& left) {
  return Note(Line({"left", std::to_string(page), MarkText(left)}));
}

Status JournalWriter::AddRename(const std::string& folder, const std::string& from, const std::string& to,
                                const ContentMark& mark) {
  return Note(Line({"renamed", Word(folder), Word(from), Word(to), MarkText(mark)}));
}

void JournalWriter::NoteFailed() {
  (void)Note(Line({"failed"}));  // without it an undo finds the change not made, and says so
}

Status JournalWriter::Note(const std::string& line) {
  return Settle(Write(line));
}

Status JournalWriter::Write(std::string_view bytes) {
  Status status = WriteAll(file_.get(), bytes);
  if (status.ok()) end_ += bytes.size();
  return status;
}

// Brings what was written to the disk, or takes it back.
Status JournalWriter::Settle(Status written) {
  if (written.ok()) written = FlushFile(file_.get());
  if (written.ok()) {
    size_ = end_;
    return written;
  }
  end_ = size_;
  if (ftruncate(file_.get(), static_cast<off_t>(size_)) != 0) {
    file_.Close();  // nothing can be added behind the torn end
  }
  return written;
}

}  // namespace tessaril
