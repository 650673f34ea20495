#include "engine/stored_names.h"

#include <algorithm>

#include "engine/ascii.h"
#include "engine/paths.h"

namespace tessaril {

std::string StoredNames::UpperCaseName(const std::string& folder, std::string_view name) {
  std::string stored = Choose(folder, name);
  // A rename may have gone another way to the same folder, or taken the file away from a symbolic link.
  FileStamp stamp;
  if (renames_ > 0 && !stored.empty() && !files_.Examine(JoinPath(folder, stored), stamp).ok()) {
    folders_.erase(folder);
    stored = Choose(folder, name);
  }
  return stored;
}

std::string StoredNames::Choose(const std::string& folder, std::string_view name) {
  const Spellings& spellings = SpellingsIn(folder);
  const auto found = spellings.find(ToLower(name));
  if (found == spellings.end() || found->second.empty()) return {};
  const std::vector<std::string>& stored = found->second;
  const auto exact = std::find(stored.begin(), stored.end(), name);
  const auto chosen = exact != stored.end() ? exact : std::min_element(stored.begin(), stored.end());
  return *chosen == found->first ? std::string() : *chosen;
}

const StoredNames::Spellings& StoredNames::SpellingsIn(const std::string& folder) {
  const auto [place, inserted] = folders_.try_emplace(folder);
  Spellings& spellings = place->second;
  if (!inserted) return spellings;
  std::vector<FolderEntry> entries;
  FileStamp stamp;
  (void)files_.ListFolder(folder, entries, stamp);  // what cannot be listed is taken as empty
  std::erase_if(entries, [](const FolderEntry& entry) { return entry.kind != EntryKind::kFile; });
  const auto lower_end = std::partition(entries.begin(), entries.end(),
                                        [](const FolderEntry& entry) { return !HasUpperCase(entry.name); });
  for (auto entry = lower_end; entry != entries.end(); ++entry) {
    spellings[ToLower(entry->name)].push_back(std::move(entry->name));
  }
  for (auto entry = entries.begin(); entry != lower_end; ++entry) {
    if (const auto upper = spellings.find(entry->name); upper != spellings.end()) {
      upper->second.push_back(std::move(entry->name));
    }
  }
  return spellings;
}

Status StoredNames::Rename(const std::string& folder, const std::string& name) {
  const std::string lower = ToLower(name);
  if (Status status = files_.Rename(folder, name, lower); !status.ok()) return status;
  ++renames_;
  renamed_.insert(name);
  std::vector<std::string>& stored = folders_[folder][lower];
  std::erase(stored, name);
  stored.push_back(lower);
  return {};
}

std::string StoredNames::PresentPath(const std::string& path) const {
  const std::string_view name = NameOf(path);
  if (!renamed_.contains(name)) return path;
  std::string lower = JoinPath(FolderOf(path), ToLower(name));
  FileStamp stamp;
  const bool renamed = !files_.Examine(path, stamp).ok() && files_.Examine(lower, stamp).ok();
  return renamed ? lower : path;
}

}  // namespace tessaril
