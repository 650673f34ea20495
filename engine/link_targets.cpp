#include "engine/link_targets.h"

#include <algorithm>
#include <utility>

#include "engine/ascii.h"
#include "engine/link_paths.h"
#include "engine/paths.h"

namespace tessaril {
namespace {

// How much is remembered at most; then all of it is forgotten and looked up anew. The largest files have room
// beside one another, however large they are.
constexpr std::size_t kMostTargets = 200000;
constexpr std::size_t kMostAnchorMemory = std::size_t{64} << 20;  // bytes
constexpr std::size_t kLargestBeside = 4;

std::string OfferText(const std::string& stored_name) {
  return stored_name +
         ":\r\nFound UPPERcase characters in a linked file's filename! \r\n\r\n"
         "Replace this filename with the proper lowercase name:\r\n" +
         ToLower(stored_name);
}

}  // namespace

LinkTarget& LinkTargets::OfResolvedLink(std::string_view link, std::string_view page_path) {
  std::string path = ResolveLink(link, page_path);
  bool is_new = false;
  LinkTarget& target = Remember(path, is_new);
  if (is_new) {
    target.registered = RegisteredPath(path, {});
    target.path = std::move(path);
  }
  return target;
}

LinkTarget& LinkTargets::OfPlainLink(std::string_view link) {
  const bool absolute = link.starts_with(kSeparator);
  bool is_new = false;
  if (!absolute && JoinByText(link, folder_, root_, key_)) {
    LinkTarget& target = Remember(key_, is_new);
    if (is_new) target.path = target.registered = key_;
    return target;
  }
  key_.clear();
  if (!absolute) {
    // No path begins so: a link's own file may be registered otherwise than an equal absolute path.
    key_ += '\0';
    key_ += folder_;
    key_ += '\0';
  }
  key_ += link;
  LinkTarget& target = Remember(key_, is_new);
  if (is_new) {
    target.registered = RegisteredPath(link, folder_);
    target.path = absolute || link.empty() ? std::string(link) : JoinPath(folder_, link);
  }
  return target;
}

LinkTarget& LinkTargets::Remember(std::string_view key, bool& is_new) {
  const auto known = targets_.find(key);
  is_new = known == targets_.end();
  return is_new ? targets_[std::string(key)] : known->second;
}

void LinkTargets::ForgetIfTooMuch() {
  const std::size_t most = std::max(targets_.size(), same_texts_.size());
  if (most < kMostTargets) return;
  same_texts_.clear();
  targets_.clear();
  anchor_memory_ = 0;
}

std::shared_ptr<Anchors> LinkTargets::NotePage(const std::string& path, const FileStamp& stamp,
                                               std::string_view text) {
  ForgetIfTooMuch();
  bool is_new = false;
  LinkTarget& target = Remember(path, is_new);
  if (is_new) {
    target.registered = RegisteredPath(path, {});
    target.path = path;
  }
  target.opening = Status();
  target.opened_at = changes_;
  if (!target.anchors || target.stamp != stamp) SetAnchors(target, text);
  target.stamp = stamp;
  return target.anchors;
}

void LinkTargets::SetAnchors(LinkTarget& target, std::string_view text) {
  target.anchors.reset();
  auto anchors = std::make_shared<Anchors>(text, kLongestName);
  const std::size_t memory = anchors->memory();
  largest_anchors_ = std::max(largest_anchors_, memory);
  anchor_memory_ += memory;
  if (anchor_memory_ > std::max(kMostAnchorMemory, kLargestBeside * largest_anchors_)) {
    for (auto& [key, other] : targets_) other.anchors.reset();
    anchor_memory_ = memory;
  }
  target.anchors = std::move(anchors);
}

void LinkTargets::EnterFolder(std::string_view folder, std::string_view root) {
  if (folder == folder_ && root == root_) return;
  folder_ = folder;
  root_ = root;
  same_texts_.clear();
}

LinkTarget& LinkTargets::Find(std::string_view link, const std::string& page_path, bool resolve) {
  ForgetIfTooMuch();
  if (std::exchange(same_resolve_, resolve) != resolve) same_texts_.clear();
  const auto known = same_texts_.find(link);
  if (known != same_texts_.end()) return *known->second;
  LinkTarget& target = resolve ? OfResolvedLink(link, page_path) : OfPlainLink(link);
  same_texts_.emplace(link, &target);
  return target;
}

const Status& LinkTargets::Open(LinkTarget& target, bool with_anchors) {
  const bool known = target.opening && target.opened_at == changes_;
  if (known && (!with_anchors || target.anchors || !target.opening->ok())) return *target.opening;
  // When the run has changed something, a file whose anchors are known may well be the same still.
  const bool read = with_anchors && !target.anchors;
  FileStamp stamp;
  target.opening = files_.Examine(target.path, stamp, read ? &bytes_ : nullptr);
  target.opened_at = changes_;
  if (!target.opening->ok() || stamp != target.stamp) target.anchors.reset();
  target.stamp = stamp;
  if (target.opening->ok() && read) SetAnchors(target, bytes_.view());
  return *target.opening;
}

const Question* LinkTargets::RenameOffer(LinkTarget& target) {
  if (target.looked_up_at != renames_) LookUpName(target);
  return target.offer ? &*target.offer : nullptr;
}

void LinkTargets::LookUpName(LinkTarget& target) {
  target.looked_up_at = renames_;
  target.stored_name.clear();
  target.offer.reset();
  const Spellings& spellings = SpellingsIn(std::string(FolderOf(target.registered)));
  const std::string name(NameOf(target.path));
  const auto found = spellings.find(ToLower(name));
  if (found == spellings.end() || found->second.empty()) return;
  const std::vector<std::string>& stored = found->second;
  const bool exact = std::find(stored.begin(), stored.end(), name) != stored.end();
  const std::string& chosen = exact ? name : *std::min_element(stored.begin(), stored.end());
  if (chosen == found->first) return;
  target.stored_name = chosen;
  target.offer = Question{OfferText(chosen), Question::When::kDuringWalk};
}

const LinkTargets::Spellings& LinkTargets::SpellingsIn(const std::string& folder) {
  const auto [place, inserted] = folders_.try_emplace(folder);
  Spellings& spellings = place->second;
  if (!inserted) return spellings;
  std::vector<FolderEntry> entries;
  FileStamp stamp;
  (void)files_.ListFolder(folder, entries, stamp);  // what cannot be listed is taken as empty
  std::erase_if(entries, [](const FolderEntry& entry) { return entry.kind != EntryKind::kFile; });
  const auto lower_end = std::partition(entries.begin(), entries.end(), [](const FolderEntry& entry) {
    return entry.name == ToLower(entry.name);
  });
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

Status LinkTargets::Rename(LinkTarget& target, std::string& old_path, std::string& new_path) {
  const std::string folder(FolderOf(target.registered));
  const std::string from = target.stored_name;
  const std::string to = ToLower(from);
  old_path = JoinPath(folder, from);
  new_path = JoinPath(folder, to);
  if (Status status = files_.Rename(folder, from, to); !status.ok()) return status;
  ++renames_;
  ++changes_;
  std::vector<std::string>& stored = folders_[folder][to];
  std::erase(stored, from);
  stored.push_back(to);
  return {};
}

Status LinkTargets::FindAnchor(LinkTarget& target, std::string_view name, bool& found) {
  if (name.size() <= kLongestName && target.anchors) {
    found = target.anchors->Has(name);
    return {};
  }
  if (!long_anchors_ || long_anchors_path_ != target.path || long_anchors_at_ != changes_) {
    long_anchors_.reset();
    FileStamp stamp;
    if (Status status = files_.Examine(target.path, stamp, &bytes_); !status.ok()) return status;
    long_anchors_ = std::make_unique<Anchors>(bytes_.view());
    long_anchors_path_ = target.path;
    long_anchors_at_ = changes_;
  }
  found = long_anchors_->Has(name);
  return {};
}

}  // namespace tessaril
