#include "engine/site_tree.h"

#include <algorithm>

#include "engine/ascii.h"
#include "engine/paths.h"
#include "engine/web_address.h"

namespace tessaril {

SiteTree::SiteTree(Files& files, const std::string& root) : files_(files), path_(root) {
  root_ = &all_.emplace_back();
  root_->kind = EntryKind::kFolder;
}

// What cannot be listed has no entries that are known; what is no folder after all is left as it is.
void SiteTree::List(SiteEntry& folder) {
  folder.is_listed = true;
  std::vector<FolderEntry> found;
  FileStamp stamp;
  const std::string path = PathOf(folder);
  const Status status = files_.ListFolder(path, found, stamp);
  if (!status.ok() && !folder.is_folder()) return;
  folder.is_closed = !status.ok();
  if (!status.ok()) {
    found.clear();  // a part of them could make sure what is not
    unlisted_.emplace(path, status);
  }
  folder.is_linked_folder = !folder.is_folder();
  struct Sorted {
    std::string lower;
    FolderEntry* entry;
  };
  std::vector<Sorted> sorted;
  sorted.reserve(found.size());
  for (FolderEntry& entry : found) sorted.push_back({ToLower(entry.name), &entry});
  std::sort(sorted.begin(), sorted.end(), [](const Sorted& a, const Sorted& b) {
    return a.lower != b.lower ? a.lower < b.lower : a.entry->name < b.entry->name;
  });
  folder.entries.reserve(sorted.size());
  folder.by_name.reserve(sorted.size());
  for (const auto& [lower, entry] : sorted) {
    SiteEntry& added = all_.emplace_back();
    added.name = std::move(entry->name);
    added.kind = entry->kind;
    added.parent = &folder;
    folder.entries.push_back(&added);
    folder.by_name.emplace(added.name, &added);
  }
}

const std::vector<SiteEntry*>& SiteTree::EntriesOf(SiteEntry& folder) {
  if (!folder.is_listed && !folder.is_file()) List(folder);
  return folder.entries;
}

SiteEntry* SiteTree::Child(SiteEntry& folder, std::string_view name) {
  (void)EntriesOf(folder);
  const auto found = folder.by_name.find(name);
  return found == folder.by_name.end() ? nullptr : found->second;
}

std::span<SiteEntry* const> SiteTree::AnyCase(SiteEntry& folder, std::string_view name) {
  if (folder.by_lower_name.empty()) {
    for (SiteEntry* const entry : EntriesOf(folder))
      folder.by_lower_name[ToLower(entry->name)].push_back(entry);
  }
  const auto found = folder.by_lower_name.find(ToLower(name));
  if (found == folder.by_lower_name.end()) return {};
  return found->second;
}

SiteEntry* SiteTree::Find(std::span<const std::string> names) {
  SiteEntry* entry = root_;
  for (const std::string& name : names) {
    entry = Child(*entry, name);
    if (entry == nullptr) return nullptr;
  }
  return entry;
}

bool SiteTree::LeadIntoClosed(std::span<const std::string> names) {
  SiteEntry* entry = root_;
  for (const std::string& name : names) {
    SiteEntry* const next = Child(*entry, name);
    if (next == nullptr) break;
    entry = next;
  }
  (void)EntriesOf(*entry);
  return entry->is_closed;
}

void SiteTree::ForEachFile(SiteEntry& folder, const std::function<void(SiteEntry&)>& use) {
  const std::vector<SiteEntry*>& entries = EntriesOf(folder);
  for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
    if ((*entry)->is_folder() && !(*entry)->is_hidden()) ForEachFile(**entry, use);
  }
  for (SiteEntry* const entry : entries) {
    if (entry->is_file() && !entry->is_hidden()) use(*entry);
  }
}

std::span<SiteEntry* const> SiteTree::FilesNamed(const std::string& name) {
  if (!files_are_named_) {
    files_are_named_ = true;
    ForEachFile(*root_, [this](SiteEntry& file) { files_by_name_[file.name].push_back(&file); });
  }
  const auto found = files_by_name_.find(name);
  if (found == files_by_name_.end()) return {};
  return found->second;
}

SiteEntry* SiteTree::OfPath(std::string_view path) {
  const std::string_view root = path_ == "/" ? std::string_view() : std::string_view(path_);
  if (!path.starts_with(root)) return nullptr;
  path.remove_prefix(root.size());
  SiteEntry* entry = root_;
  while (entry != nullptr && !path.empty()) {
    if (path.front() != kSeparator) return nullptr;
    path.remove_prefix(1);
    const std::size_t end = std::min(path.find(kSeparator), path.size());
    if (end > 0) entry = Child(*entry, path.substr(0, end));
    path.remove_prefix(end);
  }
  return entry;
}

Status SiteTree::WhyUnknown(std::string_view path) const {
  for (; path.size() > path_.size(); path = FolderOf(path)) {
    if (const auto found = unlisted_.find(std::string(FolderOf(path))); found != unlisted_.end())
      return found->second;
  }
  return Status::Failure("Came after the site was looked through");
}

std::string SiteTree::PathOf(const SiteEntry& entry) const {
  return entry.parent == nullptr ? path_ : JoinPath(PathOf(*entry.parent), entry.name);
}

std::string SiteTree::SitePathOf(const SiteEntry& entry) const {
  return JoinedNames(NamesOf(entry));
}

std::vector<std::string> SiteTree::NamesOf(const SiteEntry& entry) {
  std::vector<std::string> names;
  for (const SiteEntry* at = &entry; at->parent != nullptr; at = at->parent) names.push_back(at->name);
  std::reverse(names.begin(), names.end());
  return names;
}

}  // namespace tessaril
