#include "engine/search_run.h"

#include <gtest/gtest.h>

#include "engine/run_report.h"
#include "tests/support/memory_files.h"
#include "tests/support/program_entities.h"
#include "tests/support/script_host.h"

namespace tessaril {
namespace {

RunOptions OptionsFor(Function function) {
  RunOptions options;
  options.function = function;
  options.dirList = "/s";
  options.SearchTekst = "hit";
  options.ReplaceText = "new";
  options.ShowEach = false;
  return options;
}

TEST(SearchRun, AssemblesTheReport) {
  MemoryFiles files;
  files.contents = {{"/s/a.htm", "a hit"}, {"/s/b.htm", "none"}};
  ScriptHost host;
  RunState state;
  const RunEnd end = SearchRun(files, host, {}, OptionsFor(Function::kSearch), state);
  const std::string rule(80, '-');
  EXPECT_EQ(state.Results, "In \"/s\" and all subdirectories:\r\n\r\nSearch text \"hit\" found:\r\n\r\n" +
                               rule + "\r\n/s/a.htm\r\n" + rule + "\r\n\r\n*** Found:\r\n...a hit...\r\n");
  EXPECT_TRUE(end.found);
  EXPECT_EQ(state.ReportTitle, "Report");
  EXPECT_EQ(host.shown, (std::vector<std::string>{"Search results", "Report"}));
  EXPECT_EQ(state.SavedSearchText, "hit");
}

TEST(SearchRun, TakesLessThanFortyBytesForNothing) {
  MemoryFiles files;
  ScriptHost host;
  RunOptions options = OptionsFor(Function::kSearch);
  options.MarkedOnly = true;
  options.filList = "a.htm";
  const std::string header = "In \"/s/a.htm\":\r\n\r\nSearch text \"hit\" found:";
  for (const bool enough : {false, true}) {
    files.contents["/s/a.htm"] = enough ? "hit, 18 bytes long" : "hit, 17 bytes lon";
    RunState state;
    EXPECT_TRUE(SearchRun(files, host, {}, options, state).found);
    const std::string findings =
        enough ? "\r\n\r\n*** Found:\r\n...hit, 18 bytes long..." : "\r\n*** None ***";
    EXPECT_EQ(state.Results, header + findings + "\r\n");
  }
}

TEST(SearchRun, ChecksBeforeAnythingChanges) {
  MemoryFiles files;
  files.contents["/s/a.css"] = "hit";
  ScriptHost host;
  RunOptions options = OptionsFor(Function::kReplace);
  options.cboSearchSpec = "*.css";
  options.SearchTekst = "hit\xC4\x8D";
  RunState state;
  state.Results = "the last report";
  EXPECT_FALSE(SearchRun(files, host, {}, options, state).started);
  EXPECT_EQ(host.questions, std::vector<std::string>{"*.css files are not HTML files! Continue?"});
  EXPECT_EQ(state.Results + state.SavedSearchText, "the last report");
  EXPECT_TRUE(host.messages.empty());
  options.SearchTekst = "hit";
  host.replies = {true};
  EXPECT_TRUE(SearchRun(files, host, {}, options, state).started);
  EXPECT_EQ(files.contents["/s/a.css"], "new");
  options.MarkedOnly = true;
  host.replies = {true};
  EXPECT_FALSE(SearchRun(files, host, {}, options, state).started);
  EXPECT_EQ(host.messages, std::vector<std::string>{"No file marked!"});
  host.questions.clear();
  RunOptions entities = OptionsFor(Function::kEntities);
  EXPECT_FALSE(SearchRun(files, host, {}, entities, state).started);
  EXPECT_EQ(host.questions,
            std::vector<std::string>{"Performing this function without manual control may cause unwanted "
                                     "results!\r\nDo you really want to continue?"});
}

TEST(SearchRun, WritesTheTextsWithEntities) {
  const auto warning = [](const std::string& which) {
    return "(!) Warning!\r\nThere is an illegal HTML character in the " + which +
           " string.\r\nThe results may consequently be unreliable!";
  };
  struct Row {
    Function function;
    bool chkTags;
    std::string search;
    std::string page;
    std::vector<std::string> warnings;
  };
  const std::string same = "\xE9 &eacute;";
  const Row rows[] = {
      {Function::kReplace, true, "\xC3\xA9", "\xE9 &#269;!&egrave;", {warning("Replace")}},
      {Function::kReplace, false, "\xC3\xA9", "&#269;!\xE8 &eacute;", {}},
      {Function::kReplace, true, "\xC2\xA0\xC2\xA0", same, {warning("Search"), warning("Replace")}},
      {Function::kSearch, true, "\xC4\x8D\xC3\xA9", same, {warning("Search")}},
  };
  for (const Row& row : rows) {
    MemoryFiles files;
    files.contents = {{"/s/a.htm", same}};
    ScriptHost host;
    RunOptions options = OptionsFor(row.function);
    options.SearchTekst = row.search;
    options.ReplaceText = "\xC4\x8D!\xC3\xA8";
    options.chkTags = row.chkTags;
    RunState state;
    SearchRun(files, host, ProgramEntities(), options, state);
    EXPECT_EQ(files.contents["/s/a.htm"], row.page);
    EXPECT_EQ(host.messages, row.warnings);
    EXPECT_EQ(state.SavedSearchText + state.SavedReplaceText, row.search + options.ReplaceText);
  }
}

TEST(SearchRun, SaysWhereItWasStopped) {
  MemoryFiles files;
  files.contents = {{"/s/a.htm", "hit"}, {"/s/b.htm", "hit"}};
  ScriptHost host;
  host.cancel_at = 1;
  RunState state;
  SearchRun(files, host, {}, OptionsFor(Function::kSearch), state);
  EXPECT_TRUE(
      state.Results.ends_with("found:\r\n*** None ***\r\n\r\n   *** Stopped ***\r\nin file /s/a.htm\r\n"))
      << state.Results;
}

TEST(SearchRun, StartsAfresh) {
  MemoryFiles files;
  files.contents = {{"/s/a.htm", "hit"}};
  ScriptHost host;
  host.answers = {{kStop, ""}};
  RunState state;
  RunOptions options = OptionsFor(Function::kReplace);
  options.ShowEach = true;
  SearchRun(files, host, {}, options, state);
  EXPECT_TRUE(state.StopRequested);
  state.UnlinkedList.AddChecked("/s/old.htm");
  EXPECT_TRUE(SearchRun(files, host, {}, options, state).started);
  EXPECT_FALSE(state.StopRequested);
  EXPECT_EQ(state.UnlinkedList.text(), "");
  EXPECT_EQ(state.SavedReplaceText, "new");
  EXPECT_EQ(state.Results.find("Stopped"), std::string::npos);
  EXPECT_EQ(state.Results.find("In \"/s\""), state.Results.rfind("In \"/s\""));
}

TEST(RunReport, HasAHeadingForEachFunction) {
  const auto header = [](RunOptions options, const SearchTexts& searched) {
    return MakeHeader(options, {"hit", "new"}, searched);
  };
  const SearchTexts same{"hit", "new"};
  const std::string where = "In \"/s\" and all subdirectories:\r\n\r\n";
  EXPECT_EQ(header(OptionsFor(Function::kLinks), same), where + "Internal link errors found:");
  EXPECT_EQ(header(OptionsFor(Function::kEntities), same), where + "&xxxx; type tag problems found:");
  EXPECT_EQ(header(OptionsFor(Function::kColours), same), where + "Safe colour errors found:");
  EXPECT_EQ(header(OptionsFor(Function::kReplace), same),
            where + "Search text \"hit\" found and changed to \"new\" in:");
  RunOptions options = OptionsFor(Function::kReplace);
  EXPECT_EQ(
      header(options, {"h&icirc;t", "n&eacute;w"}),
      where + "Search text \"hit\" as \"h&icirc;t\" found and changed to \"new\" as \"n&eacute;w\" in:");
  options.chkTags = false;
  EXPECT_EQ(header(options, {"h&icirc;t", "new"}),
            where + "Search text \"hit\" found and changed to \"new\" in:");
  RunOptions external = OptionsFor(Function::kExternal);
  external.dirList = "/A&B<\xC3\x89>";
  EXPECT_EQ(header(external, same),
            "<H1>External links</H1>\r\n<P>in \"/a&amp;b&lt;\xC3\x89&gt;\" and all subdirectories"
            "<hr width=\"100%\"></P>");
  external.MarkedOnly = true;
  external.filList = "<&.htm";
  EXPECT_EQ(
      header(external, same),
      "<H1>External links</H1>\r\n<P>in \"/a&amp;b&lt;\xC3\x89&gt;/&lt;&amp;.htm\"<hr width=\"100%\"></P>");
}

TEST(RunReport, ListsTheUnlinkedFiles) {
  RunState state;
  state.Results = std::string(40, 'x');
  for (const char* path : {"/s/a.htm", "/s/b.htm", "/s/Up.htm"}) state.UnlinkedList.AddChecked(path);
  state.UnlinkedList.MarkLinked("/s/b.htm");
  RunOptions options = OptionsFor(Function::kLinks);
  FinishReport("head", options, state);
  const std::string rule(50, '=');
  EXPECT_EQ(state.Results, "head" + std::string(40, 'x') + "\r\n\r\n\r\n" + rule +
                               "\r\nUnlinked files:\r\n     /s/a.htm\r\n     /s/Up.htm");
  state.Results = std::string(40, 'x');
  state.StopRequested = true;
  FinishReport("head", options, state);
  EXPECT_EQ(state.Results.find("Unlinked"), std::string::npos);
  state.StopRequested = false;
  state.Results.clear();
  options.MarkedOnly = true;
  FinishReport("head", options, state);
  EXPECT_EQ(state.Results, "head\r\n*** None ***\r\n");
}

TEST(RunReport, MakesAPage) {
  RunState state;
  FinishPage("top", state);
  EXPECT_EQ(state.Results, "<HTML>\r\ntop\r\n<H3>No external links found</H3>\r\n</HTML>");
  state.Results = "link\r\n";
  FinishPage("top", state);
  EXPECT_EQ(state.Results, "<HTML>\r\ntop\r\nlink\r\n\r\n</HTML>");
}

}  // namespace
}  // namespace tessaril
