#include "engine/file_register.h"

#include <algorithm>

#include "engine/ascii.h"
#include "engine/paths.h"

namespace tessaril {
namespace {

constexpr std::size_t kNone = std::string::npos;
constexpr std::size_t kHeadSize = 4;  // line end, marker and blank

// Calls `use` for each entry of a sorted map whose key begins with `start`.
template <typename Map, typename Use>
void ForEachBeginningWith(std::string_view start, const Map& map, const Use& use) {
  for (auto entry = map.lower_bound(start); entry != map.end() && entry->first.starts_with(start); ++entry) {
    use(*entry);
  }
}

}  // namespace

void FileRegister::AddChecked(const std::string& path) {
  if (Find(path) == kNone) Append('U', path);
}

void FileRegister::MarkLinked(const std::string& path) {
  if (!linked_.insert(path).second) return;
  const std::size_t place = Find(path);
  if (place == kNone) {
    Append('R', path);
    return;
  }
  const bool at_start = place >= kHeadSize && text_.compare(place - kHeadSize, CrLf.size(), CrLf) == 0 &&
                        text_[place - 1] == ' ' && (text_[place - 2] == 'U' || text_[place - 2] == 'R');
  if (at_start) text_[place - 2] = 'R';
}

void FileRegister::Append(char marker, const std::string& path) {
  const std::size_t entry = text_.size() + kHeadSize;
  const std::size_t separator = std::min(path.rfind(kSeparator), path.size());
  const std::string_view whole = path;
  Folder& folder = FolderAt(whole.substr(0, separator), entry);
  folder.names.emplace(whole.substr(std::min(separator + 1, path.size())), entry);
  text_ += CrLf;
  text_ += marker;
  text_ += ' ';
  text_ += path;
}

FileRegister::Folder& FileRegister::FolderAt(std::string_view path, std::size_t entry) {
  std::unique_ptr<Folder>& folder = folders_[std::string(path)];
  if (folder) return *folder;
  folder = std::make_unique<Folder>();
  folder->size = path.size();
  folder->first_entry = entry;
  folder_ends_[""].push_back(folder.get());
  for (std::size_t at = path.find(kSeparator); at != kNone; at = path.find(kSeparator, at + 1)) {
    folder_ends_[std::string(path.substr(at))].push_back(folder.get());
  }
  return *folder;
}

// The first place of `path` in the text.
std::size_t FileRegister::Find(const std::string& path) const {
  // The index knows single paths; a path with a line end in it could reach over several.
  const bool indexed = path.starts_with(kSeparator) && path.find('\r') == kNone;
  return indexed ? FindIndexed(path) : text_.find(path);
}

// The last separator of `path` stands, wherever the path is found, either in front of an entry's name or
// inside its folder.
std::size_t FileRegister::FindIndexed(const std::string& path) const {
  const std::size_t separator = path.rfind(kSeparator);
  const std::string_view folder = std::string_view(path).substr(0, separator);
  const std::string_view name = std::string_view(path).substr(separator + 1);
  std::size_t first = kNone;
  if (const auto ends = folder_ends_.find(folder); ends != folder_ends_.end()) {
    for (const Folder* const found : ends->second) {
      ForEachBeginningWith(name, found->names, [&](const auto& entry) {
        first = std::min(first, entry.second + found->size - folder.size());
      });
    }
  }
  ForEachBeginningWith(path, folder_ends_, [&](const auto& end) {
    for (const Folder* const found : end.second) {
      first = std::min(first, found->first_entry + found->size - end.first.size());
    }
  });
  return first;
}

}  // namespace tessaril
