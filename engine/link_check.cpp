#include "engine/link_check.h"

#include <algorithm>
#include <bit>
#include <optional>
#include <utility>

#include "engine/ascii.h"
#include "engine/excerpt.h"
#include "engine/page_encoding.h"
#include "engine/page_findings.h"
#include "engine/paths.h"
#include "engine/report_pieces.h"

namespace tessaril {
namespace {

constexpr std::string_view kNoAnchor = "No corresponding anchor: ";
constexpr std::string_view kInternalFile = "Link to internal file!";
constexpr std::string_view kUpperCase =
    "Found UPPERcase characters in link filename! Correct manually to lowercase if suitable!";
constexpr std::string_view kUpperCaseFile = "Found UPPERcase characters in a linked file's filename!";

}  // namespace

LinkCheck::LinkCheck(HtmlPage& page, LinkScanner& scanner, RunContext& run)
    : page_(page), scanner_(scanner), run_(run) {
  run.targets.EnterFolder(FolderOf(page.path()), run.options.dirList);
  std::shared_ptr<Anchors> anchors = run.targets.NotePage(page.path(), page.stamp(), page.text().Tail(0));
  if (page.text_is_work_text()) anchors_ = std::move(anchors);
}

bool LinkCheck::Verify(const Link& link) {
  if (link.scheme.starts_with('#')) return VerifySamePage(link);
  if (link.HasScheme("file:")) return ReportLinkError(link, FindingKind::kFileLink, kInternalFile);
  return link.HasScheme("mailto:") || link.IsExternal() || IsForCgi(link) || VerifyFile(link);
}

bool LinkCheck::IsForCgi(const Link& link) {
  if (!run_.options.CGI) return false;
  if (!cgi_ || cgi_->name != run_.options.CGIname) PrepareCgi();
  if (cgi_->sought.empty()) return cgi_->can_occur;
  if (cgi_->from > link.start || cgi_->place < link.start) {
    cgi_->from = link.start;
    cgi_->place = cgi_->search.Find(page_.work_text(), link.start);
  }
  return cgi_->place != ByteSearch::kNone &&
         cgi_->place + cgi_->sought.size() <= link.start + link.value.size();
}

void LinkCheck::PrepareCgi() {
  const std::string& name = run_.options.CGIname;
  const std::string lower = ToLower(name);
  const PageEncoding encoding = IsAscii(lower) ? PageEncoding::kEightBit : page_.text().Encoding();
  const std::optional<std::string> bytes = SoughtBytes(lower, encoding);
  const std::string sought = bytes.value_or("");
  cgi_ = {name, sought, bytes.has_value(), ByteSearch(sought, LetterCase::kExact)};
}

bool LinkCheck::VerifySamePage(const Link& link) {
  if (link.value == "#") return true;
  const std::string_view name = link.value.substr(1);
  if (!anchors_ || anchors_->longest_name() < name.size()) {
    anchors_ = std::make_shared<Anchors>(std::max(Anchors::kUsualNames, std::bit_ceil(name.size())));
    anchors_->Take(page_.work_text(), true);
  }
  return anchors_->Has(name) || ReportLinkError(link, FindingKind::kMissingAnchor, kNoAnchor);
}

bool LinkCheck::VerifyFile(const Link& link) {
  const bool permit_upper_case = run_.options.UCfilename;
  std::string_view value = link.value;
  if (run_.options.ShowEach) value = value_ = link.value;  // the page may change under the link
  const std::size_t hash = std::min(value.find('#'), value.size());
  const std::string_view local_path = value.substr(0, hash);
  const std::string_view anchor = value.substr(std::min(hash + 1, value.size()));
  if (!permit_upper_case && HasUpperCase(local_path) &&
      !ReportLinkError(link, FindingKind::kUpperCaseLink, kUpperCase)) {
    return false;
  }
  LinkTarget& target = run_.targets.Find(local_path, page_.path(), !permit_upper_case);
  if (permit_upper_case) return VerifyTarget(link, target, local_path, anchor);
  return OfferRename(target) && VerifyTarget(link, target, target.path, anchor);
}

bool LinkCheck::OfferRename(LinkTarget& target) {
  const Question* const offer = run_.targets.RenameOffer(target);
  if (offer == nullptr) return true;
  run_.state.RenameOffered = true;
  if (run_.host.WantsFindings()) NoteOffer(target);
  if (!run_.host.Ask(*offer)) return true;
  const std::string stored_path = JoinPath(FolderOf(target.registered), target.stored_name);
  if (Status status = run_.targets.Rename(target); !status.ok()) {
    run_.host.TellFailure(stored_path, status.reason());
    return false;
  }
  page_.SetPath(run_.targets.PresentPath(page_.path()));
  return true;
}

// Many links may lead to the file, and each makes the offer: for machines it is one finding.
void LinkCheck::NoteOffer(const LinkTarget& target) {
  const std::string stored_path = JoinPath(FolderOf(target.registered), target.stored_name);
  if (!run_.targets.IsFirstOffer(stored_path)) return;
  NoteFileFinding(run_.host, FindingKind::kUpperCaseFile, stored_path, kUpperCaseFile, target.stored_name);
}

bool LinkCheck::VerifyTarget(const Link& link, LinkTarget& target, std::string_view shown_path,
                             std::string_view anchor) {
  bool found = true;
  const Status status =
      anchor.empty() ? run_.targets.Open(target) : run_.targets.FindAnchor(target, anchor, found);
  if (!status.ok()) {
    return ReportLinkError(link, FindingKind::kMissingFile, status.reason() + ": " + std::string(shown_path));
  }
  if (!found && !ReportLinkError(link, FindingKind::kMissingAnchor, kNoAnchor)) return false;
  if (!std::exchange(target.is_registered, true)) run_.state.UnlinkedList.MarkLinked(target.registered);
  return true;
}

// Writes a finding into the report and, if wanted, puts it to the user; false when the page's check ends.
bool LinkCheck::ReportLinkError(const Link& link, FindingKind kind, std::string_view error) {
  PageText& text = page_.text();
  page_.NoteFinding(kind, link.start, link.end, error);
  const auto [begin, end] = ExcerptOf(text, link.start, link.end);
  excerpt_.clear();
  text.AppendSlice(begin, end, excerpt_);
  page_.BeginEntry(error.size() + excerpt_.size());
  AppendLinkError(error, excerpt_, run_.state.Results);
  return !run_.options.ShowEach || PutToUser(link, error, begin, end);
}

bool LinkCheck::PutToUser(const Link& link, std::string_view error, std::size_t begin, std::size_t end) {
  Proposal proposal;
  proposal.FileName = page_.FileName();
  proposal.SearchText = error;
  proposal.ReplaceText = excerpt_;
  const std::size_t start = std::min(link.start - begin, excerpt_.size());
  proposal.ReplaceSelection = {start, std::min(link.end - link.start, excerpt_.size() - start)};
  proposal.encoding = page_.text().Encoding();
  proposal.line_end = page_.text().LineEnd();
  const ProposalAnswer answer = run_.host.Propose(proposal);
  const bool accepted = answer.ReplaceAnswer == kKeep || answer.ReplaceAnswer == kReplace;
  if (accepted && answer.ReplaceText != excerpt_ && !Correct(begin, end, answer.ReplaceText)) return false;
  if (answer.ReplaceAnswer == kStop) run_.state.StopRequested = true;
  return answer.ReplaceAnswer != kStop;
}

bool LinkCheck::Correct(std::size_t begin, std::size_t end, const std::string& text) {
  std::string change(CrLf);
  AppendWasChanged(text, change);
  run_.state.MakeRoom(change.size());
  status_ = page_.Replace(begin, end, text);
  if (!status_.ok()) return false;
  run_.state.Results += change;
  anchors_.reset();
  cgi_.reset();
  scanner_.Restart(begin + 2);
  return true;
}

}  // namespace tessaril
