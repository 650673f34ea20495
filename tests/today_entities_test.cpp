#include "engine/today_entities.h"

#include <gtest/gtest.h>

#include <random>

#include "engine/declared_encoding.h"
#include "engine/entity_check.h"
#include "tests/support/memory_files.h"
#include "tests/support/program_entities.h"
#include "tests/support/script_host.h"

namespace tessaril {
namespace {

using Lines = std::vector<std::string>;

const std::string kPath = "/site/page.htm";
const std::string kSaysUtf8 = "<meta charset=utf-8>";

class TodayEntitiesTest : public testing::Test {
 protected:
  TodayEntitiesTest() {
    options.site.emplace();
    host.wants_findings = true;
  }
  std::string Check(const std::string& page) {
    files.contents[kPath] = page;
    host.proposals.clear();
    host.findings.clear();
    RunState state;
    RunContext run{files, host, options, state, entities, {}, {}};
    EXPECT_TRUE(ErstatAlfa(kPath, run).ok());
    return files.contents[kPath];
  }
  // Column, kind, what was found, and after ">" what is proposed.
  Lines Findings() const {
    Lines lines;
    for (const FindingRecord& finding : host.findings) {
      const std::string proposal = finding.proposal ? ">" + *finding.proposal : "";
      lines.push_back(std::to_string(finding.place.column) + " " + std::string(RowOf(finding.kind).id) + " " +
                      finding.found + proposal);
    }
    return lines;
  }
  void AcceptAll() {
    host.on_proposal = [this] { host.answers = {{kReplace, *host.proposals.back().ReplaceText}}; };
  }

  MemoryFiles files;
  ScriptHost host;
  RunOptions options;
  Entities entities = ProgramEntities();
};

struct PageRow {
  std::string page;
  Lines findings;
};

TEST_F(TodayEntitiesTest, JudgesAmpersandsAsBrowsersReadThem) {
  const PageRow rows[] = {
      {"a & b, AT&T, R&D; &amp; &lt; &hearts; &NotEqualTilde; &#233; &#x1F600; &&",
       {"15 unknown-entity &D;>&amp;D;"}},
      {"<a href='?a=1&b=2&copy=3&amp;d'>&copy=3</a>", {"33 unclosed-entity &copy>&copy;"}},
      {"<a href=?a&copy title=\"&foo; &#\">",
       {"11 unclosed-entity &copy>&copy;", "24 unknown-entity &foo;>&amp;foo;",
        "30 numeric-entity &#>&amp;#"}},
      {"&eacute &#233 x&notit;",
       {"1 unclosed-entity &eacute>&eacute;", "9 unclosed-entity &#233>&#233;",
        "16 unclosed-entity &not>&not;"}},
      {"&#; &#x; &#Xg",
       {"1 numeric-entity &#;>&amp;#;", "5 numeric-entity &#x;>&amp;#x;", "10 numeric-entity &#X>&amp;#X"}},
      {"&#0;&#xD800;&#1114112;&#xFFFE;&#1;&#127;&#129;",
       {"1 numeric-entity &#0;", "5 numeric-entity &#xD800;", "13 numeric-entity &#1114112;",
        "23 numeric-entity &#xFFFE;", "31 numeric-entity &#1;", "35 numeric-entity &#127;",
        "41 numeric-entity &#129;"}},
      {"&#150;&#x80 &#142;",
       {"1 numeric-entity &#150;>&ndash;", "7 numeric-entity &#x80>&euro;",
        "13 numeric-entity &#142;>&#381;"}},
      // Neither comments nor what is no text, nor tags but for the values of their attributes.
      {"<!-- &x; --><!DOCTYPE &x;><?&x;?><script>a&x;</script><style>&x;</style></p a='&x;'>", {}},
      {"<p &x; y=1><x&y;><textarea><p a='&x;'></textarea>", {"34 unknown-entity &x;>&amp;x;"}},
      {"<p a='1' a='&x;' b='&y;'>&z;", {"21 unknown-entity &y;>&amp;y;", "26 unknown-entity &z;>&amp;z;"}},
      {"<svg><style>&x;</style><![CDATA[&y;]]></svg>", {"13 unknown-entity &x;>&amp;x;"}},
  };
  for (const PageRow& row : rows) {
    EXPECT_EQ(Check(row.page), row.page);
    EXPECT_EQ(Findings(), row.findings) << row.page;
    EXPECT_EQ(host.proposals.size(), row.findings.size()) << row.page;
  }
}

TEST_F(TodayEntitiesTest, LeavesCharactersToPagesThatSayTheirEncoding) {
  const std::string texts = "\xC3\xA9<!--\xC3\xA9--><b title='\xCF\x80' \xC3\xA9>";
  const Lines as_entities = {"1 character \xC3\xA9>&eacute;", "20 character \xCF\x80>&#960;"};
  const PageRow rows[] = {
      {texts, as_entities},
      {texts + kSaysUtf8, {}},
      {"\xEF\xBB\xBF" + texts, {}},
      {"\xE9<p a=\xE8>", {"1 character \xE9>&eacute;", "7 character \xE8>&egrave;"}},
      {"<meta charset=euc-kr>\xB0\xA1 &nosuch;", {"25 unknown-entity &nosuch;>&amp;nosuch;"}},
      {"\xE9" + kSaysUtf8, {"1 character \xE9>&eacute;"}},
      {"\xC2\x96\xC2\x81", {"1 character \xC2\x96", "2 character \xC2\x81>&#129;"}},  // "&#150;" is a dash
  };
  for (const PageRow& row : rows) {
    Check(row.page);
    EXPECT_EQ(Findings(), row.findings) << row.page;
  }
  options.site->rules.ascii_entities = true;
  for (const std::string around : {"", "\xEF\xBB\xBF"}) {
    Check(around + texts + kSaysUtf8);
    EXPECT_EQ(Findings(), as_entities);
  }
  options.site.reset();
  Check("&#960;&hearts;&x\xC3\xA9;");
  EXPECT_EQ(Findings(), (Lines{"1 numeric-entity &#960;", "7 doubtful-entity &hearts;",
                               "15 ampersand &>&amp;", "17 character \xC3\xA9>&eacute;"}));
}

TEST(DeclaredEncoding, IsLookedForAsBrowsersDo) {
  const std::string content = "<META HTTP-EQUIV='Content-Type' CONTENT='text/html; ";
  struct Row {
    std::string page;
    DeclaredEncoding declared;
  };
  using enum DeclaredEncoding;
  const Row rows[] = {
      {"charset=utf-8", kNone},
      {"<!-- <meta charset=utf-8> -->", kNone},
      {"<meta name=x content='charset=utf-8'>", kNone},
      {"<meta charset=' UTF8 '>", kUtf8},
      {"<meta charset=utf-16>", kUtf8},
      {"<meta charset=euc-kr>", kOther},
      {"<meta charset=latin1><meta charset=utf-8>", kEightBit},
      {content + "charset = utf-8;x'>", kUtf8},
      {content + "charset utf-8; charset=\"utf-8\"'>", kUtf8},
      {content + "charset=utf-8x'>", kOther},
      {content + "charset='>", kNone},
      {"<meta content='charset=latin1'><meta charset=utf-8>", kUtf8},
      {"<?xml version='1.0' encoding='UTF-8'?><p>", kUtf8},
      {"<?xml version='1.0'?><p encoding='UTF-8'>", kNone},
      {"<?xml encoding='UTF-8'?>" + content + "charset=latin1'>", kEightBit},
      {std::string(1024 - kSaysUtf8.size(), ' ') + kSaysUtf8, kUtf8},
      {std::string(1025 - kSaysUtf8.size(), ' ') + kSaysUtf8, kNone},
  };
  for (const Row& row : rows) EXPECT_EQ(DeclaredEncodingOf(row.page), row.declared) << row.page;
}

TEST_F(TodayEntitiesTest, GoesOnInTheChangedPage) {
  struct Row {
    std::string page;
    std::deque<std::string> fields;  // as the user left them
    std::string result;
    std::size_t proposals;
  };
  const Row rows[] = {
      {"&x;&y;", {"&amp;x;&y;", "&amp;x;&amp;y;"}, "&amp;x;&amp;y;", 2},
      {"&#x0000096;&y;", {"&ndash;&y;", "&ndash;&amp;y;"}, "&ndash;&amp;y;", 2},
      {"&x;&y;", {"<!--&y;"}, "<!--&y;", 1},
      {"<!--&x;-->&y;&z;", {"-->&y;&z;"}, "-->&y;&z;", 2},
      {"&x;&y;", {"-&y;", "--"}, "--", 2},
      {"ahead &x; &y;", {"a &x; &y;", "a &x; &amp;y;"}, "a &x; &amp;y;", 2},
      {"&x; y", {"&x;<p a=&y;>"}, "&x;<p a=&y;>", 2},
      {"<p a=&x;>&y;", {"<p a=b>&y;", "<p a=b>"}, "<p a=b>", 2},
  };
  for (const Row& row : rows) {
    host.answers.clear();
    for (const std::string& field : row.fields) host.answers.push_back({kReplace, field});
    EXPECT_EQ(Check(row.page), row.result) << row.page;
    EXPECT_EQ(host.proposals.size(), row.proposals) << row.page;
  }
}

// What is proposed can be accepted in one go as well as place by place.
TEST_F(TodayEntitiesTest, KeepsItsPlacesWhileProposalsAreAccepted) {
  std::mt19937 random(11);
  const std::string_view pieces[] = {"&x;",      "&#x00000000096;", "&copy", "&#",   "<p a='",
                                     "'>",       "\xC3\xA9",        "<!--",  "-->",  " ",
                                     "<script>", "</script>",       "\r\n",  "&amp;"};
  AcceptAll();
  host.unasked = true;
  for (int round = 0; round < 200; ++round) {
    std::string page;
    while (page.size() < 400) page += pieces[random() % std::size(pieces)];
    ByteBuffer buffer;
    buffer.Reserve(page.size());
    page.copy(buffer.data(), page.size());
    buffer.SetSize(page.size());
    PageText text(buffer);
    TodayEntities rules(entities, false);
    std::vector<EntityVerdict> verdicts;
    for (std::size_t from = 0; const auto verdict = rules.Next(text, from);) {
      verdicts.push_back(*verdict);
      from = rules.GoOn(*verdict, EntityRules::Outcome::kKept, verdict->place + verdict->length);
    }
    std::string expected = page;
    for (auto verdict = verdicts.rbegin(); verdict != verdicts.rend(); ++verdict) {
      expected.replace(verdict->place, verdict->length, verdict->proposed);
    }
    ASSERT_EQ(Check(page), expected) << page;
    ASSERT_EQ(host.proposals.size(), verdicts.size());
    Check(expected);
    ASSERT_TRUE(host.proposals.empty()) << expected;
  }
}

}  // namespace
}  // namespace tessaril
