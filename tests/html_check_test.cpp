#include "engine/html_check.h"

#include <gtest/gtest.h>

#include "engine/anchors.h"
#include "engine/colour_check.h"
#include "engine/find_chain.h"
#include "engine/link_paths.h"
#include "engine/link_scanner.h"
#include "engine/paths.h"
#include "engine/search_run.h"
#include "tests/support/memory_files.h"
#include "tests/support/script_host.h"

namespace tessaril {
namespace {

using Lines = std::vector<std::string>;

Lines ValuesIn(const std::string& page) {
  Lines values;
  LinkScanner scanner;
  Link link;
  for (;;) {
    switch (scanner.Next(page, link)) {
      case LinkScanner::Pass::kEnd:
        return values;
      case LinkScanner::Pass::kLink:
        values.emplace_back(link.value);
        break;
      case LinkScanner::Pass::kSkipped:
        break;
    }
  }
}

TEST(LinkScanner, ReadsWhatFollowsAKeyword) {
  struct Row {
    std::string page;
    Lines values;
  };
  const Row rows[] = {
      {"<img SRC='a.gif'><img LOWSRC=\"b.gif\">", {"a.gif", "b.gif"}},
      {"href = 'a.htm' ", {"a.htm"}},
      {"HREF=a.htm>", {"a.htm"}},
      {"HREF=a.htm target=x", {"a.htm"}},
      {"hReF= xy\"a.htm\"", {"a.htm"}},
      {"href= 12345678\"a.htm\"", {"a.htm"}},
      {"href= 123456789\"a.htm\" src=b ", {"b"}},  // the quote is too far off
      {"href=\"\" src=\"b\"", {"\" src=", "b"}},   // the value runs on to the next quote
      {"href=\"\"", {}},
      {"HREF=> src=b ", {"b"}},
      {"href=\"page.htm?x=1\"", {"page.htm"}},
      {"href=\"page.htm?a=1;\"", {}},
      {"href=\"?x\"", {""}},
      {"href=\"javascript:history.back();\"", {}},
      {"window.open('pop.htm','w') document.location='b.htm' <td BackGround=c.gif>",
       {"pop.htm", "b.htm", "c.gif"}},
      {"content=\"0; URL=next.htm\">", {"next.htm\""}},
      {"href    =a ", {"a"}},
      {"href     =a ", {}},
      {"href\r\n\r\n=a ", {"a"}},
      {"src x src=a ", {"a"}},
      {"background src=a ", {"a"}},  // one keyword in front of another's separator: the first counts, once
      {"window.opensrc=('a'", {"a"}},
      {"href='src=a.htm x'", {"src=a.htm x"}},  // the search goes on with the value's second byte
      {"href='(src=a.htm x'", {"(src=a.htm x", "a.htm"}},
      {"href=a src=\"b", {"a"}},  // a value without an end is the end of all
      {"href='a' href=b src=c", {"a", "b"}},
      {"href=", {}},
      {"href= ", {}},
      {"", {}},
  };
  for (const Row& row : rows) EXPECT_EQ(ValuesIn(row.page), row.values) << row.page;
}

TEST(FindChain, GoesOnBehindTheLastTokenFound) {
  struct Row {
    const char* text;
    long begin;  // -1 for none
  };
  const Row rows[] = {
      {"color=#1", 0},         {"BGCOLOR = '#1", 2},  {"color    =    #1", 0},    {"color     =#1", -1},
      {"color =      #1", -1}, {"color color=#1", 6}, {"color     color=#1", 10}, {"color=color=#", 6},
  };
  const Chain chain("COLOR", "=", "#");
  for (const Row& row : rows) {
    const std::optional<Chain::Place> place = FindChain(chain, row.text, 0);
    EXPECT_EQ(place ? static_cast<long>(place->begin) : -1, row.begin) << row.text;
  }
}

bool HasAnchor(const std::string& text, const std::string& name, std::size_t longest = 8192) {
  Anchors whole(longest);
  whole.Take(text, true);
  Anchors bytewise(longest);
  for (const char& c : text) bytewise.Take({&c, 1}, false);
  bytewise.Take("", true);
  EXPECT_EQ(whole.Has(name), bytewise.Has(name)) << name;
  return whole.Has(name);
}

TEST(Anchors, AreTagsWithNameInFront) {
  const std::string long_name(3000, 'x');
  const std::string text =
      "<A NAME=\"Topics\"> <a name = 'b c'> <a href=x name=no> <a id=no2> <area name=\"123five\"" +
      std::string("<a name=") + long_name + "y>";
  for (const char* name : {"top", "Topics", "topics\"> <a name", "b c", "opics", "ics", "five"})
    EXPECT_TRUE(HasAnchor(text, name)) << name;
  for (const char* name : {"no", "no2", "cs", "topicsx", "d", "ive"})
    EXPECT_FALSE(HasAnchor(text, name)) << name;
  EXPECT_TRUE(HasAnchor(text, long_name + "Y>"));
  EXPECT_FALSE(HasAnchor(text, long_name + "z"));
  EXPECT_FALSE(HasAnchor(text, long_name + "y>."));
  // The tag in the middle begins in front of the "=" behind which no name was found.
  EXPECT_FALSE(HasAnchor("<aname<a=name=top", "top"));
  EXPECT_TRUE(HasAnchor("<aname=<aname=top", "top"));
  for (const std::size_t longest : {4U, 5U}) {  // as long as is remembered, with four bytes between
    EXPECT_TRUE(HasAnchor("<a name=1234abcdef", "abcd", longest));
    EXPECT_FALSE(HasAnchor("<a name=12345abcdef", "abcd", longest));
    EXPECT_TRUE(HasAnchor("<a name=<a name=<a name=abc<a name=x", "abc<", longest));
  }
}

TEST(LinkPaths, ResolveUpStepsAgainstThePage) {
  EXPECT_EQ(ResolveLink("../../img/a.gif", "/c/site/sub/page.htm"), "/c/img/a.gif");
  EXPECT_EQ(ResolveLink("img/b.gif", "/site/sub/page.htm"), "/site/sub/img/b.gif");
  EXPECT_EQ(ResolveLink("/img/b.gif", "/site/page.htm"), "/site//img/b.gif");
  EXPECT_EQ(ResolveLink("../../../../a.gif", "/site/page.htm"), "/a.gif");
  EXPECT_EQ(ResolveLink("x/../y../a.gif", "/s/t/page.htm"), "/a.gif");
  EXPECT_EQ(RegisteredPath(".//../a//./b.htm", "/s/t"), "/s/a/b.htm");
  EXPECT_EQ(RegisteredPath("/s//x/../a.htm", "/q"), "/s/x/../a.htm");
  std::string path;
  EXPECT_TRUE(JoinByText("../b.htm", "/s/t", "/s", path));
  EXPECT_EQ(path, "/s/b.htm");
  EXPECT_TRUE(JoinByText("b.htm", "/", "/", path));
  EXPECT_EQ(path, "/b.htm");
  for (const char* link : {"../../b.htm", "../x/../b.htm", "", "../", "x/", "x//y", "./x", "x/."})
    EXPECT_FALSE(JoinByText(link, "/s/t", "/s", path)) << link;
}

class HtmlCheck : public testing::Test {
 protected:
  HtmlCheck() {
    options.function = Function::kLinks;
    options.dirList = "/s";
    options.ShowEach = false;
  }
  RunEnd Run() { return SearchRun(files, host, {}, options, state); }
  // The findings of one page.
  std::string Check(const std::string& page) {
    files.contents["/s/a.htm"] = page;
    options.MarkedOnly = true;
    options.filList = "a.htm";
    Run();
    const std::size_t block = state.Results.find("\r\n\r\n" + rule);
    if (block == std::string::npos) return "";
    const std::string head = "\r\n\r\n" + rule + "\r\n/s/a.htm\r\n" + rule;
    EXPECT_EQ(state.Results.substr(block, head.size()), head);
    return state.Results.substr(block + head.size());
  }
  static std::string Error(const std::string& error, const std::string& excerpt) {
    return "\r\n\r\n*** Error:     " + error + "\r\n...in link:\r\n\r\n" + excerpt;
  }

  const std::string rule = std::string(80, '-');
  MemoryFiles files;
  ScriptHost host;
  RunOptions options;
  RunState state;
};

TEST_F(HtmlCheck, JudgesEachLink) {
  files.contents["/s/sub/b.htm"] = "<A NAME='One'>";
  const std::string upper =
      "Found UPPERcase characters in link filename! Correct manually to lowercase if suitable!";
  const std::string no_anchor = "No corresponding anchor: ";
  const std::string missing = "No such file or directory: ";
  struct Row {
    std::string value;
    Lines errors;
  };
  const Row rows[] = {
      {"sub/b.htm", {}},
      {"sub/b.htm#ONE", {}},
      {"sub/b.htm#two", {no_anchor}},
      {"sub/b.htm#", {}},
      {"Sub/b.htm", {upper, missing + "/s/Sub/b.htm"}},
      {"sub/c.htm", {missing + "/s/sub/c.htm"}},
      {"sub", {"Is a directory: /s/sub"}},
      {"sub/", {"Is a directory: /s/sub/"}},
      {"?x", {"Is a directory: /s/"}},
      {"sub\\b.htm", {missing + "/s/sub\\b.htm"}},
      {"#", {}},
      {"#here", {}},
      {"#HER", {}},
      {"#there", {no_anchor}},
      {"mailto:x@y", {}},
      {"MailTo:x", {}},
      {"http:x", {}},
      {"ftp:X", {}},
      {"Gopher:X", {}},
      {"HTTPS:X", {}},
      {"SHTTP:X", {}},
      {"TELNET:X", {}},
      {"wais:X", {}},
      {"nntp:X", {}},
      {"httpx:X", {upper, missing + "/s/httpx:X"}},
      {"File:x", {"Link to internal file!"}},
      {"/cgi-bin/x.pl", {}},
      {"/CGI-BIN/x.pl", {upper, missing + "/s//CGI-BIN/x.pl"}},
      {"javascript:x()", {missing + "/s/javascript:x()"}},
  };
  for (const Row& row : rows) {
    std::string expected;
    const std::string page = "<a name=here>" + std::string(50, '.') + "href='" + row.value + "'.";
    for (const std::string& error : row.errors) {
      expected += Error(error, page.substr(page.find("href") + 6 - 21));
    }
    if (!expected.empty()) expected += "\r\n";
    EXPECT_EQ(Check(page), expected) << row.value;
  }
  options.CGI = false;
  EXPECT_NE(Check("href=/cgi-bin/x.pl>"), "");
  options.CGI = true;
  options.CGIname = "";
  EXPECT_EQ(Check("href=x.pl>"), "");
  options.CGIname = "\xC3\xA9";
  EXPECT_EQ(Check("href=x\xE9.pl>"), "");
  EXPECT_NE(Check("href=x\xC3.pl>"), "");
  options.CGIname = "CGI-bin";
  const std::string far(300, '.');
  const std::string none = "href='" + far + "' ";
  const std::string with = "href='" + far + "cgi-bin" + far + "' ";
  EXPECT_EQ(Check(with + none + with + none),
            Error(missing + "/s/" + far, (with + none + with).substr(with.size() - 15, 401)) +
                Error(missing + "/s/" + far, (with + none).substr(with.size() - 15)) + "\r\n");
}

TEST_F(HtmlCheck, PermitsUpperCaseAndReadsLinksFromTheCurrentFolder) {
  options.UCfilename = true;
  files.contents = {{"/s/Sub/B.htm", ""}, {"/s/t/a.htm", ""}};
  EXPECT_EQ(Check("href=Sub/B.htm href='Sub/../Sub//B.htm' href=/s/Sub/B.htm href=../s/Sub/B.htm "), "");
  EXPECT_EQ(state.UnlinkedList.text(), "\r\nU /s/a.htm\r\nR /s/Sub/B.htm\r\nR /s/Sub/../Sub/B.htm");
  const std::string page = "href='sub/b.htm' href='?'";
  EXPECT_EQ(Check(page), Error("No such file or directory: sub/b.htm", page) +
                             Error("No such file or directory: ", page.substr(2)) + "\r\n");
  EXPECT_TRUE(host.questions.empty());
}

TEST_F(HtmlCheck, CutsExcerptsAtWholeCharactersAndDropsOneLineFeed) {
  const std::string umlaut = "\xC3\xA4";
  std::string page =
      umlaut + umlaut + std::string(14, '.') + "href='x'" + std::string(78, '.') + umlaut + "end";
  EXPECT_EQ(Check(page), Error("No such file or directory: /s/x", page.substr(2, page.size() - 5)) + "\r\n");
  page = std::string(30, '.') + "\n\n" + std::string(13, '.') + "href='x'" + std::string(90, '.');
  EXPECT_EQ(Check(page), Error("No such file or directory: /s/x", page.substr(31, 20 + 1 + 80)) + "\r\n");
}

TEST_F(HtmlCheck, PutsCorrectionsIntoThePage) {
  options.ShowEach = true;
  files.contents["/s/b.htm"] = "";
  const std::string page = "\r\n<a href=\"c.htm\">\r\n<a href=\"d.htm\">";
  const std::string once = "<a href=\"b.htm\">\r\n<a href=\"d.htm\">";
  const std::string missing = "No such file or directory: /s/";
  const std::string changed = "\r\n\r\n*** Was changed TO:\r\n..." + once + "...";
  const std::string first = Error(missing + "c.htm", page);
  host.answers = {{kKeep, once}, {kStop, "edited"}};
  EXPECT_EQ(Check(page), first + changed + Error(missing + "d.htm", once.substr(6)) +
                             "\r\n\r\n   *** Stopped ***\r\nin file /s/a.htm\r\n");
  EXPECT_EQ(files.contents["/s/a.htm"], once);
  const Proposal& shown = host.proposals.at(0);
  EXPECT_EQ(shown.FileName, "/s/a.htm");
  EXPECT_EQ(shown.SearchText, missing + "c.htm");
  EXPECT_EQ(shown.SearchSelection.length, 0U);
  EXPECT_EQ(shown.ReplaceText, page);
  EXPECT_EQ(shown.ReplaceSelection.start, 11U);
  EXPECT_EQ(shown.ReplaceSelection.length, 5U);
  EXPECT_EQ(shown.encoding, PageEncoding::kEightBit);

  // The scan goes on behind the second byte of what was put in, and examines the corrected link again.
  host.proposals.clear();
  host.answers = {{kReplace, "href=e.htm >href=f.htm >"}};
  Check("href=c.htm >");
  ASSERT_EQ(host.proposals.size(), 2U);
  EXPECT_EQ(host.proposals[1].SearchText, missing + "f.htm");

  host.answers = {{7, once}};  // no answer: nothing is done
  EXPECT_EQ(Check(page), first + Error(missing + "d.htm", page.substr(8)) + "\r\n");

  files.unwritable = {"/s/a.htm"};
  host.answers = {{kReplace, once}};
  EXPECT_EQ(Check(page), first + "\r\n");  // what was found stays, what was not done is not told
  EXPECT_EQ(host.failures, Lines{"/s/a.htm: No space left on device"});
}

TEST_F(HtmlCheck, OffersToRenameLinkedFiles) {
  files.contents = {{"/s/a.htm", "href=\"b.HTM\" href='page.htm'"}, {"/s/B.htm", ""}, {"/s/Page.htm", ""}};
  host.replies = {true, false};
  EXPECT_TRUE(Run().found);
  EXPECT_EQ(host.questions.at(0),
            "B.htm:\r\nFound UPPERcase characters in a linked file's filename! \r\n\r\n"
            "Replace this filename with the proper lowercase name:\r\nb.htm");
  EXPECT_TRUE(files.contents.contains("/s/b.htm"));
  EXPECT_EQ(host.files, (Lines{"/s/a.htm", "/s/b.htm", "/s/Page.htm"}));  // under its new name
  EXPECT_NE(state.Results.find("No such file or directory: /s/b.HTM"), std::string::npos);

  // An existing file is not overwritten; the check of the page ends.
  files.contents = {{"/s/a.htm", "href=B.htm href=none.htm "}, {"/s/B.htm", "1"}, {"/s/b.htm", "2"}};
  host.replies = {true};
  Run();
  EXPECT_EQ(host.failures, Lines{"/s/B.htm: File exists"});
  EXPECT_EQ(state.Results.find("No such file"), std::string::npos);
  EXPECT_EQ(files.contents["/s/b.htm"], "2");
  host.questions.clear();
  files.contents["/s/a.htm"] = "href=b.htm ";  // the exact name comes first
  Run();
  EXPECT_TRUE(host.questions.empty());

  // An offer counts as a finding, whatever was answered. A renamed page goes by its new name.
  files.contents = {{"/s/A.htm", "href='a.htm' href=none>"}};
  host.replies = {true};
  EXPECT_TRUE(Run().found);
  EXPECT_NE(state.Results.find("\r\n/s/a.htm\r\n" + rule), std::string::npos);
  EXPECT_EQ(state.UnlinkedList.text(), "\r\nU /s/A.htm\r\nR /s/a.htm");
}

TEST_F(HtmlCheck, LooksForTheFileThatALinkMeans) {
  struct Row {
    Lines names;
    std::string link;
    std::string offered;
  };
  const Row rows[] = {
      {{"B.htm"}, "b.htm", "B.htm"},          {{"B.HTM", "B.htm", "b.Htm"}, "b.htm", "B.HTM"},
      {{"B.HTM", "b.Htm"}, "b.Htm", "b.Htm"}, {{"B.HTM", "b.htm"}, "b.htm", ""},
      {{".Hidden"}, ".hidden", ".Hidden"},    {{"Sub/x.htm"}, "sub", ""},
  };
  for (const Row& row : rows) {
    files.contents = {{"/s/a.htm", "href=" + row.link + " "}};
    for (const std::string& name : row.names) files.contents["/s/" + name] = "";
    host.questions.clear();
    Run();
    EXPECT_EQ(host.questions.empty() ? "" : host.questions[0].substr(0, host.questions[0].find(':')),
              row.offered);
  }
  // The offer is a finding, though nothing of it is in the report; in the next run it is forgotten.
  for (const bool found : {true, false}) {
    files.contents = {{"/s/a.htm", found ? "href=b.htm " : "href=B.htm "}, {"/s/B.htm", ""}};
    options.UCfilename = !found;
    host.replies = {true};
    host.files.clear();
    EXPECT_EQ(Run().found, found);
    EXPECT_NE(state.Results.find("*** None ***"), std::string::npos);
    EXPECT_EQ(host.files.at(1), found ? "/s/b.htm" : "/s/B.htm");
  }
  // The user may change the option while the run goes on.
  options.ShowEach = true;
  files.contents = {{"/s/a.htm", "href=none href=/s/b.htm href=/s/b.htm "}, {"/s/b.htm", ""}};
  host.proposals.clear();
  options.UCfilename = false;
  host.on_proposal = [this] { options.UCfilename = true; };
  Run();
  EXPECT_EQ(host.proposals.size(), 1U);
}

TEST_F(HtmlCheck, SeesWhatTheRunItselfChanged) {
  options.ShowEach = true;
  files.contents = {
      {"/s/a.htm", "href=b.htm#x >"}, {"/s/b.htm", "href=none >"}, {"/s/c.htm", "href=b.htm#x >"}};
  host.answers = {{kKeep, "href=b.htm#x >"}, {kReplace, "<a name=x>"}};
  Run();
  EXPECT_EQ(host.proposals.size(), 2U);
  const std::string long_name(200, 'n');
  files.contents = {{"/s/a.htm", "href=b.htm#" + long_name + " href=c.htm#" + long_name + " href=b.htm#n "},
                    {"/s/b.htm", "<a name=" + long_name + ">"},
                    {"/s/c.htm", ""}};
  host.proposals.clear();
  Run();
  ASSERT_EQ(host.proposals.size(), 1U);
  EXPECT_EQ(host.proposals[0].ReplaceText->substr(host.proposals[0].ReplaceSelection.start, 5), "c.htm");

  // A page that its own check renames; dialogs show the end of a long path.
  const std::string folder = "/s/" + std::string(60, 'f') + "/";
  files.contents = {{folder + "A.htm", "href=none href='a.htm' href=none "}};
  host.proposals.clear();
  host.answers = {{kKeep, files.contents.begin()->second}};
  host.replies = {true};
  Run();
  ASSERT_EQ(host.proposals.size(), 2U);
  EXPECT_TRUE(host.proposals[0].FileName.ends_with("/A.htm"));
  EXPECT_EQ(host.proposals[1].FileName, "...  " + (folder + "a.htm").substr(folder.size() + 5 - 47));
}

// A file that can be opened and not be read is a finding for the link that asks for an anchor only.
TEST_F(HtmlCheck, ReadsFilesForTheirAnchorsOnly) {
  files.contents["/s/b.htm"] = "";
  files.damaged = {"/s/b.htm"};
  const std::string page = "href=b.htm#x href=b.htm ";
  EXPECT_EQ(Check(page), Error("Input/output error: /s/b.htm", page) + "\r\n");
  EXPECT_EQ(state.UnlinkedList.text(), "\r\nU /s/a.htm\r\nR /s/b.htm");
}

TEST_F(HtmlCheck, EndsOnCancel) {
  struct Row {
    int cancel_at;
    std::size_t findings;
  };
  // One call for the walk, two for the line ends, one for each pass.
  for (const Row& row : {Row{1, 0}, Row{2, 0}, Row{3, 0}, Row{4, 0}, Row{5, 1}, Row{6, 2}}) {
    ScriptHost again;
    again.cancel_at = row.cancel_at;
    files.contents = {{"/s/a.htm", "\r\n\r\nhref=x href=y "}};
    SearchRun(files, again, {}, options, state);
    std::size_t findings = 0;
    for (std::size_t at = state.Results.find("*** Error"); at != std::string::npos;
         at = state.Results.find("*** Error", at + 1))
      ++findings;
    EXPECT_EQ(findings, row.findings) << row.cancel_at;
    EXPECT_NE(state.Results.find("*** Stopped ***"), std::string::npos) << row.cancel_at;
  }
}

TEST_F(HtmlCheck, ListsExternalLinksAsAPage) {
  options.function = Function::kExternal;
  files.contents = {
      {"/s/a&<.htm", "href='http://x/?q' href='mailto:y' src=FTP://z/&amp;\"<b > href='ftp:\"'"},
      {"/s/none.htm", "href='mailto:y' href=x >"}};
  EXPECT_TRUE(Run().found);
  EXPECT_EQ(
      state.Results,
      "<HTML>\r\n<H1>External links</H1>\r\n<P>in \"/s\" and all subdirectories<hr width=\"100%\"></P>\r\n"
      "<H3>/s/a&amp;&lt;.htm</H3>\r\n<A HREF = \"http://x/\"> http://x/</A><BR>\r\n"
      "<A HREF = \"FTP://z/&amp;&quot;&lt;b\"> FTP://z/&amp;&quot;&lt;b</A><BR>\r\n"
      "<A HREF = \"ftp:&quot;\"> ftp:&quot;</A><BR>\r\n\r\n</HTML>");
  files.contents.erase("/s/a&<.htm");
  EXPECT_FALSE(Run().found);
  EXPECT_EQ(host.activities.back(), "Testing: none.htm");
  EXPECT_TRUE(state.Results.ends_with("</P>\r\n<H3>No external links found</H3>\r\n</HTML>"));
}

TEST(HexErr, KnowsTheSafeColours) {
  std::array<std::string, 3> parts;
  for (const char* safe : {"#FFCC00", "#000000", "#33669900"}) EXPECT_FALSE(HexErr(safe, 0, parts)) << safe;
  for (const char* other : {"#FFCC01", "#12345", "#FFF", "#ffcc00", "#", "#FF CC0"})
    EXPECT_TRUE(HexErr(other, 0, parts)) << other;
  EXPECT_TRUE(HexErr("x#00112", 1, parts));
  EXPECT_EQ(parts, (std::array<std::string, 3>{"00", "11", "2"}));
}

TEST_F(HtmlCheck, FindsColoursOfTheBodyTagAndBehind) {
  options.function = Function::kColours;
  struct Row {
    std::string page;
    Lines found;  // what stands at the selection
  };
  const Row rows[] = {
      {"<BODY BGCOLOR='#FFFFFF' TEXT='#000001'>", {"#000001"}},
      {"<font color=#123456><body bgcolor=#ffcc00 x='#abc'>", {"#ABC'>"}},
      {"<body> <FONT COLOR = '#FF0000'> <font color=red> <td bgcolor='#ff0001234'>", {"#ff0001"}},
      {"<body>color=#111111 color=#1111112", {"#1111112"}},  // the first byte behind the tag is passed over
      {"<body> color=#", {}},
      {"<body> color=#1", {"#1"}},
      {"<body color=#123456", {}},
      {"color=#123456>", {}},
  };
  for (const Row& row : rows) {
    host.proposals.clear();
    Check(row.page);
    Lines found;
    for (const Proposal& shown : host.proposals) {
      const auto [start, length] = shown.SearchSelection;
      found.push_back(shown.SearchText.substr(start, row.found.at(found.size()) == "#1111112" ? 8 : length));
      EXPECT_EQ(shown.ReplaceText, shown.SearchText);
    }
    EXPECT_EQ(found, row.found) << row.page;
    EXPECT_EQ(files.contents["/s/a.htm"], row.page);
  }
}

TEST_F(HtmlCheck, ReplacesColours) {
  options.function = Function::kColours;
  const std::string page = "..<body link=#1 text=#2> <font color=#3>" + std::string(200, '.');
  const std::string tag = "<BODY LINK=#1 TEXT=#2>";
  const std::string excerpt = page.substr(16, 100);
  const std::string first = "\r\n\r\n" + tag + "\r\n*** Was changed TO:\r\n...<body link=#000000 text=#2>...";
  host.answers = {{kReplace, "<body link=#000000 text=#2>"}, {kKeep, "edited"}, {kReplace, "all"}};
  const std::string after = "..<body link=#000000 text=#2> <font color=#3>" + std::string(200, '.');
  const std::string second = "\r\n\r\n*** Error:\r\n\r\n" + after.substr(21, 100);
  EXPECT_EQ(Check(page), first + second + "\r\n*** Was changed TO:\r\n...all...\r\n");
  EXPECT_EQ(files.contents["/s/a.htm"], after.substr(0, 21) + "all" + after.substr(121));
  EXPECT_EQ(host.proposals.at(1).SearchSelection.start, 24U);
  EXPECT_EQ(host.proposals.at(2).SearchSelection.start, 21U);

  host.answers = {{kKeep, tag}, {kStop, tag}};
  EXPECT_EQ(Check(page),
            "\r\n\r\n" + tag + "\r\n\r\n" + tag + "\r\n\r\n   *** Stopped ***\r\nin file /s/a.htm\r\n");
  files.unwritable = {"/s/a.htm"};
  host.answers = {{kReplace, "new"}};
  EXPECT_EQ(Check(page), "\r\n\r\n" + tag + "\r\n");
  EXPECT_EQ(host.failures, Lines{"/s/a.htm: No space left on device"});
  host.answers = {{kKeep, tag}, {kKeep, tag}, {kReplace, "new"}};
  EXPECT_EQ(Check(page),
            "\r\n\r\n" + tag + "\r\n\r\n" + tag + "\r\n\r\n*** Error:\r\n\r\n" + excerpt + "\r\n");
  EXPECT_EQ(files.contents["/s/a.htm"], page);

  // Fewer bytes in front than an excerpt shows; digits typed in lower case are tested in upper case.
  files.unwritable.clear();
  host.proposals.clear();
  host.answers = {{kReplace, "<body>"}};
  Check("<body x=#1> color=#ccffaa");
  EXPECT_EQ(host.proposals.at(1).SearchText, "<body> color=#ccffaa");
  EXPECT_EQ(host.proposals.at(1).SearchSelection.start, 13U);
  EXPECT_EQ(state.ColourParts, (std::array<std::string, 3>{"CC", "FF", "AA"}));

  // Whole characters, and the selection counted from where they begin.
  const std::string umlaut = "\xC3\xA4";
  const std::string around = umlaut + "............. color=#1" + std::string(76, '.') + umlaut;
  host.proposals.clear();
  Check("<body>" + around + "end");
  EXPECT_EQ(host.proposals.at(0).SearchText, around);
  EXPECT_EQ(host.proposals.at(0).SearchSelection.start, 22U);
  EXPECT_EQ(host.proposals.at(0).encoding, PageEncoding::kUtf8);
}

}  // namespace
}  // namespace tessaril
