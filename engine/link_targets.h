#ifndef TESSARIL_ENGINE_LINK_TARGETS_H_
#define TESSARIL_ENGINE_LINK_TARGETS_H_

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "engine/anchors.h"
#include "engine/byte_buffer.h"
#include "engine/files.h"
#include "engine/run_host.h"
#include "engine/stored_names.h"

namespace tessaril {

/// A file that pages link to, and what a run has learned of it.
struct LinkTarget {
  std::string path;        // as it is opened
  std::string registered;  // as it stands in the register
  bool is_registered = false;

  // The rest is for LinkTargets.
  unsigned known_at = 0;          // what LinkTargets had counted when the next three were found out
  std::optional<Status> opening;  // how opening the file went,
  std::optional<Status> reading;  // and how reading it for its anchors did
  FileStamp stamp;
  std::shared_ptr<Anchors> anchors;
  std::string stored_name;  // the file's name when that has an upper-case letter, else empty
  std::optional<unsigned> looked_up_at;
  std::optional<Question> offer;
};

/// What a run has learned of the files that pages link to, each looked up once: many pages link to the same
/// few. Nothing that is remembered outlives a change that the run itself makes.
class LinkTargets {
 public:
  explicit LinkTargets(Files& files) : files_(files) {}

  /// A page that was read just now: links to it need not look for it again. Gives its anchors.
  std::shared_ptr<Anchors> NotePage(const std::string& path, const FileStamp& stamp, std::string_view text);

  /// Links are in pages of this folder from now on, which is the current one. Below `root`, the folder that
  /// is walked, no folder on the way there is a symbolic link.
  void EnterFolder(std::string_view folder, std::string_view root);

  /// The file that `link`, a value without its anchor, leads to. With `resolve` it is made absolute by
  /// ResolveLink, else the system does that against the current folder.
  LinkTarget& Find(std::string_view link, const std::string& page_path, bool resolve);

  /// Whether the file can be opened for reading.
  const Status& Open(LinkTarget& target);

  /// The question whether the file shall get a lower-case name; null when its name has no upper-case letter
  /// or there is no such file. Letter case does not matter when it is looked for.
  const Question* RenameOffer(LinkTarget& target);

  /// True once for each path.
  bool IsFirstOffer(const std::string& stored_path) { return offered_.insert(stored_path).second; }

  /// What the question asks for.
  Status Rename(const LinkTarget& target);

  /// Where a file is now that was at `path` when the run began.
  std::string PresentPath(const std::string& path) const { return names_.PresentPath(path); }

  /// Whether the file has an anchor of that name. Fails when it cannot be opened or read.
  Status FindAnchor(LinkTarget& target, std::string_view name, bool& found);

  /// The run has written a file: what is remembered of files is to be looked at anew.
  void NoteChange() { ++changes_; }

 private:
  // Lets a key be looked up by any view of its bytes.
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view key) const { return std::hash<std::string_view>()(key); }
  };

  LinkTarget& OfResolvedLink(std::string_view link, std::string_view page_path);
  LinkTarget& OfPlainLink(std::string_view link);
  LinkTarget& Remember(std::string_view key, bool& is_new);
  void ForgetIfTooMuch();
  void LookUpName(LinkTarget& target);
  void KeepUpToDate(LinkTarget& target) const;
  Status ReadAnchors(LinkTarget& target, std::size_t longest_name);
  void SetAnchors(LinkTarget& target, std::shared_ptr<Anchors> anchors);

  Files& files_;
  std::unordered_map<std::string, LinkTarget, Hash, std::equal_to<>> targets_;
  StoredNames names_{files_};
  std::unordered_set<std::string> offered_;
  unsigned changes_ = 0;             // by the run, of any file
  std::size_t memory_ = 0;           // bytes of what is remembered, without anchors
  std::size_t anchor_memory_ = 0;    // bytes
  std::size_t largest_anchors_ = 0;  // bytes
  std::string key_;                  // of the target last asked for
  LinkTarget too_long_;              // the target last asked for whose link is not worth remembering
  std::string folder_;
  std::string root_;
  // The targets of the links that were met in pages of this folder, by what stands in the page.
  bool same_resolve_ = false;
  std::unordered_map<std::string, LinkTarget*, Hash, std::equal_to<>> same_texts_;
  ByteBuffer bytes_;  // memory for the file in which anchors are looked for
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_LINK_TARGETS_H_
