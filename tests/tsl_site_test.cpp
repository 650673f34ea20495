#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <sstream>

#include "tests/support/program.h"
#include "tests/support/scratch_folder.h"

// tsl on a site with a site file, and without one by rules of choice.

namespace tessaril {
namespace {

namespace fs = std::filesystem;

class TslSite : public testing::Test {
 protected:
  ScratchFolder scratch;
};

TEST_F(TslSite, JudgesTheSampleSiteByEitherRules) {
  const std::string site = scratch / "site";
  fs::copy(EXAMPLE_SITE, site, fs::copy_options::recursive);
  // "file:line kind", from what is told for machines.
  const auto found = [&site](const std::string& rules) {
    std::istringstream lines(RunTsl({"links", site, "--rules", rules, "--format", "json"}).out);
    const auto value = [](const std::string& line, const std::string& key) {
      const std::size_t begin = line.find("\"" + key + "\":") + key.size() + 3;
      std::string text = line.substr(begin, line.find(",\"", begin) - begin);
      std::erase(text, '"');
      return text;
    };
    Words findings;
    for (std::string line; std::getline(lines, line);) {
      findings.push_back(value(line, "file").substr(site.size() + 1) + ":" + value(line, "line") + " " +
                         value(line, "kind"));
    }
    return findings;
  };
  EXPECT_EQ(found("today"),
            (Words{"visit/tickets.htm:12 missing-anchor", "exhibits/boats.htm:11 letter-case",
                   "exhibits/index.htm:10 letter-case", "index.htm:20 missing-file",
                   "index.htm:22 missing-anchor", "links.htm:13 file-link", "news.html:13 letter-case"}));
  EXPECT_EQ(found("classic"),
            (Words{"visit/tickets.htm:12 missing-anchor", "visit/tickets.htm:12 missing-file",
                   "visit/tickets.htm:12 missing-file", "exhibits/boats.htm:11 upper-case-link",
                   "exhibits/boats.htm:11 missing-file", "exhibits/index.htm:9 missing-anchor",
                   "exhibits/Lantern.htm:null upper-case-file", "exhibits/index.htm:10 missing-file",
                   "exhibits/index.htm:11 missing-file", "index.htm:20 missing-file",
                   "index.htm:22 missing-anchor", "links.htm:13 file-link", "map.htm:4 missing-file",
                   "news.html:13 upper-case-link", "news.html:13 missing-file"}));
  // The site file makes them today's; --yes then mends what differs in letter case only, and nothing else.
  EXPECT_EQ(RunTsl({"init", site}).status, 0);
  EXPECT_EQ(RunTsl({"links", site}).out, RunTsl({"links", site, "--rules", "today"}).out);
  const ProgramEnd mended = RunTsl({"links", site, "--yes", "--transcript", scratch / "t"});
  EXPECT_EQ(mended.status, 1);
  const std::string transcript = scratch.Read("t");
  EXPECT_EQ(std::count(transcript.begin(), transcript.end(), '\n'), 3);
  EXPECT_EQ(found("today"), (Words{"visit/tickets.htm:12 missing-anchor", "index.htm:20 missing-file",
                                   "index.htm:22 missing-anchor", "links.htm:13 file-link"}));
}

TEST_F(TslSite, MendsUnseenOnlyWhatIsRightByEveryNameOfAPage) {
  const std::string page = "<img src=Img.png><img src=IMG.PNG>";
  for (const bool symbolic : {true, false}) {
    ScratchFolder site;
    for (const char* name : {"tessaril.toml", "img.png", "real/Img.png"}) site.Write(name, "");
    site.Write("real/p.html", page);
    symbolic ? fs::create_symlink("real/p.html", site / "p.html")
             : fs::create_hard_link(site / "real/p.html", site / "p.html");
    EXPECT_EQ(RunTsl({"links", site.path(), "--yes"}).status, 1);
    EXPECT_EQ(site.Read("real/p.html"), "<img src=Img.png><img src=Img.png>");
    // Where all names agree there is nothing against it.
    site.Write("real/p.html", page);
    fs::rename(site / "img.png", site / "Img.png");
    EXPECT_EQ(RunTsl({"links", site.path(), "--yes"}).status, 1);
    EXPECT_EQ(site.Read("p.html"), "<img src=Img.png><img src=Img.png>");
  }
}

TEST_F(TslSite, MakesTheFileOfASiteAndKeepsToIt) {
  scratch.Write("site/sub/a.htm", "<p id=x><a href='#x'>");  // in order by today's rules only
  scratch.Write("r", "old report");
  const std::string file = scratch / "site/tessaril.toml";
  const auto enter = [this] { EXPECT_EQ(chdir((scratch / "site/sub").c_str()), 0); };
  EXPECT_EQ(RunTsl({"links", scratch / "site"}).status, 1);
  ProgramEnd end = RunTsl({"init", "../"}, enter);
  EXPECT_EQ(end.out, file + "\n");
  EXPECT_EQ(end.err, "");
  EXPECT_EQ(end.status, 0);
  EXPECT_EQ(RunTsl({"links", scratch / "site"}).status, 0);
  const std::string made = scratch.Read("site/tessaril.toml");
  EXPECT_EQ(RunTsl({"init", scratch / "site"}).err, "tsl: " + file + ": File exists\n");
  EXPECT_EQ(scratch.Read("site/tessaril.toml"), made);
  EXPECT_EQ(RunTsl({"init", scratch / "r"}).err, "tsl: " + scratch / "r" + ": Not a directory\n");
  for (const Words& row : std::vector<Words>{{"init"},
                                             {"init", scratch / "none"},
                                             {"init", scratch / "site/sub", "--yes"},
                                             {"links", scratch / "site", "--rules", "Today"},
                                             {"links", scratch / "site", "--rules", ""},
                                             {"links", scratch / "site", "--rules", "classic|today"},
                                             {"search", "x", scratch / "site", "--rules", "today"},
                                             {"links", scratch / "site/sub", "--report", file}}) {
    EXPECT_EQ(RunTsl(row).status, 2) << row.back();
  }
  EXPECT_EQ(scratch.Read("site/tessaril.toml"), made);

  // Whatever is run there, a file that is not understood stops it.
  scratch.Write("site/tessaril.toml", "# mine\nrules = \"today\"\nindx = []\n");
  for (Words row : std::vector<Words>{{"links"}, {"entities"}, {"external"}, {"search", "b"}, {"colours"}}) {
    row.insert(row.end(),
               {scratch / "site/sub/a.htm", "--report", scratch / "r", "--transcript", scratch / "t"});
    end = RunTsl(row);
    EXPECT_TRUE(end.err.starts_with("tsl: " + file + ": line 3, column 1: unknown key \"indx\"")) << end.err;
    EXPECT_EQ(end.status, 2);
  }
  EXPECT_EQ(RunTsl({"entities", scratch / "site/sub", "--rules", "today"}).status, 2);
  EXPECT_EQ(scratch.Read("r"), "old report");
  EXPECT_FALSE(fs::exists(scratch / "t"));
  EXPECT_EQ(RunTsl({"entities", scratch / "site/sub", "--rules", "classic"}).status, 0);
}

}  // namespace
}  // namespace tessaril
