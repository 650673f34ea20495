#include "tests/support/writing_runs.h"

#include <utility>

namespace tessaril {
namespace {

std::size_t Count(std::string_view text, std::string_view sought) {
  std::size_t count = 0;
  for (std::size_t at = text.find(sought); at != std::string_view::npos; at = text.find(sought, at + 1))
    ++count;
  return count;
}

}  // namespace

ProposalAnswer CorrectingHost::Propose(const Proposal& proposal) {
  ScriptHost::Propose(proposal);
  ProposalAnswer answer{kReplace, proposal.ReplaceText.value_or("")};
  const auto [start, length] = proposal.ReplaceSelection;
  std::string selected = answer.ReplaceText.substr(start, length);
  constexpr std::pair<std::string_view, std::string_view> kCorrections[] = {
      {"gone.htm", "good.htm"}, {"Sub/Other.htm", "sub/other.htm"}, {"#123456", "#123366"}};
  for (const auto& [wrong, right] : kCorrections) {
    if (const std::size_t at = selected.find(wrong); at != std::string::npos)
      selected.replace(at, wrong.size(), right);
  }
  answer.ReplaceText.replace(start, length, selected);
  return answer;
}

std::vector<WritingRun> AllWritingRuns() {
  return {{"replace", Function::kReplace, false, false, {"new"}},
          {"replace, asked", Function::kReplace, true, false, {"new"}},
          {"entities", Function::kEntities, false, false, {"&eacute;"}},
          {"entities, asked", Function::kEntities, true, false, {"&eacute;"}},
          {"entities by today's rules", Function::kEntities, true, true, {"&eacute;"}},
          {"links, asked", Function::kLinks, true, false, {"good.htm", "sub/other.htm"}},
          {"links by today's rules", Function::kLinks, false, true, {"sub/other.htm"}},
          {"links by today's rules, asked",
           Function::kLinks,
           true,
           true,
           {"good.htm", "sub/other.htm", "two/A.gif"}},
          {"colours, asked", Function::kColours, true, false, {"#123366"}}};
}

RunOptions OptionsOf(const WritingRun& run, const std::string& site) {
  RunOptions options;
  options.function = run.function;
  options.dirList = site;
  options.SearchTekst = "hit";
  options.ReplaceText = "new";
  options.ShowEach = run.asks || run.function == Function::kEntities;
  if (run.by_today) options.site = Site{site, {}};
  options.AcceptCertain = run.by_today && !run.asks;
  return options;
}

std::size_t CountMarks(const WritingRun& run, std::string_view text) {
  std::size_t count = 0;
  for (const std::string_view mark : run.marks) count += Count(text, mark);
  return count;
}

std::map<std::string, std::size_t> ChangesTold(const std::string& report) {
  const std::string rule = std::string(80, '-') + "\r\n";
  std::map<std::string, std::size_t> told;
  for (std::size_t at = report.find(rule); at != std::string::npos;) {
    const std::size_t path = at + rule.size();
    const std::size_t path_end = report.find("\r\n", path);
    const std::size_t block = path_end + rule.size();
    at = report.find(rule, block);
    const std::string_view entries = std::string_view(report).substr(block, at - block);
    told[report.substr(path, path_end - path)] +=
        Count(entries, "*** Changed:") + Count(entries, "*** Was changed TO:");
  }
  return told;
}

}  // namespace tessaril
