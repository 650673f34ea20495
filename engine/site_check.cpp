#include "engine/site_check.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "engine/ascii.h"
#include "engine/excerpt.h"
#include "engine/html_page.h"
#include "engine/page_encoding.h"
#include "engine/report_pieces.h"
#include "engine/site_findings.h"
#include "engine/site_run.h"

namespace tessaril {
namespace {

std::string ErrorText(const SiteFinding& finding, const PagePlace& place) {
  return finding.message + ", line " + std::to_string(place.line) + ", column " +
         std::to_string(place.column);
}

// The check of one page that has findings.
class SiteCheck {
 public:
  SiteCheck(HtmlPage& page, SiteEntry& file, RunContext& run)
      : page_(page), file_(file), run_(run), finder_(file, *run.site) {}

  Status Run();

 private:
  void Find(std::size_t from);
  bool Report(const SiteFinding& finding);
  bool IsCertain(const SiteFinding& finding);
  bool PutToUser(const SiteFinding& finding, const std::string& error, const PageText::Span& span,
                 const std::string& excerpt);
  void NoteMissing(const SiteFinding& finding) {
    if (!finding.missing.empty()) run_.site->NoteMissing(finding.missing);
  }
  bool Correct(const PageText::Span& span, const std::string& text);
  void GoOnBehind(const SiteFinding& finding, bool as_proposed, std::size_t changed);
  void TellAll();
  Status WriteAll();
  void TakeBackUnwritten();

  HtmlPage& page_;
  SiteEntry& file_;
  RunContext& run_;
  SiteFinder finder_;
  Status status_;
  std::vector<SiteFinding> findings_;  // still to be told
  std::size_t next_ = 0;
  std::size_t shift_ = 0;  // how far the page has grown in front of them; what it has shrunk counts down
  std::vector<std::pair<std::size_t, std::size_t>>
      unwritten_;  // where `Results` tells of changes, and how long
};

Status SiteCheck::Run() {
  try {
    TellAll();
  } catch (...) {
    TakeBackUnwritten();
    throw;
  }
  if (!unwritten_.empty() && status_.ok()) status_ = WriteAll();
  return status_;
}

void SiteCheck::TellAll() {
  Find(0);
  while (next_ < findings_.size() && status_.ok() && run_.HandleInput()) {
    SiteFinding finding = std::move(findings_[next_++]);
    finding.begin += shift_;
    finding.end += shift_;
    if (!Report(finding)) break;
  }
}

void SiteCheck::Find(std::size_t from) {
  findings_ = finder_.Find(page_.text().Tail(0), from, PutsToUser(run_));
  next_ = 0;
  shift_ = 0;
}

// False when the check of the page ends.
bool SiteCheck::Report(const SiteFinding& finding) {
  PageText& text = page_.text();
  const PageText::Span span = ExcerptOf(text, finding.begin, finding.end);
  const std::string error = ErrorText(finding, page_.PlaceOf(finding.begin));
  std::string excerpt;
  text.AppendSlice(span.begin, span.end, excerpt);
  page_.BeginEntry(error.size() + excerpt.size());
  AppendLinkError(error, excerpt, run_.state.Results);
  page_.NoteFinding(finding.kind, finding.begin, finding.end, finding.message, finding.proposal);
  const bool is_shown = run_.options.ShowEach || (run_.options.AcceptCertain && IsCertain(finding));
  if (is_shown) return PutToUser(finding, error, span, excerpt);
  NoteMissing(finding);
  return true;
}

// Whether the proposal is right wherever the page is seen.
bool SiteCheck::IsCertain(const SiteFinding& finding) {
  if (!finding.is_certain) return false;
  std::string value;
  page_.text().AppendSlice(finding.begin, finding.end, value);
  return !finder_.IsInOrderElsewhere({value, finding.spelling});
}

bool SiteCheck::PutToUser(const SiteFinding& finding, const std::string& error, const PageText::Span& span,
                          const std::string& excerpt) {
  const std::size_t start = std::min(finding.begin - span.begin, excerpt.size());
  const std::size_t length = std::min(finding.end - finding.begin, excerpt.size() - start);
  Proposal proposal;
  proposal.FileName = page_.FileName();
  proposal.SearchText = error;
  proposal.ReplaceText = excerpt;
  proposal.ReplaceSelection = {start, length};
  if (finding.proposal) {
    proposal.ReplaceText->replace(start, length, *finding.proposal);
    proposal.ReplaceSelection.length = finding.proposal->size();
  }
  proposal.encoding = page_.text().Encoding();
  proposal.line_end = page_.text().LineEnd();
  const ProposalAnswer answer = run_.host.Propose(proposal);
  if (answer.ReplaceAnswer == kStop) run_.state.StopRequested = true;
  if (answer.ReplaceAnswer == kReplace && answer.ReplaceText != excerpt) {
    if (!Correct(span, answer.ReplaceText)) return false;
    const auto change =
        std::mismatch(excerpt.begin(), excerpt.end(), answer.ReplaceText.begin(), answer.ReplaceText.end());
    GoOnBehind(finding, finding.proposal && answer.ReplaceText == *proposal.ReplaceText,
               span.begin + static_cast<std::size_t>(change.first - excerpt.begin()));
  } else {
    NoteMissing(finding);
  }
  return answer.ReplaceAnswer != kStop;
}

bool SiteCheck::Correct(const PageText::Span& span, const std::string& text) {
  std::string change(CrLf);
  AppendWasChanged(text, change);
  run_.state.MakeRoom(change.size());
  page_.ChangeText(span.begin, span.end, text);
  if (run_.host.AnswersUnasked()) {
    unwritten_.emplace_back(run_.state.Results.size(), change.size());
  } else {
    status_ = page_.WriteChanges();
    if (!status_.ok()) return false;
  }
  run_.state.Results += change;
  return true;
}

// After a change. A link that was replaced as proposed leaves the rest of the page as it was; it is looked at
// again itself. Whatever else was changed, the page is looked through anew from the first changed byte; what
// stands whole in front of it has been told already.
void SiteCheck::GoOnBehind(const SiteFinding& finding, bool as_proposed, std::size_t changed) {
  if (!as_proposed || !run_.host.AnswersUnasked()) {
    run_.site->index.Take(file_, page_.text().Tail(0), page_.stamp());
    Find(std::min(finding.begin, changed));
    return;
  }
  shift_ += finding.proposal->size() - (finding.end - finding.begin);
  const PageLink corrected{*finding.proposal, finding.spelling};
  std::optional<SiteFinding> again = finder_.Judge(corrected, finding.begin, PutsToUser(run_));
  if (!again) return;
  (void)Report(*again);
}

// Where nobody is asked, a page is written at once in the end.
Status SiteCheck::WriteAll() {
  Status status = page_.WriteChanges();
  if (!status.ok()) TakeBackUnwritten();
  return status;
}

// The report is not to tell of a change that was not made.
void SiteCheck::TakeBackUnwritten() {
  for (auto change = unwritten_.rbegin(); change != unwritten_.rend(); ++change) {
    run_.state.Results.erase(change->first, change->second);
  }
  unwritten_.clear();
}

// A page whose report was kept when it was read.
void Tell(SiteEntry& file, RunContext& run) {
  const SitePage& known = *file.page;
  HtmlPage page(run.state.RunFile, run);
  SiteFinder finder(file, *run.site);
  for (std::size_t i = 0; i < known.faults.size(); ++i) {
    const SitePage::Words& words = known.words[i];
    const std::string_view value = std::string_view(words.excerpt).substr(words.value, known.faults[i].size);
    for (const SiteFinding& finding : finder.Of(known.faults[i], value, {known.encoding, known.declared})) {
      const std::string error = ErrorText(finding, words.place);
      page.BeginEntry(error.size() + words.excerpt.size());
      AppendLinkError(error, words.excerpt, run.state.Results);
      if (!finding.missing.empty()) run.site->NoteMissing(finding.missing);
    }
  }
}

}  // namespace

bool PutsToUser(const RunContext& run) {
  return run.options.ShowEach || run.options.AcceptCertain || run.host.WantsFindings();
}

Status CheckSitePage(RunContext& run) {
  SiteIndex& index = run.site->index;
  SiteEntry* const file = index.tree().OfPath(run.state.RunFile);
  if (file == nullptr) return index.tree().WhyUnknown(run.state.RunFile);
  if (index.FormOf(*file) == PageForm::kNone && FormOfListed(file->name) == PageForm::kNone) return {};
  const bool is_in_order = index.FaultsOf(*file).empty();
  if (const Status& reading = file->page->reading; !reading.ok())
    return run.state.StopRequested ? Status() : reading;
  if (is_in_order) return {};
  if (!PutsToUser(run) && file->page->words.size() == file->page->faults.size()) {
    Tell(*file, run);
    return {};
  }
  HtmlPage page(run.state.RunFile, run);
  if (Status status = page.Read(); !status.ok()) return status;
  const std::string_view text = page.text().Tail(0);
  // Its size, too: a file that changes while it is read may have the stamp of before.
  if (page.stamp() != file->page->stamp || text.size() != file->page->size)
    index.Take(*file, text, page.stamp());
  return SiteCheck(page, *file, run).Run();
}

}  // namespace tessaril
