#include "engine/site_index.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <iterator>
#include <limits>
#include <map>
#include <utility>

#include "engine/ascii.h"
#include "engine/byte_search.h"
#include "engine/declared_encoding.h"
#include "engine/excerpt.h"
#include "engine/page_encoding.h"
#include "engine/page_places.h"
#include "engine/page_text.h"
#include "engine/paths.h"
#include "engine/web_address.h"

namespace tessaril {
namespace {

std::string Joined(const std::vector<std::string>& names, bool names_folder) {
  std::string path;
  for (const std::string& name : names) path += (path.empty() ? "" : "/") + name;
  if (names_folder && !path.empty()) path += '/';
  return path;
}

// What browsers take for UTF-16 before anything else.
bool IsUtf16(std::string_view page) {
  return page.starts_with("\xFF\xFE") || page.starts_with("\xFE\xFF");
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

bool IsBefore(const PageDoubt& a, const PageDoubt& b) {
  return a.begin < b.begin;
}

// Whether a link of a style names a place of its own page, whatever the base.
bool IsLocal(std::string_view link, Spelling spelling) {
  return spelling != Spelling::kAttribute && link.starts_with('#');
}

bool IsAlwaysThere(std::string_view fragment) {
  return fragment.empty() || EqualsLower(fragment, "top") || fragment.find(":~:") != std::string_view::npos;
}

// A fragment of a picture may say how it is shown.
bool IsViewOfPicture(std::string_view fragment) {
  return fragment.starts_with("svgView(") || fragment.starts_with("xywh=") || fragment.starts_with("t=");
}

}  // namespace

PageEncoding PageValues::encoding() {
  if (!encoding_) {
    const bool says_utf8 = declared() == DeclaredEncoding::kUtf8;
    encoding_ = says_utf8 ? PageEncoding::kUtf8 : DetectEncoding(page_);
  }
  return *encoding_;
}

DeclaredEncoding PageValues::declared() {
  if (!declared_) declared_ = DeclaredEncodingOf(page_);
  return *declared_;
}

void PageValues::LookAtPage() {
  (void)encoding();
  (void)declared();
}

bool PageValues::CanRead(std::string_view value) {
  return IsAscii(value) || declared() != DeclaredEncoding::kOther;
}

std::string_view PageValues::Read(std::string_view value, Spelling spelling, std::string& memory) {
  if (IsAscii(value) || encoding() == PageEncoding::kUtf8) return ResolveSpelling(value, spelling, memory);
  const std::string characters = EightBitToUtf8(value);
  std::string resolved;
  memory = ResolveSpelling(characters, spelling, resolved);
  return memory;
}

SiteIndex::SiteIndex(Files& files, const RunOptions& options, bool keeps_words,
                     std::function<bool()> handle_input)
    : files_(files),
      options_(options),
      keeps_words_(keeps_words),
      handle_input_(std::move(handle_input)),
      tree_(files, options.site->root),
      filter_(options.cboSearchSpec),
      ignore_files_(rules().ignore_files),
      ignore_links_(rules().ignore_links),
      allow_missing_(rules().allow_missing),
      keeps_ways_(!rules().start.empty()) {}

SiteEntry* SiteIndex::FileAt(std::string_view path) {
  const SiteTarget& target = OfPath(path, {});
  return target.fault ? nullptr : target.file;
}

PageForm SiteIndex::FormOf(const SiteEntry& file) const {
  if (!file.form) {
    const PageForm form = FormOfName(file.name);
    file.form = form == PageForm::kNone && filter_.Lists(file.name) ? FormOfListed(file.name) : form;
  }
  return *file.form;
}

SitePage& SiteIndex::PageOf(SiteEntry& file) {
  if (file.page) return *file.page;
  FileStamp stamp;
  Status status =
      handle_input_() ? files_.Read(tree_.PathOf(file), bytes_, stamp) : Status::Failure("Stopped");
  constexpr std::size_t kMost = std::numeric_limits<std::uint32_t>::max();  // by the places that are kept
  if (status.ok() && bytes_.size() > kMost) status = Status::System(EFBIG);
  if (status.ok()) {
    SitePage& page = Take(file, {bytes_.data(), bytes_.size()}, stamp);
    if (keeps_words_) KeepWords(page);
    return page;
  }
  file.page = std::make_shared<SitePage>();
  file.page->reading = status;
  return *file.page;
}

SitePage& SiteIndex::Take(SiteEntry& file, std::string_view text, const FileStamp& stamp) {
  file.page = std::make_shared<SitePage>();
  SitePage& page = *file.page;
  page.stamp = stamp;
  ++pages_taken_;
  const PageForm form = FormOf(file);
  FindPageLinks(text, form == PageForm::kNone ? PageForm::kHtml : form, links_);
  if (links_.base) page.base = *links_.base;
  const bool may_be_cgi =
      !CgiName().empty() && ByteSearch(CgiName(), LetterCase::kExact).Find(text) != ByteSearch::kNone;
  const bool leads = ignore_files_.empty() || !IsIgnored(file);
  Taking taking{text, page, BaseOf(file, page.base), PageValues(text), may_be_cgi, leads};
  page.hides_anchors = IsUtf16(text);
  std::unordered_set<std::string> maps;
  TakeAnchors(taking, maps);
  for (const PageLink& link : links_.links) {
    if (!link.is_map) {
      TakeLink(link, taking);
      continue;
    }
    const std::string_view value = taking.values.Read(link.value, link.spelling, memory_);
    const std::size_t hash = value.find('#');
    const bool is_name = hash != std::string_view::npos;
    if (!is_name || !maps.contains(std::string(value.substr(hash + 1)))) {
      page.faults.push_back(taking.Doubt(PageDoubt::What::kMap, link.value, link.spelling));
    }
  }
  page.fragments.shrink_to_fit();
  page.fragment_texts.shrink_to_fit();
  page.anchors.Shrink();
  return page;
}

PageDoubt SiteIndex::Taking::Doubt(PageDoubt::What what, std::string_view value, Spelling spelling) const {
  return {what, spelling, static_cast<std::uint32_t>(value.data() - text.data()),
          static_cast<std::uint32_t>(value.size())};
}

void SiteIndex::TakeAnchors(Taking& taking, std::unordered_set<std::string>& maps) {
  for (const PageAnchor& anchor : links_.anchors) {
    if (!taking.values.CanRead(anchor.value)) {
      taking.page.hides_anchors = true;
      continue;
    }
    const std::string_view name = taking.values.Read(anchor.value, Spelling::kAttribute, memory_);
    if (anchor.is_map) {
      maps.emplace(name);
    } else if (!taking.page.anchors.Add(name) && anchor.counts_twice) {
      const auto doubt = taking.Doubt(PageDoubt::What::kAnchor, anchor.value, Spelling::kAttribute);
      taking.page.faults.push_back(doubt);
    }
  }
}

void SiteIndex::TakeLink(const PageLink& link, Taking& taking) {
  SitePage& page = taking.page;
  std::string_view value = link.value;
  std::optional<WebAddress> plain = SplitPlainAddress(value);
  if (!plain && !taking.values.CanRead(value)) return;
  if (!plain) value = taking.values.Read(value, link.spelling, memory_);
  const WebAddress address = plain ? *plain : SplitAddress(value, address_memory_);
  if (address.kind == WebAddress::Kind::kElsewhere || IsPassedOver(value, taking.may_be_cgi)) return;
  const PageDoubt doubt = taking.Doubt(PageDoubt::What::kLink, link.value, link.spelling);
  if (address.kind == WebAddress::Kind::kFile) return page.faults.push_back(doubt);
  const bool is_local = IsLocal(value, link.spelling);
  if (taking.base.is_elsewhere && !is_local) return;
  const SiteTarget* const target = is_local ? taking.base.page_itself
                                   : plain  ? RecentTargetOf(address, taking.base)
                                            : TargetOf(address, taking.base);
  if (target == nullptr) return;
  if (taking.leads) MarkLinked(taking.base, target->file, page);
  if (target->fault || target->has_upper_case) page.faults.push_back(doubt);
  if (target->fault || target->file == nullptr || IsAlwaysThere(address.fragment)) return;
  const auto begin = static_cast<std::uint32_t>(page.fragment_texts.size());
  page.fragment_texts += address.fragment;
  page.fragments.push_back({doubt, target->file, begin, static_cast<std::uint32_t>(address.fragment.size())});
}

// Pages lead to the same few paths again and again.
const SiteTarget* SiteIndex::RecentTargetOf(const WebAddress& address, const Base& base) {
  const std::string_view path = address.path;
  if (path.empty()) return TargetOf(address, base);
  constexpr std::size_t kFar = 6;  // bytes from the end, where names differ and extensions do not
  const auto byte = [path](std::size_t from_end) {
    return static_cast<unsigned char>(path[path.size() - std::min(from_end, path.size())]);
  };
  const std::size_t hash =
      (path.size() * 7 + byte(kFar) * 31u + byte(kFar + 1) * 5u + byte(kFar + 3)) % recent_.size();
  Recent& recent = recent_[hash];
  if (recent.page == pages_taken_ && recent.path == path) return recent.target;
  recent = {pages_taken_, path, TargetOf(address, base)};
  return recent.target;
}

// Of the page that was read just now.
void SiteIndex::KeepWords(SitePage& page) {
  constexpr std::size_t kMost = 8;  // a page with more is read again
  if (page.faults.empty() || page.faults.size() > kMost) return;
  PageText text(bytes_);
  PagePlaces places;
  std::stable_sort(page.faults.begin(), page.faults.end(), IsBefore);
  for (const PageDoubt& fault : page.faults) {
    const PageText::Span span = ExcerptOf(text, fault.begin, fault.begin + fault.size);
    SitePage::Words& words = page.words.emplace_back();
    words.place = places.At(text, fault.begin);
    text.AppendSlice(span.begin, span.end, words.excerpt);
    words.value = fault.begin - span.begin;
  }
  PageValues values(text.Tail(0));
  page.encoding = values.encoding();
  page.declared = values.declared();
}

void SiteIndex::MarkLinked(const Base& base, SiteEntry* file, SitePage& page) {
  if (file == nullptr || file == base.page) return;
  file->is_linked = true;
  if (keeps_ways_ && (page.leads_to.empty() || page.leads_to.back() != file)) page.leads_to.push_back(file);
}

const std::vector<PageDoubt>& SiteIndex::FaultsOf(SiteEntry& file) {
  SitePage& page = PageOf(file);
  // What is looked up may read other pages, which leaves this one where it is.
  for (const SitePage::FragmentLink& link : page.fragments) {
    const std::string_view fragment = std::string_view(page.fragment_texts).substr(link.begin, link.size);
    if (!HasFragment(*link.file, fragment)) page.faults.push_back(link.link);
  }
  if (!page.fragments.empty()) {
    page.fragments = {};
    page.fragment_texts = {};
  }
  const auto is_same = [](const PageDoubt& a, const PageDoubt& b) {
    return a.begin == b.begin && a.what == b.what;
  };
  std::stable_sort(page.faults.begin(), page.faults.end(), IsBefore);
  page.faults.erase(std::unique(page.faults.begin(), page.faults.end(), is_same), page.faults.end());
  return page.faults;
}

bool SiteIndex::HasFragment(SiteEntry& file, std::string_view fragment) {
  if (IsAlwaysThere(fragment)) return true;
  const PageForm form = FormOf(file);
  if (form == PageForm::kNone || form == PageForm::kCss) return true;
  const SitePage& page = PageOf(file);
  if (!page.reading.ok() || page.anchors.Has(fragment)) return page.reading.ok();
  if (form == PageForm::kXml && IsViewOfPicture(fragment)) return true;
  const std::string decoded = PercentDecoded(fragment);
  return IsAlwaysThere(decoded) || page.anchors.Has(decoded) || page.hides_anchors;
}

std::string SiteIndex::PathOf(const SiteTarget& target) const {
  std::string path = options_.site->root;
  for (const std::string& name : target.names) {
    if (!path.ends_with(kSeparator)) path += kSeparator;
    path += name;
  }
  return path;
}

Status SiteIndex::Examine(const SiteTarget& target) {
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

const std::vector<SiteEntry*>& SiteIndex::OtherNamesOf(const SiteEntry& page) {
  if (!std::exchange(knows_other_names_, true)) {
    std::map<std::pair<std::uint64_t, std::uint64_t>, std::vector<SiteEntry*>> names;
    tree_.ForEachFile(tree_.root(), [&](SiteEntry& file) {
      FileStamp stamp;
      if (FormOf(file) == PageForm::kNone || !files_.Examine(tree_.PathOf(file), stamp).ok()) return;
      if (stamp.inode != 0) names[{stamp.device, stamp.inode}].push_back(&file);
    });
    for (const auto& [place, same] : names) {
      for (const SiteEntry* const one : same) {
        if (same.size() > 1) std::ranges::remove_copy(same, std::back_inserter(other_names_[one]), one);
      }
    }
  }
  return other_names_[&page];
}

SiteIndex::Base SiteIndex::BaseOf(SiteEntry& page, const std::optional<std::string>& base) {
  Base found;
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
const std::string& SiteIndex::CgiName() {
  if (cgi_name_ != options_.CGIname) {
    cgi_name_ = options_.CGIname;
    lower_cgi_name_ = ToLower(cgi_name_);
  }
  static const std::string kNone;
  return options_.CGI ? lower_cgi_name_ : kNone;
}

// Links that the user does not want to be checked.
bool SiteIndex::IsPassedOver(std::string_view link, bool may_be_cgi) {
  if (may_be_cgi && !CgiName().empty() && link.find(CgiName()) != std::string_view::npos) return true;
  return !ignore_links_.empty() && ignore_links_.MatchText(link);
}

JudgedLink SiteIndex::Judge(std::string_view link, Spelling spelling, const Base& base) {
  std::string memory;
  const WebAddress address = SplitAddress(link, memory);
  JudgedLink judged;
  if (address.kind == WebAddress::Kind::kElsewhere || IsPassedOver(link, true)) return judged;
  if (address.kind == WebAddress::Kind::kFile) {
    judged.fault = FindingKind::kFileLink;
    return judged;
  }
  const bool is_local = IsLocal(link, spelling);
  if (base.is_elsewhere && !is_local) return judged;
  judged.target = is_local ? base.page_itself : TargetOf(address, base);
  if (judged.target == nullptr) return judged;
  judged.fault = judged.target->fault;
  SiteEntry* const file = judged.target->file;
  if (!judged.fault && file != nullptr && !HasFragment(*file, address.fragment)) {
    judged.fault = file->page->reading.ok() ? FindingKind::kMissingAnchor : FindingKind::kMissingFile;
    judged.fragment = PercentDecoded(address.fragment);
  }
  return judged;
}

// Null when the path is not to be looked at.
const SiteTarget* SiteIndex::TargetOf(const WebAddress& address, const Base& base) {
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
const SiteTarget& SiteIndex::OfPlainPath() {
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

const SiteTarget& SiteIndex::OfPath(std::string_view path, const std::vector<std::string>& folder) {
  const SitePath resolved = ResolveSitePath(path, folder);
  return Remember(resolved.names, resolved.names_folder, resolved.leaves_site);
}

const SiteTarget& SiteIndex::Remember(const std::vector<std::string>& names, bool names_folder,
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
void SiteIndex::Follow(SiteTarget& target, bool leaves_site) {
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
SiteEntry* SiteIndex::FindAnyCase(SiteTarget& target) {
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
SiteEntry* SiteIndex::FileOf(SiteEntry& entry, bool names_folder, std::optional<FindingKind>& fault) {
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
