#include "undo/undo_store.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <ctime>
#include <functional>
#include <memory>
#include <utility>

#include "engine/paths.h"
#include "undo/journal_reader.h"

namespace tessaril {
namespace {

constexpr const char* kLockName = "lock";
constexpr unsigned kMostNumber = 999'999'999;  // runs never get there; what is called by a larger one is none

Status OpenFolder(const std::string& path, FileHandle& folder) {
  folder = FileHandle(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  return folder.is_open() ? Status() : Status::System(errno);
}

// Creates a folder and those above it; on the disk when it returns.
Status MakeFolders(const std::string& folder) {
  if (mkdir(folder.c_str(), 0700) != 0) {
    if (errno == EEXIST) return {};
    if (errno != ENOENT || folder == "/") return Status::System(errno);
    if (Status status = MakeFolders(std::string(FolderOf(folder))); !status.ok()) return status;
    if (mkdir(folder.c_str(), 0700) != 0) return errno == EEXIST ? Status() : Status::System(errno);
  }
  FileHandle above;  // one that may be written and not read cannot be flushed
  return OpenFolder(std::string(FolderOf(folder)), above).ok() ? FlushFile(above.get()) : Status();
}

// Of a run that ended before it had begun its journal.
bool IsBlank(const std::string& journal) {
  struct stat info {};
  return stat(journal.c_str(), &info) == 0 ? info.st_size == 0 : errno == ENOENT;
}

}  // namespace

std::string UndoStore::PathOf(unsigned number) const {
  return JoinPath(folder_, std::to_string(number));
}

// Newest first. None where the store was never used.
Status UndoStore::Numbers(std::vector<unsigned>& numbers) const {
  const auto close_stream = [](DIR* stream) { closedir(stream); };
  const std::unique_ptr<DIR, decltype(close_stream)> stream(opendir(folder_.c_str()), close_stream);
  if (stream == nullptr) return errno == ENOENT ? Status() : Status::System(errno);
  errno = 0;
  while (const dirent* const entry = readdir(stream.get())) {
    const std::string_view name(entry->d_name);
    unsigned number = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), number);
    const bool is_number = error == std::errc() && end == name.data() + name.size();
    if (is_number && number <= kMostNumber && name == std::to_string(number)) numbers.push_back(number);
    errno = 0;
  }
  if (errno != 0) return Status::System(errno);
  std::sort(numbers.begin(), numbers.end(), std::greater<>());
  return {};
}

// Keeps others from making and removing folders; a moment at most. Where locks are not known there is none.
FileHandle UndoStore::Lock() const {
  FileHandle lock(open(JoinPath(folder_, kLockName).c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
  while (lock.is_open() && flock(lock.get(), LOCK_EX) != 0 && errno == EINTR) {
  }
  return lock;
}

Status UndoStore::Begin(std::string_view what, unsigned& number, JournalWriter& journal) const {
  if (Status status = MakeFolders(folder_); !status.ok()) return status;
  const FileHandle lock = Lock();
  std::vector<unsigned> numbers;
  if (Status status = Numbers(numbers); !status.ok()) return status;
  number = numbers.empty() ? 1 : numbers.front() + 1;
  if (mkdir(PathOf(number).c_str(), 0700) != 0) return Status::System(errno);
  FileHandle store, folder;
  Status status = OpenFolder(PathOf(number), folder);
  if (status.ok()) status = journal.Create(folder.get(), std::time(nullptr), what);
  if (status.ok()) status = FlushFile(folder.get());
  if (status.ok()) status = OpenFolder(folder_, store);
  if (status.ok()) status = FlushFile(store.get());
  if (!status.ok()) Remove(number);
  return status;
}

std::string UndoStore::JournalOf(unsigned number) const {
  return JoinPath(PathOf(number), kJournalName);
}

Status UndoStore::Open(unsigned number, UndoableRun& run, FileHandle& file) const {
  file = FileHandle(open(JournalOf(number).c_str(), O_RDONLY | O_CLOEXEC));
  if (!file.is_open()) {
    return errno == ENOENT ? Status::Failure("There is no such run") : Status::System(errno);
  }
  run.number = number;
  run.goes_on = IsJournalHeld(file.get());
  return ReadJournal(file.get(), run.journal);
}

Status UndoStore::List(std::vector<UndoableRun>& runs) const {
  std::vector<unsigned> numbers;
  if (Status status = Numbers(numbers); !status.ok()) return status;
  for (const unsigned number : numbers) {
    UndoableRun run;
    FileHandle file;
    run.reading = Open(number, run, file);
    const bool is_empty = run.reading.ok() ? run.journal.changes.empty() : IsBlank(JournalOf(number));
    run.number = number;
    if (!is_empty) runs.push_back(std::move(run));
  }
  return {};
}

void UndoStore::Prune() const {
  std::vector<unsigned> numbers;
  const FileHandle lock = Lock();
  if (!Numbers(numbers).ok()) return;
  std::size_t runs = 0;
  std::uint64_t bytes = 0;
  for (const unsigned number : numbers) {
    UndoableRun run;
    FileHandle file;
    const bool is_read = Open(number, run, file).ok();
    struct stat info {};
    if (file.is_open() && fstat(file.get(), &info) == 0) bytes += static_cast<std::uint64_t>(info.st_size);
    // What cannot be read now may be later.
    const bool is_empty = is_read ? run.journal.changes.empty() : IsBlank(JournalOf(number));
    if (!is_empty) ++runs;
    const bool too_much = runs > kMostRuns || (runs > 1 && bytes > kMostBytes);
    if (!run.goes_on && (is_empty || too_much)) Remove(number);
  }
}

void UndoStore::Remove(unsigned number) const {
  unlink(JournalOf(number).c_str());
  rmdir(PathOf(number).c_str());
}

}  // namespace tessaril
