#include "engine/site_index.h"

#include <algorithm>
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
#include "engine/web_address.h"

namespace tessaril {
namespace {

// What browsers take for UTF-16 before anything else.
bool IsUtf16(std::string_view page) {
  return page.starts_with("\xFF\xFE") || page.starts_with("\xFE\xFF");
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

SiteIndex::SiteIndex(Files& files, const RunOptions& options, bool keeps_words,
                     std::function<bool()> handle_input)
    : files_(files),
      keeps_words_(keeps_words),
      handle_input_(std::move(handle_input)),
      targets_(files, options),
      filter_(options.cboSearchSpec),
      ignore_files_(rules().ignore_files),
      keeps_ways_(!rules().start.empty()) {}

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
      handle_input_() ? files_.Read(tree().PathOf(file), bytes_, stamp) : Status::Failure("Stopped");
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
  page.size = text.size();
  targets_.BeginPage();
  const PageForm form = FormOf(file);
  FindPageLinks(text, form == PageForm::kNone ? PageForm::kHtml : form, links_);
  if (links_.base) page.base = *links_.base;
  const bool may_be_cgi = !targets_.CgiName().empty() &&
                          ByteSearch(targets_.CgiName(), LetterCase::kExact).Find(text) != ByteSearch::kNone;
  const bool leads = ignore_files_.empty() || !IsIgnored(file);
  Taking taking{text, page, targets_.BaseOf(file, page.base), PageValues(text), may_be_cgi, leads};
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
  if (address.kind == WebAddress::Kind::kElsewhere || targets_.IsPassedOver(value, taking.may_be_cgi)) return;
  const PageDoubt doubt = taking.Doubt(PageDoubt::What::kLink, link.value, link.spelling);
  if (address.kind == WebAddress::Kind::kFile) return page.faults.push_back(doubt);
  const bool is_local = IsLocal(value, link.spelling);
  if (taking.base.is_elsewhere && !is_local) return;
  const SiteTarget* const target = is_local ? taking.base.page_itself
                                   : plain  ? targets_.TargetOfPlain(address, taking.base)
                                            : targets_.TargetOf(address, taking.base);
  if (target == nullptr) return;
  if (taking.leads) MarkLinked(taking.base, target->file, page);
  if (target->fault || target->has_upper_case) page.faults.push_back(doubt);
  if (target->fault || target->file == nullptr || IsAlwaysThere(address.fragment)) return;
  const auto begin = static_cast<std::uint32_t>(page.fragment_texts.size());
  page.fragment_texts += address.fragment;
  page.fragments.push_back({doubt, target->file, begin, static_cast<std::uint32_t>(address.fragment.size())});
}

// Of the page that was read just now.
void SiteIndex::KeepWords(SitePage& page) {
  // A page with more or longer ones is read again.
  constexpr std::size_t kMost = 8;
  constexpr std::size_t kLongest = 1024;  // bytes
  const auto is_long = [](const PageDoubt& fault) { return fault.size > kLongest; };
  if (page.faults.empty() || page.faults.size() > kMost || std::ranges::any_of(page.faults, is_long)) return;
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

void SiteIndex::MarkLinked(const LinkBase& base, SiteEntry* file, SitePage& page) {
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

const std::vector<SiteEntry*>& SiteIndex::OtherNamesOf(const SiteEntry& page) {
  if (!std::exchange(knows_other_names_, true)) {
    std::map<std::pair<std::uint64_t, std::uint64_t>, std::vector<SiteEntry*>> names;
    tree().ForEachFile(tree().root(), [&](SiteEntry& file) {
      FileStamp stamp;
      if (FormOf(file) == PageForm::kNone || !files_.Examine(tree().PathOf(file), stamp).ok()) return;
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

JudgedLink SiteIndex::Judge(std::string_view link, Spelling spelling, const LinkBase& base) {
  std::string memory;
  const WebAddress address = SplitAddress(link, memory);
  JudgedLink judged;
  if (address.kind == WebAddress::Kind::kElsewhere || targets_.IsPassedOver(link, true)) return judged;
  if (address.kind == WebAddress::Kind::kFile) {
    judged.fault = FindingKind::kFileLink;
    return judged;
  }
  const bool is_local = IsLocal(link, spelling);
  if (base.is_elsewhere && !is_local) return judged;
  judged.target = is_local ? base.page_itself : targets_.TargetOf(address, base);
  if (judged.target == nullptr) return judged;
  judged.fault = judged.target->fault;
  SiteEntry* const file = judged.target->file;
  if (!judged.fault && file != nullptr && !HasFragment(*file, address.fragment)) {
    judged.fault = file->page->reading.ok() ? FindingKind::kMissingAnchor : FindingKind::kMissingFile;
    judged.fragment = PercentDecoded(address.fragment);
  }
  return judged;
}

}  // namespace tessaril
