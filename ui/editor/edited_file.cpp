#include "ui/editor/edited_file.h"

#include <algorithm>
#include <cerrno>

#include "engine/byte_buffer.h"
#include "engine/characters.h"
#include "engine/page_text.h"

namespace tessaril {
namespace {

// Where the shown part of a text ends that is too long. In an 8-bit text each byte is a character.
std::size_t EndOfShown(std::string_view bytes) {
  constexpr std::size_t kEnd = EditedFile::kShown;
  if (bytes[kEnd - 1] == '\r' && bytes[kEnd] == '\n') return kEnd + 1;
  std::size_t begin = kEnd;
  while (begin > kEnd - 3 && IsContinuation(bytes[begin])) --begin;
  const std::size_t end = begin + SequenceLength(bytes.substr(begin));
  return begin < kEnd && end > kEnd && IsUtf8(bytes.substr(0, end)) ? end : kEnd;
}

}  // namespace

Status EditedFile::Load(const std::string& path, LoadedText& text) {
  ByteBuffer start;
  FileStamp stamp;
  if (Status status = files_.ReadStart(path, kLimit + 1, start, stamp); !status.ok()) return status;
  text.size = std::max<std::uint64_t>(stamp.size, start.size());
  text.is_cut = start.size() > kLimit;
  if (text.is_cut) start.SetSize(EndOfShown(start.view()));
  text.bytes = start.view();
  PageText page(start);
  text.encoding = page.Encoding();
  text.line_end = page.LineEnd();
  path_ = path;
  stamp_ = stamp;
  is_cut_ = text.is_cut;
  return {};
}

void EditedFile::BeginNew(const std::string& path) {
  path_ = path;
  stamp_.reset();
  is_cut_ = false;
}

bool EditedFile::HasChanged() const {
  FileStamp now;
  return files_.Examine(path_, now).ok() && stamp_ != now;
}

bool EditedFile::IsAt(const std::string& path) const {
  if (path == path_) return true;
  FileStamp now;
  return stamp_ && files_.Examine(path, now).ok() && now.inode == stamp_->inode &&
         now.device == stamp_->device;
}

Status EditedFile::Save(const std::string& path, std::string_view text, const SaveContent& save) {
  if (path.empty()) return Status::System(ENOENT);
  if (Status status = save(path, text); !status.ok()) return status;
  FileStamp stamp;
  BeginNew(path);
  if (files_.Examine(path, stamp).ok()) stamp_ = stamp;
  return {};
}

}  // namespace tessaril
