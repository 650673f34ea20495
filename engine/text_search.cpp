#include "engine/text_search.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

#include "engine/ascii.h"
#include "engine/byte_search.h"
#include "engine/finding.h"
#include "engine/page_findings.h"
#include "engine/page_text.h"
#include "engine/paths.h"
#include "engine/phrase_match.h"
#include "engine/phrase_search.h"
#include "engine/report_pieces.h"

namespace tessaril {
namespace {

struct Occurrence {
  Finding finding;
  std::size_t first_break;  // as PhraseMatch has it
};

// `replacement` as it is proposed for an occurrence with a break in it: one of its blanks becomes the page's
// line end, the first at or behind the place of the break, else the last before it.
std::string WithBreak(std::string replacement, std::size_t first_break, std::string_view line_end) {
  if (first_break == 0) return replacement;
  std::size_t blank = replacement.find(' ', first_break - 1);
  if (blank == std::string::npos) blank = replacement.rfind(' ', first_break - 1);
  if (blank != std::string::npos) replacement.replace(blank, 1, line_end);
  return replacement;
}

// The search through one page.
class PageSearch {
 public:
  PageSearch(const std::string& F, PageText& page, RunContext& run)
      : path_(F), page_(page), run_(run), findings_(run.host) {}

  // False when the page cannot hold the text.
  bool Prepare(const std::string& S, const std::string& R);
  void Run();

  bool hit() const { return hit_; }
  bool changed() const { return changed_; }
  const std::string& report() const { return report_; }

 private:
  bool replacing() const { return run_.options.function == Function::kReplace; }
  LetterCase TakeLetterCase(std::string_view sought);
  std::optional<Occurrence> FindNext();
  void Note(const Occurrence& found);
  void ReplaceUnasked(const Finding& found);
  bool PutToUser(const Occurrence& found);  // false when the user stops
  Proposal MakeProposal(const Occurrence& found);

  const std::string& path_;
  PageText& page_;
  RunContext& run_;
  PageFindings findings_;
  std::optional<PhraseSearch> sought_;  // this text and the next in the page's own bytes
  std::string R_;
  bool key_case_ = false;              // what ULcase said last
  bool resume_behind_insert_ = false;  // an unasked replacement would be found again inside itself
  std::size_t next_ = 0;               // where the search goes on, from 0
  std::string file_name_;              // as the user sees it; made when it is needed first
  std::string context_;
  std::string report_;
  bool hit_ = false;
  bool changed_ = false;
};

bool PageSearch::Prepare(const std::string& S, const std::string& R) {
  if (S.empty()) return false;
  const auto encoding_for = [this](const std::string& text) {
    return IsAscii(text) ? PageEncoding::kEightBit : page_.Encoding();
  };
  const std::optional<std::string> sought = SoughtBytes(S, encoding_for(S));
  if (!sought) return false;
  R_ = WrittenBytes(R, encoding_for(R));
  sought_.emplace(*sought, TakeLetterCase(*sought));
  return true;
}

LetterCase PageSearch::TakeLetterCase(std::string_view sought) {
  key_case_ = run_.options.ULcase;
  const LetterCase letter_case = key_case_ ? LetterCase::kExact : LetterCase::kFolded;
  resume_behind_insert_ =
      replacing() && ByteSearch(PhraseKey(sought), letter_case).Find(R_, 1) != ByteSearch::kNone;
  return letter_case;
}

void PageSearch::Run() {
  while (std::optional<Occurrence> found = FindNext()) {
    hit_ = true;
    const Finding& finding = found->finding;
    next_ = finding.place + 1;
    Note(*found);
    if (run_.options.ShowEach) {
      if (!PutToUser(*found)) return;
      continue;
    }
    context_.clear();
    page_.AppendSlice(finding.context_begin, finding.context_end, context_);
    if (replacing()) {
      ReplaceUnasked(finding);
    } else {
      AppendEntry(kLabelFound, context_, report_);
    }
  }
}

std::optional<Occurrence> PageSearch::FindNext() {
  if (key_case_ != run_.options.ULcase) sought_->UseLetterCase(TakeLetterCase(sought_->text()));
  const auto found = sought_->FindNext(page_, next_);
  if (!found) return std::nullopt;
  return Occurrence{FindingAt(page_, found->place, found->match.length), found->match.first_break};
}

void PageSearch::Note(const Occurrence& found) {
  if (!findings_.wanted()) return;
  std::optional<std::string> proposal;
  if (replacing()) {
    proposal = run_.options.ShowEach ? WithBreak(R_, found.first_break, page_.LineEnd()) : R_;
  }
  const Finding& place = found.finding;
  findings_.Note(FindingKind::kText, path_, page_, place.place, place.place + place.length, "Found",
                 std::move(proposal));
}

void PageSearch::ReplaceUnasked(const Finding& found) {
  page_.Replace(found.place, found.place + found.length, R_);
  findings_.NoteChange(found.place);
  changed_ = true;
  AppendEntry(kLabelChanged, context_, report_);
  if (resume_behind_insert_) next_ = found.place + R_.size();
}

bool PageSearch::PutToUser(const Occurrence& found) {
  const Proposal proposal = MakeProposal(found);
  const ProposalAnswer answer = run_.host.Propose(proposal);
  AppendAnswer(proposal, answer, path_, report_);
  if (answer.ReplaceAnswer == kReplace && proposal.ReplaceText) {
    page_.Replace(found.finding.context_begin, found.finding.context_end, answer.ReplaceText);
    findings_.NoteChange(found.finding.context_begin);
    changed_ = true;
  }
  if (answer.ReplaceAnswer == kStop) run_.state.StopRequested = true;
  return answer.ReplaceAnswer != kStop;
}

Proposal PageSearch::MakeProposal(const Occurrence& found) {
  if (file_name_.empty()) file_name_ = ShortenedPath(path_);
  if (!replacing()) return ShowFinding(file_name_, page_, found.finding);
  const std::string shown = WithBreak(R_, found.first_break, page_.LineEnd());
  Proposal proposal = ProposeText(file_name_, page_, found.finding, shown);
  const std::size_t extra = found.finding.length - sought_->text().size();
  proposal.ReplaceSelection.length = R_.size() + extra;
  return proposal;
}

}  // namespace

Status Erstat(const std::string& S, const std::string& R, const std::string& F, RunContext& run) {
  run.host.CountFile(F);
  FileStamp stamp;
  if (Status status = run.files.Read(F, run.page_bytes, stamp); !status.ok()) return status;
  PageText page(run.page_bytes);
  PageSearch search(F, page, run);
  if (!search.Prepare(S, R)) return {};
  search.Run();
  if (!search.hit()) return {};
  RunState& state = run.state;
  std::string header;
  if (!run.options.MarkedOnly) AppendFileHeader(F, header);
  // Memory for all that is to be said of a page comes first: no page is changed that the report is silent of.
  state.MakeRoom(header.size() + search.report().size());
  if (search.changed()) {
    if (Status status = run.files.ReplaceContent(F, stamp, page.Pieces()); !status.ok()) return status;
  }
  state.Results += header;
  state.Results += search.report();
  state.ReportTitle = "Search results";
  run.host.ShowReport(state.Results, state.ReportTitle);
  return {};
}

Status SearchFile(RunContext& run) {
  const bool replacing = run.options.function == Function::kReplace;
  return Erstat(run.texts.search, replacing ? run.texts.replace : std::string(), run.state.RunFile, run);
}

}  // namespace tessaril
