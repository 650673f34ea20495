#ifndef TESSARIL_ENGINE_SITE_INDEX_H_
#define TESSARIL_ENGINE_SITE_INDEX_H_

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "engine/anchor_set.h"
#include "engine/byte_buffer.h"
#include "engine/declared_encoding.h"
#include "engine/file_filter.h"
#include "engine/files.h"
#include "engine/finding_kinds.h"
#include "engine/page_links.h"
#include "engine/run.h"
#include "engine/site_patterns.h"
#include "engine/site_tree.h"
#include "engine/web_address.h"

namespace tessaril {

/// The texts of the links and anchors of a page: spelling resolved, in UTF-8. What the bytes of the page mean
/// is found out when it first matters.
class PageValues {
 public:
  explicit PageValues(std::string_view page) : page_(page) {}
  PageValues(PageEncoding encoding, DeclaredEncoding declared) : encoding_(encoding), declared_(declared) {}

  /// Whether it is known what a value stands for: not beyond ASCII on a page in an encoding that is not known
  /// here.
  bool CanRead(std::string_view value);

  /// `memory` is used where the text is not what stands in the page.
  std::string_view Read(std::string_view value, Spelling spelling, std::string& memory);

  /// By what it says, and by what its bytes are when it says nothing.
  PageEncoding encoding();

  /// Finds out all about the page now, so that it need not be there any more.
  void LookAtPage();

  DeclaredEncoding declared();

 private:
  std::string_view page_;
  std::optional<PageEncoding> encoding_;
  std::optional<DeclaredEncoding> declared_;
};

/// Where the path of a link leads.
struct SiteTarget {
  std::optional<FindingKind> fault;  // what is wrong with it, whatever the fragment
  SiteEntry* file = nullptr;         // the file that it leads to or, with a fault, that it seems to mean
  bool is_ambiguous = false;         // more than one file differs in letter case only
  bool has_upper_case = false;       // which the site's rules do not want
  bool names_folder = false;         // the path ends so that it can name a folder only
  std::vector<std::string> names;    // of the path, from the site's root on, decoded
};

/// What a link says, and what is wrong with it.
struct JudgedLink {
  std::optional<FindingKind> fault;
  const SiteTarget* target = nullptr;  // null when it leads elsewhere
  std::string fragment;                // of a missing anchor, percent-decoded
};

/// A link or anchor of a page that is not in order, or may turn out not to be.
struct PageDoubt {
  enum class What : std::uint8_t {
    kLink,
    kMap,    // a link to a `map` that the page does not have
    kAnchor  // an anchor of a name that is there already
  };
  What what;
  Spelling spelling;
  std::uint32_t begin;  // of what stands in the page, in bytes from 0
  std::uint32_t size;
};

/// What is known of one page: its anchors, what is not in order on it and, as long as nobody has asked for
/// that, those of its links whose anchors are still to be looked up.
struct SitePage {
  Status reading;
  FileStamp stamp;
  AnchorSet anchors;
  bool hides_anchors = false;       // it is not known what all of its anchors are called
  std::optional<std::string> base;  // as it stands in the page
  std::vector<PageDoubt> faults;
  // What the report will say of each, where it is kept: then the page need not be read again.
  struct Words {
    PagePlace place;
    std::string excerpt;
    std::size_t value;  // where the fault stands in the excerpt
  };
  std::vector<Words> words;
  PageEncoding encoding = PageEncoding::kUtf8;  // for the words,
  DeclaredEncoding declared = DeclaredEncoding::kNone;
  struct FragmentLink {
    PageDoubt link;
    SiteEntry* file;
    std::uint32_t begin;  // in `fragment_texts`
    std::uint32_t size;
  };
  std::vector<FragmentLink> fragments;
  std::string fragment_texts;  // percent-encoded
  std::vector<SiteEntry*>
      leads_to;  // each file once or more; kept only when the way from start pages matters
};

/// The links of a site, judged as a browser follows them. Each page is read once, when it or its anchors are
/// first asked for, and only what cannot be judged yet is kept of its links.
class SiteIndex {
 public:
  /// The options must have a site. With `keeps_words`, what a report says of pages with few faults is kept.
  /// `handle_input` is called before each page that is read; when it gives
  /// false the run ends, and what is asked then does not matter.
  SiteIndex(Files& files, const RunOptions& options, bool keeps_words, std::function<bool()> handle_input);

  SiteTree& tree() { return tree_; }

  /// The file that a path from the site's root on leads to, the index file for a folder; null when there is
  /// none.
  SiteEntry* FileAt(std::string_view path);

  /// As what a file is read: by its name, and when that says nothing, because the run's filter lists it.
  PageForm FormOf(const SiteEntry& file) const;

  /// Whether the site's rules say that a file is not to be checked.
  bool IsIgnored(const SiteEntry& file) const { return ignore_files_.Match(tree_.SitePathOf(file)); }

  /// The page, read when it is not known yet.
  SitePage& PageOf(SiteEntry& file);

  /// The page anew, from a text at hand. Files that it leads to are marked as linked.
  SitePage& Take(SiteEntry& file, std::string_view text, const FileStamp& stamp);

  /// What is not in order on the page, by where it stands.
  const std::vector<PageDoubt>& FaultsOf(SiteEntry& file);

  /// What the links of a page are relative to.
  struct Base {
    SiteEntry* page = nullptr;
    bool is_elsewhere = false;                // on another server
    std::string folder;                       // from the site's root on, "" or with "/" at its end
    std::vector<std::string> names;           // the same, taken apart
    const SiteTarget* own = nullptr;          // what an empty path leads to,
    const SiteTarget* page_itself = nullptr;  // and what it does in a style
  };
  Base BaseOf(SiteEntry& page, const std::optional<std::string>& base);

  /// Judges a link whose spelling, which was `spelling`, is resolved; UTF-8.
  JudgedLink Judge(std::string_view link, Spelling spelling, const Base& base);

  /// Whether a fragment (percent-encoded) of a file leads somewhere.
  bool HasFragment(SiteEntry& file, std::string_view fragment);

  /// Whether the file of a target can be opened, by asking the system: the index file for a folder.
  Status Examine(const SiteTarget& target);

  /// The path of a target on the disk.
  std::string PathOf(const SiteTarget& target) const;

  /// Other names of the file of a page in the site: links to it, symbolic or hard ones. As it was when first
  /// asked for.
  const std::vector<SiteEntry*>& OtherNamesOf(const SiteEntry& page);

  const SiteRules& rules() const { return options_.site->rules; }

 private:
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view key) const { return std::hash<std::string_view>()(key); }
  };

  const std::string& CgiName();
  bool IsPassedOver(std::string_view link, bool may_be_cgi);
  const SiteTarget* TargetOf(const WebAddress& address, const Base& base);
  const SiteTarget& OfPlainPath();
  const SiteTarget& OfPath(std::string_view path, const std::vector<std::string>& folder);
  const SiteTarget& Remember(const std::vector<std::string>& names, bool names_folder, bool leaves_site);
  void Follow(SiteTarget& target, bool leaves_site);
  SiteEntry* FindAnyCase(SiteTarget& target);
  SiteEntry* FileOf(SiteEntry& entry, bool names_folder, std::optional<FindingKind>& fault);
  // A page on its way into the index.
  struct Taking {
    std::string_view text;
    SitePage& page;
    Base base;
    PageValues values;
    bool may_be_cgi;
    bool leads;  // what it links to is linked

    PageDoubt Doubt(PageDoubt::What what, std::string_view value, Spelling spelling) const;
  };
  void TakeAnchors(Taking& taking, std::unordered_set<std::string>& maps);
  void TakeLink(const PageLink& link, Taking& taking);
  const SiteTarget* RecentTargetOf(const WebAddress& address, const Base& base);
  void KeepWords(SitePage& page);
  void MarkLinked(const Base& base, SiteEntry* file, SitePage& page);

  Files& files_;
  const RunOptions& options_;
  bool keeps_words_;
  std::function<bool()> handle_input_;
  SiteTree tree_;
  FileFilter filter_;
  SitePatterns ignore_files_;
  SitePatterns ignore_links_;
  SitePatterns allow_missing_;
  bool keeps_ways_;  // the pages that each page leads to are needed later
  std::unordered_map<std::string, SiteTarget, Hash, std::equal_to<>> targets_;
  std::string key_;
  std::unordered_map<const SiteEntry*, std::vector<SiteEntry*>> other_names_;
  bool knows_other_names_ = false;
  std::string cgi_name_;
  std::string lower_cgi_name_;
  ByteBuffer bytes_;  // memory for the page that is read
  PageLinks links_;   // of it
  std::string memory_;
  std::string address_memory_;
  // Where paths of the page in hand were found to lead, by a rough hash.
  struct Recent {
    unsigned page = 0;
    std::string_view path;
    const SiteTarget* target = nullptr;
  };
  std::array<Recent, 256> recent_;
  unsigned pages_taken_ = 0;
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_SITE_INDEX_H_
