#include <gtest/gtest.h>

#include <random>

#include "engine/html_check.h"
#include "engine/paths.h"
#include "tests/support/plain_html_check.h"

namespace tessaril {
namespace {

using Random = std::mt19937;

std::string RandomText(Random& random, const std::vector<const char*>& words, std::size_t most) {
  std::string text;
  for (std::size_t count = random() % (most + 1); count > 0; --count) text += words[random() % words.size()];
  return text;
}

std::string LinkPage(Random& random) {
  static const std::vector<const char*> words = {"<a ",
                                                 "<A NAME=",
                                                 "<a\r\nname = \"",
                                                 "name",
                                                 "=",
                                                 "href=\"",
                                                 "HREF =",
                                                 "href",
                                                 "src='",
                                                 "Src",
                                                 "url=",
                                                 "URL=",
                                                 "window.open(",
                                                 "(",
                                                 ".location",
                                                 "background",
                                                 " ",
                                                 "    ",
                                                 "\"",
                                                 "'",
                                                 "\r\n",
                                                 "\n",
                                                 ">",
                                                 "?",
                                                 ";",
                                                 "#",
                                                 "top",
                                                 "Top",
                                                 "#top",
                                                 "../",
                                                 "./",
                                                 "/",
                                                 "//",
                                                 "a.htm",
                                                 "B.htm",
                                                 "b.htm",
                                                 "sub/",
                                                 "c.htm",
                                                 "Img.gif",
                                                 "img.gif",
                                                 "/s/",
                                                 "http:",
                                                 "HTTPS://x",
                                                 "mailto:",
                                                 "file:",
                                                 "cgi-bin/",
                                                 "CGI-bin",
                                                 "\xE9",
                                                 ".htm",
                                                 "s"};
  return RandomText(random, words, 50);
}

std::string ColourPage(Random& random) {
  static const std::vector<const char*> words = {
      "<BODY", "<body ", " bgcolor=", "BGCOLOR", "color", " = ",  "=",     "#",    "'#",
      "\"#",   "FF",     "ff",        "00",      "33",    "Cc",   "A0",    "1",    "g",
      "'",     "\"",     ">",         ">",       " ",     "\r\n", "     ", "\xE9", "<font "};
  return RandomText(random, words, 60);
}

// Answers at random, the same for both who are asked.
class RandomHost : public ScriptHost {
 public:
  explicit RandomHost(unsigned seed) : random_(seed) {}

  ProposalAnswer Propose(const Proposal& proposal) override {
    ScriptHost::Propose(proposal);
    constexpr std::size_t kMost = 40;  // a correction may push its own finding ahead of the scan for ever
    const auto choice = random_() % 24;
    std::string field = *proposal.ReplaceText;
    if (choice == 0 || proposals.size() > kMost) return {kStop, field + "x"};
    const char* const edits[] = {"a.htm", "\r\n", "", "\" href=\"c.htm", "#00ff00", "\xE9", ">"};
    if (choice < 8)
      field.replace(random_() % (field.size() + 1), random_() % 30, edits[random_() % std::size(edits)]);
    return {choice % 2 == 0 ? kReplace : kKeep, field};
  }
  bool Ask(const Question& question) override {
    ScriptHost::Ask(question);
    return random_() % 2 == 0;
  }

 private:
  Random random_;
};

struct Outcome {
  std::string report;
  std::string unlinked;
  std::map<std::string, std::string> contents;
  std::vector<std::string> shown;  // proposals and questions

  bool operator==(const Outcome&) const = default;
};

std::vector<std::string> Shown(const ScriptHost& host) {
  std::vector<std::string> shown = host.questions;
  for (const Proposal& proposal : host.proposals) {
    shown.push_back(proposal.SearchText + "|" + *proposal.ReplaceText + "|" +
                    std::to_string(proposal.ReplaceSelection.start) + "," +
                    std::to_string(proposal.ReplaceSelection.length) + "," +
                    std::to_string(proposal.SearchSelection.start));
  }
  return shown;
}

// Some pages of a small site one after the other, as a walk visits them.
template <typename Check>
void CheckPages(MemoryFiles& files, const bool& stopped, const Check& check) {
  for (std::string path : {"/s/sub/c.htm", "/s/a.htm", "/s/B.htm"}) {
    (void)files.EnterFolder(std::string(FolderOf(path)));
    check(path);
    if (stopped) return;
  }
}

// Short pages of few words, so that keywords, quotes, anchors, paths and corrections meet in every way.
TEST(HtmlCheckRandom, GivesWhatThePlainRulesGive) {
  Random random(20261125);
  std::map<Function, int> hits;
#ifdef TESSARIL_SANITIZED
  constexpr int kRounds = 1000;  // each takes buffers of many megabytes, which cost the sanitizer most
#else
  constexpr int kRounds = 30000;
#endif
  for (int round = 0; round < kRounds; ++round) {
    RunOptions options;
    options.function = round % 4 == 0   ? Function::kExternal
                       : round % 4 == 1 ? Function::kColours
                                        : Function::kLinks;
    options.dirList = random() % 2 == 0 ? "/s" : "/s/sub";
    options.ShowEach = random() % 2 == 0;
    options.UCfilename = random() % 2 == 0;
    options.CGI = random() % 4 != 0;
    if (random() % 8 == 0) options.CGIname = "";
    MemoryFiles files;
    for (const char* path : {"/s/sub/c.htm", "/s/a.htm", "/s/B.htm"})
      files.contents[path] = options.function == Function::kColours ? ColourPage(random) : LinkPage(random);
    files.contents["/s/sub/Img.gif"] = "<a name='top'>";
    files.contents["/c.htm"] = "<A NAME=s";
    const auto before = files.contents;
    const unsigned seed = static_cast<unsigned>(random());

    RandomHost plain_host(seed);
    PlainHtmlCheck plain{files, plain_host, options};
    CheckPages(files, plain.StopRequested, [&](std::string& path) { plain.CheckHTML(path); });
    const Outcome expected{plain.Results, plain.UnlinkedList, files.contents, Shown(plain_host)};

    files.contents = before;
    RandomHost host(seed);
    RunState state;
    const Entities entities;
    RunContext run{files, host, options, state, entities, {}, {}};
    CheckPages(files, state.StopRequested, [&](std::string& path) { (void)CheckHTML(path, run); });
    const Outcome outcome{state.Results, state.UnlinkedList.text(), files.contents, Shown(host)};
    if (outcome != expected) {
      for (const auto& [path, content] : before) ADD_FAILURE() << path << ": '" << content << "'";
    }
    ASSERT_EQ(outcome.report, expected.report) << round;
    ASSERT_EQ(outcome.unlinked, expected.unlinked) << round;
    ASSERT_EQ(outcome.contents, expected.contents) << round;
    ASSERT_EQ(outcome.shown, expected.shown) << round;
    hits[options.function] += outcome.report.empty() ? 0 : 1;
  }
  EXPECT_GT(hits[Function::kLinks], kRounds / 3);
  EXPECT_GT(hits[Function::kExternal], kRounds / 30);
  EXPECT_GT(hits[Function::kColours], kRounds / 30);
}

}  // namespace
}  // namespace tessaril
