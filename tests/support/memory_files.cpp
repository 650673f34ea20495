#include "tests/support/memory_files.h"

#include <algorithm>
#include <cerrno>

#include "engine/paths.h"

namespace tessaril {

Status MemoryFiles::ListFolder(const std::string& folder, std::vector<FolderEntry>& entries, FileStamp&) {
  entries.clear();
  if (unreadable.contains(folder)) return Status::System(EACCES);
  const std::string prefix = JoinPath(AbsolutePath("/", folder), "");
  std::set<std::string> folders;
  for (const auto& [path, content] : contents) {
    if (!path.starts_with(prefix)) continue;
    const std::string rest = path.substr(prefix.size());
    const std::size_t separator = rest.find(kSeparator);
    if (separator == std::string::npos) {
      entries.push_back({rest, EntryKind::kFile});
    } else {
      folders.insert(rest.substr(0, separator));
    }
  }
  for (const std::string& name : folders) entries.push_back({name, EntryKind::kFolder});
  std::reverse(entries.begin(), entries.end());  // whoever needs an order makes it
  return {};
}

Status MemoryFiles::EnterFolder(const std::string& folder) {
  current_ = folder;
  visits.push_back(folder);
  return {};
}

// Paths come as pages name them.
std::string MemoryFiles::Plain(const std::string& path) const {
  return path.empty() || path.ends_with(kSeparator) ? path : AbsolutePath("/", path);
}

Status MemoryFiles::Examine(const std::string& path, FileStamp& stamp) {
  const std::string plain = Plain(path);
  const auto found = contents.find(plain);
  stamp.modified = static_cast<std::int64_t>(versions_[plain]);
  if (found != contents.end()) {
    if (unreadable.contains(plain)) return Status::System(EACCES);
    return {};
  }
  const auto below = contents.lower_bound(JoinPath(plain, ""));
  const bool folder =
      !path.empty() && below != contents.end() && below->first.starts_with(JoinPath(plain, ""));
  return Status::System(folder ? EISDIR : ENOENT);
}

Status MemoryFiles::ReadStart(const std::string& path, std::size_t most, ByteBuffer& bytes,
                              FileStamp& stamp) {
  Status status = Read(path, bytes, stamp);
  bytes.SetSize(std::min(bytes.size(), most));
  return status;
}

Status MemoryFiles::ReadPieces(const std::string& path, FileStamp& stamp, ByteBuffer& memory,
                               const UsePiece& use) {
  if (Status status = Examine(path, stamp); !status.ok()) return status;
  if (Status status = Read(path, memory, stamp); !status.ok()) return status;
  constexpr std::size_t kPiece = 7;
  std::string_view content = memory.view();
  for (; content.size() > kPiece; content.remove_prefix(kPiece)) use(content.substr(0, kPiece), false);
  use(content, true);
  return {};
}

Status MemoryFiles::Rename(const std::string& folder, const std::string& from, const std::string& to) {
  const std::string old_path = Plain(JoinPath(folder, from));
  if (unwritable.contains(old_path)) return Status::System(EACCES);
  auto file = contents.extract(old_path);
  if (file.empty()) return Status::System(ENOENT);
  file.key() = Plain(JoinPath(folder, to));
  const auto result = contents.insert(std::move(file));
  if (result.inserted) return {};
  contents[old_path] = result.node.mapped();
  return Status::System(EEXIST);
}

Status MemoryFiles::Read(const std::string& path, ByteBuffer& bytes, FileStamp& stamp) {
  const auto found = contents.find(Plain(path));
  if (found == contents.end()) return Status::System(ENOENT);
  if (unreadable.contains(found->first) || damaged.contains(found->first)) return Status::System(EIO);
  stamp.modified = static_cast<std::int64_t>(versions_[found->first]);
  bytes.SetSize(0);
  bytes.Reserve(found->second.size());
  found->second.copy(bytes.data(), found->second.size());
  bytes.SetSize(found->second.size());
  return {};
}

Status MemoryFiles::ReplaceContent(const std::string& path, FileStamp& stamp,
                                   std::span<const std::string_view> pieces) {
  if (unwritable.contains(path)) return Status::System(ENOSPC);
  std::string content;
  for (const std::string_view piece : pieces) content += piece;
  contents[path] = content;
  stamp.modified = static_cast<std::int64_t>(++versions_[path]);
  writes.push_back(path);
  return {};
}

}  // namespace tessaril
