// CheckHTML by the classic rules: links, external links and colours of three pages, held against the plain
// reading where pages are 8-bit; what must hold of every page is watched.
// Input: six bytes that choose, the answers, the pages "sub/c.htm", "a.htm" and "B.htm".

#include "engine/html_check.h"

#include "engine/paths.h"
#include "engine/search_run.h"
#include "fuzz/input.h"
#include "fuzz/watching_host.h"
#include "tests/support/plain_html_check.h"

namespace tessaril {
namespace {

using Contents = std::map<std::string, std::string>;

RunOptions TakeOptions(Input& input) {
  constexpr Function kFunctions[] = {Function::kLinks, Function::kExternal, Function::kColours};
  RunOptions options;
  options.function = kFunctions[input.Below(3)];
  options.dirList = input.Flag() ? "/s" : "/s/sub";
  options.ShowEach = input.Flag();
  options.UCfilename = input.Flag();
  options.CGI = input.Flag();
  if (input.Flag()) options.CGIname = "";
  return options;
}

// As a walk visits them. `stopped` is looked at behind each.
template <typename Check>
void CheckPages(MemoryFiles& files, const bool& stopped, const Check& check) {
  for (std::string path : {"/s/sub/c.htm", "/s/a.htm", "/s/B.htm"}) {
    (void)files.EnterFolder(std::string(FolderOf(path)));
    check(path);
    if (stopped) return;
  }
}

std::string Shown(const ScriptHost& host) {
  std::string shown;
  for (const std::string& question : host.questions) shown += question + "\n";
  for (const Proposal& proposal : host.proposals) {
    shown += proposal.SearchText + "|" + *proposal.ReplaceText + "|" +
             std::to_string(proposal.ReplaceSelection.start) + "," +
             std::to_string(proposal.ReplaceSelection.length) + "," +
             std::to_string(proposal.SearchSelection.start) + "\n";
  }
  return shown;
}

void RequireSameContents(const Contents& is, const Contents& expected) {
  for (const auto& [path, content] : expected) {
    Require(is.contains(path), path + " is not there any more");
    RequireEqual(is.at(path), content, path);
  }
  Require(is.size() == expected.size(), "a file too many");
}

bool AreEightBit(const Contents& pages) {
  return std::ranges::none_of(
      pages, [](const auto& page) { return DetectEncoding(page.second) == PageEncoding::kUtf8; });
}

void CheckReportOnly(RunOptions options, const Contents& contents, const Entities& entities) {
  MemoryFiles files;
  files.contents = contents;
  ScriptHost host;
  options.ShowEach = options.function == Function::kColours;
  options.dirList = "/s";
  RunState state;
  (void)SearchRun(files, host, entities, options, state);
  Require(files.writes.empty(), "a run that only reports writes");
  RequireSameContents(files.contents, contents);
}

}  // namespace
}  // namespace tessaril

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tessaril;
  Input input(data, size);
  const RunOptions options = TakeOptions(input);
  const std::string answers = input.Field();
  Contents pages;
  for (const char* path : {"/s/sub/c.htm", "/s/a.htm"}) pages[path] = input.Field();
  pages["/s/B.htm"] = input.Rest();
  pages["/s/sub/Img.gif"] = "<a name='top'>";
  pages["/c.htm"] = "<A NAME=s";

  static const Entities entities;
  static ByteBuffer memory;
  RunState state;
  WatchingHost host(answers, options, state);
  host.files.contents = pages;
  RunContext run{host.files, host, options, state, entities, {}, std::move(memory)};
  CheckPages(host.files, state.StopRequested, [&](std::string& path) { (void)CheckHTML(path, run); });
  memory = std::move(run.page_bytes);
  host.LookAtPage();
  if (options.function == Function::kExternal) RequireSameContents(host.files.contents, pages);

  if (AreEightBit(pages)) {
    MemoryFiles files;
    files.contents = pages;
    AnsweringHost plain_host(answers);
    PlainHtmlCheck plain{files, plain_host, options};
    CheckPages(files, plain.StopRequested, [&](std::string& path) { plain.CheckHTML(path); });
    RequireEqual(state.Results, plain.Results, "the report");
    RequireEqual(state.UnlinkedList.text(), plain.UnlinkedList, "the register");
    RequireEqual(Shown(host), Shown(plain_host), "what is put to the user");
    RequireSameContents(host.files.contents, files.contents);
  }
  CheckReportOnly(options, pages, entities);
  return 0;
}
