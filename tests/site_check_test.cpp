#include "engine/site_check.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "engine/search_run.h"
#include "engine/site_patterns.h"
#include "tests/support/memory_files.h"
#include "tests/support/script_host.h"

namespace tessaril {
namespace {

using Lines = std::vector<std::string>;

// A site in memory, judged by today's rules.
class SiteTest : public testing::Test {
 protected:
  SiteTest() {
    options_.function = Function::kLinks;
    options_.dirList = "/site";
    options_.ShowEach = false;
    options_.site = Site{"/site", {}};
    host_.wants_findings = true;
    files_.contents["/site/index.html"] = "";
  }

  void Put(const std::string& name, const std::string& content) {
    files_.contents["/site/" + name] = content;
  }

  // The findings of a run: "file:line:column kind found -> proposal".
  Lines Run() {
    host_.findings.clear();
    (void)SearchRun(files_, host_, Entities(), options_, state_);
    if (!options_.ShowEach && !options_.AcceptCertain && !state_.StopRequested) {
      // Where nobody wants more than the report, it is the same.
      RunState state;
      host_.wants_findings = false;
      (void)SearchRun(files_, host_, Entities(), options_, state);
      host_.wants_findings = true;
      EXPECT_EQ(state.Results, state_.Results);
    }
    Lines lines;
    for (const FindingRecord& record : host_.findings) {
      lines.push_back(record.file.substr(6) + ":" + std::to_string(record.place.line) + ":" +
                      std::to_string(record.place.column) + " " + std::string(RowOf(record.kind).id) + " " +
                      record.found + (record.proposal ? " -> " + *record.proposal : ""));
    }
    return lines;
  }

  // What is found on the one page "p.html" of a site, without its name.
  Lines FindOn(const std::string& page) {
    Put("p.html", page);
    Lines lines = Run();
    for (std::string& line : lines) line.erase(0, line.starts_with("p.html:") ? 7 : 0);
    return lines;
  }

  std::string End(const std::string& title) {
    const std::size_t begin = state_.Results.find(title);
    return begin == std::string::npos ? "" : state_.Results.substr(begin + title.size());
  }

  MemoryFiles files_;
  ScriptHost host_;
  RunOptions options_;
  RunState state_;
};

TEST_F(SiteTest, FindsLinksWhereABrowserDoes) {
  struct Row {
    std::string page;
    Lines dead;  // the links that are found, none of which leads to a file
  };
  const Row rows[] = {
      {"<a href=a><A HREF='b'><area href = \"c\"><link href=d/>", {"a", "b", "c", "d/"}},
      {"text href=\"no\" <!-- <a href=no> --><p href=no><script>'<a href=no>'</script><img src=a>", {"a"}},
      {"<textarea><a href=no></textarea><title><a href=no></title><a href=a>", {"a"}},
      {"<iframe src=a><a href=no></iframe><noscript><img src=b></noscript>", {"a", "b"}},
      {"<script><!-- <script> </script> '<a href=no>' --></script><img src=a>", {"a"}},
      {"<a href=a href=no><a title='>' href=b><a\nhref\n=\nc\n>", {"a", "b", "c"}},
      {"<a href=\"x&amp;y\"><a href='&#97;&eacute'>", {"x&amp;y", "&#97;&eacute"}},
      {"<img srcset='a 1x, b 2x,c' src=\" d \"><link imagesrcset=e,f>", {"a", "b", "c", "d", "e,f"}},
      {"<img srcset='a ((1x, no), b ( 2x, no) ,,c,, d 3x'>", {"a", "b", "c", "d"}},
      {"<video poster=a><object data=b></object><form action=c><button formaction=d>", {"a", "b", "c", "d"}},
      {"<q cite=a><td background=b><img longdesc=c><html manifest=d>", {"a", "b", "c", "d"}},
      {"<meta http-equiv=Refresh content=\"0; URL='a'\"><meta http-equiv=refresh content=\"1;b\">"
       "<meta http-equiv=refresh content=x><meta content='0;url=no'>",
       {"a", "b"}},
      {"<style>/* url(no) */ @import \"a\"; x{y:url( b ) url('c')} @namespace url(no); z{w:url(no "
       "no)}</style>",
       {"a", "b", "c"}},
      {"<p style='a:url(&quot;b&quot;)'><p style=\"x:URL(c\\2e d)\"><p style='behavior:url(no)'><p "
       "style='a:url&#40;e&rpar;'>",
       {"b", "c\\2e d", "e"}},
      {"<svg><use xlink:href=a></use><image href=b /><style>x{y:url(c)}</style><script/></svg><img src=d>",
       {"a", "b", "c", "d"}},
      {"<svg><p><style>/*</style><img src=a>", {"a"}},  // the paragraph ends the picture
      {"<a href=http://x/no><a href=//x/no><a href=mailto:no><a href=JavaScript:no><a href='data:,no'>", {}},
      {"<a href=\"\"><a href=?q><a href=#><a href='p.html?q#'>", {}},
      {"<template><a href=no><style>x{y:url(no)}</style></template><template shadowrootmode=open><img src=a>",
       {"a"}},
      {"<link rel=canonical href=no><link rel=next href=a><input src=no><input type=Image src=b>",
       {"a", "b"}},
      {"<meta http-equiv=refresh content='0;url=&quot;a&quot;'>", {"a"}},
      {"<a href=a", {}},
      {"<a href='a><p>", {}},
  };
  for (const Row& row : rows) {
    Lines found;
    for (const std::string& line : FindOn(row.page)) {
      EXPECT_NE(line.find("missing-file"), std::string::npos) << line;
      found.push_back(line.substr(line.find("missing-file ") + 13));
    }
    EXPECT_EQ(found, row.dead) << row.page;
  }
}

TEST_F(SiteTest, FindsLinksOfXmlAsABrowserDoes) {
  options_.cboSearchSpec = "*.html;*.xhtml";
  Put("p.xhtml",
      "<?xml-stylesheet title='href' href = 'a&amp;b'?><?php '>' href='no'?><script><a href='b'/></script>"
      "<style>x{y:url(c&amp;d)}<![CDATA[@import 'e&amp;f';]]> @import &quot;g&quot;</style>");
  Lines dead;
  for (const std::string& line : Run()) dead.push_back(line.substr(line.find("missing-file ") + 13));
  EXPECT_EQ(dead, (Lines{"a&amp;b", "b", "c&amp;d", "e&amp;f", "g"}));
}

TEST_F(SiteTest, FollowsPathsAsTheURLStandardDoes) {
  for (const char* name : {"sub/a b.html", "sub/index.html", "sub/deep/x.html", "100%.html", "Case.html",
                           "caf\xC3\xA9.html", "empty/x.txt", "two.html", "TWO.html", "only/here.html"}) {
    Put(name, "");
  }
  struct Row {
    std::string link;
    std::string finding;  // empty: in order
  };
  const Row rows[] = {
      {"sub/a%20b.html", ""},
      {"/sub/a b.html?x", ""},
      {"./sub/../sub//deep/x.html", ""},
      {"sub\\deep\\x.html", ""},
      {"%73ub/%2e%2e/sub/", ""},
      {" sub/de\nep/x.html ", ""},
      {"100%25.html", ""},
      {"100%.html", ""},
      {"sub", ""},
      {"sub/", ""},
      {"caf%C3%A9.html", ""},
      {"sub%2Findex.html", "missing-file"},
      {"sub/deep/x.html/", "missing-file"},
      {"empty/", "no-index-file"},
      {"../p.html", "leaves-site -> p.html"},
      {"/../../nothing", "leaves-site"},
      {"file:///site/p.html", "file-link"},
      {"case.html#x", "letter-case -> Case.html#x"},
      {"/SUB/A%20B.html", "letter-case -> /sub/a%20b.html"},
      {"Two.html", "letter-case -> TWO.html"},
      {"here.html#x", "missing-file -> only/here.html#x"},
      {"/here.html", "missing-file -> /only/here.html"},
      {"sub/indxe.html", "missing-file -> sub/index.html"},
      {"sub/index.htm", "missing-file -> sub/index.html"},
      {"sub/index.txt", "missing-file"},
      {"cgi-bin/x", ""},
      {"sub//../index.html", ""},  // the empty name goes
      {"only/HERE.html", "letter-case -> only/here.html"},
  };
  for (const Row& row : rows) {
    const Lines found = FindOn("<a href=\"" + row.link + "\">");
    const std::string expected =
        row.finding.empty()
            ? ""
            : row.finding.substr(0, row.finding.find(" ->")) + " " + row.link +
                  (row.finding.find("->") == std::string::npos ? ""
                                                               : row.finding.substr(row.finding.find(" ->")));
    EXPECT_EQ(found, row.finding.empty() ? Lines() : Lines{"1:10 " + expected}) << row.link;
  }
  EXPECT_EQ(FindOn("<base href=sub/><a href=deep/x.html><a href='#x'><base href=no/>"),
            Lines{"1:46 missing-anchor #x"});
  EXPECT_EQ(FindOn("<base href=http://x/><a href=no><a href='#no'>"), Lines());
  EXPECT_EQ(FindOn("<a href='caf\xE9.html'>\xFF"), Lines());  // a browser asks for it in UTF-8
  EXPECT_EQ(FindOn("<meta charset=euc-kr><a href='\xB0\xA1.html'><a href=no>"),
            Lines{"1:48 missing-file no"});
  EXPECT_EQ(FindOn("<a href='a&amp;b/CASE.html'>"), Lines{"1:10 missing-file a&amp;b/CASE.html"});
}

TEST_F(SiteTest, TakesNamesOfFoldersAsTheyAre) {
  for (const std::string folder : {"a%41", "a\\b", "a?b", "a#b", "a b", "a&amp;"}) {
    Put(folder + "/x.html", "");
    Put(folder + "/p.html", "<a href=x.html><a href='../" + folder.substr(0, 1) + "'><a href='y/../x.html'>");
  }
  const Lines found = Run();
  EXPECT_EQ(found.size(), 6u);
  for (const std::string& line : found) EXPECT_NE(line.find("missing-file ../a"), std::string::npos) << line;
}

TEST_F(SiteTest, SaysOfAFolderThatCannotBeListedWhatTheSystemDoes) {
  Put("shut/a.html", "<p id=x>");
  Put("shut/index.html", "");
  Put("shut/closed.html", "");
  files_.unreadable = {"/site/shut", "/site/shut/closed.html"};
  const std::string links =
      "<a href=shut/a.html#y><a href=shut/><a href=shut><a href=shut/closed.html><a href=shut/no>";
  EXPECT_EQ(FindOn(links), (Lines{"1:58 missing-file shut/closed.html", "1:83 missing-file shut/no"}));
  EXPECT_EQ(host_.findings[0].message.find("Permission denied: /site/shut/closed.html"), 0u);
  files_.unreadable.insert("/site/shut/index.html");
  EXPECT_EQ(FindOn("<a href=shut/>"), Lines{"1:9 missing-file shut/"});
  EXPECT_EQ(host_.findings[0].message, "Permission denied: /site/shut");
}

TEST_F(SiteTest, KeepsLinesOfTheReportWhole) {
  EXPECT_EQ(FindOn("<a href='a%0D%0Ab'><a href='#c%00\n'><a id='d\n'><a id='d\n'>").size(), 3u);
  for (const FindingRecord& finding : host_.findings) {
    for (const char c : finding.message) EXPECT_GE(static_cast<unsigned char>(c), ' ') << finding.message;
  }
  EXPECT_EQ(End("Missing targets:").find("\r\n     1  /a%0D%0Ab\r\n     1  /p.html#c%00\r\n"), 0u)
      << End("Missing targets:");
}

TEST_F(SiteTest, ReadsPagesInTheirEncodings) {
  Put("caf\xC3\xA9.html", "");
  Put("utf16.html", std::string("\xFF\xFE<\0p\0", 6));
  Put("cyrillic.html", "<meta charset=windows-1251><p id=\xE8>");
  // A page that says so is UTF-8, whatever else is on it.
  EXPECT_EQ(FindOn("<meta charset=utf-8>\xE9<a href=caf\xC3\xA9.html><a href='#%C3%A9'><p id=\xC3\xA9>"),
            Lines());
  EXPECT_EQ(FindOn("<a href=utf16.html#x><a href=cyrillic.html#%D0%B8><a href=cyrillic.html#x>"), Lines());
}

TEST_F(SiteTest, ProposesLinksThatHoldWhereTheyStand) {
  Put("d/one (1).png", "");
  Put("d/Two(2).png", "");
  Put("d/\xE4"
      "B.html",
      "");
  Put("d/a'b.html", "");
  Put("Up/Folder/index.html", "");
  for (const char* name : {"a:b.html", "d/two.html", "Up/two.html"}) Put(name, "");
  struct Row {
    std::string page;
    std::string proposal;
  };
  const Row rows[] = {
      {"<style>a{b:url(d/two%282%29.png)}</style>", "d/Two%282%29.png"},
      {"<style>a{b:url(two%282%29.png)}</style>", ""},
      {"<style>a{b:url(Two%282%29.png)}</style>", "d/Two%282%29.png"},
      {"<p style=\"a:url(D/one\\ \\(1\\).png)\">", "d/one%20%281%29.png"},
      {"<a href='d/%E4b.html'>", "d/%E4B.html"},
      {"<a href=\"a'b.html?x&amp;y#z\">", "d/a%27b.html?x&amp;y#z"},
      {"<a href='up/folder/?q'>", "Up/Folder/?q"},
      {"<base href=d/><a href='../D/two(2).png'>", "../d/Two(2).png"},
      {"<base href=d/><a href='one%20(1).PNG'>", "one%20(1).png"},
      {"<base href=Up/><a href='a%27b.html'>", "../d/a%27b.html"},
      {"<base href=D/><a href='one%20(1).png'>", "../d/one%20%281%29.png"},
      {"<a href='x/a:b.html'>", "./a:b.html"},
      {"<a href=two.html>", ""},  // there are two
      {"<base href=up/folder/><a href=''>", "../../Up/Folder"},
      {"<base href=up/folder/><a href>", ""},  // nothing can be put there
  };
  for (const Row& row : rows) {
    const Lines found = FindOn(row.page);
    ASSERT_EQ(found.size(), 1u) << row.page;
    const std::size_t arrow = found[0].find(" -> ");
    EXPECT_EQ(arrow == std::string::npos ? "" : found[0].substr(arrow + 4), row.proposal) << row.page;
  }
}

TEST_F(SiteTest, FindsAnchorsExactly) {
  Put("t.html", "<p id=one><a name='Two'><p name=no><map name=m><a id=three name=three><p ID='f&ouml;r'>");
  Put("notes.txt", "");
  Put("p.svg", "<svg/>");
  struct Row {
    std::string page;
    Lines findings;
  };
  const Row rows[] = {
      {"<a href='t.html#one'><a href='t.html#Two'><a href='t.html#f%C3%B6r'><a href=t.html#TOP>", {}},
      {"<a href='t.html#%74op'><a href='p.svg#svgView(1)'><a href=p.svg#x>", {"1:59 missing-anchor p.svg#x"}},
      {"<p id=two><a href='#tow'>", {"1:20 missing-anchor #tow -> #two"}},
      {"<p id=ab1><p id=ab2><a href='#ab3'>", {"1:30 missing-anchor #ab3"}},
      {"<a href='t.html#:~:text=x'><a href='notes.txt#x'><a href=t.html#three>", {}},
      {"<a href='t.html#One'>", {"1:10 missing-anchor t.html#One -> t.html#one"}},
      {"<a href='t.html#no'>\r\n<a href='t.html?x#thre'>",
       {"1:10 missing-anchor t.html#no", "2:10 missing-anchor t.html?x#thre -> t.html?x#three"}},
      {"<img usemap=#m><map name=M>", {"1:13 missing-anchor #m"}},
      {"<img usemap='#m'><map name=m><a href='#m'>", {"1:39 missing-anchor #m"}},
      {"<img usemap='x#m'><map id=m></map><a href='#m'>", {}},
      {"<p id=y><template><p id=y><p id=z></template><a href='#z'>", {"1:55 missing-anchor #z -> #y"}},
      {"<base href=/t.html><svg><g id=g style='a:url(#g)'/></svg><a href='#g'>", {"1:67 missing-anchor #g"}},
      {"<p id=a><p id=b><a name=a><p id=A><!--<p id=b>--><noscript><p id=b></noscript>",
       {"1:25 anchor-twice a"}},
  };
  for (const Row& row : rows) EXPECT_EQ(FindOn(row.page), row.findings) << row.page;
}

TEST_F(SiteTest, FollowsTheSitesRules) {
  Put("style.css", "a{b:url(no.png)}");
  Put("old/x.html", "<a href=dead>");
  Put("Up.html", "");
  Put("p.html", "<a href=made/x><a href=skip/deep/y><a href=Up.html><a href=cgi-bin/no>");
  EXPECT_EQ(Run(), (Lines{"old/x.html:1:9 missing-file dead", "p.html:1:9 missing-file made/x",
                          "p.html:1:24 missing-file skip/deep/y", "style.css:1:9 missing-file no.png"}));
  SiteRules& rules = options_.site->rules;
  rules.ignore_files = {"/old/", "*.css"};
  rules.ignore_links = {"skip/**"};
  rules.allow_missing = {"made/*"};
  rules.lowercase_names = true;
  options_.CGIname = "";
  EXPECT_EQ(Run(), (Lines{"p.html:1:44 upper-case-link Up.html", "p.html:1:60 missing-file cgi-bin/no"}));
  EXPECT_EQ(FindOn("<a href=Up.html#x><a href=Gone.html>"),
            (Lines{"1:9 upper-case-link Up.html#x", "1:9 missing-anchor Up.html#x",
                   "1:27 missing-file Gone.html"}));
  // Where an ignored page leads nothing leads, whether the page is read or not.
  Put("lone.html", "");
  Put("old/y.html", "<p id=y><a href=/lone.html>");
  Put("index.html", "<a href=old/y.html#y>");
  (void)Run();
  EXPECT_NE(End("Unlinked files:").find("/site/lone.html"), std::string::npos);
  rules.index = {"Up.html"};
  EXPECT_EQ(FindOn("<a href=/><a href=old>"), Lines{"1:19 no-index-file old"});
}

TEST_F(SiteTest, SeesEachPageFromItsFolderAndAsItIsNow) {
  Put("a/x.html", "<a href=y.html><a href=/p.html#x>");
  Put("a/y.html", "");
  Put("b/x.html", "<a href=y.html>");
  Put("p.html", "<p id=x><a href=dead1>");
  host_.on_file = [this](const std::string& path) {
    // It was read already, for its anchor.
    if (path == "/site/p.html" && files_.writes.empty()) {
      ByteBuffer old;
      FileStamp stamp;
      const std::string_view page = "<p id=x><a href=index.html><a href=dead2>";
      ASSERT_TRUE(files_.Read(path, old, stamp).ok());
      ASSERT_TRUE(files_.ReplaceContent(path, stamp, {&page, 1}).ok());
    }
  };
  host_.wants_findings = true;
  EXPECT_EQ(Run(),
            (Lines{"b/x.html:1:9 missing-file y.html -> ../a/y.html", "p.html:1:36 missing-file dead2"}));
}

TEST_F(SiteTest, VisitsPagesOfAllKinds) {
  for (const char* name : {"a.xhtml", "b.xht", "c.shtml", "d.css", "e.txt", "f.svg"}) {
    Put(name, "<script/><a href='dead'/>x{y:url(dead)}");
  }
  EXPECT_EQ(Run().size(), 3u);  // in HTML the script goes on
  options_.cboSearchSpec = "*.htm";
  EXPECT_EQ(Run(), Lines{"d.css:1:34 missing-file dead"});
  options_.cboSearchSpec = "*";
  host_.replies = {true, true};
  EXPECT_EQ(Run().size(), 4u);
}

TEST_F(SiteTest, StopsAndIsCancelledWithoutFurtherAdo) {
  options_.ShowEach = true;
  Put("a.html", "<a href=x><a href=y>");
  Put("b.html", "<a href=z>");
  host_.answers = {{kStop, "edited in vain"}};
  EXPECT_EQ(Run(), Lines{"a.html:1:9 missing-file x"});
  EXPECT_EQ(files_.writes, Lines());
  EXPECT_EQ(End("*** Stopped ***"), "\r\nin file /site/a.html\r\n");
  options_.ShowEach = false;
  for (host_.cancel_at = 1; host_.cancel_at < 12; ++host_.cancel_at) {
    (void)Run();
    EXPECT_NE(End("*** Stopped ***"), "") << host_.cancel_at;
    EXPECT_EQ(state_.Results.find("Unlinked"), std::string::npos);
  }
}

TEST(SitePatterns, StayWithinNamesOrCrossFolders) {
  struct Row {
    std::string pattern;
    std::string path;
    bool matches;
  };
  const Row rows[] = {
      {"*.bak", "a/b.bak", true},
      {"*.bak", "a.bak/b", false},
      {"/*.bak", "a/b.bak", false},
      {"/*.bak", "b.bak", true},
      {"a/*.html", "a/b.html", true},
      {"a/*.html", "a/b/c.html", false},
      {"a/**", "a/b/c", true},
      {"a/", "a/b/c", true},
      {"a/**", "ab/c", false},
      {"**/x.html", "x.html", true},
      {"**/x.html", "a/b/x.html", true},
      {"**/x.html", "ax.html", false},
      {"a/**/x", "a/x", true},
      {"a/**/x", "a/b/c/x", true},
      {"a/**/x", "a/bx", false},
      {"a**/x", "a/x", true},
      {"a**/x", "abx", false},
      {"a?c",
       "a\xC3\xA9"
       "c",
       true},
      {"a?b", "a/b", false},
      {"*??", "\xE2\x82\xAC", false},
      {"**??", "\xE2\x82\xAC", false},
      {"**b*c", "a/b/xc", false},
      {"**b**c", "a/b/xc", true},
      {"*a*b", "xaxab", true},
      {"A", "a", false},
      {"**a*c/b", "a/ac/bac/b", true},
      {"**a/b*c", "a/ba/bxc", true},
      // Decided in one pass, however long a path is.
      {"**a*b", std::string(1 << 21, 'a'), false},
      {"**a*b*c/d", std::string(1 << 21, 'a') + "/d", false},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(SitePatterns(std::vector<std::string>{row.pattern}).Match(row.path), row.matches)
        << row.pattern << " " << row.path.substr(0, 20);
  }
}

TEST_F(SiteTest, EndsTheReportWithWhatIsMissingAndUnlinked) {
  Put("index.html", "<a href=a.html><a href=a.html#x><link href=s.css>");
  Put("a.html", "<a href=gone><a href=/gone><a href=b/gone><a href=a.html>");
  Put("s.css", "x{y:url(pic.png)}");
  Put("pic.png", "");
  Put("robots.txt", "");
  Put("lone.html", "<a href=lone.html><a href=island.html>");
  Put("island.html", "<a href=lone2.html>");
  Put("lone2.html", "");
  Put("other.zip", "");
  Put("b/lost.html", "");
  Put("tessaril.toml", "");
  (void)Run();
  EXPECT_EQ(
      End("Missing targets:"),
      "\r\n     2  /gone\r\n     1  /a.html#x\r\n     1  /b/gone\r\n\r\n" + std::string(50, '=') +
          "\r\nUnlinked files:\r\n     /site/b/lost.html\r\n     /site/lone.html\r\n     /site/other.zip");
  EXPECT_NE(state_.Results.find("*** Error:     No such file or directory: /site/gone, line 1, column 9\r\n"
                                "...in link:\r\n\r\n<a href=gone><a href=/gone>"),
            std::string::npos);
  options_.site->rules.start = {"index.html"};
  (void)Run();
  EXPECT_EQ(End("Unlinked files:"),
            "\r\n     /site/b/lost.html\r\n     /site/island.html\r\n     /site/lone.html\r\n     "
            "/site/lone2.html\r\n     /site/other.zip");
  // A part of the site: whatever leads there from outside counts.
  options_.site->rules.start.clear();
  options_.dirList = "/site/b";
  Put("p.html", "<a href=b/lost.html>");
  (void)Run();
  EXPECT_EQ(End("Unlinked files:"), "");
  options_.dirList = "/site";
  options_.MarkedOnly = true;
  options_.filList = "a.html";
  (void)Run();
  EXPECT_EQ(End("Missing targets:"), "\r\n     2  /gone\r\n     1  /b/gone");
  EXPECT_EQ(state_.Results.find("Unlinked"), std::string::npos);
}

TEST_F(SiteTest, PutsProposalsInPlace) {
  options_.ShowEach = true;
  Put("Right.html", "");
  Put("p.html", "<a href=\"right.html\">A</a>\n<a href=\"RIGHT.html\">B</a> <a href=\"none\">C</a>");
  const auto keep = [](const std::string& field) { return ProposalAnswer{kKeep, field}; };
  host_.answers = {
      {kReplace, "<a href=\"Right.html\">A</a>\n<a href=\"RIGHT.html\">B</a> <a href=\"none\">C</a>"},
      keep("edited in vain"),
      {kReplace, "html\">B</a> <a href=\"index.html\">C</a> <a href=\"lost\">"},
      keep(""),
      keep("")};
  EXPECT_EQ(Run(), (Lines{"p.html:1:10 letter-case right.html -> Right.html",
                          "p.html:2:10 letter-case RIGHT.html -> Right.html", "p.html:2:37 missing-file none",
                          "p.html:2:64 missing-file lost"}));
  EXPECT_EQ(files_.contents["/site/p.html"],
            "<a href=\"Right.html\">A</a>\n<a href=\"RIGHT.html\">B</a> <a href=\"index.html\">C</a> <a "
            "href=\"lost\">");
  const Proposal& first = host_.proposals.front();
  EXPECT_EQ(first.SearchText, "Differs in letter case: /site/Right.html, line 1, column 10");
  EXPECT_EQ(first.ReplaceSelection, (Selection{9, 10}));
  EXPECT_EQ(state_.Results.find("in vain"), std::string::npos);
  // A link that was mended is looked at again.
  host_.answers.clear();
  Put("p.html", "<a href=right.html#x>");
  host_.takes_proposals = true;
  EXPECT_EQ(Run(), (Lines{"p.html:1:9 letter-case right.html#x -> Right.html#x",
                          "p.html:1:9 missing-anchor Right.html#x"}));
  Put("p.html", "<a href=\"none\">C</a> <a href=\"lost\">");
  host_.answers = {{kReplace, "<a href=\"index.html\">C</a> <a href=\"lost\">"}};
  (void)Run();
  EXPECT_NE(End("Missing targets:").find("/lost"), std::string::npos);
  EXPECT_EQ(End("Missing targets:").find("/none"), std::string::npos);  // mended
}

TEST_F(SiteTest, AsksAgainOnlyFromTheFirstChangedByteOn) {
  const struct {
    std::string edited;  // when the second link is shown
    Lines found;
    std::string missing;
  } rows[] = {
      {"<a href=g1><a href=h2>", {"1:9 g1", "1:20 g2", "1:20 h2"}, "1  /g1\r\n     1  /h2"},
      {"<a href=g1><a href=g2><a href=h>",
       {"1:9 g1", "1:20 g2", "1:20 g2", "1:31 h"},
       "1  /g1\r\n     1  /g2\r\n     1  /h"},
      {"<a href=g1x><a href=index.html>", {"1:9 g1", "1:20 g2", "1:9 g1x"}, "1  /g1\r\n     1  /g1x"},
  };
  options_.ShowEach = true;
  for (const auto& row : rows) {
    const ProposalAnswer keep{kKeep, ""};
    host_.answers = {keep, {kReplace, row.edited}, keep, keep};
    Lines found = FindOn("<a href=g1><a href=g2>");
    for (std::string& line : found) line.erase(line.find(' '), line.rfind(' ') - line.find(' '));
    EXPECT_EQ(found, row.found);
    EXPECT_EQ(End("Missing targets:\r\n     ").find(row.missing + "\r\n\r\n"), 0u) << row.edited;
  }
}

TEST_F(SiteTest, AcceptsUnseenOnlyWhatIsCertain) {
  options_.AcceptCertain = true;
  host_.unasked = true;
  host_.takes_proposals = true;
  Put("Right.html", "<p id=x>");
  Put("two.html", "");
  Put("TWO.html", "");
  Put("p.html", "<a href='right.html#x'><a href=RIGHT.HTML#y><a href=Two.html><a href=riht.html>");
  EXPECT_EQ(Run(), (Lines{"p.html:1:10 letter-case right.html#x -> Right.html#x",
                          "p.html:1:32 letter-case RIGHT.HTML#y -> Right.html#y",
                          "p.html:1:32 missing-anchor Right.html#y -> Right.html#x",
                          "p.html:1:53 letter-case Two.html -> TWO.html",
                          "p.html:1:70 missing-file riht.html -> Right.html"}));
  EXPECT_EQ(files_.contents["/site/p.html"],
            "<a href='Right.html#x'><a href=Right.html#y><a href=Two.html><a href=riht.html>");
  EXPECT_EQ(files_.writes, Lines{"/site/p.html"});
  // The page may become shorter.
  Put("p.html", "<a href='%72%69ght.html'><a href=none><a href=%72ight.html><a href=gone>");
  EXPECT_EQ(Run(),
            (Lines{"p.html:1:10 letter-case %72%69ght.html -> R%69ght.html", "p.html:1:32 missing-file none",
                   "p.html:1:45 letter-case %72ight.html -> Right.html", "p.html:1:64 missing-file gone"}));
  EXPECT_EQ(files_.contents["/site/p.html"],
            "<a href='R%69ght.html'><a href=none><a href=Right.html><a href=gone>");
  // What cannot be written is not told as changed.
  Put("p.html", "<a href=right.html><a href=RIGHT.html>");
  files_.unwritable.insert("/site/p.html");
  EXPECT_EQ(Run().size(), 2u);
  EXPECT_EQ(state_.Results.find("changed"), std::string::npos);
  EXPECT_EQ(host_.failures.size(), 1u);
}

}  // namespace
}  // namespace tessaril
