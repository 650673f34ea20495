#include "engine/site_targets.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include "engine/ascii.h"
#include "engine/paths.h"

namespace tessaril {
namespace {

std::string Joined(const std::vector<std::string>& names, bool names_folder) {
  std::string path = JoinedNames(names);
  if (names_folder && !path.empty()) path += '/';
  return path;
}

// Puts the site path that a simple path names into `key`; false when it climbs above the root.
bool JoinSimple(std::string_view path, std::string_view folder, std::string& key) {
  if (path.starts_with('/')) {
    path.remove_prefix(1);
    folder = {};
  }
  while (path.starts_with("../")) {
    if (folder.empty()) return false;
    path.remove_prefix(3);
    folder = folder.substr(0, folder.rfind('/', folder.size() - 2) + 1);
  }
  if (path.empty()) return false;
  key.assign(folder).append(path);
  return true;
}

}  // namespace

SiteTargets::SiteTargets(Files& files, const RunOptions& options)
    : files_(files),
      options_(options),
      tree_(files, options.site->root),
      ignore_links_(rules().ignore_links),
      allow_missing_(rules().allow_missing) {}

const SiteTarget* SiteTargets::TargetOfPlain(const WebAddress& address, const LinkBase& base) {
  const std::string_view path = address.path;
  if (path.empty()) return TargetOf(address, base);
  constexpr std::size_t kFar = 6;  // bytes from the end, where names differ and extensions do not
  const auto byte = [path](std::size_t from_end) {
    return static_cast<unsigned char>(path[path.size() - std::min(from_end, path.size())]);
  };
  const std::size_t hash =
      (path.size() * 7 + byte(kFar) * 31u + byte(kFar + 1) * 5u + byte(kFar + 3)) % recent_.size();
  Recent& recent = recent_[hash];
  if (recent.page == page_ && recent.path == path) return recent.target;
  recent = {page_, path, TargetOf(address, base)};
  return recent.target;
}

SiteEntry* SiteTargets::FileAt(std::string_view path) {
  const SiteTarget& target = OfPath(path, {});
  return target.fault ? nullptr : target.file;
}

std::string SiteTargets::PathOf(const SiteTarget& target) const {
  std::string path = options_.site->root;
  for (const std::string& name : target.names) {
    if (!path.ends_with(kSeparator)) path += kSeparator;
    path += name;
  }
  return path;
}

Status SiteTargets::Examine(const SiteTarget& target) {
  FileStamp stamp;
  const std::string path = PathOf(target);
  const SiteEntry* const entry = tree_.Find(target.names);
  if (entry == nullptr || !entry->is_closed) return files_.Examine(path, stamp);
  std::optional<Status> first;
  for (const std::string& name : rules().index) {
    Status status = files_.Examine(JoinPath(path, name), stamp);
    if (status.ok()) return status;
    if (!first) first = std::move(status);
  }
  return first.value_or(Status::System(EACCES));
}

LinkBase SiteTargets::BaseOf(SiteEntry& page, const std::optional<std::string>& base) {
  LinkBase found;
  found.page = &page;
  std::vector<std::string> own = SiteTree::NamesOf(page);
  found.own = found.page_itself = &Remember(own, false, false);
  own.pop_back();
  found.names = std::move(own);
  if (base) {
    std::string text;
    std::string address_memory;
    const WebAddress address =
        SplitAddress(ResolveSpelling(*base, Spelling::kAttribute, text), address_memory);
    found.is_elsewhere = address.kind != WebAddress::Kind::kSite;
    if (!found.is_elsewhere && !address.path.empty()) {
      SitePath path = ResolveSitePath(address.path, found.names);
      found.own = &Remember(path.names, path.names_folder, path.leaves_site);
      if (!path.names_folder && !path.names.empty()) path.names.pop_back();
      found.names = std::move(path.names);
    }
  }
  found.folder = Joined(found.names, true);
  return found;
}

// The name of the folder whose links are passed over, as it is looked for; empty when there is none.
const std::string& SiteTargets::CgiName() {
  if (cgi_name_ != options_.CGIname) {
    cgi_name_ = options_.CGIname;
    lower_cgi_name_ = ToLower(cgi_name_);
  }
  static const std::string kNone;
  return options_.CGI ? lower_cgi_name_ : kNone;
}

// Links that the user does not want to be checked.
bool SiteTargets::IsPassedOver(std::string_view link, bool may_be_cgi) {
  if (may_be_cgi && !CgiName().empty() && link.find(CgiName()) != std::string_view::npos) return true;
  return !ignore_links_.empty() && ignore_links_.MatchText(link);
}

// Null when the path is not to be looked at.
const SiteTarget* SiteTargets::TargetOf(const WebAddress& address, const LinkBase& base) {
  const SiteTarget* target = base.own;
  if (!address.path.empty()) {
    const bool is_joined = address.is_simple && JoinSimple(address.path, base.folder, key_);
    target = is_joined ? &OfPlainPath() : &OfPath(address.path, base.names);
  }
  return !ignore_links_.empty() && ignore_links_.Match(Joined(target->names, target->names_folder)) ? nullptr
                                                                                                    : target;
}

// The target of the path in `key_`. Its names are decoded already: what looks encoded in the name of a folder
// is so on the disk.
const SiteTarget& SiteTargets::OfPlainPath() {
  const auto known = targets_.find(std::string_view(key_));
  if (known != targets_.end()) return known->second;
  SiteTarget& target = targets_[key_];
  for (std::string_view rest = key_; !rest.empty();) {
    const std::size_t end = std::min(rest.find(kSeparator), rest.size());
    target.names.emplace_back(rest.substr(0, end));
    target.names_folder = end < rest.size();
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  Follow(target, false);
  return target;
}

const SiteTarget& SiteTargets::OfPath(std::string_view path, const std::vector<std::string>& folder) {
  const SitePath resolved = ResolveSitePath(path, folder);
  return Remember(resolved.names, resolved.names_folder, resolved.leaves_site);
}

const SiteTarget& SiteTargets::Remember(const std::vector<std::string>& names, bool names_folder,
                                        bool leaves_site) {
  // No plain path begins with these signs.
  std::string key = leaves_site ? std::string("/^") : std::string("//");
  for (const std::string& name : names) key += std::to_string(name.size()) + ":" + name;
  if (names_folder) key += '/';
  const auto [known, is_new] = targets_.try_emplace(std::move(key));
  if (is_new) {
    known->second.names = names;
    known->second.names_folder = names_folder;
    Follow(known->second, leaves_site);
  }
  return known->second;
}

// Finds out where the names of a new target lead.
void SiteTargets::Follow(SiteTarget& target, bool leaves_site) {
  target.has_upper_case = rules().lowercase_names && !options_.UCfilename &&
                          std::any_of(target.names.begin(), target.names.end(),
                                      [](const std::string& name) { return HasUpperCase(name); });
  SiteEntry* const entry = tree_.Find(target.names);
  if ((entry == nullptr || !entry->is_file()) && tree_.LeadIntoClosed(target.names)) {
    // Where names cannot be read, a file may be there all the same; which anchors it has is then not asked.
    if (!Examine(target).ok()) target.fault = FindingKind::kMissingFile;
  } else if (entry != nullptr) {
    target.file = FileOf(*entry, target.names_folder, target.fault);
  } else {
    SiteEntry* const meant = FindAnyCase(target);
    target.fault = FindingKind::kMissingFile;
    if (meant != nullptr) {
      std::optional<FindingKind> fault;
      target.file = FileOf(*meant, target.names_folder, fault);
      if (target.file != nullptr) target.fault = FindingKind::kLetterCase;
    }
  }
  if (target.fault && allow_missing_.Match(Joined(target.names, target.names_folder))) {
    target.fault.reset();
    target.file = nullptr;
  }
  if (leaves_site) target.fault = FindingKind::kLeavesSite;
  if (target.fault) target.has_upper_case = false;
}

// The entry with the same names but for letter case: of several the first, in which names that are right come
// before others.
SiteEntry* SiteTargets::FindAnyCase(SiteTarget& target) {
  std::vector<SiteEntry*> entries{&tree_.root()};
  for (const std::string& name : target.names) {
    std::vector<SiteEntry*> next;
    for (SiteEntry* const folder : entries) {
      SiteEntry* const exact = tree_.Child(*folder, name);
      if (exact != nullptr) next.push_back(exact);
      for (SiteEntry* const other : tree_.AnyCase(*folder, name)) {
        if (other != exact) next.push_back(other);
      }
    }
    entries = std::move(next);
  }
  target.is_ambiguous = entries.size() > 1;
  return entries.empty() ? nullptr : entries.front();
}

// The file that an entry stands for: itself, or the index file of a folder. Null with a fault when there is
// none.
SiteEntry* SiteTargets::FileOf(SiteEntry& entry, bool names_folder, std::optional<FindingKind>& fault) {
  if (entry.is_file() && !names_folder) return &entry;
  (void)tree_.EntriesOf(entry);
  if (entry.is_file() || (!entry.is_folder() && !entry.is_linked_folder)) {
    fault = FindingKind::kMissingFile;
    return nullptr;
  }
  for (const std::string& name : rules().index) {
    SiteEntry* const index = tree_.Child(entry, name);
    if (index != nullptr && index->is_file()) return index;
  }
  fault = FindingKind::kNoIndexFile;
  return nullptr;
}

}  // namespace tessaril
