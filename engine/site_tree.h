#ifndef TESSARIL_ENGINE_SITE_TREE_H_
#define TESSARIL_ENGINE_SITE_TREE_H_

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "engine/files.h"
#include "engine/page_links.h"

namespace tessaril {

struct SitePage;

/// A file or folder of a site.
struct SiteEntry {
  std::string name;
  SiteEntry* parent = nullptr;  // null for the root
  EntryKind kind = EntryKind::kOther;
  bool is_linked = false;  // another page leads to it
  // For SiteIndex: what is known of its content, and as what it is read.
  std::shared_ptr<SitePage> page;
  mutable std::optional<PageForm> form;

  // Of a folder: its entries, once they are listed, sorted as a run visits them.
  bool is_listed = false;
  bool is_linked_folder = false;  // a symbolic link to a folder
  bool is_closed = false;         // its entries cannot be listed
  std::vector<SiteEntry*> entries;
  std::unordered_map<std::string_view, SiteEntry*> by_name;
  // The entries by their names in lower case, made when one was not found by its name.
  std::unordered_map<std::string, std::vector<SiteEntry*>> by_lower_name;

  bool is_folder() const { return kind == EntryKind::kFolder; }  // itself, not by a symbolic link
  bool is_file() const { return kind == EntryKind::kFile; }
  bool is_hidden() const { return name.starts_with('.'); }
};

/// The files and folders of a site as they were when first asked for: each folder is listed once, when a link
/// or a look at everything leads into it.
class SiteTree {
 public:
  /// `root` is the path of the site's root.
  SiteTree(Files& files, const std::string& root);

  SiteEntry& root() { return *root_; }

  /// The entry with these names from the root on; null when there is none. A symbolic link to a folder is
  /// followed.
  SiteEntry* Find(std::span<const std::string> names);

  /// Whether the names lead into a folder that cannot be listed, so that it is not known what is there.
  bool LeadIntoClosed(std::span<const std::string> names);

  /// The folders that could not be listed, by their whole paths, and why.
  const std::map<std::string, Status>& unlisted() const { return unlisted_; }

  /// Why a file that the disk has is not known here.
  Status WhyUnknown(std::string_view path) const;

  /// The entry of that name in a folder; null when there is none.
  SiteEntry* Child(SiteEntry& folder, std::string_view name);

  /// Its entries whose names differ in letter case at most.
  std::span<SiteEntry* const> AnyCase(SiteEntry& folder, std::string_view name);

  /// All entries of a folder.
  const std::vector<SiteEntry*>& EntriesOf(SiteEntry& folder);

  /// Every file below `folder` in the order in which a run visits them; names that begin with a dot are left
  /// out, and symbolic links to folders are not followed.
  void ForEachFile(SiteEntry& folder, const std::function<void(SiteEntry&)>& use);

  /// The files of the site that have this name.
  std::span<SiteEntry* const> FilesNamed(const std::string& name);

  /// The entry of a file or folder by its whole path; null when it does not lie below the root.
  SiteEntry* OfPath(std::string_view path);

  /// The path of an entry: whole, and from the site's root on ("sub/a.html").
  std::string PathOf(const SiteEntry& entry) const;
  std::string SitePathOf(const SiteEntry& entry) const;

  /// The names from the root to an entry.
  static std::vector<std::string> NamesOf(const SiteEntry& entry);

 private:
  void List(SiteEntry& folder);

  Files& files_;
  const std::string path_;
  std::deque<SiteEntry> all_;
  SiteEntry* root_;
  std::unordered_map<std::string, std::vector<SiteEntry*>> files_by_name_;
  bool files_are_named_ = false;
  std::map<std::string, Status> unlisted_;
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_SITE_TREE_H_
