#ifndef TESSARIL_ENGINE_SITE_INDEX_H_
#define TESSARIL_ENGINE_SITE_INDEX_H_

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
#include "engine/file_filter.h"
#include "engine/files.h"
#include "engine/finding_kinds.h"
#include "engine/page_links.h"
#include "engine/page_values.h"
#include "engine/run.h"
#include "engine/site_patterns.h"
#include "engine/site_targets.h"

namespace tessaril {

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
  std::size_t size = 0;  // of the text that was read, in bytes
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
  // Each file once or more; kept only when the way from start pages matters.
  std::vector<SiteEntry*> leads_to;
};

/// The links of a site, judged as a browser follows them. Each page is read once, when it or its anchors are
/// first asked for, and only what cannot be judged yet is kept of its links.
class SiteIndex {
 public:
  /// The options must have a site. With `keeps_words`, what a report says of pages with few faults is kept.
  /// `handle_input` is called before each page that is read; when it gives
  /// false the run ends, and what is asked then does not matter.
  SiteIndex(Files& files, const RunOptions& options, bool keeps_words, std::function<bool()> handle_input);

  SiteTargets& targets() { return targets_; }
  SiteTree& tree() { return targets_.tree(); }

  /// As what a file is read: by its name, and when that says nothing, because the run's filter lists it.
  PageForm FormOf(const SiteEntry& file) const;

  /// Whether the site's rules say that a file is not to be checked.
  bool IsIgnored(const SiteEntry& file) const {
    return ignore_files_.Match(targets_.tree().SitePathOf(file));
  }

  /// The page, read when it is not known yet.
  SitePage& PageOf(SiteEntry& file);

  /// The page anew, from a text at hand. Files that it leads to are marked as linked.
  SitePage& Take(SiteEntry& file, std::string_view text, const FileStamp& stamp);

  /// What is not in order on the page, by where it stands.
  const std::vector<PageDoubt>& FaultsOf(SiteEntry& file);

  /// Judges a link whose spelling, which was `spelling`, is resolved; UTF-8.
  JudgedLink Judge(std::string_view link, Spelling spelling, const LinkBase& base);

  /// Whether a fragment (percent-encoded) of a file leads somewhere.
  bool HasFragment(SiteEntry& file, std::string_view fragment);

  /// Other names of the file of a page in the site: links to it, symbolic or hard ones. As it was when first
  /// asked for.
  const std::vector<SiteEntry*>& OtherNamesOf(const SiteEntry& page);

  const SiteRules& rules() const { return targets_.rules(); }

 private:
  // A page on its way into the index.
  struct Taking {
    std::string_view text;
    SitePage& page;
    LinkBase base;
    PageValues values;
    bool may_be_cgi;
    bool leads;  // what it links to is linked

    PageDoubt Doubt(PageDoubt::What what, std::string_view value, Spelling spelling) const;
  };
  void TakeAnchors(Taking& taking, std::unordered_set<std::string>& maps);
  void TakeLink(const PageLink& link, Taking& taking);
  void KeepWords(SitePage& page);
  void MarkLinked(const LinkBase& base, SiteEntry* file, SitePage& page);

  Files& files_;
  bool keeps_words_;
  std::function<bool()> handle_input_;
  SiteTargets targets_;
  FileFilter filter_;
  SitePatterns ignore_files_;
  bool keeps_ways_;  // the pages that each page leads to are needed later
  std::unordered_map<const SiteEntry*, std::vector<SiteEntry*>> other_names_;
  bool knows_other_names_ = false;
  ByteBuffer bytes_;  // memory for the page that is read
  PageLinks links_;   // of it
  std::string memory_;
  std::string address_memory_;
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_SITE_INDEX_H_
