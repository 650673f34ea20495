#include "engine/entity_check.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

#include "engine/classic_entities.h"
#include "engine/entity_rules.h"
#include "engine/finding.h"
#include "engine/page_findings.h"
#include "engine/page_text.h"
#include "engine/paths.h"
#include "engine/report_pieces.h"
#include "engine/today_entities.h"

namespace tessaril {
namespace {

using Outcome = EntityRules::Outcome;

// Where in the page that what stood behind a finding begins, as far as it stands there still: `shown` was in
// the place of `now`.
std::size_t PlaceBehind(const Finding& finding, std::string_view shown, std::string_view now) {
  const std::string_view behind = shown.substr(finding.place + finding.length - finding.context_begin);
  const auto differs = std::mismatch(behind.rbegin(), behind.rend(), now.rbegin(), now.rend()).first;
  const auto same = static_cast<std::size_t>(differs - behind.rbegin());
  return finding.context_begin + now.size() - same;
}

// The check of one page. Its block of the report grows at the end of `Results`, and is cut back to what is
// true of the file on the disk when the check fails.
class PageCheck {
 public:
  PageCheck(const std::string& F, PageText& page, FileStamp& stamp, EntityRules& rules, RunContext& run)
      : path_(F),
        page_(page),
        stamp_(stamp),
        rules_(rules),
        run_(run),
        findings_(run.host),
        begin_(run.state.Results.size()),
        true_end_(begin_) {}

  Status Run();

 private:
  Status GoThrough();
  void BeginBlock();
  void NoteFinding(const EntityVerdict& verdict);
  Status PutToUser(const EntityVerdict& verdict, std::size_t& go_on);
  Status Replace(const Finding& finding, const std::string& text);
  Status Write();

  const std::string& path_;
  PageText& page_;
  FileStamp& stamp_;
  EntityRules& rules_;
  RunContext& run_;
  PageFindings findings_;
  std::string file_name_;        // as the user sees it
  const std::size_t begin_;      // where in `Results` the block begins,
  std::size_t header_size_ = 0;  // how long its header is,
  std::size_t true_end_;         // and up to where it is true of the file on the disk
  bool hit_ = false;
  bool unwritten_ = false;  // something was accepted that is not on the disk yet
  bool written_ = false;    // something that was accepted is
};

Status PageCheck::Run() {
  Status status;
  try {
    status = GoThrough();
    if (status.ok() && unwritten_) status = Write();
  } catch (...) {
    run_.state.Results.resize(true_end_);
    throw;
  }
  if (!status.ok()) run_.state.Results.resize(true_end_);
  if (!hit_ || (!status.ok() && !written_)) return status;
  RunState& state = run_.state;
  if (state.StopRequested) {
    state.Results.erase(begin_, header_size_);
    return status;
  }
  state.ReportTitle = "Search results";
  run_.host.ShowReport(state.Results, state.ReportTitle);
  return status;
}

Status PageCheck::GoThrough() {
  std::size_t place = 0;
  while (const std::optional<EntityVerdict> verdict = rules_.Next(page_, place)) {
    if (Status status = PutToUser(*verdict, place); !status.ok()) return status;
    if (run_.state.StopRequested) break;
  }
  return {};
}

void PageCheck::BeginBlock() {
  hit_ = true;
  file_name_ = ShortenedPath(path_);
  if (!run_.options.MarkedOnly) AppendFileHeader(path_, run_.state.Results);
  header_size_ = run_.state.Results.size() - begin_;
}

void PageCheck::NoteFinding(const EntityVerdict& verdict) {
  if (!findings_.wanted()) return;
  const std::size_t replaced_end = verdict.place + verdict.length;
  const std::size_t end = std::max(replaced_end, verdict.place + verdict.judged);
  std::string found;
  page_.AppendSlice(verdict.place, end, found);
  std::optional<std::string> proposal = verdict.proposed;
  page_.AppendSlice(replaced_end, end, *proposal);
  if (*proposal == found) proposal.reset();
  findings_.Note(verdict.kind, path_, page_, verdict.place, end, verdict.message, std::move(proposal));
}

// `go_on` becomes the place where the check goes on.
Status PageCheck::PutToUser(const EntityVerdict& verdict, std::size_t& go_on) {
  if (!hit_) BeginBlock();
  NoteFinding(verdict);
  const Finding finding = FindingAt(page_, verdict.place, verdict.length);
  Proposal proposal = ProposeText(file_name_, page_, finding, verdict.proposed);
  proposal.Label4 = verdict.hint;
  const ProposalAnswer answer = run_.host.Propose(proposal);
  RunState& state = run_.state;
  AppendAnswer(proposal, answer, path_, state.Results);
  Outcome outcome = Outcome::kKept;
  if (answer.ReplaceAnswer == kReplace) {
    outcome = answer.ReplaceText == *proposal.ReplaceText ? Outcome::kAsProposed : Outcome::kEdited;
    if (Status status = Replace(finding, answer.ReplaceText); !status.ok()) return status;
  }
  const std::string& now = outcome == Outcome::kKept ? proposal.SearchText : answer.ReplaceText;
  go_on = rules_.GoOn(verdict, outcome, PlaceBehind(finding, proposal.SearchText, now));
  if (written_) true_end_ = state.Results.size();
  if (answer.ReplaceAnswer == kStop) state.StopRequested = true;
  run_.HandleInput();
  return {};
}

Status PageCheck::Replace(const Finding& finding, const std::string& text) {
  page_.Replace(finding.context_begin, finding.context_end, text);
  findings_.NoteChange(finding.context_begin);
  unwritten_ = true;
  return run_.host.AnswersUnasked() ? Status() : Write();
}

Status PageCheck::Write() {
  // Memory for all that is to be said comes first: no page is changed that the report is silent of.
  run_.state.MakeRoom(0);
  Status status = run_.files.ReplaceContent(path_, stamp_, page_.Pieces());
  if (status.ok()) {
    unwritten_ = false;
    written_ = true;
  }
  return status;
}

std::unique_ptr<EntityRules> RulesOf(const RunContext& run) {
  if (!run.options.JudgesByToday()) return std::make_unique<ClassicEntities>(run.entities);
  return std::make_unique<TodayEntities>(run.entities, run.options.site->rules.ascii_entities);
}

}  // namespace

Status ErstatAlfa(const std::string& F, RunContext& run) {
  run.host.CountFile(F);
  FileStamp stamp;
  if (Status status = run.files.Read(F, run.page_bytes, stamp); !status.ok()) return status;
  PageText page(run.page_bytes);
  const std::unique_ptr<EntityRules> rules = RulesOf(run);
  return PageCheck(F, page, stamp, *rules, run).Run();
}

Status CheckEntities(RunContext& run) {
  return ErstatAlfa(run.state.RunFile, run);
}

}  // namespace tessaril
