// The links of a small site by today's rules, as a whole run.
// Input: two bytes that choose, the answers, the pages "index.html", "sub/p.htm" and "Q.xhtml", the style
// sheet "s.css".

#include "engine/html_check.h"
#include "engine/search_run.h"
#include "fuzz/input.h"
#include "fuzz/watching_host.h"

namespace tessaril {
namespace {

using Contents = std::map<std::string, std::string>;

struct RunResult {
  std::string report;
  Contents contents;
};

RunResult Run(const Contents& contents, const RunOptions& options, const std::string& answers, bool unasked,
              bool wants_findings) {
  static const Entities entities;
  RunState state;
  WatchingHost host(answers, options, state);
  host.wants_findings = wants_findings;
  host.unasked = host.takes_proposals = unasked;
  host.files.contents = contents;
  (void)SearchRun(host.files, host, entities, options, state);
  Require(host.failures.empty(), "a page cannot be checked");
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
  const std::string answers = input.Field();
  Contents contents;
  for (const char* name : {"index.html", "sub/p.htm", "Q.xhtml"})
    contents["/s/" + std::string(name)] = input.Field();
  contents["/s/s.css"] = input.Rest();
  contents["/s/sub/Img.gif"] = "";
  contents["/s/\xC3\xA4.html"] = "<a name=top>";

  options.ShowEach = false;
  const RunResult reported = Run(contents, options, answers, false, false);
  RequireEqual(Run(contents, options, answers, false, true).report, reported.report,
               "the report of a run that is told to machines as well");

  // What is certain is accepted once; then it is in order.
  options.AcceptCertain = true;
  const RunResult accepted = Run(contents, options, "", true, true);
  const RunResult again = Run(accepted.contents, options, "", true, true);
  for (const auto& [path, content] : accepted.contents) RequireEqual(again.contents.at(path), content, path);
  options.AcceptCertain = false;

  options.ShowEach = true;
  (void)Run(contents, options, answers, false, true);
  return 0;
}
