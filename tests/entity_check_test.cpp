#include "engine/entity_check.h"

#include <gtest/gtest.h>

#include <new>

#include "tests/support/memory_files.h"
#include "tests/support/program_entities.h"
#include "tests/support/script_host.h"

namespace tessaril {
namespace {

using Lines = std::vector<std::string>;

const std::string kPath = "/p" + std::string(46, '.') + "htm";  // 51 characters

class EntityCheck : public testing::Test {
 protected:
  // Runs over one page, every proposal answered by `answers` in turn, then kept; gives what the page then
  // holds.
  std::string Check(const std::string& page, const std::deque<ProposalAnswer>& answers = {}) {
    files.contents[kPath] = page;
    files.writes.clear();
    host.proposals.clear();
    host.answers = answers;
    state = {};
    state.Results = earlier;
    RunContext run{files, host, options, state, entities, {}, {}};
    status = ErstatAlfa(kPath, run);
    return files.contents[kPath];
  }
  // Replace, with this text in the field.
  static ProposalAnswer As(const std::string& field) { return {kReplace, field}; }

  MemoryFiles files;
  ScriptHost host;
  RunOptions options;
  std::string earlier;  // findings of other pages
  RunState state;
  Entities entities = ProgramEntities();
  Status status;
};

TEST_F(EntityCheck, ProposesWhatTheRulesSay) {
  const std::string and_hint = "|If not in tag/link!";
  const std::string doubtful = "|Replace doubtful tag!";
  const std::string windows = "|Windows only tag?";
  const std::string character = "|Character: ";
  struct Row {
    std::string page;
    Lines proposals;  // found, ">", new, and after "|" the hint
  };
  const Row rows[] = {
      {"", {}},
      {"plain &lt;&gt;&quot;&amp;&nbsp;&eacute;&euro;", {}},
      {"\xE9\x96", {"\xE9>&eacute;|", "\x96>&ndash;|"}},
      {"\xA0\x81\xFF", {"\xA0>&#160;" + windows, "\x81>&#129;" + windows, "\xFF>&yuml;|"}},
      {"R&D", {"&>&amp;" + and_hint}},
      {"AT&T;", {"&>&amp;" + and_hint}},
      {"&LT;&Nbsp;&;", {"&>&amp;" + and_hint, "&>&amp;" + and_hint, "&>&amp;" + and_hint}},
      {"&&eacute;", {"&>&amp;" + and_hint}},
      {"&\xE9;", {"&>&amp;" + and_hint, "\xE9>&eacute;|"}},
      {"&#0000000000000000233;", {"&>&amp;" + and_hint}},  // the ";" is 21 characters on
      {"&#000000000000000233;", {"&#000000000000000233;>&eacute;" + character + "\xC3\xA9"}},
      {"&#233;&#160;",
       {"&#233;>&eacute;" + character + "\xC3\xA9", "&#160;>&nbsp;" + character + "\xC2\xA0"}},
      {"&#150;&#8211;",
       {"&#150;>&ndash;" + character + "\xE2\x80\x93", "&#8211;>&ndash;" + character + "\xE2\x80\x93"}},
      {"&#xE9;&#X20AC;",
       {"&#xE9;>&eacute;" + character + "\xC3\xA9", "&#X20AC;>&euro;" + character + "\xE2\x82\xAC"}},
      {"&#65;&#232.5;", {"&#65;>&#65;" + character + "A", "&#232.5;>&eacute;" + character + "\xC3\xA9"}},
      {"&#960;&#x1F600;",
       {"&#960;>&#960;" + character + "\xCF\x80", "&#x1F600;>&#x1F600;" + character + "\xF0\x9F\x98\x80"}},
      {"&#;&#0;&#x;&#2a;&#xD800;&#1114112;",
       {"&#;>&#;" + character, "&#0;>&#0;" + character, "&#x;>&#x;" + character, "&#2a;>&#2a;" + character,
        "&#xD800;>&#xD800;" + character, "&#1114112;>&#1114112;" + character}},
      {"&hearts;&Hearts;", {"&hearts;>&hearts;" + doubtful, "&>&amp;" + and_hint}},
      // UTF-8: whole characters, no hint for them
      {"\xEF\xBB\xBF\xC3\xA9", {"\xC3\xA9>&eacute;|"}},
      {"\xEF\xBB\xBF\xE9", {"\xEF>&iuml;|", "\xBB>&raquo;|", "\xBF>&iquest;|", "\xE9>&eacute;|"}},
      {"\xC2\xA0\xE2\x80\x93\xCF\x80\xF0\x9F\x98\x80&",
       {"\xC2\xA0>&#160;|", "\xE2\x80\x93>&ndash;|", "\xCF\x80>&#960;|", "\xF0\x9F\x98\x80>&#128512;|",
        "&>&amp;" + and_hint}},
      {"\xC2\x96\xEF\xBB\xBF", {"\xC2\x96>&#150;|", "\xEF\xBB\xBF>&#65279;|"}},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Check(row.page), row.page);
    Lines proposals;
    for (const Proposal& shown : host.proposals) {
      const auto [start, length] = shown.SearchSelection;
      EXPECT_EQ(shown.ReplaceSelection.start, start);
      proposals.push_back(shown.SearchText.substr(start, length) + ">" +
                          shown.ReplaceText->substr(start, shown.ReplaceSelection.length) + "|" +
                          shown.Label4);
    }
    EXPECT_EQ(proposals, row.proposals) << row.page;
    EXPECT_EQ(state.Results.empty(), row.proposals.empty()) << row.page;
  }
}

TEST_F(EntityCheck, GoesByTheDataItWasGiven) {
  files.contents["/d/alphatg1.dat"] = "null,#0\r\nzero,#0\r\namp,&\r\nboth,\xE9\r\n";
  files.contents["/d/alphatg2.dat"] = "both\r\nlt\r\n#65\r\n";
  Lines notices;
  ASSERT_TRUE(entities.Load(files, "/d", notices).ok());
  Check("&lt;&null;&both;&#65;&#x;&");
  const auto& shown = host.proposals;
  ASSERT_EQ(shown.size(), 4U);
  EXPECT_EQ(shown[0].Label4, "Replace doubtful tag!");
  EXPECT_EQ(shown[1].Label4, "Character: A");
  EXPECT_EQ(shown[2].ReplaceText, "lt;&null;&both;&#65;&null;&");  // what is no number counts as 0
  EXPECT_EQ(shown[3].ReplaceText, "null;&both;&#65;&#x;&amp;");
  EXPECT_EQ(shown[3].Label4, "");
}

TEST_F(EntityCheck, GoesOnInTheChangedText) {
  struct Row {
    std::string page;
    std::deque<ProposalAnswer> answers;
    std::string result;
    std::size_t proposals;
  };
  const Row rows[] = {
      {"\xE9\xE9", {As("&eacute;\xE9"), As("&eacute;&eacute;")}, "&eacute;&eacute;", 2},
      {"a&b", {As("a&amp;b")}, "a&amp;b", 1},
      // Behind an entity the check goes on where the old one ended: here behind the "&" that moved ahead.
      {"&#0000233;&", {As("&eacute;&")}, "&eacute;&", 1},
      {"&#233;&", {As("&eacute;&"), As("&eacute;&amp;")}, "&eacute;&amp;", 2},
      {"&hearts;", {As("x&")}, "x&", 1},
      {"&hearts;&", {As("")}, "", 1},  // the page has become shorter than the place
      // One behind the start of a replaced character, which an edit may have changed.
      {"\xE9", {As("&&")}, "&&", 2},
      {"\xE9", {{7, "x"}}, "\xE9", 1},
      // UTF-8: in the middle of a character the check goes on behind it; stray bytes are passed over.
      {"&#233;\xCF\x80", {As("12345\xCF\x80\xCF\x81")}, "12345\xCF\x80\xCF\x81", 2},
      {"\xC3\xA9", {As("x&")}, "x&", 2},
      {"\xCF\x80z&", {As("z\x80\xE9z&")}, "z\x80\xE9z&", 2},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Check(row.page, row.answers), row.result) << row.page;
    EXPECT_EQ(host.proposals.size(), row.proposals) << row.page;
  }
}

TEST_F(EntityCheck, ShowsAndReplacesTheSurroundings) {
  options.MarkedOnly = true;
  const std::string ahead = std::string(10, '.') + "12345678901234567890";
  const std::string behind(100, '-');
  Check(ahead + "&#233;" + behind + "rest", {As("edited")});
  const Proposal& shown = host.proposals.at(0);
  EXPECT_EQ(shown.SearchText, "12345678901234567890&#233;" + behind);
  EXPECT_EQ(shown.ReplaceText, "12345678901234567890&eacute;" + behind);
  EXPECT_EQ(shown.SearchSelection.start, 20U);
  EXPECT_EQ(shown.FileName, "...  " + kPath.substr(4));
  EXPECT_EQ(files.contents[kPath], std::string(10, '.') + "edited" + "rest");
  EXPECT_EQ(state.Results, "\r\n\r\n*** Changed:\r\n..." + shown.SearchText +
                               "...\r\n--* Manually changed TO:\r\n...edited...");
  EXPECT_EQ(host.shown, Lines{"Search results"});
  EXPECT_EQ(state.ReportTitle, "Search results");
}

TEST_F(EntityCheck, WritesEachAnswerAtOnceAndAloneOnce) {
  const std::string first = "\xE9\xE8\xE7";
  const std::deque<ProposalAnswer> all = {As("&eacute;\xE8\xE7"), As("&eacute;&egrave;\xE7"),
                                          As("&eacute;&egrave;&ccedil;")};
  Lines on_disk;
  host.on_proposal = [&] { on_disk.push_back(files.contents[kPath]); };
  EXPECT_EQ(Check(first, all), "&eacute;&egrave;&ccedil;");
  EXPECT_EQ(on_disk, (Lines{first, "&eacute;\xE8\xE7", "&eacute;&egrave;\xE7"}));
  EXPECT_EQ(files.writes.size(), 3U);
  const std::string report = state.Results;
  host.unasked = true;
  EXPECT_EQ(Check(first, all), "&eacute;&egrave;&ccedil;");
  EXPECT_EQ(files.writes.size(), 1U);
  EXPECT_EQ(state.Results, report);
  host.cancel_at = 8;  // each proposal lets input through: the second of this run
  EXPECT_EQ(Check(first, all), "&eacute;&egrave;\xE7");
  EXPECT_TRUE(state.StopRequested);
}

TEST_F(EntityCheck, LeavesTheHeaderOutWhenStopped) {
  earlier = std::string(300, '-');
  const std::string kept = earlier + "\r\n\r\n--- Kept:\r\n...\xE9\xE9...";
  Check("\xE9\xE9", {{kStop, "dropped"}});
  EXPECT_EQ(state.Results, kept + "\r\n\r\n*** Stopped in " + kPath + " ***");
  EXPECT_TRUE(state.StopRequested && host.shown.empty() && files.writes.empty());
  EXPECT_EQ(state.ReportTitle, "");
  host.cancel_at = 2;
  Check("\xE9\xE9");
  EXPECT_EQ(state.Results, kept);  // Cancel: no stop line
  EXPECT_EQ(host.proposals.size(), 1U);
}

TEST_F(EntityCheck, ReportsWhatIsOnTheDiskWhenAWriteFails) {
  files.unwritable.insert(kPath);
  EXPECT_EQ(Check("\xE9", {As("x")}), "\xE9");
  EXPECT_EQ(status.reason(), "No space left on device");
  EXPECT_TRUE(state.Results.empty() && host.shown.empty());
  Check("\xE9\xE8", {{kKeep, ""}, As("x")});
  EXPECT_TRUE(state.Results.empty() && host.shown.empty());
  host.unasked = true;
  EXPECT_EQ(Check("\xE9\xE8", {As("x\xE8"), As("xy")}), "\xE9\xE8");
  EXPECT_TRUE(state.Results.empty() && host.shown.empty());
  host.unasked = false;
  files.unwritable.clear();
  host.on_proposal = [this] {
    if (host.proposals.size() == 2) files.unwritable.insert(kPath);
  };
  EXPECT_EQ(Check("\xE9\xE8", {As("&eacute;\xE8"), As("x")}), "&eacute;\xE8");
  EXPECT_EQ(status.reason(), "No space left on device");
  EXPECT_TRUE(state.Results.ends_with("-\r\n\r\n*** Changed:\r\n...\xE9\xE8...")) << state.Results;
  EXPECT_EQ(host.shown, Lines{"Search results"});
  files.unwritable.clear();
  for (const bool changed : {false, true}) {
    host.on_proposal = [this] {
      if (host.proposals.size() == 2) throw std::bad_alloc();
    };
    EXPECT_THROW(Check("\xE9\xE8", {{changed ? kReplace : kKeep, "x\xE8"}}), std::bad_alloc);
    EXPECT_EQ(state.Results.empty(), !changed);
  }
  EXPECT_EQ(host.files.size(), 6U);  // each was counted
}

}  // namespace
}  // namespace tessaril
