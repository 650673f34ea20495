#include "site/site_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <random>

#include "engine/disk_files.h"
#include "site/site_choice.h"
#include "tests/support/file_size_limit.h"
#include "tests/support/scratch_folder.h"

namespace tessaril {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

std::size_t CountOf(std::string_view key, std::string_view text) {
  std::size_t count = 0;
  for (std::size_t at = text.find(key); at != std::string_view::npos; at = text.find(key, at + 1)) ++count;
  return count;
}

TEST(SiteRules, ComeOfEveryWayToWriteThem) {
  const std::string text =
      "\xEF\xBB\xBF# a site\r\nrules = 'classic'\r\nindex = [ # one\r\n  \"a\\u00e4\", '''b''' ,\r\n]\r\n"
      "\"ignore_files\" = ['x']\r\nignore_links = [\"\"\"\r\ny\"\"\"]\r\nlowercase_names = true\r\n"
      "start = ['s'] \r\nallow_missing = ['m']\r\nallow_unlinked = []\r\nentities = \"ascii\"";
  SiteRules rules;
  EXPECT_EQ(ReadSiteRules(text, rules).reason(), "");
  const SiteRules expected{Rules::kClassic, {"a\xC3\xA4", "b"}, {"x"}, {"y"}, true, {"s"}, {"m"}, {}, true};
  EXPECT_TRUE(rules == expected);
  EXPECT_EQ(ReadSiteRules("# nothing\n", rules).reason(), "");
  EXPECT_TRUE(rules == SiteRules());
  EXPECT_EQ(ReadSiteRules(NewSiteText(expected), rules).reason(), "");
  EXPECT_TRUE(rules == expected);
}

TEST(SiteRules, AreUnderstoodAsAWholeOrNotAtAll) {
  const std::string list = " must be a list of texts that are not empty";
  const struct {
    std::string text;
    std::string reason;  // how it begins
  } rows[] = {
      {"\nindx = []\n", "line 2, column 1: unknown key \"indx\"; expected is one of rules, index,"},
      {"[site]\nrules = 'today'", "line 1, column 2: unknown key \"site\""},
      {"start = ['a']\n[[a.b]]", "line 2, column 3: unknown key \"a\""},
      {"Rules = 'today'", "line 1, column 1: unknown key \"Rules\""},
      {"rules.x = 'today'", "line 1, column 1: rules must be \"today\" or \"classic\""},
      {"\xEF\xBB\xBFrules = 'Today'", "line 1, column 9: rules must be \"today\" or \"classic\""},
      {"entities = true", "line 1, column 12: entities must be \"utf-8\" or \"ascii\""},
      {"entities = ['ascii']", "line 1, column 12: entities must be"},
      {"lowercase_names = 'true'", "line 1, column 19: lowercase_names must be true or false"},
      {"lowercase_names = 1", "line 1, column 19: lowercase_names must be true or false"},
      {"index = 'a'", "line 1, column 9: index" + list},
      {"[[index]]", "line 1, column 1: index" + list},
      {"start = [\r\n 'a', # \xC3\xA4\r\n '\xC3\xA4\xE2\x82\xAC', 1]", "line 3, column 8: start" + list},
      {"allow_missing = ['a', '']", "line 1, column 23: allow_missing" + list},
      {"allow_unlinked = [['a']]", "line 1, column 19: allow_unlinked" + list},
      {"rules = 'Today'\nx = 1", "line 1, column 9: rules"},  // the first fault
      {"x = 1\nrules = 'Today'", "line 1, column 1: unknown"},
      {"rules = 'today'\nrules = 'today'", "line 2, column 9: "},
      {"rules = 'today'\n\n[rules]", "line 3, column 1: "},
      {"start = ['a'", "line 1, column 13: "},
      {"index = []\r\nstart = 'a\n'", "line 2, column "},
      {"# \xC3\xA4\xFF", "line 1, column 4: not UTF-8"},
      {"\n# \xED\xA0\x80", "line 2, column 3: not UTF-8"},
      {"index = ['\xC3\xA4', \xC3\xA4]", "line 1, column 15: "},
      {"\xC3\xA4 = 1", "line 1, column 1: "},
      {std::string("# a\nrules\0 = 'today'", 20), "line 2, column 6: "},
  };
  SiteRules ignored;
  const std::string unquoted = ReadSiteRules("index = []\n rules = today\n", ignored).reason();
  EXPECT_TRUE(unquoted.starts_with("line 2, column 11: ")) << unquoted;
  EXPECT_TRUE(unquoted.ends_with("; rules must be \"today\" or \"classic\"")) << unquoted;
  for (const auto& row : rows) {
    SiteRules rules;
    rules.index = {"kept"};
    const std::string reason = ReadSiteRules(row.text, rules).reason();
    EXPECT_TRUE(reason.starts_with(row.reason)) << row.text << "\n" << reason;
    EXPECT_EQ(rules.index, Names{"kept"}) << row.text;
  }
}

TEST(SiteRules, ChangeOnlyTheirOwnBytes) {
  const struct {
    std::string before;
    Names start;  // the one list that changes
    std::string after;
  } rows[] = {
      {"start = []", {"a", "b"}, "start = [\"a\", \"b\"]"},
      {"start = [ # c\n]", {"a"}, "start = [\"a\" # c\n]"},
      {"start = ['a']", {"a", "b"}, "start = ['a', \"b\"]"},
      {"start = [ 'a' , ] # c", {"a", "b"}, "start = [ 'a' , \"b\", ] # c"},
      {"start = ['b']", {"a", "b"}, "start = [\"a\", 'b']"},
      {"start = ['a', 'b', 'c']", {"a", "c"}, "start = ['a', 'c']"},
      {"start = ['a', 'b', 'c']", {"b", "d"}, "start = ['b', \"d\"]"},
      {"start = ['a', 'b', 'c']", {"a"}, "start = ['a']"},
      {"start = ['a', 'b', 'c']", {}, "start = []"},
      {"start = ['a']", {"#]"}, "start = [\"#]\"]"},
      {"start = ['#', ']']#\n#", {"]"}, "start = [']']#\n#"},
      {"start = ['a'\n# c,\n, 'b']", {"b"}, "start = [\n# c,\n 'b']"},
      {"start = [\r\n\t'a', # A\r\n\t'c' # C\r\n]\r\n",
       {"a", "b", "c", "d"},
       "start = [\r\n\t'a', # A\r\n\t\"b\",\r\n\t'c', # C\r\n\t\"d\"\r\n]\r\n"},
      {"start = [\n  'a', # A\n  'b',\n  'c',\n]", {"c", "d"}, "start = [\n  # A\n  'c',\n  \"d\",\n]"},
      {"start = [\n  'a', # A\n  'b'\n]", {"a"}, "start = [\n  'a' # A\n]"},
      {"rules = 'classic' # c\r\n# d", {"a"}, "rules = 'classic' # c\r\n# d\r\nstart = [\"a\"]\r\n"},
      {"\xEF\xBB\xBF# \xC3\xA4\n\"start\" = [ '\xC3\xA4',\n]",
       {},
       "\xEF\xBB\xBF# \xC3\xA4\n\"start\" = [ \n]"},
  };
  SiteRules rules;
  for (const auto& row : rows) {
    ASSERT_TRUE(ReadSiteRules(row.before, rules).ok()) << row.before;
    EXPECT_EQ(ChangedSiteText(row.before, rules), row.before);
    rules.start = row.start;
    EXPECT_EQ(ChangedSiteText(row.before, rules), row.after);
  }
  rules = {Rules::kClassic, {"index.html"}, {}, {}, true, {"s"}, {}, {"x"}, true};
  EXPECT_EQ(ChangedSiteText(
                "entities = '''utf-8''' # e\nlowercase_names=false# l\n\nindex = []\nstart = ['s']\n", rules),
            "entities = \"ascii\" # e\nlowercase_names=true# l\n\nindex = [\"index.html\"]\nstart = ['s']\n"
            "rules = \"classic\"\nallow_unlinked = [\"x\"]\n");
}

TEST(SiteRules, TakeListsThatAreLong) {
  SiteRules rules;
  for (int i = 0; i < 100000; ++i) rules.ignore_links.push_back("a/" + std::to_string(i));
  const std::string text = NewSiteText(rules);
  rules.ignore_links.insert(rules.ignore_links.begin() + 50000, "b");
  SiteRules read;
  EXPECT_EQ(ReadSiteRules(ChangedSiteText(text, rules), read).reason(), "");
  EXPECT_TRUE(read == rules);
}

// Whatever a list looks like and becomes: it states the new texts, and no comment is lost.
TEST(SiteRules, ChangeInEveryLayout) {
  std::mt19937 random(11);
  const auto one_of = [&random](const Names& words) { return words[random() % words.size()]; };
  const auto texts = [&] {
    Names names(random() % 6);
    for (std::string& name : names) name = one_of({"a", "b", "c", "#", "]", ",", "\xC3\xA4"});
    return names;
  };
  const auto gap = [&] { return one_of({"", "", " ", "\n  ", " # x,\n", "\r\n#]\r\n\t", "\n\n"}); };
  for (int i = 0; i < 20000; ++i) {
    const Names olds = texts();
    std::string text = "# top\nstart = [" + gap();
    for (std::size_t j = 0; j < olds.size(); ++j) {
      text += "'" + olds[j] + "'" + gap() + (j + 1 < olds.size() || random() % 2 == 0 ? "," : "") + gap();
    }
    text += "] # end";
    SiteRules rules;
    ASSERT_EQ(ReadSiteRules(text, rules).reason(), "") << text;
    rules.start = texts();
    const std::string changed = ChangedSiteText(text, rules);
    SiteRules stated;
    ASSERT_EQ(ReadSiteRules(changed, stated).reason(), "") << text << "\n->\n" << changed;
    ASSERT_EQ(stated.start, rules.start) << text << "\n->\n" << changed;
    for (const char* const comment : {"# top\n", "# x,\n", "#]\r\n", "] # end"}) {
      ASSERT_EQ(CountOf(comment, changed), CountOf(comment, text)) << text << "\n->\n" << changed;
    }
  }
}

class SiteFileTest : public testing::Test {
 protected:
  std::optional<Site> Load(const std::string& folder) {
    std::optional<Site> site;
    EXPECT_EQ(LoadSite(files, folder, site).reason(), "");
    return site;
  }

  ScratchFolder scratch;
  DiskFiles files;
};

TEST_F(SiteFileTest, HoldsForItsFolderAndAllBelow) {
  scratch.Write("a/tessaril.toml", "index = ['a']");
  scratch.Write("a/b/c/tessaril.toml", "index = ['c']");
  fs::create_directories(scratch / "a/b/d/tessaril.toml");  // a folder is no site file
  fs::create_directories(scratch / "a/deep");
  fs::create_directory_symlink(scratch / "a/b/c", scratch / "link");
  EXPECT_EQ(FindSiteFile(scratch.path()), "");
  EXPECT_FALSE(Load(scratch.path()));
  EXPECT_EQ(Load(scratch / "a/b")->root, scratch / "a");
  EXPECT_EQ(Load(scratch / "a/b/d")->rules.index, Names{"a"});
  EXPECT_EQ(Load(scratch / "a/b/c")->rules.index, Names{"c"});
  EXPECT_EQ(Load(scratch / "link")->root, scratch / "link");
  std::string path = scratch / "a/deep";
  fs::current_path(path);
  for (int i = 0; i < 30; ++i) {  // longer than the system takes at once
    const std::string name(200, 'n');
    fs::create_directory(name);
    fs::current_path(name);
    path += "/" + name;
  }
  EXPECT_EQ(Load(path)->root, scratch / "a");
  ASSERT_TRUE(CreateSiteFile(".", {}).ok());
  EXPECT_EQ(Load(path)->root, path);
  fs::current_path("/");

  // One that is there and cannot be understood is not passed over.
  std::optional<Site> site = Site{"old", {}};
  scratch.Write("a/b/c/tessaril.toml", "# 1\n\nrules = 3");
  const std::string file = scratch / "a/b/c/tessaril.toml";
  EXPECT_TRUE(
      LoadSite(files, scratch / "a/b/c", site).reason().starts_with(file + ": line 3, column 9: rules"));
  EXPECT_FALSE(site);
  fs::remove(file);
  fs::create_symlink("none", file);
  EXPECT_EQ(LoadSite(files, scratch / "a/b/c", site).reason(), file + ": No such file or directory");
}

TEST_F(SiteFileTest, IsChosenByFileAndCommandLine) {
  scratch.Write("today/tessaril.toml", "index = ['a']");
  scratch.Write("classic/tessaril.toml", "rules = 'classic'\nindex = ['a']");
  scratch.Write("none/a.htm", "");
  const struct {
    const char* folder;
    std::optional<Rules> rules;
    bool is_today;  // links and entities are judged so
    const char* index;
  } rows[] = {
      {"today", {}, true, "a"},
      {"classic", {}, false, ""},
      {"none", {}, false, ""},
      {"today", Rules::kToday, true, "a"},
      {"classic", Rules::kToday, true, "a"},
      {"none", Rules::kToday, true, "index.html"},
      {"today", Rules::kClassic, false, ""},
      {"none", Rules::kClassic, false, ""},
  };
  for (const auto& row : rows) {
    for (const FunctionRow& function : AllFunctions()) {
      RunOptions options;
      options.function = function.function;
      options.dirList = scratch / row.folder;
      ASSERT_EQ(ChooseSite(row.rules, files, options).reason(), "");
      const bool concerns = function.function == Function::kLinks || function.function == Function::kEntities;
      ASSERT_EQ(options.site.has_value(), row.is_today && concerns) << row.folder << function.command;
      if (!options.site) continue;
      EXPECT_EQ(options.site->root, scratch / row.folder);
      EXPECT_EQ(options.site->rules.index.at(0), row.index);
    }
  }
}

TEST_F(SiteFileTest, IsMadeChangedAndRemovedAsAWhole) {
  SiteRules rules;
  rules.start = {"\"q\" \\ \t\x7F", "\xC3\xA4*"};
  EXPECT_EQ(SaveSiteRules(files, scratch.path(), rules).reason(), "");
  EXPECT_TRUE(Load(scratch.path())->rules == rules);
  EXPECT_EQ(CreateSiteFile(scratch.path(), {}).reason(), "File exists");
  const std::string text = scratch.Read("tessaril.toml");
  for (const char* bad : {"", "\xFF"}) {
    SiteRules unstated = rules;
    unstated.ignore_files = {bad};
    EXPECT_FALSE(SaveSiteRules(files, scratch.path(), unstated).ok());
  }
  rules.lowercase_names = true;
  {
    const FileSizeLimit limit(100);
    EXPECT_EQ(SaveSiteRules(files, scratch.path(), rules).reason(), "File too large");
    fs::create_directory(scratch / "sub");
    EXPECT_EQ(CreateSiteFile(scratch / "sub", rules).reason(), "File too large");
    EXPECT_TRUE(fs::remove(scratch / "sub"));
  }
  EXPECT_EQ(scratch.Read("tessaril.toml"), text);
  chmod((scratch / "tessaril.toml").c_str(), 0640);
  EXPECT_EQ(SaveSiteRules(files, scratch.path(), rules).reason(), "");
  EXPECT_TRUE(Load(scratch.path())->rules == rules);
  EXPECT_EQ(fs::status(scratch / "tessaril.toml").permissions(), fs::perms(0640));
  scratch.Write("tessaril.toml", "rules = 0");
  EXPECT_TRUE(SaveSiteRules(files, scratch.path(), rules).reason().starts_with("line 1, column 9: rules"));
  EXPECT_EQ(scratch.Read("tessaril.toml"), "rules = 0");
  EXPECT_EQ(scratch.Names(), Names{"tessaril.toml"});
  EXPECT_EQ(RemoveSiteFile(scratch.path()).reason(), "");
  EXPECT_EQ(RemoveSiteFile(scratch.path()).reason(), "No such file or directory");
}

}  // namespace
}  // namespace tessaril
