#include "engine/text_search.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/memory_files.h"
#include "tests/support/script_host.h"

namespace tessaril {
namespace {

class TextSearch : public testing::Test {
 protected:
  TextSearch() {
    options.MarkedOnly = true;
    options.ShowEach = false;
  }

  // Runs over one page and gives what it holds afterwards.
  std::string Replace(const std::string& S, const std::string& R, const std::string& page) {
    options.function = Function::kReplace;
    return Work(S, R, page);
  }
  std::size_t CountFound(const std::string& S, const std::string& page) {
    options.function = Function::kSearch;
    Work(S, "", page);
    std::size_t count = 0;
    for (std::size_t at = 0; (at = state.Results.find("*** Found:", at)) != std::string::npos; ++at) ++count;
    return count;
  }
  std::string Work(const std::string& S, const std::string& R, const std::string& page) {
    state = {};
    files.contents["/p.htm"] = page;
    RunContext run{files, host, options, state, entities, {}, {}};
    status = Erstat(S, R, "/p.htm", run);
    return files.contents["/p.htm"];
  }

  MemoryFiles files;
  ScriptHost host;
  RunOptions options;
  RunState state;
  const Entities entities;
  Status status;
};

TEST_F(TextSearch, FindsAndReplaces) {
  EXPECT_EQ(CountFound("a", "aaa"), 3U);
  EXPECT_EQ(CountFound("aa", "aaaa"), 3U);  // overlapping
  EXPECT_EQ(CountFound("Foo", "foo FOO"), 2U);
  EXPECT_EQ(CountFound("Foo bar", "foo bar"), 0U);  // a phrase is exact in case
  EXPECT_EQ(CountFound("", "abc"), 0U);
  EXPECT_EQ(CountFound("\xC3\x89", "\xC3\xA9"), 0U);  // only A to Z are folded
  EXPECT_EQ(Replace("a", "", "aaaa"), "aa");          // goes on one character behind the start
  EXPECT_EQ(Replace("a", "ba", "aa"), "baba");        // would be found again in itself for ever
  EXPECT_EQ(Replace("ab", "xa", "abbb"), "xxxa");     // what is left and what follows may meet
  EXPECT_EQ(Replace("a", "bA", "a"), "bA");
  EXPECT_EQ(Replace("foo bar", "x y", "foo\r\nbar"), "x y");
  for (const bool within : {true, false}) {  // a break must lie in the 107 bytes from the key on
    const std::string page = "foo  bar" + std::string(within ? 97 : 98, '.') + "\r\n";
    EXPECT_EQ(CountFound("foo bar", page), within ? 1U : 0U);
  }
  EXPECT_EQ(Replace("x", "yy", std::string("\0x\0x", 4)), std::string("\0yy\0yy", 6));
  options.ULcase = true;
  EXPECT_EQ(CountFound("Foo", "foo FOO"), 0U);
  EXPECT_EQ(Replace("A", "bA", "aA"), "abA");
}

TEST_F(TextSearch, MeansCharactersInEachEncoding) {
  const std::string euro = "\xE2\x82\xAC";  // the sign in UTF-8; 80 in Windows-1252
  const std::string c_caron = "\xC4\x8D";   // lacking there
  EXPECT_EQ(Replace(euro, "EUR", "1\x80"), "1EUR");
  EXPECT_EQ(Replace(euro, "EUR", "1" + euro), "1EUR");
  EXPECT_EQ(Replace("EUR", euro, "1EUR \xE9"), "1\x80 \xE9");
  EXPECT_EQ(Replace("EUR", c_caron, "1EUR \xE9"), "1&#269; \xE9");
  EXPECT_EQ(Replace("EUR", c_caron, "1EUR " + c_caron), "1" + c_caron + " " + c_caron);
  EXPECT_EQ(Replace("EUR", euro, "1EUR charset=utf-8"), "1" + euro + " charset=utf-8");
  EXPECT_EQ(CountFound(c_caron, "\xC4\x8D \xE9"), 0U);  // an 8-bit page: two other characters
}

TEST_F(TextSearch, ShowsWholeCharactersAroundAHit) {
  const std::string e = "\xC3\xA9";
  std::string accents;
  for (int i = 0; i < 60; ++i) accents += e;
  const std::string page = "." + accents + "hit." + accents;
  options.ShowEach = true;
  Replace("hit", "new", page);
  ASSERT_EQ(host.proposals.size(), 1U);
  const Proposal& proposal = host.proposals[0];
  // 20 bytes ahead are ten characters; of the 100 behind, the last cuts one, which is shown whole.
  EXPECT_EQ(proposal.SearchText, accents.substr(0, 20) + "hit." + accents.substr(0, 100));
  EXPECT_EQ(proposal.SearchSelection.start, 20U);
  EXPECT_EQ(proposal.ReplaceText, accents.substr(0, 20) + "new." + accents.substr(0, 100));
  Replace("it", "new", page);
  EXPECT_EQ(host.proposals[1].SearchText, accents.substr(0, 20) + "hit." + accents.substr(0, 100));
  EXPECT_EQ(host.proposals[1].SearchSelection.start, 21U);
}

TEST_F(TextSearch, ProposesAcrossALineEnd) {
  struct Row {
    const char* S;
    const char* R;
    const char* page;
    const char* proposed;
    Selection found;
    Selection selected;
  };
  const Row rows[] = {
      {"foo bar", "x y", "foo\r\nbar", "x\r\ny", {0, 8}, {0, 4}},
      {"foo bar", "long word", "foo\r\nbar", "long\r\nword", {0, 8}, {0, 10}},
      {"foo bar", "a b cd e", "foo\nbar", "a b\ncd e", {0, 7}, {0, 8}},
      {"foo bar", "xy", "foo\r\nbar", "xy", {0, 8}, {0, 3}},  // no blank: shown as it is
      {"foo bar", "x y", "1 foo&nbsp;bar\n", "1 x\ny\n", {2, 12}, {2, 8}},
      {"foo bar", "x y", "foo bar\r\n", "x y\r\n", {0, 7}, {0, 3}},
  };
  options.ShowEach = true;
  for (const Row& row : rows) {
    host.proposals.clear();
    Replace(row.S, row.R, row.page);
    ASSERT_EQ(host.proposals.size(), 1U) << row.page;
    const Proposal& shown = host.proposals[0];
    EXPECT_EQ(shown.ReplaceText, row.proposed);
    EXPECT_EQ(shown.SearchSelection.start, row.found.start) << row.page;
    EXPECT_EQ(shown.SearchSelection.length, row.found.length) << row.page;
    EXPECT_EQ(shown.ReplaceSelection.start, row.selected.start) << row.page;
    EXPECT_EQ(shown.ReplaceSelection.length, row.selected.length) << row.page;
  }
}

TEST_F(TextSearch, DoesNothingOnAnAnswerThatIsNone) {
  options.ShowEach = true;
  host.answers = {{7, "edited"}};
  EXPECT_EQ(Replace("a", "b", "a"), "a");
  EXPECT_EQ(state.Results, "");
}

TEST_F(TextSearch, SaysNothingOfAPageThatCouldNotBeWritten) {
  files.unwritable.insert("/p.htm");
  EXPECT_EQ(Replace("a", "b", "a"), "a");
  EXPECT_EQ(status.reason(), "No space left on device");
  EXPECT_EQ(state.Results, "");
  EXPECT_TRUE(host.shown.empty());
}

TEST_F(TextSearch, TakesTheOptionsOfTheMoment) {
  options.ShowEach = true;
  host.on_proposal = [this] {
    options.ULcase = true;
    options.ShowEach = host.proposals.size() < 2;
  };
  EXPECT_EQ(Replace("a", "b", "a A a a"), "a A a b");
}

}  // namespace
}  // namespace tessaril
