#ifndef TESSARIL_TESTS_SUPPORT_WRITING_RUNS_H_
#define TESSARIL_TESTS_SUPPORT_WRITING_RUNS_H_

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "engine/run.h"
#include "tests/support/script_host.h"

namespace tessaril {

/// A user who accepts what is proposed, and corrects what only a person can.
class CorrectingHost : public ScriptHost {
 public:
  ProposalAnswer Propose(const Proposal& proposal) override;
  bool Ask(const Question& question) override {
    ScriptHost::Ask(question);
    return true;
  }
};

/// A way to change pages: a function with its options and with or without a person. Of `kWritingPage` each
/// makes the marks out of what it finds there, and every change makes one.
struct WritingRun {
  std::string_view name;
  Function function;
  bool asks;
  bool by_today;
  std::vector<std::string_view> marks;
};
inline constexpr std::string_view kWritingPage =
    "<body bgcolor=\"#123456\">hit <a href=\"Sub/Other.htm\">\xE9</a> hit <a href=\"gone.htm\">x</a>";
std::vector<WritingRun> AllWritingRuns();

/// The run over the folder `site`.
RunOptions OptionsOf(const WritingRun& run, const std::string& site);

/// How many of the run's marks are in a text.
std::size_t CountMarks(const WritingRun& run, std::string_view text);

/// How many changes a report tells of, by the paths of the pages.
std::map<std::string, std::size_t> ChangesTold(const std::string& report);

}  // namespace tessaril

#endif  // TESSARIL_TESTS_SUPPORT_WRITING_RUNS_H_
