#include "undo/journal_reader.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstddef>
#include <ctime>
#include <new>
#include <optional>
#include <set>
#include <utility>

#include "engine/paths.h"
#include "engine/web_address.h"

namespace tessaril {
namespace {

using Words = std::vector<std::string>;

template <typename Number>
bool ReadNumber(std::string_view word, Number& number) {
  const char* const end = word.data() + word.size();
  const auto [stop, error] = std::from_chars(word.data(), end, number);
  return error == std::errc() && stop == end;
}

ssize_t ReadAt(int file, char* to, std::size_t most, std::uint64_t offset) {
  for (;;) {
    const ssize_t got = pread(file, to, most, static_cast<off_t>(offset));
    if (got >= 0 || errno != EINTR) return got;
  }
}

// Reads a file in lines, and passes over what lies between them.
class LineReader {
 public:
  explicit LineReader(int file) : file_(file) {}

  // The words of the next line, without its check; nothing at the end, also where the last line has no end or
  // is damaged.
  std::optional<Words> Next() {
    constexpr std::size_t kLongest = std::size_t{1} << 24;  // bytes, far more than the words can have
    std::string line;
    while (line.size() <= kLongest) {
      const std::string_view rest(block_.data() + at_, filled_ - at_);
      const std::size_t end = rest.find('\n');
      line += rest.substr(0, end);
      const bool has_end = end != std::string_view::npos;
      Skip(has_end ? end + 1 : rest.size());
      if (has_end) return Checked(line);
      if (!Fill()) return std::nullopt;
    }
    return std::nullopt;
  }

  void Skip(std::uint64_t bytes) {
    position_ += bytes;
    at_ += static_cast<std::size_t>(std::min<std::uint64_t>(bytes, filled_ - at_));
  }

  // Why reading failed, where it did.
  const Status& status() const { return status_; }

  // Of the next line, in bytes.
  std::uint64_t position() const { return position_; }

 private:
  static std::optional<Words> Checked(std::string_view line) {
    const std::size_t blank = std::min(line.size(), line.rfind(' '));
    const std::string_view text = line.substr(0, blank);
    if (line.substr(std::min(line.size(), blank + 1)) != LineCheck(text)) return std::nullopt;
    return Split(text);
  }

  static Words Split(std::string_view line) {
    Words words;
    for (;;) {
      const std::size_t blank = line.find(' ');
      words.emplace_back(line.substr(0, blank));
      if (blank == std::string_view::npos) return words;
      line.remove_prefix(blank + 1);
    }
  }

  bool Fill() {
    const ssize_t got = ReadAt(file_, block_.data(), block_.size(), position_);
    if (got < 0) status_ = Status::System(errno);
    at_ = 0;
    filled_ = static_cast<std::size_t>(std::max<ssize_t>(got, 0));
    return got > 0;
  }

  int file_;
  std::uint64_t position_ = 0;
  std::array<char, 4096> block_;
  std::size_t at_ = 0;
  std::size_t filled_ = 0;
  Status status_;
};

// Takes a journal up, line by line.
class JournalReader {
 public:
  JournalReader(int file, Journal& journal) : lines_(file), journal_(journal) {}

  Status Read() {
    const bool is_journal = TakeBeginning();
    if (!lines_.status().ok()) return lines_.status();
    if (!is_journal) return Status::Failure("Not a journal of changes, or a damaged one");
    for (auto words = lines_.Next(); words && Take(*words); words = lines_.Next()) {
    }
    std::erase_if(journal_.changes, [](const JournalChange& change) {
      return change.kind == JournalChange::Kind::kPage ? change.left.empty() : change.new_path.empty();
    });
    return lines_.status();
  }

 private:
  bool TakeBeginning() {
    const auto first = lines_.Next();
    if (!first || first->size() != 2 || (*first)[0] + " " + (*first)[1] != kJournalFirstLine) return false;
    const auto begun = lines_.Next();
    if (!begun || begun->size() != 2 || !ReadNumber((*begun)[1], journal_.begun)) return false;
    const auto what = lines_.Next();
    if (!what || what->size() != 2) return false;
    journal_.what = PercentDecoded((*what)[1]);
    return true;
  }

  // False when it is none, or is not complete.
  bool Take(const Words& words) {
    if (words[0] == "page" && words.size() == 3) return TakePage(words[1], words[2]);
    if (words[0] == "left" && words.size() == 3) return TakeLeft(words[1], words[2]);
    if (words[0] == "renamed" && words.size() == 5) return TakeRename(words);
    return words[0] == "failed" && words.size() == 1 && TakeFailed();
  }

  bool TakePage(std::string_view size, std::string_view path) {
    JournalChange page;
    std::uint64_t bytes = 0;
    if (!ReadNumber(size, bytes)) return false;
    page.path = PercentDecoded(path);
    page.offset = lines_.position();
    lines_.Skip(bytes + 1);  // and its line end
    const auto old = lines_.Next();
    if (!old || old->size() != 2 || (*old)[0] != "old") return false;
    const std::optional<ContentMark> mark = MarkFromText((*old)[1]);
    if (!mark || mark->size != bytes) return false;
    page.old = *mark;
    pages_.push_back(journal_.changes.size());
    journal_.changes.push_back(std::move(page));
    return true;
  }

  bool TakeLeft(std::string_view page, std::string_view mark) {
    std::size_t number = 0;
    const std::optional<ContentMark> left = MarkFromText(mark);
    if (!ReadNumber(page, number) || number >= pages_.size() || !left) return false;
    last_ = pages_[number];
    journal_.changes[*last_].left.push_back(*left);
    return true;
  }

  bool TakeRename(const Words& words) {
    const std::optional<ContentMark> mark = MarkFromText(words[4]);
    if (!mark) return false;
    JournalChange rename;
    rename.kind = JournalChange::Kind::kRename;
    const std::string folder = PercentDecoded(words[1]);
    rename.path = JoinPath(folder, PercentDecoded(words[2]));
    rename.new_path = JoinPath(folder, PercentDecoded(words[3]));
    rename.old = *mark;
    last_ = journal_.changes.size();
    journal_.changes.push_back(std::move(rename));
    return true;
  }

  bool TakeFailed() {
    if (!last_) return false;
    JournalChange& change = journal_.changes[*last_];
    if (change.kind == JournalChange::Kind::kRename) {
      change.new_path.clear();
    } else {
      change.left.pop_back();
    }
    last_.reset();
    return true;
  }

  LineReader lines_;
  Journal& journal_;
  std::vector<std::size_t> pages_;   // where they are among the changes
  std::optional<std::size_t> last_;  // the change announced last
};

}  // namespace

std::string DateOf(const Journal& journal) {
  const auto time = static_cast<std::time_t>(journal.begun);
  std::tm parts{};
  std::array<char, 32> text{};
  if (localtime_r(&time, &parts) == nullptr) return "?";
  std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S", &parts);
  return text.data();
}

std::size_t CountFiles(const Journal& journal) {
  std::set<std::string_view> files;
  for (auto change = journal.changes.rbegin(); change != journal.changes.rend(); ++change) {
    files.erase(change->new_path);
    files.insert(change->path);
  }
  return files.size();
}

Status ReadJournal(int file, Journal& journal) {
  return JournalReader(file, journal).Read();
}

Status ReadOldContent(int file, const JournalChange& change, ByteBuffer& content) {
  const auto size = static_cast<std::size_t>(change.old.size);
  content.SetSize(0);
  try {
    content.Reserve(size);
  } catch (const std::bad_alloc&) {
    return Status::System(ENOMEM);
  }
  while (content.size() < size) {
    const ssize_t got =
        ReadAt(file, content.data() + content.size(), size - content.size(), change.offset + content.size());
    if (got < 0) return Status::System(errno);
    if (got == 0) break;
    content.SetSize(content.size() + static_cast<std::size_t>(got));
  }
  const std::string_view bytes = content.view();
  return MarkOf({&bytes, 1}) == change.old ? Status() : Status::Failure("Its old content is damaged");
}

}  // namespace tessaril
