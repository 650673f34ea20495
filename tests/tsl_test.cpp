#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "engine/paths.h"
#include "tests/support/program.h"
#include "tests/support/scratch_folder.h"

// tsl as a whole: folder, command, and what it leaves: report, files, transcript, messages, exit status.

namespace tessaril {
namespace {

namespace fs = std::filesystem;

class Tsl : public testing::Test {
 protected:
  std::string Block(const std::string& name, const std::string& entries) const {
    const std::string rule(80, '-');
    return "\r\n\r\n" + rule + "\r\n" + scratch / name + "\r\n" + rule + entries;
  }
  static std::string Entry(const std::string& label, const std::string& context) {
    return "\r\n\r\n" + label + "\r\n..." + context + "...";
  }

  ScratchFolder scratch;
  const std::string& folder = scratch.path();
};

TEST_F(Tsl, WritesTheReportToStandardOutputOrAFile) {
  scratch.Write("a.htm", "a hit");
  scratch.Write("sub/b.html", "hit\r\n");
  const ProgramEnd end = RunTsl({"search", "hit", folder + "/./sub/..//"});
  EXPECT_EQ(end.out, "In \"" + folder + "\" and all subdirectories:\r\n\r\nSearch text \"hit\" found:" +
                         Block("sub/b.html", Entry("*** Found:", "hit\r\n")) +
                         Block("a.htm", Entry("*** Found:", "a hit")) + "\r\n");
  EXPECT_EQ(end.err, "");
  EXPECT_EQ(end.status, 0);
  EXPECT_EQ(RunTsl({"search", "hit", folder, "--report", scratch / "r"}).out, "");
  EXPECT_EQ(scratch.Read("r"), end.out);
  const ProgramEnd none = RunTsl({"search", "miss", scratch / "a.htm"});
  EXPECT_EQ(none.out,
            "In \"" + scratch / "a.htm" + "\":\r\n\r\nSearch text \"miss\" found:\r\n*** None ***\r\n");
  EXPECT_EQ(none.status, 1);
}

TEST_F(Tsl, ChangesFilesOnlyWhenTold) {
  fs::copy(EXAMPLE_SITE, scratch / "copy", fs::copy_options::recursive);
  for (const Words& command : std::vector<Words>{{"links"},
                                                 {"entities"},
                                                 {"external"},
                                                 {"colours"},
                                                 {"search", "the"},
                                                 {"replace", "the", "THE"}}) {
    Words arguments = command;
    arguments.push_back(scratch / "copy");
    const ProgramEnd end = RunTsl(arguments);
    EXPECT_EQ(end.status, command.size() > 1 || command[0] == "external" ? 0 : 1) << command[0];
    EXPECT_EQ(end.err, "");
  }
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(EXAMPLE_SITE)) {
    if (!entry.is_regular_file()) continue;
    const std::string name = fs::relative(entry.path(), EXAMPLE_SITE).string();
    ScratchFolder original;
    fs::copy_file(entry.path(), original / "f");
    EXPECT_EQ(scratch.Read("copy/" + name), original.Read("f")) << name;
  }
  scratch.Write("a.htm", "hit hit");
  EXPECT_EQ(RunTsl({"replace", "hit", "new", scratch / "a.htm", "--yes"}).status, 0);
  EXPECT_EQ(scratch.Read("a.htm"), "new new");
  scratch.Write("a.htm", "foo\r\nbar");  // unasked, the blank stays one
  EXPECT_EQ(RunTsl({"replace", "foo bar", "x y", scratch / "a.htm", "--yes"}).status, 0);
  EXPECT_EQ(scratch.Read("a.htm"), "x y");
}

TEST_F(Tsl, TakesAnswersFromAFileAndNotesThem) {
  scratch.Write("a.htm", "1 hit 2 hit");
  scratch.Write("answers", "replace");
  EXPECT_EQ(RunTsl({"replace", "hit", "new", scratch / "a.htm", "--answers", scratch / "answers"}).status, 0);
  EXPECT_EQ(scratch.Read("a.htm"), "1 new 2 hit");  // after the last line: keep
  scratch.Write("a.htm", "1 hit 2 hit 3 hit \xE9 4 hit 5 hit");
  scratch.Write("answers", "replace\r\nkeep x\\x00\\\\\nreplace 1 new\\tY\n");
  const ProgramEnd end = RunTsl({"replace", "hit", "new", scratch / "a.htm", "--answers", scratch / "answers",
                                 "--transcript", scratch / "t"});
  EXPECT_EQ(end.status, 0) << end.err;
  EXPECT_EQ(scratch.Read("a.htm"), "1 new\tY");
  const std::string file = "{\"file\": \"" + ShortenedPath(scratch / "a.htm") + "\", ";
  EXPECT_EQ(
      scratch.Read("t"),
      file +
          "\"found\": \"1 hit 2 hit 3 hit \xC3\xA9 4 hit 5 hit\", \"found_start\": 2, \"found_length\": 3, "
          "\"new\": \"1 new 2 hit 3 hit \xC3\xA9 4 hit 5 hit\", \"new_start\": 2, \"new_length\": 3, "
          "\"hint\": \"\", \"answer\": \"replace\", \"edited\": null}\n" +
          file +
          "\"found\": \"1 new 2 hit 3 hit \xC3\xA9 4 hit 5 hit\", \"found_start\": 8, \"found_length\": 3, "
          "\"new\": \"1 new 2 new 3 hit \xC3\xA9 4 hit 5 hit\", \"new_start\": 8, \"new_length\": 3, "
          "\"hint\": \"\", \"answer\": \"keep\", \"edited\": \"x\\u0000\\\\\"}\n" +
          file +
          "\"found\": \"1 new 2 hit 3 hit \xC3\xA9 4 hit 5 hit\", \"found_start\": 14, \"found_length\": 3, "
          "\"new\": \"1 new 2 hit 3 new \xC3\xA9 4 hit 5 hit\", \"new_start\": 14, \"new_length\": 3, "
          "\"hint\": \"\", \"answer\": \"replace\", \"edited\": \"1 new\\tY\"}\n");
}

TEST_F(Tsl, ChecksEntities) {
  scratch.Write("a.htm", "R&D &#8211;\r\n");
  const std::string kept = Entry("--- Kept:", "R&D &#8211;\r\n");
  const Words check{"entities", folder, "--transcript", scratch / "t"};
  ProgramEnd end = RunTsl(check);
  EXPECT_EQ(end.status, 1);
  EXPECT_TRUE(
      end.out.ends_with("\r\n\r\n&xxxx; type tag problems found:" + Block("a.htm", kept + kept) + "\r\n"));
  EXPECT_NE(scratch.Read("t").find("\"hint\": \"Character: \xC3\xA2\xC2\x80\xC2\x93\""), std::string::npos);
  scratch.Write("answers", "replace\nreplace R&amp;D 1234567 &\nstop\n");
  EXPECT_EQ(RunTsl({"entities", folder, "--answers", scratch / "answers"}).status, 3);
  EXPECT_EQ(scratch.Read("a.htm"), "R&amp;D 1234567 &");
  end = RunTsl({"entities", folder, "--yes"});
  EXPECT_EQ(end.status, 1);
  EXPECT_TRUE(end.err.starts_with("tsl: Performing this function without manual control may cause"))
      << end.err;
  EXPECT_EQ(scratch.Read("a.htm"), "R&amp;D 1234567 &amp;");
  EXPECT_EQ(RunTsl(check).status, 0);
}

TEST_F(Tsl, ChecksLinks) {
  const std::string page = "<a href=\"B.htm\"><a href=\"c.htm\">";
  scratch.Write("a.htm", page);
  scratch.Write("B.htm", "");
  mkfifo((scratch / "c.htm").c_str(), 0666);
  const auto error = [](const std::string& text) {
    return "\r\n\r\n*** Error:     " + text + "\r\n...in link:\r\n\r\n";
  };
  const std::string upper =
      error("Found UPPERcase characters in link filename! Correct manually to lowercase if suitable!");
  const std::string pipe = error("Not a regular file: " + scratch / "c.htm");
  const std::string unlinked =
      "\r\n\r\n" + std::string(50, '=') + "\r\nUnlinked files:\r\n     " + scratch / "a.htm";
  ProgramEnd end = RunTsl({"links", folder, "--transcript", scratch / "t"});
  EXPECT_EQ(end.status, 1);
  EXPECT_EQ(end.err, "");
  EXPECT_TRUE(end.out.ends_with("\r\n\r\nInternal link errors found:" +
                                Block("a.htm", upper + page + pipe + page.substr(4)) + "\r\n" + unlinked))
      << end.out;
  const std::string question =
      "{\"message\": \"B.htm:\\r\\nFound UPPERcase characters in a linked file's filename! "
      "\\r\\n\\r\\nReplace "
      "this filename with the proper lowercase name:\\r\\nb.htm\", \"buttons\": \"okcancel\", \"answer\": \"";
  EXPECT_EQ(scratch.Read("t"), question + "cancel\"}\n");

  scratch.Write("answers", "keep\nok\nreplace <a href=\"b.htm\"><a href=\"c.htm\">\nstop\n");
  end = RunTsl({"links", folder, "--answers", scratch / "answers", "--transcript", scratch / "t"});
  EXPECT_EQ(end.status, 3);
  EXPECT_EQ(scratch.Read("a.htm"), "<a href=\"b.htm\"><a href=\"c.htm\">");
  EXPECT_EQ(scratch.Names(), (Words{"a.htm", "answers", "b.htm", "c.htm", "t"}));
  const std::string transcript = scratch.Read("t");
  EXPECT_NE(transcript.find("\n" + question + "ok\"}\n"), std::string::npos);
  EXPECT_NE(transcript.find("\"found_start\": 0, \"found_length\": 0, \"new\": \"<a href=\\\"B.htm"),
            std::string::npos);
  EXPECT_TRUE(end.out.ends_with("   *** Stopped ***\r\nin file " + scratch / "a.htm" + "\r\n"));

  scratch.Write("sub/A.htm", "href='B.htm' href='a.htm' ");
  scratch.Write("sub/B.htm", "");
  EXPECT_EQ(RunTsl({"links", scratch / "sub", "--allow-uppercase"}).status, 1);
  end = RunTsl({"links", scratch / "sub", "--yes"});
  EXPECT_EQ(end.status, 1);
  EXPECT_EQ(end.err, "");
  EXPECT_TRUE(fs::exists(scratch / "sub/b.htm") && fs::exists(scratch / "sub/a.htm"));
  scratch.Write("sub/a.htm", "href='b.htm' href='a.htm' ");
  EXPECT_EQ(RunTsl({"links", scratch / "sub"}).status, 0);

  // Files renamed by another way to their folder, the page itself among them, and a link that lost its file.
  scratch.Write("ways/A.htm", "href='w/a.htm' href='w/b.htm' href='b.htm' href='d.gif' ");
  scratch.Write("ways/B.htm", "href='none' ");
  fs::create_symlink(".", scratch / "ways/w");
  fs::create_symlink("B.htm", scratch / "ways/D.gif");
  scratch.Write("answers", "ok\nok\nreplace FIXED\n");
  end = RunTsl({"links", scratch / "ways", "--answers", scratch / "answers", "--transcript", scratch / "t"});
  EXPECT_EQ(end.err, "");
  EXPECT_EQ(end.status, 1);
  EXPECT_TRUE(scratch.Read("ways/a.htm").ends_with("FIXED"));
  EXPECT_NE(end.out.find(scratch / "ways/b.htm" + "\r\n--"), std::string::npos) << end.out;
  const std::string asked = scratch.Read("t");
  EXPECT_EQ(asked.find("D.gif:"), std::string::npos);
}

TEST_F(Tsl, ListsExternalLinksAndColours) {
  scratch.Write("a.htm", "<body bgcolor=#123456> <a href=http://x/?y>");
  ProgramEnd end = RunTsl({"external", folder});
  EXPECT_EQ(end.status, 0);
  EXPECT_TRUE(end.out.ends_with("</P>\r\n<H3>" + scratch / "a.htm" +
                                "</H3>\r\n<A HREF = \"http://x/\"> http://x/</A><BR>\r\n\r\n</HTML>"))
      << end.out;
  end = RunTsl({"colours", folder, "--yes", "--transcript", scratch / "t"});
  EXPECT_EQ(end.status, 1);
  EXPECT_TRUE(end.out.ends_with(Block("a.htm", "\r\n\r\n<BODY BGCOLOR=#123456>\r\n"))) << end.out;
  EXPECT_NE(scratch.Read("t").find("\"found_start\": 14, \"found_length\": 7,"), std::string::npos);
  scratch.Write("answers", "replace <body>\n");
  EXPECT_EQ(RunTsl({"colours", folder, "--answers", scratch / "answers"}).status, 1);
  EXPECT_EQ(scratch.Read("a.htm"), "<body> <a href=http://x/?y>");
  EXPECT_EQ(RunTsl({"colours", folder}).status, 0);
  scratch.Write("a.htm", "href=mailto:x ");
  EXPECT_EQ(RunTsl({"external", folder}).status, 1);
}

TEST_F(Tsl, ReadsTheEntityDataOfAFolder) {
  scratch.Write("a.htm", "\xE9");
  scratch.Write("r", "old");
  scratch.Write("data/alphatg1.dat", "nbsp,#160\r\nacute,#233\r\nodd\r\n");
  const std::string data = scratch / "data";
  const Words check{"entities", scratch / "a.htm", "--yes", "--data", "./data/", "--report", scratch / "r"};
  const auto enter = [this] { EXPECT_EQ(chdir(folder.c_str()), 0); };
  EXPECT_EQ(RunTsl(check, enter).status, 2);
  EXPECT_EQ(RunTsl(check, enter).err, "tsl: " + data + "/alphatg1.dat:3: no comma; the line is skipped\n" +
                                          "tsl: No such file or directory\nCan't find file " + data +
                                          "/alphatg2.dat\n");
  EXPECT_EQ(scratch.Read("r"), "old");
  scratch.Write("data/alphatg2.dat", "");
  for (const char* file : {"/alphatg1.dat", "/alphatg2.dat"})
    EXPECT_EQ(RunTsl({"entities", folder, "--data", data, "--transcript", data + file}).status, 2);
  EXPECT_EQ(RunTsl(check, enter).status, 1);
  EXPECT_EQ(scratch.Read("a.htm"), "&acute;");
}

TEST_F(Tsl, EndsWhereAnAnswerDoesNotFit) {
  struct Row {
    const char* command;
    const char* answers;
    const char* reason;
  };
  const Row rows[] = {
      {"replace", "replace\nok\n", ":2: \"ok\" does not answer a proposal"},
      {"replace", "replace\n\n", ":2: \"\" does not answer a proposal"},
      {"replace", "replace\nKEEP\n", ":2: \"KEEP\" does not answer a proposal"},
      {"replace", "replace\nkeep \\x4\n", ":2: unknown escape in \"\\x5Cx4\""},
      {"search", "keep\nreplace\n", ":2: there is nothing to replace here"},
      {"search", "keep\nkeep x\n", ":2: there is nothing to replace here"},
      {"entities", "replace\nok\n", ":2: \"ok\" does not answer a proposal"},
  };
  for (const Row& row : rows) {
    Words arguments{row.command};
    const bool entities = arguments[0] == "entities";
    scratch.Write("a.htm", entities ? "&&" : "hit hit");
    scratch.Write("answers", row.answers);
    if (!entities) arguments.push_back("hit");
    if (arguments[0] == "replace") arguments.push_back("new");
    for (const std::string& word : {scratch / "a.htm", std::string("--answers"), scratch / "answers",
                                    std::string("--transcript"), scratch / "t"}) {
      arguments.push_back(word);
    }
    const ProgramEnd end = RunTsl(arguments);
    EXPECT_EQ(end.status, 2);
    EXPECT_EQ(end.out, "");
    std::string reason = row.reason;
    if (const std::size_t escaped = reason.find("\\x5C"); escaped != std::string::npos)
      reason.replace(escaped, 4, "\\");
    EXPECT_EQ(end.err, "tsl: " + scratch / "answers" + reason + "\n");
    EXPECT_EQ(scratch.Read("a.htm"), entities ? "&amp;&" : "hit hit");  // entities are written at once
    const std::string transcript = scratch.Read("t");
    EXPECT_EQ(std::count(transcript.begin(), transcript.end(), '\n'), 1) << row.answers;
  }
}

TEST_F(Tsl, AsksBeforeTheWalkWhereThereIsSomebodyToAsk) {
  scratch.Write("a.css", "hit");
  const Words command{"replace", "hit", "new", folder, "--filter", "*.css", "--transcript", scratch / "t"};
  const auto run = [&command](const Words& more) {
    Words arguments = command;
    arguments.insert(arguments.end(), more.begin(), more.end());
    return RunTsl(arguments);
  };
  const std::string question = "*.css files are not HTML files! Continue?";
  const std::string asked = "{\"message\": \"" + question + "\", \"buttons\": \"okcancel\", \"answer\": \"";
  ProgramEnd end = run({});
  EXPECT_EQ(end.err, "tsl: " + question + "\n");
  EXPECT_EQ(end.status, 0);
  EXPECT_TRUE(scratch.Read("t").starts_with(asked + "ok\"}\n{\"file\""));
  scratch.Write("answers", "");
  end = run({"--answers", scratch / "answers"});
  EXPECT_EQ(end.status, 3);
  EXPECT_EQ(end.out, "");
  EXPECT_EQ(scratch.Read("t"), asked + "cancel\"}\n");
  EXPECT_EQ(scratch.Read("a.css"), "hit");
  scratch.Write("answers", "ok now\n");
  EXPECT_EQ(run({"--answers", scratch / "answers"}).status, 2);
  scratch.Write("answers", "ok\nreplace\n");
  EXPECT_EQ(run({"--answers", scratch / "answers"}).status, 0);
  EXPECT_EQ(scratch.Read("a.css"), "new");
}

TEST_F(Tsl, StopsAndSaysWhere) {
  scratch.Write("a.htm", "hit hit");
  scratch.Write("answers", "replace\nstop new\n");
  const ProgramEnd end = RunTsl({"replace", "hit", "new", folder, "--answers", scratch / "answers"});
  EXPECT_EQ(end.status, 3);
  EXPECT_EQ(scratch.Read("a.htm"), "new hit");
  EXPECT_TRUE(end.out.ends_with(Entry("--- Kept:", "new hit") + "\r\n\r\n*** Stopped in " +
                                scratch / "a.htm" + " ***\r\n\r\n   *** Stopped ***\r\nin file " +
                                scratch / "a.htm" + "\r\n"))
      << end.out;
}

TEST_F(Tsl, RefusesWrongCommandLinesAndTouchesNothing) {
  scratch.Write("a.htm", "hit");
  scratch.Write("t", "old transcript");
  scratch.Write("r", "old report");
  const std::string page = scratch / "a.htm";
  const std::vector<Words> rows = {
      {"search", "hit"},
      {"search", "hit", page, "more"},
      {"find", "hit", page},
      {"search", "hit", page, "--check-cgi"},
      {"search", "hit", page, "--filter", ""},
      {"search", "hit", page, "--yes", "--ask"},
      {"search", "hit", page, "--answers", scratch / "none"},
      {"search", "hit", scratch / "none"},
      {"search", "hit", ""},
      {"search", "hit", "/dev/null"},
      {"search", "-x", page},
      {"search", "hit", page, "--transcript"},
      {"links", page, "--case"},
      {"links", page, "--format", "xml"},
      {"search", "hit", page, "\x1b[2J\n"},
      {"search", "hit", page, "--answers", scratch / "r"},
  };
  for (Words row : rows) {
    row.insert(row.begin() + 1, {"--report", scratch / "r", "--transcript", scratch / "t"});
    const ProgramEnd end = RunTsl(row);
    EXPECT_EQ(end.status, 2) << row.back();
    EXPECT_TRUE(end.err.starts_with("tsl: ")) << end.err;
    EXPECT_EQ(end.err.find('\x1b'), std::string::npos);
    EXPECT_EQ(end.out, "");
  }
  EXPECT_EQ(RunTsl({"search", "hit", page, "--report", folder}).err, "tsl: " + folder + ": Is a directory\n");
  EXPECT_EQ(RunTsl({"search", "hit", page, "--report", page}).status, 2);
  EXPECT_EQ(RunTsl({"search", "hit", page, "--report", scratch / "n", "--transcript", scratch / "n"}).status,
            2);
  EXPECT_EQ(
      RunTsl({"search", "hit", page, "--report", scratch / "n", "--transcript", folder + "/./n"}).status, 2);
  EXPECT_EQ(RunTsl({}).status, 2);
  const auto remove_current = [this] {
    const std::string gone = scratch / "gone";
    if (mkdir(gone.c_str(), 0700) != 0 || chdir(gone.c_str()) != 0 || rmdir(gone.c_str()) != 0) _exit(99);
  };
  const ProgramEnd nowhere = RunTsl({"search", "hit", "."}, remove_current);
  EXPECT_EQ(nowhere.status, 2);
  EXPECT_EQ(nowhere.err, "tsl: .: No such file or directory\n");
  const ProgramEnd elsewhere = RunTsl({"search", "hit", page, "--format", "github"}, remove_current);
  EXPECT_TRUE(elsewhere.out.starts_with("::notice file=" + page + ",line=1,col=1,")) << elsewhere.out;
  EXPECT_EQ(RunTsl({"replace", "hit", "new", page, "--yes", "--report", "r"}, remove_current).status, 2);
  EXPECT_EQ(scratch.Read("a.htm"), "hit");
  EXPECT_EQ(scratch.Read("t"), "old transcript");
  EXPECT_EQ(scratch.Read("r"), "old report");
}

TEST_F(Tsl, EndsAReportForMachinesWhateverEndsTheRun) {
  scratch.Write("a.htm", "hit hit");
  scratch.Write("b.htm", "hit");
  scratch.Write("r", "old");
  const auto run = [this](const std::string& format, const std::string& answers, const std::string& report) {
    scratch.Write("answers", answers);
    return RunTsl({"replace", "hit", "new", folder, "--filter", "x;*.htm", "--format", format, "--answers",
                   scratch / "answers", "--report", report});
  };
  EXPECT_EQ(run("json", "cancel", scratch / "r").status, 3);  // to the question of the filter
  EXPECT_EQ(scratch.Read("r"), "old");
  EXPECT_EQ(run("json", "ok\nkeep\nstop", scratch / "r").status, 3);
  std::string report = scratch.Read("r");
  EXPECT_EQ(std::count(report.begin(), report.end(), '\n'), 2);
  EXPECT_EQ(run("sarif", "ok\nok", scratch / "r").status, 2);  // no answer to a finding
  report = scratch.Read("r");
  EXPECT_NE(report.find("\"executionSuccessful\":false,\"exitCode\":2"), std::string::npos) << report;
  EXPECT_TRUE(report.ends_with("]}]}\n")) << report;
  const ProgramEnd full = run("junit", "ok", "/dev/full");
  EXPECT_EQ(full.status, 2);
  EXPECT_EQ(full.err, "tsl: /dev/full: No space left on device\n");
  EXPECT_EQ(scratch.Read("a.htm") + scratch.Read("b.htm"), "hit hithit");
}

TEST_F(Tsl, TakesTextsAndPathsAsTheyAre) {
  scratch.Write("a.htm", "-x links \xE9 -- ++");
  const std::string page = scratch / "a.htm";
  EXPECT_EQ(RunTsl({"search", "--", "-x", page}).status, 0);
  EXPECT_EQ(RunTsl({"search", "links", page}).status, 0);
  EXPECT_EQ(RunTsl({"search", "++", page}).status, 0);
  EXPECT_EQ(RunTsl({"search", "--", "++", page}).status, 0);
  EXPECT_EQ(RunTsl({"search", "x", page, "--filter", "++"}).err,
            "tsl: ++ files are not HTML files! Continue?\n");
  EXPECT_EQ(RunTsl({"search", "\xE9", page}).status, 1);  // searched for as "&eacute;"
  EXPECT_EQ(RunTsl({"search", "\xC4\x8D", page}).err,
            "tsl: Warning!\nThere is an illegal HTML character in the Search string.\n"
            "The results may consequently be unreliable!\n");
  EXPECT_EQ(RunTsl({"search", "\xE9", page, "--no-tags"}).status, 0);
  EXPECT_EQ(RunTsl({"search", "\xC3\xA9", page, "--no-tags"}).status, 0);
  EXPECT_EQ(RunTsl({"search", "", page}).status, 1);
  EXPECT_NE(RunTsl({"search", "\xE9", page}).out.find("Search text \"\xC3\xA9\" as \"&eacute;\" found:"),
            std::string::npos);
  fs::create_symlink(folder, scratch / "link");
  EXPECT_TRUE(
      RunTsl({"search", "links", scratch / "link/"}).out.starts_with("In \"" + scratch / "link" + "\" and"));
  const auto enter = [this] {
    EXPECT_EQ(chdir((scratch / "link").c_str()), 0);
    setenv("PWD", (scratch / "link").c_str(), 1);
  };
  EXPECT_TRUE(
      RunTsl({"search", "links", "a.htm"}, enter).out.starts_with("In \"" + scratch / "link/a.htm" + "\":"));
  // Not the "a.htm" that the text of the path leads to.
  scratch.Write("elsewhere/a.htm", "links links");
  fs::create_directory(scratch / "elsewhere/deep");
  fs::create_symlink(scratch / "elsewhere/deep", folder + "/deep");
  EXPECT_TRUE(RunTsl({"search", "links", folder + "/deep/../a.htm"})
                  .out.starts_with("In \"" + scratch / "elsewhere/a.htm" + "\":"));
  fs::remove(folder + "/deep");
  scratch.Write("n\xFF\n.htm", "links");
  EXPECT_NE(RunTsl({"search", "links", folder}).out.find("/n\xFF\n.htm\r\n"), std::string::npos);
}

TEST_F(Tsl, TellsWhatItCouldNotWriteAndLeavesItWhole) {
  const std::string text = "hit " + std::string(10000, '.');
  scratch.Write("a.htm", text);
  scratch.Write("b.htm", "hit");
  const Words replace{"replace", "hit", "new text", folder, "--yes", "--no-undo"};
  // A limit on file sizes stands for a full disk: the write comes up short.
  const auto limited = [] {
    const rlimit limit{5000, 5000};
    setrlimit(RLIMIT_FSIZE, &limit);
  };
  ProgramEnd end = RunTsl(replace, limited);
  EXPECT_EQ(end.status, 2);
  EXPECT_EQ(end.err, "tsl: " + scratch / "a.htm" + ": File too large\n");
  EXPECT_EQ(scratch.Read("a.htm"), text);
  EXPECT_EQ(scratch.Read("b.htm"), "new text");  // the run went on
  EXPECT_EQ(end.out.find("a.htm"), std::string::npos);
  EXPECT_EQ(scratch.Names(), (Words{"a.htm", "b.htm"}));
  fs::create_hard_link(scratch / "a.htm", scratch / "c.txt");
  end = RunTsl(replace, limited);
  EXPECT_EQ(end.status, 2);
  EXPECT_EQ(scratch.Read("c.txt"), text);
  EXPECT_EQ(scratch.Names(), (Words{"a.htm", "b.htm", "c.txt"}));
}

TEST_F(Tsl, WritesNothingIntoOtherFilesThatIsMeantForClosedStreams) {
  scratch.Write("a.css", "hit");
  const ProgramEnd end = RunTsl({"search", "hit", folder, "--filter", "*.css", "--transcript", scratch / "t"},
                                [] { close(STDOUT_FILENO); });
  EXPECT_EQ(end.status, 2);
  EXPECT_TRUE(end.err.ends_with("tsl: standard output: Bad file descriptor\n")) << end.err;
  EXPECT_TRUE(scratch.Read("t").ends_with("\"answer\": \"ok\"}\n"));
}

TEST_F(Tsl, RespectsPermissions) {
  const auto as_nobody = [] {
    if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0)) _exit(99);
  };
  const std::string denied = ": Permission denied\n";
  scratch.Write("locked/a.htm", "hit");
  scratch.Write("open/b.htm", "hit");
  scratch.Write("closed/c.htm", "hit");
  chmod((scratch / "locked").c_str(), 0555);
  chmod((scratch / "locked/a.htm").c_str(), 0666);
  chmod((scratch / "open").c_str(), 0777);
  chmod((scratch / "open/b.htm").c_str(), 0444);
  chmod((scratch / "closed").c_str(), 0);
  fs::copy(ENTITY_DATA, scratch / ".data");
  chmod((scratch / ".data").c_str(), 0711);
  const ProgramEnd end =
      RunTsl({"replace", "hit", "new", folder, "--yes", "--data", scratch / ".data"}, as_nobody);
  EXPECT_EQ(end.status, 2);
  EXPECT_EQ(end.err, "tsl: " + scratch / "open/b.htm" + denied + "tsl: " + scratch / "locked/a.htm" + denied +
                         "tsl: " + scratch / "closed" + denied);
  chmod((scratch / "closed").c_str(), 0777);
  for (const char* name : {"locked/a.htm", "open/b.htm", "closed/c.htm"})
    EXPECT_EQ(scratch.Read(name), "hit");
  chmod((scratch / "locked").c_str(), 0777);
}

TEST_F(Tsl, WalksDeepTreesAndPassesLoopsOver) {
  scratch.Write("beside.htm", "hit");
  fs::create_directory(scratch / "site");
  fs::create_symlink("loop.htm", scratch / "site/loop.htm");
  fs::create_symlink("..", scratch / "site/up");
  const fs::path start = fs::current_path();
  fs::current_path(scratch / "site");
  constexpr int kDepth = 500;
  for (int i = 0; i < kDepth; ++i) {
    fs::create_directory("a_long_name");
    fs::current_path("a_long_name");
  }
  fs::create_symlink("../a_long_name/page.htm", "link.htm");
  { std::ofstream("page.htm") << "hit"; }
  const ProgramEnd end = RunTsl({"replace", "hit", "new", scratch / "site", "--yes"});
  EXPECT_EQ(end.status, 0) << end.err;
  EXPECT_EQ(scratch.Read("beside.htm"), "hit");
  std::string content;
  std::ifstream("page.htm") >> content;
  EXPECT_EQ(content, "new");
  fs::current_path(start);
}

#ifndef TESSARIL_SANITIZED  // whose own memory no limit holds
TEST_F(Tsl, NeedsLessThanThreeTimesALargeFile) {
  constexpr std::size_t kSize = std::size_t{96} << 20;
  std::string page(kSize, '.');
  page.replace(kSize / 2, 4, " hit");
  scratch.Write("a.htm", page);
  const auto limited = [] {
    const rlimit limit{3 * kSize, 3 * kSize};
    setrlimit(RLIMIT_AS, &limit);
  };
  const ProgramEnd end = RunTsl({"replace", "hit", "longer", folder, "--yes"}, limited);
  EXPECT_EQ(end.status, 0) << end.err;
  EXPECT_EQ(scratch.Read("a.htm").size(), kSize + 3);
}

// The report of so many hits does not fit: no page is changed that the report is silent of.
TEST_F(Tsl, ChangesNoPageThatItHasNoMemoryToReport) {
  std::string page;
  for (int i = 0; i < 400000; ++i) page += "foo  x\r\n";
  for (const rlim_t megabytes : {110, 125, 140, 155, 170}) {
    scratch.Write("a.htm", page);
    const auto limited = [megabytes] {
      const rlimit limit{megabytes << 20, megabytes << 20};
      setrlimit(RLIMIT_AS, &limit);
    };
    const ProgramEnd end = RunTsl({"replace", "foo", "foobar", folder, "--yes"}, limited);
    const bool changed = scratch.Read("a.htm") != page;
    EXPECT_EQ(changed, end.out.find("*** Changed:") != std::string::npos) << megabytes;
    EXPECT_EQ(end.status, changed ? 0 : 2) << megabytes << end.err;
  }
}
#endif

}  // namespace
}  // namespace tessaril
