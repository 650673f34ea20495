// The links of a small site by today's rules, as a whole run.
// Input: three bytes that choose, the answers unless what is certain is accepted, the pages "index.html",
// "sub/p.htm" and "Q.xhtml", the style sheet "s.css".

#include "engine/html_check.h"
#include "engine/search_run.h"
#include "fuzz/input.h"
#include "fuzz/watching_host.h"

namespace tessaril {
namespace {

using Contents = std::map<std::string, std::string>;

enum Mode : std::size_t { kReport, kAsk, kAcceptCertain };

struct RunResult {
  std::string report;
  Contents contents;
};

RunResult Run(const Contents& contents, const RunOptions& options, const std::string& answers,
              bool wants_findings = false) {
  static const Entities entities;
  RunState state;
  WatchingHost host(answers, options, state);
  host.wants_findings = wants_findings || options.ShowEach || options.AcceptCertain;
  host.unasked = host.takes_proposals = options.AcceptCertain;
  if (options.AcceptCertain) host.most = std::string::npos;
  host.files.contents = contents;
  (void)SearchRun(host.files, host, entities, options, state);
  Require(host.failures.empty(), "a page cannot be checked");
  host.LookAtPage();
  if (!options.ShowEach && !options.AcceptCertain) {
    Require(host.proposals.empty(), "somebody is asked in a run that only reports");
    Require(host.files.writes.empty(), "a run that only reports writes");
  }
  return {state.Results, host.files.contents};
}

}  // namespace
}  // namespace tessaril

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tessaril;
  Input input(data, size);
  RunOptions options;
  options.function = Function::kLinks;
  options.dirList = "/s";
  options.site = Site{"/s", {}};
  SiteRules& rules = options.site->rules;
  rules.lowercase_names = input.Flag();
  if (input.Flag()) rules.start = {"index.html"};
  const std::size_t mode = input.Below(3);
  const std::string answers = mode == kAcceptCertain ? "" : input.Field();
  Contents contents;
  for (const char* name : {"index.html", "sub/p.htm", "Q.xhtml"})
    contents["/s/" + std::string(name)] = input.Field();
  contents["/s/s.css"] = input.Rest();
  contents["/s/sub/Img.gif"] = "";
  contents["/s/\xC3\xA4.html"] = "<a name=top>";

  options.ShowEach = mode == kAsk;
  options.AcceptCertain = mode == kAcceptCertain;
  const RunResult first = Run(contents, options, answers);
  // Machines are told, too; the report is the same.
  if (mode == kReport) RequireEqual(Run(contents, options, answers, true).report, first.report, "the report");
  // What is certain is in order once it is accepted.
  if (mode != kAcceptCertain) return 0;
  const RunResult again = Run(first.contents, options, answers);
  for (const auto& [path, content] : first.contents) RequireEqual(again.contents.at(path), content, path);
  return 0;
}
