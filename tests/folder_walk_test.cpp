#include "engine/folder_walk.h"

#include <gtest/gtest.h>

#include <new>

#include "engine/text_search.h"
#include "tests/support/memory_files.h"
#include "tests/support/script_host.h"

namespace tessaril {
namespace {

using Paths = std::vector<std::string>;

class Walk : public testing::Test {
 protected:
  Walk() { options.ShowEach = false; }
  bool Run(const std::string& folder) {
    options.dirList = folder;
    RunContext run{files, host, options, state, entities, {"hit", ""}, {}};
    return FolderWalk(run, SearchFile).WalkFolder(folder);
  }

  MemoryFiles files;
  ScriptHost host;
  RunOptions options;
  RunState state;
  const Entities entities;
};

TEST_F(Walk, VisitsSubfoldersFirstAndTheLastOfThemFirst) {
  for (const char* path :
       {"/s/a.htm", "/s/B.htm", "/s/_.htm", "/s/b.htm", "/s/n.txt", "/s/.hidden.htm", "/s/sub1/x.htm",
        "/s/sub2/y.htm", "/s/sub2/deep/z.htm", "/s/.git/c.htm", "/t/o.htm"}) {
    files.contents[path] = "";
  }
  EXPECT_FALSE(Run("/s"));
  EXPECT_EQ(host.files, (Paths{"/s/sub2/deep/z.htm", "/s/sub2/y.htm", "/s/sub1/x.htm", "/s/_.htm", "/s/a.htm",
                               "/s/B.htm", "/s/b.htm"}));
  EXPECT_EQ(files.visits, (Paths{"/s/sub2/deep", "/s/sub2", "/s/sub1", "/s"}));
  EXPECT_EQ(state.FolderPrefix, "/s/");
}

TEST_F(Walk, FormsPathsInTheRoot) {
  files.contents = {{"/a.htm", ""}, {"/x/b.htm", ""}};
  Run("/");
  EXPECT_EQ(host.files, (Paths{"/x/b.htm", "/a.htm"}));
  EXPECT_EQ(state.FolderPrefix, "/");
  options.MarkedOnly = true;
  options.filList = "a.htm";
  Run("/");
  EXPECT_EQ(state.RunFile, "//a.htm");
}

TEST_F(Walk, VisitsTheMarkedFileOnly) {
  files.contents = {{"/s/a.htm", "hit"}, {"/s/b.txt", "hit"}, {"/s/x/c.htm", "hit"}};
  options.MarkedOnly = true;
  options.filList = "b.txt";
  EXPECT_FALSE(Run("/s"));
  EXPECT_EQ(host.files, Paths{"/s/b.txt"});
  EXPECT_EQ(files.visits, Paths{"/s"});
}

TEST_F(Walk, EndsOnCancelBeforeTheNextFile) {
  files.contents = {{"/s/a.htm", "hit"}, {"/s/b.htm", "hit"}, {"/s/x/c.htm", "hit"}};
  host.cancel_at = 2;
  EXPECT_TRUE(Run("/s"));
  EXPECT_EQ(host.files, Paths{"/s/x/c.htm"});
  EXPECT_EQ(state.RunFile, "/s/a.htm");
  EXPECT_TRUE(state.StopRequested);
}

TEST_F(Walk, EndsOnCancelThoughNoFileFollows) {
  files.contents = {{"/s/x/c.htm", "hit"}, {"/s/n.txt", ""}};
  host.on_file = [this](const std::string&) { host.cancel_at = 1; };  // during the last file
  EXPECT_FALSE(Run("/s"));
  EXPECT_EQ(host.files, Paths{"/s/x/c.htm"});
  EXPECT_TRUE(state.StopRequested);
}

TEST_F(Walk, TakesTheFilesOfAFolderWhenTheyAreStarted) {
  files.contents = {{"/s/a.htm", ""}, {"/s/x/c.htm", ""}};
  host.on_file = [this](const std::string&) {
    files.contents.erase("/s/a.htm");
    files.contents["/s/b.htm"] = "";
  };
  EXPECT_FALSE(Run("/s"));
  EXPECT_EQ(host.files, (Paths{"/s/x/c.htm", "/s/b.htm"}));
}

TEST_F(Walk, EndsBehindTheFileInWhichTheUserStops) {
  files.contents = {{"/s/a.htm", "hit"}, {"/s/x/c.htm", "hit"}, {"/s/x/y/d.htm", "hit"}};
  options.ShowEach = true;
  host.answers = {{kKeep, ""}, {kStop, ""}};
  EXPECT_FALSE(Run("/s"));
  EXPECT_EQ(host.files, (Paths{"/s/x/y/d.htm", "/s/x/c.htm"}));
}

TEST_F(Walk, TellsWhatCannotBeReadAndGoesOn) {
  files.contents = {{"/s/a.htm", "hit"}, {"/s/b.htm", "hit"}, {"/s/x/c.htm", "hit"}, {"/s/y/d.htm", "hit"}};
  files.unreadable = {"/s/a.htm", "/s/x"};
  EXPECT_FALSE(Run("/s"));
  EXPECT_EQ(host.failures, (Paths{"/s/x: Permission denied", "/s/a.htm: Input/output error"}));
  EXPECT_EQ(host.files, (Paths{"/s/y/d.htm", "/s/a.htm", "/s/b.htm"}));
  host.on_file = [this](const std::string& path) {  // gone behind the listing
    if (path == "/s/a.htm") files.contents.erase("/s/b.htm");
  };
  Run("/s");
  EXPECT_EQ(host.failures.back(), "/s/b.htm: No such file or directory");
}

TEST_F(Walk, GivesUpWhenTheReportCannotGrow) {
  files.contents = {{"/s/a.htm", "hit"}, {"/s/x/c.htm", "hit"}, {"/s/x/y/d.htm", "hit"}};
  host.on_file = [](const std::string& path) {
    if (path == "/s/x/c.htm") throw std::bad_alloc();
  };
  EXPECT_TRUE(Run("/s"));
  EXPECT_EQ(host.messages, Paths{"Output text too long.\r\nAbandoning search..."});
  EXPECT_EQ(host.failures, Paths{"/s/x/c.htm: Cannot allocate memory"});
  EXPECT_EQ(host.files.back(), "/s/x/c.htm");
  options.MarkedOnly = true;
  options.filList = "c.htm";
  EXPECT_FALSE(Run("/s/x"));
  EXPECT_EQ(host.messages.size(), 1U);
}

}  // namespace
}  // namespace tessaril
