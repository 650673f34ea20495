#include "engine/colour_check.h"

#include <algorithm>
#include <optional>

#include "engine/ascii.h"
#include "engine/byte_search.h"
#include "engine/find_chain.h"
#include "engine/report_pieces.h"

namespace tessaril {
namespace {

constexpr std::size_t kColourSize = 7;  // "#" and six digits
constexpr std::string_view kHexDigits = "0123456789ABCDEFabcdef";
constexpr std::size_t kExcerptBefore = 21;  // bytes in front of a colour
constexpr std::size_t kExcerptSize = 100;   // bytes

class ColourCheck {
 public:
  ColourCheck(HtmlPage& page, RunContext& run) : page_(page), run_(run) {}

  Status Run();

 private:
  bool FindBodyTag();
  void CheckBodyTag();
  void CheckAttributes();
  bool IsSafe(std::string_view text_from_sign);
  void Note(std::string_view text_from_sign, std::size_t place);
  ProposalAnswer Propose(const std::string& shown, std::size_t sign);
  bool Replace(std::size_t begin, const std::string& shown, const std::string& text);
  bool goes_on() const { return status_.ok() && !run_.state.StopRequested; }

  HtmlPage& page_;
  RunContext& run_;
  Status status_;
  std::size_t body_begin_ = 0;
  std::string body_tag_;  // in upper case, or as the user put it
};

Status ColourCheck::Run() {
  if (!FindBodyTag()) return {};
  CheckBodyTag();
  if (goes_on()) CheckAttributes();
  return status_;
}

bool ColourCheck::FindBodyTag() {
  const std::string_view text = page_.text().Tail(0);
  body_begin_ = ByteSearch("<body", LetterCase::kFolded).Find(text);
  if (body_begin_ == ByteSearch::kNone) return false;
  const std::size_t end = text.find('>', body_begin_);
  if (end == std::string_view::npos) return false;
  body_tag_ = ToUpper(text.substr(body_begin_, end + 1 - body_begin_));
  return true;
}

void ColourCheck::CheckBodyTag() {
  for (std::size_t sign = body_tag_.find('#'); sign != std::string::npos && goes_on();
       sign = body_tag_.find('#', sign + 1)) {
    if (IsSafe(std::string_view(body_tag_).substr(sign))) continue;
    Note(std::string_view(body_tag_).substr(sign), body_begin_ + sign);
    page_.BeginEntry(body_tag_.size());
    const ProposalAnswer answer = Propose(body_tag_, sign);
    const bool changed = answer.ReplaceText != body_tag_;
    if (changed && answer.ReplaceAnswer == kReplace) {
      if (Replace(body_begin_, body_tag_, answer.ReplaceText)) body_tag_ = answer.ReplaceText;
    } else if (!changed) {
      run_.state.Results.append(CrLf).append(CrLf).append(body_tag_);
    }
  }
}

void ColourCheck::CheckAttributes() {
  static const Chain colour("color", "=", "#");
  PageText& page_text = page_.text();
  std::size_t next = body_begin_ + body_tag_.size() + 1;
  while (goes_on()) {
    const std::string_view text = page_text.Tail(0);
    const std::optional<Chain::Place> place = FindChain(colour, text, next);
    if (!place || place->last + 1 == text.size()) return;
    const std::size_t sign = text.find('#', place->begin);
    next = sign + 1;
    if (IsSafe(text.substr(sign))) continue;
    const std::size_t first = sign - std::min(sign, kExcerptBefore);
    const auto [begin, end] = page_text.WholeCharacters(first, first + kExcerptSize);
    const std::string excerpt(text.substr(begin, end - begin));
    Note(text.substr(sign), sign);
    page_.BeginEntry(excerpt.size());
    run_.state.Results += "\r\n\r\n*** Error:";
    const ProposalAnswer answer = Propose(excerpt, sign - begin);
    if (answer.ReplaceText != excerpt && answer.ReplaceAnswer == kReplace) {
      Replace(begin, excerpt, answer.ReplaceText);
    } else {
      run_.state.Results.append(CrLf).append(CrLf).append(excerpt);
    }
  }
}

bool ColourCheck::IsSafe(std::string_view text_from_sign) {
  return !HexErr(ToUpper(text_from_sign.substr(0, kColourSize)), 0, run_.state.ColourParts);
}

// The finding for machines is "#" and the digits behind it.
void ColourCheck::Note(std::string_view text_from_sign, std::size_t place) {
  const std::size_t end = text_from_sign.substr(0, kColourSize).find_first_not_of(kHexDigits, 1);
  page_.NoteFinding(FindingKind::kUnsafeColour, place, place + std::min(end, kColourSize),
                    "Not a web safe colour");
}

ProposalAnswer ColourCheck::Propose(const std::string& shown, std::size_t sign) {
  Proposal proposal;
  proposal.FileName = page_.FileName();
  proposal.SearchText = shown;
  proposal.SearchSelection = {sign, kColourSize};
  proposal.ReplaceText = shown;
  proposal.ReplaceSelection = {sign, kColourSize};
  proposal.encoding = page_.text().Encoding();
  proposal.line_end = page_.text().LineEnd();
  ProposalAnswer answer = run_.host.Propose(proposal);
  if (answer.ReplaceAnswer == kStop) run_.state.StopRequested = true;
  return answer;
}

// Puts `text` in the place of what is shown, which begins at `begin`; false when the page could not be
// written. The report tells of the change only when it was made.
bool ColourCheck::Replace(std::size_t begin, const std::string& shown, const std::string& text) {
  std::string entry = "\r\n\r\n" + shown;
  const std::size_t unchanged_size = entry.size();
  AppendWasChanged(text, entry);
  run_.state.MakeRoom(entry.size());
  status_ = page_.Replace(begin, begin + shown.size(), text);
  run_.state.Results.append(entry, 0, status_.ok() ? entry.size() : unchanged_size);
  return status_.ok();
}

}  // namespace

bool HexErr(std::string_view t, std::size_t a, std::array<std::string, 3>& parts) {
  constexpr std::string_view kSafe[] = {"00", "33", "66", "99", "CC", "FF"};
  bool hf = false;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    parts[i] = t.substr(std::min(a + 1 + 2 * i, t.size()), 2);
    hf = hf || std::find(std::begin(kSafe), std::end(kSafe), parts[i]) == std::end(kSafe);
  }
  return hf;
}

Status CheckColours(HtmlPage& page, RunContext& run) {
  return ColourCheck(page, run).Run();
}

}  // namespace tessaril
