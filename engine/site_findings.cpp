#include "engine/site_findings.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include "engine/page_encoding.h"
#include "engine/paths.h"
#include "engine/web_address.h"

namespace tessaril {
namespace {

constexpr std::string_view kUpperCase =
    "Found UPPERcase characters in link filename! Correct manually to lowercase if suitable!";

std::string SitePathOf(const SiteTarget& target) {
  std::string path = "/" + JoinedNames(target.names);
  if (target.names_folder && !target.names.empty()) path += '/';
  return path;
}

// A name as a line of the report shows it: control codes are percent-encoded.
std::string InOneLine(std::string_view name) {
  std::string shown;
  for (const char c : name) {
    const bool is_control = static_cast<unsigned char>(c) < ' ' || c == 0x7F;
    shown += is_control ? EncodedName(std::string_view(&c, 1)) : std::string(1, c);
  }
  return shown;
}

// Whether a link is an attribute without "=", behind whose name nothing can be put.
bool IsWithoutValue(const PageDoubt& fault, std::string_view text) {
  constexpr std::string_view kInFrontOfValues = "=\"'( \t\r\n\f";
  return fault.size == 0 && fault.begin > 0 &&
         kInFrontOfValues.find(text[fault.begin - 1]) == std::string_view::npos;
}

}  // namespace

void SiteFinder::Begin(const PageValues& values) {
  values_ = values;
  base_ = site_.index.targets().BaseOf(file_, file_.page->base);
}

std::vector<SiteFinding> SiteFinder::Find(std::string_view text, std::size_t from, bool with_proposals) {
  const std::vector<PageDoubt>& faults = site_.index.FaultsOf(file_);
  PageValues values(text);
  values.LookAtPage();
  Begin(values);
  std::vector<SiteFinding> findings;
  for (const PageDoubt& fault : faults) {
    if (fault.begin + fault.size < from) continue;
    const bool takes_proposal = with_proposals && !IsWithoutValue(fault, text);
    Add(fault, text.substr(fault.begin, fault.size), takes_proposal, findings);
  }
  return findings;
}

std::vector<SiteFinding> SiteFinder::Of(const PageDoubt& fault, std::string_view value,
                                        const PageValues& values) {
  if (!values_) Begin(values);
  std::vector<SiteFinding> findings;
  Add(fault, value, false, findings);
  return findings;
}

void SiteFinder::Add(const PageDoubt& fault, std::string_view value, bool with_proposals,
                     std::vector<SiteFinding>& findings) {
  const PageLink link{value, fault.spelling};
  if (fault.what != PageDoubt::What::kLink) return findings.push_back(OfName(fault, link));
  if (auto finding = JudgeCase(link, fault.begin)) findings.push_back(std::move(*finding));
  if (auto finding = Judge(link, fault.begin, with_proposals)) findings.push_back(std::move(*finding));
}

// A map that is not there, or an anchor that is there already.
SiteFinding SiteFinder::OfName(const PageDoubt& fault, const PageLink& link) {
  std::string memory;
  const std::string name(values_->Read(link.value, link.spelling, memory));
  const bool is_map = fault.what == PageDoubt::What::kMap;
  SiteFinding finding{is_map ? FindingKind::kMissingAnchor : FindingKind::kAnchorTwice,
                      fault.begin,
                      fault.begin + fault.size,
                      {},
                      std::nullopt};
  finding.message = (is_map ? "No corresponding anchor: " : "Anchor defined twice: ") + InOneLine(name);
  return finding;
}

std::optional<SiteFinding> SiteFinder::Judge(const PageLink& link, std::size_t begin, bool with_proposals) {
  std::string memory;
  const std::string_view value = values_->Read(link.value, link.spelling, memory);
  SiteFinding finding{FindingKind::kMissingAnchor, begin, begin + link.value.size(), {}, std::nullopt};
  finding.spelling = link.spelling;
  const JudgedLink judged = site_.index.Judge(value, link.spelling, base_);
  if (!judged.fault) return std::nullopt;
  finding.kind = *judged.fault;
  finding.message = MessageFor(judged);
  finding.missing = MissingOf(judged);
  if (!with_proposals) return finding;
  if (auto proposal = site_.proposals.For(judged, link.value, value, link.spelling, base_)) {
    finding.proposal = WrittenBytes(proposal->value, values_->encoding());
    finding.is_certain = proposal->is_certain;
  }
  return finding;
}

bool SiteFinder::IsInOrderElsewhere(const PageLink& link) {
  std::string memory;
  const std::string_view value = values_->Read(link.value, link.spelling, memory);
  for (SiteEntry* const other : site_.index.OtherNamesOf(file_)) {
    const LinkBase base = site_.index.targets().BaseOf(*other, file_.page->base);
    if (!site_.index.Judge(value, link.spelling, base).fault) return true;
  }
  return false;
}

// Upper-case letters in the name of a file that is there.
std::optional<SiteFinding> SiteFinder::JudgeCase(const PageLink& link, std::size_t begin) {
  if (!site_.index.rules().lowercase_names) return std::nullopt;
  std::string memory;
  const JudgedLink judged =
      site_.index.Judge(values_->Read(link.value, link.spelling, memory), link.spelling, base_);
  if (judged.target == nullptr || !judged.target->has_upper_case) return std::nullopt;
  SiteFinding finding{FindingKind::kUpperCaseLink, begin, begin + link.value.size(), std::string(kUpperCase),
                      std::nullopt};
  finding.spelling = link.spelling;
  return finding;
}

std::string SiteFinder::MessageFor(const JudgedLink& judged) {
  SiteTree& tree = site_.index.tree();
  switch (*judged.fault) {
    case FindingKind::kFileLink:
      return "Link to internal file!";
    case FindingKind::kLeavesSite:
      return "Link leaves the site";
    case FindingKind::kMissingAnchor:
      return "No corresponding anchor: " + InOneLine(judged.fragment);
    case FindingKind::kLetterCase:
      return "Differs in letter case: " + tree.PathOf(*judged.target->file);
    case FindingKind::kNoIndexFile:
      return "No index file in folder: " + InOneLine(site_.index.targets().PathOf(*judged.target));
    default:
      return ReasonFor(*judged.target) + ": " + InOneLine(site_.index.targets().PathOf(*judged.target));
  }
}

// Why a file cannot be opened, in the system's words.
std::string SiteFinder::ReasonFor(const SiteTarget& target) {
  SiteTree& tree = site_.index.tree();
  if (const SiteEntry* const file = target.file; file != nullptr && file->page && !file->page->reading.ok()) {
    return file->page->reading.reason();
  }
  const SiteEntry* const entry = tree.Find(target.names);
  const bool is_closed = tree.LeadIntoClosed(target.names);
  if (entry == nullptr && !is_closed) return Status::System(ENOENT).reason();
  if (!is_closed && entry->is_file()) return Status::System(target.names_folder ? ENOTDIR : ENOENT).reason();
  const Status status = site_.index.targets().Examine(target);
  return (status.ok() ? Status::System(ENOENT) : status).reason();
}

// What the list of missing targets calls it; empty for what is not missing.
std::string SiteFinder::MissingOf(const JudgedLink& judged) const {
  switch (*judged.fault) {
    case FindingKind::kMissingFile:
    case FindingKind::kNoIndexFile:
      return InOneLine(SitePathOf(*judged.target));
    case FindingKind::kMissingAnchor:
      return "/" + site_.index.tree().SitePathOf(*judged.target->file) + "#" + InOneLine(judged.fragment);
    default:
      return {};
  }
}

}  // namespace tessaril
