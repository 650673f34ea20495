#include "engine/finding.h"

#include <algorithm>

#include "engine/report_pieces.h"

namespace tessaril {

Finding FindingAt(PageText& page, std::size_t place, std::size_t length) {
  constexpr std::size_t kBefore = 20;
  constexpr std::size_t kAfter = 100;
  const std::size_t begin = place - std::min(place, kBefore);
  const auto [context_begin, context_end] = page.WholeCharacters(begin, place + length + kAfter);
  return {place, length, context_begin, context_end};
}

Proposal ShowFinding(const std::string& file_name, PageText& page, const Finding& finding) {
  Proposal proposal;
  proposal.FileName = file_name;
  proposal.encoding = page.Encoding();
  page.AppendSlice(finding.context_begin, finding.context_end, proposal.SearchText);
  proposal.SearchSelection = {finding.place - finding.context_begin, finding.length};
  return proposal;
}

Proposal ProposeText(const std::string& file_name, PageText& page, const Finding& finding,
                     std::string_view text) {
  Proposal proposal = ShowFinding(file_name, page, finding);
  const auto [before, length] = proposal.SearchSelection;
  std::string& field = proposal.ReplaceText.emplace();
  field.reserve(proposal.SearchText.size() - length + text.size());
  field.append(proposal.SearchText, 0, before);
  field += text;
  field.append(proposal.SearchText, before + length);
  proposal.ReplaceSelection = {before, text.size()};
  proposal.line_end = page.LineEnd();
  return proposal;
}

void AppendAnswer(const Proposal& proposal, const ProposalAnswer& answer, const std::string& path,
                  std::string& report) {
  switch (answer.ReplaceAnswer) {
    case kReplace:
      if (!proposal.ReplaceText) break;
      AppendEntry(kLabelChanged, proposal.SearchText, report);
      if (answer.ReplaceText != *proposal.ReplaceText) AppendManualChange(answer.ReplaceText, report);
      break;
    case kKeep:
    case kStop:
      AppendEntry(proposal.ReplaceText ? kLabelKept : kLabelFound, proposal.SearchText, report);
      if (answer.ReplaceAnswer == kStop) AppendStopLine(path, report);
      break;
    default:
      break;
  }
}

}  // namespace tessaril
