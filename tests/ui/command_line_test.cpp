#include "engine/command_line.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QtTest>
#include <filesystem>

#include "tests/ui/support/driver.h"
#include "ui/main/file_list.h"
#include "ui/main/folder_list.h"

// The start with a file or a folder named on the command line.

namespace tessaril {
namespace {

namespace fs = std::filesystem;

const std::string kBrowserFirst = "Sho&w file - Start in Browser";
const std::string kEditorFirst = "Sho&w file - Start in Editor";
const std::string kAnyPage = "*.htm*;shtm*";
const std::string kSettings =
    "[LastDir]\r\n   LastDir = /\r\n[Font]\r\n   Size = 10\r\n   Name = Arial\r\n[CGI]\r\n   CGI = "
    "CGI-bin\r\n"
    "[BrowserFirst]\r\n   BrowserFirst = 0\r\n[UPPERcaseFilenames]\r\n   UPPERcaseFilenames = 0\r\n\r\n";

class CommandLine : public testing::Test {
 protected:
  CommandLine() {
    for (const char* const name :
         {"a.htm", "index.HTML", "x.shtml", "notes.txt", "page.hhk", "logo.PNG", "manual.pdf", "readme", "h",
          "style.css", ".hidden.htm", "\xC3\xA6 b.htm", "\xE6.htm", "end.txt ", "two  blanks.htm", " "}) {
      site.Write(std::string("sub/") + name, "x");
    }
    fs::create_directory(site / "sub/folder.htm");
    fs::current_path(site.path());
  }
  ~CommandLine() override { fs::current_path(former_); }

  ScratchFolder site;

 private:
  const fs::path former_ = fs::current_path();
};

TEST_F(CommandLine, SelectsTheFile) {
  const struct {
    std::string name;
    std::string filter;
    std::string caption;
    std::string first = kBrowserFirst;  // before
  } rows[] = {
      {"a.htm", kAnyPage, kBrowserFirst},
      {"a.htm", kAnyPage, kEditorFirst, kEditorFirst},
      {"index.HTML", kAnyPage, kEditorFirst, kEditorFirst},
      {"x.shtml", "*.*", kEditorFirst, kEditorFirst},
      {"notes.txt", "*.*", kEditorFirst},
      {"page.hhk", "*.*", kEditorFirst},
      {"h", "*.*", kEditorFirst},
      {"logo.PNG", "*.*", kBrowserFirst, kEditorFirst},
      {"manual.pdf", "*.*", kBrowserFirst, kEditorFirst},
      {".hidden.htm", kAnyPage, kBrowserFirst},
      {"\xC3\xA6 b.htm", kAnyPage, kBrowserFirst},
      {"\xE6.htm", kAnyPage, kBrowserFirst},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    std::string settings = kSettings;
    if (row.first == kBrowserFirst) settings.replace(settings.find("First = 0") + 8, 1, "-1");
    Driver driver(site / ("sub/" + row.name), settings);
    EXPECT_TRUE(driver.said.empty());
    EXPECT_EQ(driver.Find<FolderList>("dirList")->OpenFolder(), site / "sub");
    EXPECT_EQ(driver.Find<FileList>("filList")->Selected(), row.name);
    EXPECT_EQ(driver.Find<QComboBox>("cboSearchSpec")->currentText().toStdString(), row.filter);
    EXPECT_EQ(driver.Caption("Option1_5").toStdString(), row.caption);
    QAction* const in_editor = driver.start_up->Frame().findChild<QAction*>("menuStartInEditor");
    EXPECT_EQ(in_editor->isChecked(), row.caption == kEditorFirst);
    EXPECT_TRUE(driver.Find<QCheckBox>("MarkedOnly")->isChecked());
    EXPECT_EQ(driver.Find("MarkedOnly")->property("Tag"), "1");
    EXPECT_EQ(driver.Find<QTimer>("Timer1")->interval(), 0);
    EXPECT_EQ(driver.program.Read("TSL32.ini"), settings);
    driver.start_up->Frame().Main().ReturnToOptions();  // to the current folder
    EXPECT_EQ(driver.Find<FolderList>("dirList")->OpenFolder(), site / "sub");
  }
}

TEST_F(CommandLine, TellsWhatCannotBeShown) {
  const std::string missing = site / "sub/missing.htm";
  const std::string no_page[] = {site / "sub/readme", site / "sub/style.css"};
  const struct {
    std::string command_line;
    std::string said;
  } rows[] = {
      {missing, "Can't find " + missing},
      {"\"" + site / "sub/a.htm" + "\"", "Can't find \"" + site / "sub/a.htm" + "\""},
      {site / "sub/a.htm/", "Can't find " + site / "sub/a.htm/"},
      {no_page[0], "Can't show the file\n" + no_page[0] + "\nselected in the run command line!"},
      {no_page[1], "Can't show the file\n" + no_page[1] + "\nselected in the run command line!"},
  };
  for (const auto& row : rows) {
    Driver driver(row.command_line, kSettings);
    ASSERT_EQ(driver.said.size(), 1u) << row.command_line;
    EXPECT_EQ(driver.said[0], row.said);
    EXPECT_EQ(driver.Find<FolderList>("dirList")->OpenFolder(), "/");
    EXPECT_FALSE(driver.Find<QCheckBox>("MarkedOnly")->isChecked());
    EXPECT_EQ(driver.Caption("Option1_5").toStdString(), kEditorFirst);
  }
}

TEST_F(CommandLine, OpensAFolderWithNothingSelected) {
  for (const std::string& name :
       {site / "sub/folder.htm", site / "sub/folder.htm/", std::string("sub/folder.htm")}) {
    Driver driver(name, kSettings);
    EXPECT_TRUE(driver.said.empty());
    EXPECT_EQ(driver.Find<FolderList>("dirList")->OpenFolder(), site / "sub/folder.htm");
    EXPECT_EQ(driver.Find<QComboBox>("cboSearchSpec")->currentText().toStdString(), kAnyPage);
    EXPECT_FALSE(driver.Find<QCheckBox>("MarkedOnly")->isChecked());
  }
}

TEST_F(CommandLine, IsOneText) {
  fs::current_path(site / "sub");
  DiskFiles files;
  const struct {
    std::vector<std::string> arguments;
    std::string text;
  } rows[] = {
      {{}, ""},
      {{""}, ""},
      {{" "}, ""},  // though there is such a file
      {{" ", "  "}, ""},
      {{" a.htm "}, "a.htm"},
      {{"\xC3\xA6", "b.htm"}, "\xC3\xA6 b.htm"},
      {{"two", "", "blanks.htm", ""}, "two  blanks.htm"},
      {{"end.txt "}, "end.txt "},  // there is such a file
      {{"end.txt", ""}, "end.txt"},
  };
  for (const auto& row : rows) EXPECT_EQ(CommandLineOf(row.arguments, files), row.text) << row.text;
  Driver driver("two  blanks.htm");  // by its bare name, not from the last folder
  EXPECT_EQ(driver.Find<FileList>("filList")->Selected(), "two  blanks.htm");
}

TEST_F(CommandLine, ListsAHiddenFileWhileItIsMarked) {
  Driver driver(site / "sub/.hidden.htm");
  auto& files = *driver.Find<FileList>("filList");
  const int count = files.count();
  const QPoint place = files.visualItemRect(files.item(1)).center();
  QTest::mousePress(files.viewport(), Qt::LeftButton, {}, place);
  QTest::qWait(2 * QApplication::doubleClickInterval() + 100);
  EXPECT_EQ(files.count(), count);  // where it is released would be another file
  QTest::mouseRelease(files.viewport(), Qt::LeftButton, {}, place);
  QTest::qWait(50);
  EXPECT_EQ(files.count(), count);  // where a second click meets another file
  EXPECT_TRUE(QTest::qWaitFor([&] { return files.count() == count - 1; }));
  EXPECT_EQ(files.Selected(), "a.htm");
}

}  // namespace
}  // namespace tessaril
