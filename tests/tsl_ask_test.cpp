#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/support/program.h"
#include "tests/support/scratch_folder.h"

namespace tessaril {
namespace {

TEST(TslAsk, AnswersWithOneKeyEach) {
  ScratchFolder scratch;
  scratch.Write("a.htm", "1 hit \x1b[2J\xE9\n2 hit 3 hit 4 hit");
  scratch.Write("editor", "#!/bin/sh\nsed -i 's/3 new/3 \xC3\xA9\xC4\x8D!/' \"$1\"\necho >> \"$1\"\n");
  setenv("EDITOR", ("sh " + scratch / "editor").c_str(), 1);
  unsetenv("VISUAL");
  setenv("NO_COLOR", "1", 1);
  const ProgramEnd end =
      RunTslOnTerminal({"replace", "hit", "new", scratch / "a.htm", "--ask", "--report", "/dev/null"},
                       {"r", "k", "e", "r", "q"});
  EXPECT_EQ(end.status, 3);
  EXPECT_EQ(scratch.Read("a.htm"), "1 new \x1b[2J\xE9\n2 hit 3 \xE9&#269;! 4 hit");
  EXPECT_NE(end.out.find("1 >>>hit<<< \\x1B[2J\xC3\xA9\r\n2 hit"), std::string::npos) << end.out;
  EXPECT_NE(end.out.find("1 >>>new<<< \\x1B[2J"), std::string::npos) << end.out;
  EXPECT_EQ(end.out.find("\x1b[2J"), std::string::npos);
  EXPECT_EQ(end.out.find("\x1b[31"), std::string::npos);
  const ProgramEnd hint = RunTslOnTerminal({"entities", scratch / "a.htm", "--ask"}, {"k", "k", "q"});
  EXPECT_NE(hint.out.find("\r\nCharacter: \xC4\x8D\r\n"), std::string::npos) << hint.out;
  unsetenv("NO_COLOR");
  setenv("TERM", "xterm", 1);
  const ProgramEnd colours =
      RunTslOnTerminal({"search", "new", scratch / "a.htm", "--ask", "--report", "/dev/null"}, {"n"});
  EXPECT_EQ(colours.status, 0);
  EXPECT_NE(colours.out.find("\x1b[31"), std::string::npos);
}

// A report on a terminal shows what pages hold, and does not send it.
TEST(TslAsk, SendsTheTerminalNothingOfPages) {
  ScratchFolder scratch;
  const std::string wild =
      "<body text='#12345a'><a href='http://x/\x1B'><a href='gone.htm'> \x1B]0;title\x07 \xC2\x9B"
      "2J \x9B"
      "31m \x7F \r<b>\t\xC3\xA9 \xE9 \b";
  scratch.Write("a\x1B[2J.htm", wild);
  const Words runs[] = {{"links"}, {"external"}, {"search", "e"}, {"colours"}, {"entities"}};
  for (Words run : runs) {
    run.push_back(scratch.path());
    for (const char* const format : {"", "json", "sarif", "junit", "github"}) {
      Words words = run;
      if (*format != '\0') words.insert(words.end(), {"--format", format});
      const std::string out = RunTslOnTerminal(words, {}).out;
      EXPECT_TRUE(*format != '\0' || out.find("x1B") != std::string::npos) << run[0] << out;
      for (const char* const command : {"\x1B", "\x07", "\xC2\x9B", " \x9B", "\x7F", "\r<b>", "\b"})
        EXPECT_EQ(out.find(command), std::string::npos) << run[0] << format << out;
    }
  }
  // Elsewhere a report is what it is.
  EXPECT_NE(RunTsl({"links", scratch.path()}).out.find("\x1B]0;title\x07"), std::string::npos);
}

TEST(TslAsk, TakesCtrlCForStopAndQuestionsForQuestions) {
  ScratchFolder scratch;
  scratch.Write("a.htm", "hit");
  EXPECT_EQ(RunTslOnTerminal({"replace", "hit", "new", scratch.path(), "--ask"}, {"\x03"}).status, 3);
  // Keys that send the letters of answers: F3, an arrow, F3 with modifiers in three ways, F5 of the console,
  // and what a terminal tells of its colours.
  EXPECT_EQ(RunTslOnTerminal({"replace", "hit", "new", scratch.path(), "--ask"},
                             {"\x1bOR\x1b[C\x1b[1;5R\x1bO2R\x1b\x1bOR\x1b[[E\x1b]11;rgb:r\ak"})
                .status,
            0);
  EXPECT_EQ(scratch.Read("a.htm"), "hit");
  EXPECT_EQ(
      RunTslOnTerminal({"replace", "hit", "new", scratch.path(), "--ask", "--filter", "*.*"}, {"c"}).status,
      3);
  EXPECT_EQ(scratch.Read("a.htm"), "hit");
  EXPECT_EQ(
      RunTslOnTerminal({"replace", "hit", "new", scratch.path(), "--ask", "--filter", "*.*"}, {"o", "r"})
          .status,
      0);
  EXPECT_EQ(scratch.Read("a.htm"), "new");
}

}  // namespace
}  // namespace tessaril
