#include "engine/entity_check.h"

#include <string_view>

#include "engine/byte_search.h"
#include "engine/characters.h"
#include "engine/entities.h"
#include "engine/finding.h"
#include "engine/page_text.h"
#include "engine/paths.h"
#include "engine/report_pieces.h"

namespace tessaril {
namespace {

// What the check makes of a place whose first byte is above 127 or "&".
struct Verdict {
  std::size_t length = 0;  // bytes that are to be replaced; 0 when there is no finding
  std::size_t step = 1;    // bytes to where the check goes on, whatever the user makes of the finding
  std::string proposed;
  std::string hint;
};

std::string Entity(std::string_view name) {
  return "&" + std::string(name) + ";";
}

std::string NumericEntity(char32_t code) {
  return Entity("#" + std::to_string(static_cast<std::uint32_t>(code)));
}

// A byte above 127 of an 8-bit page, or a bare "&".
Verdict JudgeByte(const Entities& entities, char c) {
  const std::string_view name = entities.NameForCharacter(c);
  if (!name.empty()) return {1, 1, Entity(name), ""};
  if (c == '&') return {1, 1, "&amp;", "If not in tag/link!"};
  return {1, 1, NumericEntity(static_cast<unsigned char>(c)), "Windows only tag?"};
}

// A character above 127 of a UTF-8 page. A byte that begins none (an edit may have brought it, or left the
// check in the middle of a sequence) is passed over.
Verdict JudgeSequence(const Entities& entities, std::string_view text) {
  const std::size_t length = SequenceLength(text);
  if (length == 0) return {};
  const char32_t code = CodePoint(text.substr(0, length));
  const std::string_view name = entities.NameForCodePoint(code);
  return {length, 1, name.empty() ? NumericEntity(code) : Entity(name), ""};
}

// `name` begins with "#". What is no number counts as 0.
Verdict JudgeNumeric(const Entities& entities, std::string_view name) {
  constexpr char32_t kLastEightBit = 255;
  const std::string_view number = name.substr(1);
  const bool hexadecimal = number.starts_with('x') || number.starts_with('X');
  char32_t code = (hexadecimal ? HexadecimalCode(number.substr(1)) : DecimalCode(number)).value_or(0);
  std::optional<char> eight_bit = EightBitCode(code);
  if (code <= kLastEightBit) {
    eight_bit = static_cast<char>(static_cast<unsigned char>(code));
    code = EightBitCharacter(*eight_bit);
  }
  const std::string_view known = eight_bit ? entities.NameForNumeric(*eight_bit) : std::string_view();
  std::string hint = "Character: ";
  if (code != 0 && IsCharacter(code)) AppendUtf8(code, hint);
  const std::size_t length = name.size() + 2;
  return {length, length, Entity(known.empty() ? name : known), hint};
}

Verdict JudgeAmpersand(const Entities& entities, std::string_view text) {
  constexpr std::size_t kFarthest = 20;  // where the ";" of an entity may be, counted from its "&"
  const std::size_t length = text.substr(1, kFarthest).find(';');
  if (length == std::string_view::npos) return JudgeByte(entities, '&');
  const std::string_view name = text.substr(1, length);
  const std::size_t behind = length + 2;
  if (name == "lt" || name == "gt" || name == "quot" || name == "amp") return {0, behind, "", ""};
  if (name.starts_with('#')) return JudgeNumeric(entities, name);
  if (entities.IsDoubtful(name)) return {behind, behind, Entity(name), "Replace doubtful tag!"};
  if (entities.IsGood(name)) return {0, behind, "", ""};
  return JudgeByte(entities, '&');
}

// The check of one page. Its block of the report grows at the end of `Results`, and is cut back to what is
// true of the file on the disk when the check fails.
class PageCheck {
 public:
  PageCheck(const std::string& F, PageText& page, FileStamp& stamp, RunContext& run)
      : path_(F),
        page_(page),
        stamp_(stamp),
        run_(run),
        begin_(run.state.Results.size()),
        true_end_(begin_) {}

  Status Run();

 private:
  Status GoThrough();
  Verdict Judge(std::string_view text);
  void BeginBlock();
  Status PutToUser(std::size_t place, const Verdict& verdict);
  Status Replace(const Finding& finding, const std::string& text);
  Status Write();

  const std::string& path_;
  PageText& page_;
  FileStamp& stamp_;
  RunContext& run_;
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
  if (page_.Tail(0).starts_with(kByteOrderMark) && page_.Encoding() == PageEncoding::kUtf8) {
    place = kByteOrderMark.size();
  }
  while (place < page_.size()) {
    const std::string_view text = page_.Tail(place);
    const std::size_t next = FindHighByteOr('&', text);
    if (next == ByteSearch::kNone) break;
    place += next;
    const Verdict verdict = Judge(text.substr(next));
    if (verdict.length > 0) {
      if (Status status = PutToUser(place, verdict); !status.ok()) return status;
      if (run_.state.StopRequested) break;
    }
    place += verdict.step;
  }
  return {};
}

Verdict PageCheck::Judge(std::string_view text) {
  if (text[0] == '&') return JudgeAmpersand(run_.entities, text);
  if (page_.Encoding() == PageEncoding::kUtf8) return JudgeSequence(run_.entities, text);
  return JudgeByte(run_.entities, text[0]);
}

void PageCheck::BeginBlock() {
  hit_ = true;
  file_name_ = ShortenedPath(path_);
  if (!run_.options.MarkedOnly) AppendFileHeader(path_, run_.state.Results);
  header_size_ = run_.state.Results.size() - begin_;
}

Status PageCheck::PutToUser(std::size_t place, const Verdict& verdict) {
  if (!hit_) BeginBlock();
  const Finding finding = FindingAt(page_, place, verdict.length);
  Proposal proposal = ProposeText(file_name_, page_, finding, verdict.proposed);
  proposal.Label4 = verdict.hint;
  const ProposalAnswer answer = run_.host.Propose(proposal);
  RunState& state = run_.state;
  AppendAnswer(proposal, answer, path_, state.Results);
  if (answer.ReplaceAnswer == kReplace) {
    if (Status status = Replace(finding, answer.ReplaceText); !status.ok()) return status;
  }
  if (written_) true_end_ = state.Results.size();
  if (answer.ReplaceAnswer == kStop) state.StopRequested = true;
  run_.HandleInput();
  return {};
}

Status PageCheck::Replace(const Finding& finding, const std::string& text) {
  page_.Replace(finding.context_begin, finding.context_end, text);
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

}  // namespace

Status ErstatAlfa(const std::string& F, RunContext& run) {
  run.host.CountFile(F);
  FileStamp stamp;
  if (Status status = run.files.Read(F, run.page_bytes, stamp); !status.ok()) return status;
  PageText page(run.page_bytes);
  return PageCheck(F, page, stamp, run).Run();
}

Status CheckEntities(RunContext& run) {
  return ErstatAlfa(run.state.RunFile, run);
}

}  // namespace tessaril
