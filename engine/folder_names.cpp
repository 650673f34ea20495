#include "engine/folder_names.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "engine/ascii.h"

namespace tessaril {
namespace {

// The order of names: without regard to letter case, and where they then are equal, by byte.
bool ComesBefore(const std::string& a, const std::string& b) {
  const std::size_t common = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < common; ++i) {
    const auto x = static_cast<unsigned char>(ToLower(a[i]));
    const auto y = static_cast<unsigned char>(ToLower(b[i]));
    if (x != y) return x < y;
  }
  return a.size() != b.size() ? a.size() < b.size() : a < b;
}

std::vector<std::string> TakeNames(std::vector<FolderEntry>& entries, EntryKind kind,
                                   const FileFilter* filter, std::string_view marked) {
  std::vector<std::string> names;
  for (FolderEntry& entry : entries) {
    if (entry.kind != kind || (entry.name.starts_with('.') && entry.name != marked)) continue;
    if (filter != nullptr && !filter->Lists(entry.name)) continue;
    names.push_back(std::move(entry.name));
  }
  std::sort(names.begin(), names.end(), ComesBefore);
  return names;
}

}  // namespace

std::vector<std::string> TakeFolderNames(std::vector<FolderEntry>& entries) {
  return TakeNames(entries, EntryKind::kFolder, nullptr, {});
}

std::vector<std::string> TakeFileNames(std::vector<FolderEntry>& entries, const FileFilter& filter,
                                       std::string_view marked) {
  return TakeNames(entries, EntryKind::kFile, &filter, marked);
}

}  // namespace tessaril
