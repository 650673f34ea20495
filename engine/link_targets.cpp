#include "engine/link_targets.h"

#include <algorithm>
#include <bit>
#include <climits>
#include <utility>

#include "engine/ascii.h"
#include "engine/link_paths.h"
#include "engine/paths.h"

namespace tessaril {
namespace {

// Bytes that are remembered at most; then all of it is forgotten and looked up anew. The largest files'
// anchors have room beside one another, however large they are.
constexpr std::size_t kMostMemory = std::size_t{96} << 20;
constexpr std::size_t kMostAnchorMemory = std::size_t{64} << 20;
constexpr std::size_t kLargestBeside = 4;

// Links that are longer than the system's paths lead nowhere; they are not remembered at all.
constexpr std::size_t kLongestLink = PATH_MAX;  // bytes

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
  if (!is_new) return known->second;
  constexpr std::size_t kPaths = 3;  // the key and two more like it
  memory_ += sizeof(LinkTarget) + kPaths * key.size();
  return targets_[std::string(key)];
}

void LinkTargets::ForgetIfTooMuch() {
  if (memory_ < kMostMemory) return;
  same_texts_.clear();
  targets_.clear();
  memory_ = 0;
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
  target.known_at = changes_;
  target.opening = Status();
  if (!target.anchors || target.stamp != stamp) {
    auto anchors = std::make_shared<Anchors>(Anchors::kUsualNames);
    anchors->Take(text, true);
    SetAnchors(target, std::move(anchors));
  }
  target.stamp = stamp;
  return target.anchors;
}

void LinkTargets::SetAnchors(LinkTarget& target, std::shared_ptr<Anchors> anchors) {
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
  if (link.size() > kLongestLink) {
    const bool absolute = link.starts_with(kSeparator);
    too_long_ = {};
    too_long_.path = resolve    ? ResolveLink(link, page_path)
                     : absolute ? std::string(link)
                                : JoinPath(folder_, link);
    too_long_.registered = RegisteredPath(resolve ? too_long_.path : link, folder_);
    return too_long_;
  }
  ForgetIfTooMuch();
  if (std::exchange(same_resolve_, resolve) != resolve) same_texts_.clear();
  const auto known = same_texts_.find(link);
  if (known != same_texts_.end()) return *known->second;
  LinkTarget& target = resolve ? OfResolvedLink(link, page_path) : OfPlainLink(link);
  constexpr std::size_t kEntry = 100;  // bytes, about
  memory_ += kEntry + link.size();
  same_texts_.emplace(link, &target);
  return target;
}

// What is known of opening and reading the file is forgotten when the run has changed something since.
void LinkTargets::KeepUpToDate(LinkTarget& target) const {
  if (target.known_at == changes_) return;
  target.known_at = changes_;
  target.opening.reset();
  target.reading.reset();
}

const Status& LinkTargets::Open(LinkTarget& target) {
  KeepUpToDate(target);
  if (!target.opening) {
    FileStamp stamp;
    target.opening = files_.Examine(target.path, stamp);
    if (!target.opening->ok() || stamp != target.stamp) target.anchors.reset();
    target.stamp = stamp;
  }
  return *target.opening;
}

const Question* LinkTargets::RenameOffer(LinkTarget& target) {
  if (target.looked_up_at != names_.renames()) LookUpName(target);
  return target.offer ? &*target.offer : nullptr;
}

void LinkTargets::LookUpName(LinkTarget& target) {
  target.looked_up_at = names_.renames();
  target.stored_name = names_.UpperCaseName(std::string(FolderOf(target.registered)), NameOf(target.path));
  target.offer.reset();
  if (!target.stored_name.empty()) {
    target.offer = Question{OfferText(target.stored_name), Question::When::kDuringWalk};
  }
}

Status LinkTargets::Rename(const LinkTarget& target) {
  Status status = names_.Rename(std::string(FolderOf(target.registered)), target.stored_name);
  if (status.ok()) NoteChange();
  return status;
}

Status LinkTargets::FindAnchor(LinkTarget& target, std::string_view name, bool& found) {
  KeepUpToDate(target);
  if (target.anchors) (void)Open(target);  // drops them when the file is another one now
  if (!target.anchors || target.anchors->longest_name() < name.size()) {
    if (!target.reading || target.reading->ok()) {
      target.reading = ReadAnchors(target, std::max(Anchors::kUsualNames, std::bit_ceil(name.size())));
    }
    if (!target.reading->ok()) return *target.reading;
    target.opening = Status();
  }
  found = target.anchors->Has(name);
  return {};
}

Status LinkTargets::ReadAnchors(LinkTarget& target, std::size_t longest_name) {
  auto anchors = std::make_shared<Anchors>(longest_name);
  const auto take = [&anchors](std::string_view piece, bool last) { anchors->Take(piece, last); };
  Status status = files_.ReadPieces(target.path, target.stamp, bytes_, take);
  if (status.ok()) SetAnchors(target, std::move(anchors));
  return status;
}

}  // namespace tessaril
