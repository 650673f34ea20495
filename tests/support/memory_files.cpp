#include "tests/support/memory_files.h"

#include <algorithm>
#include <cerrno>

#include "engine/paths.h"

namespace tessaril {

Status MemoryFiles::ListFolder(const std::string& folder, std::vector<FolderEntry>& entries, FileStamp&) {
  entries.clear();
  if (unreadable.contains(folder)) return Status::System(EACCES);
  const std::string prefix = JoinPath(folder, "");
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

Status MemoryFiles::Read(const std::string& path, ByteBuffer& bytes, FileStamp&) {
  const auto found = contents.find(path);
  if (found == contents.end()) return Status::System(ENOENT);
  if (unreadable.contains(path)) return Status::System(EIO);
  bytes.SetSize(0);
  bytes.Reserve(found->second.size());
  found->second.copy(bytes.data(), found->second.size());
  bytes.SetSize(found->second.size());
  return {};
}

Status MemoryFiles::ReplaceContent(const std::string& path, FileStamp&,
                                   std::span<const std::string_view> pieces) {
  if (unwritable.contains(path)) return Status::System(ENOSPC);
  std::string content;
  for (const std::string_view piece : pieces) content += piece;
  contents[path] = content;
  writes.push_back(path);
  return {};
}

}  // namespace tessaril
