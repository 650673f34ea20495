#include <gtest/gtest.h>

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPrintDialog>
#include <QtTest>
#include <cstdio>
#include <filesystem>

#include "tests/support/program.h"
#include "tests/ui/support/driver.h"
#include "ui/browser/browser_plugin.h"
#include "ui/main/folder_list.h"
#include "ui/shared/byte_text_box.h"

namespace tessaril {
namespace {

namespace fs = std::filesystem;

// With the site file that is given, if any.
void CopySite(const ScratchFolder& scratch, const char* site_file) {
  fs::remove_all(scratch / "site");
  fs::copy(EXAMPLE_SITE, scratch / "site", fs::copy_options::recursive);
  if (site_file != nullptr) scratch.Write("site/tessaril.toml", site_file);
}

// Every file of a folder and its content.
std::vector<std::string> Everything(const ScratchFolder& scratch, const std::string& folder) {
  std::vector<std::string> files;
  for (const auto& entry : fs::recursive_directory_iterator(scratch / folder)) {
    if (!entry.is_regular_file()) continue;
    const std::string name = fs::relative(entry.path(), scratch.path()).string();
    files.push_back(name + "\n" + scratch.Read(name));
  }
  std::sort(files.begin(), files.end());
  return files;
}

// A text as an answers file takes it.
std::string Escaped(const std::string& bytes) {
  std::string text;
  for (const char c : bytes) {
    char code[8];
    std::snprintf(code, sizeof code, "\\x%02X", static_cast<unsigned char>(c));
    text += code;
  }
  return text;
}

struct Setting {
  const char* control;
  const char* text;  // to type into it; null to press it
};

// Sets the window up for the command, whose name and texts come first.
void Prepare(Driver& driver, int function, const Words& command, const std::vector<Setting>& settings,
             const char* marked) {
  driver.Choose(function);
  if (function == 3 || function == 4) driver.Type("SearchTekst", QString::fromStdString(command[1]));
  if (function == 4) driver.Type("ReplaceText", QString::fromStdString(command[2]));
  for (const Setting& setting : settings) {
    if (setting.text == nullptr) driver.Press(setting.control);
    if (setting.text != nullptr) driver.Type(setting.control, setting.text);
  }
  if (*marked != '\0') driver.ClickItem("filList", marked);
}

TEST(WindowRun, DoesWhatTslDoes) {
  const struct {
    int function;
    Words command;
    const char* answer;
    std::vector<Setting> settings;
    const char* marked;
    const char* typed;  // into the lower field, in the place of what is proposed there
    const char* site_file = nullptr;
  } rows[] = {
      {0, {"links"}, "keep", {}, "", ""},
      {0, {"links"}, "replace", {}, "", ""},
      {0, {"links"}, "keep", {}, "", "x.htm"},
      {0, {"links", "--allow-uppercase"}, "keep", {{"UCfilename", nullptr}}, "", ""},
      {0, {"links", "--check-cgi"}, "keep", {{"CGI", nullptr}}, "", ""},
      {0, {"links", "--cgi-name", "visit"}, "keep", {{"CGIname", " visit"}}, "index.htm", ""},
      {0, {"links"}, "keep", {}, "", "", "rules = \"classic\""},
      {0, {"links"}, "keep", {}, "", "x.htm", ""},
      {0, {"links"}, "replace", {}, "", "", "start = [\"index.htm\"]"},
      {1, {"entities"}, "replace", {}, "", ""},
      {1, {"entities"}, "replace", {}, "", "", ""},
      {2, {"external"}, "", {}, "", ""},
      {3, {"search", "opening hours"}, "keep", {}, "", ""},
      {3, {"search", "Opening Hours", "--case"}, "keep", {{"ULcase", nullptr}}, "", ""},
      {4, {"replace", "opening hours", "times of day"}, "replace", {}, "", ""},
      {4, {"replace", "e", "E"}, "replace", {}, "map.htm", ""},
      {4, {"replace", "\xC3\xB8", "\xC4\x8D"}, "replace", {}, "", ""},
      {4, {"replace", "\xC3\xA9", "\xC4\x8D", "--no-tags"}, "replace", {{"chkTags", nullptr}}, "", ""},
      {4, {"replace", "the", "x"}, "replace", {}, "", "\xC4\x8D\n\xC3\xA9"},
      {6, {"colours"}, "replace", {}, "", ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.command) + row.marked + row.typed);
    ScratchFolder scratch;
    CopySite(scratch, row.site_file);
    Driver driver(scratch / "site");
    Prepare(driver, row.function, row.command, row.settings, row.marked);
    std::string answers;
    driver.on_dialog = [&](QWidget& dialog) {
      auto* const field = dialog.findChild<ByteTextBox*>("ReplaceText");
      driver.answers = {field == nullptr ? "ok" : row.answer};
      answers += driver.answers.front();
      if (field != nullptr && *row.typed != '\0') {
        Driver::TypeInto(*field, QString::fromUtf8(row.typed));
        answers += " " + Escaped(field->Bytes());
      }
      answers += "\n";
    };
    driver.Press("cmdSearch");
    const std::string report = driver.Report();
    const std::vector<std::string> files = Everything(scratch, "site");

    CopySite(scratch, row.site_file);
    Words words = row.command;
    words.insert(words.end(),
                 {scratch / "site" + (*row.marked ? "/" : "") + row.marked, "--report", scratch / "report"});
    if (row.function != 2) {
      scratch.Write("answers", answers);
      words.insert(words.end(), {"--answers", scratch / "answers"});
    }
    const ProgramEnd end = RunTsl(words);
    EXPECT_LT(end.status, 2) << end.err;
    EXPECT_EQ(report, scratch.Read("report"));
    EXPECT_EQ(files, Everything(scratch, "site"));
    if (row.function == 2) {
      EXPECT_EQ(driver.program.Read("~TSLtemp.htm"), report);
      EXPECT_TRUE(driver.LastSaid().starts_with("Can't display the results in the browser because"));
      driver.Press("cmdSearch");
      EXPECT_TRUE(driver.IsShown("cmdSeeResults"));
    }
  }
}

TEST(WindowRun, TakesAColourFromThePalette) {
  ScratchFolder scratch;
  scratch.Write("a.htm", "<BODY BGCOLOR=\"#123456\">");
  Driver driver(scratch.path());
  driver.Choose(6);
  driver.on_dialog = [&driver](QWidget& dialog) {
    if (dialog.objectName() != "frmReplace") return;
    QTest::mouseClick(dialog.findChild<QWidget*>("btnPalette"), Qt::LeftButton);
    driver.answers = {"replace"};
  };
  driver.Press("cmdSearch");
  EXPECT_EQ(scratch.Read("a.htm"), "<BODY BGCOLOR=\"#336666\">");
  driver.Press("cmdSearch");
  EXPECT_EQ(driver.Find<QLineEdit>("SearchTekst")->text(), "#123456");
  EXPECT_EQ(driver.Find<QLineEdit>("ReplaceText")->text(), "#336666");
  driver.Choose(4);
  driver.Press("SearchTekst");
  EXPECT_EQ(driver.Find<QLineEdit>("SearchTekst")->text(), "#123456");
  driver.Press("ReplaceText");
  EXPECT_EQ(driver.Find<QLineEdit>("ReplaceText")->text(), "");
}

// Pages of which each holds one hit, `bytes` long.
void WritePages(const ScratchFolder& scratch, int count, std::size_t bytes) {
  for (int i = 0; i < count; ++i) {
    scratch.Write("site/" + std::to_string(100 + i) + ".htm", "hit " + std::string(bytes, 'x'));
  }
}

TEST(WindowRun, EndsBetweenFilesWhenCancelIsPressed) {
  ScratchFolder scratch;
  WritePages(scratch, 3, 1);
  scratch.Write("outer.htm", "hit");
  Driver driver(scratch.path());
  driver.Choose(3);
  driver.Type("SearchTekst", "hit");
  driver.on_dialog = [&driver](QWidget&) {
    EXPECT_EQ(driver.Caption("cmdExit"), "&Cancel");
    EXPECT_EQ(driver.Find("cmdExit")->toolTip(), "Stop the search");
    EXPECT_FALSE(driver.IsShown("cmdSearch") || driver.IsShown("cmdUdskriv"));
    EXPECT_EQ(driver.Caption("lblCount"), "1");
    QTimer::singleShot(0, [&driver] {
      driver.Press("cmdExit");
      driver.Press("cmdExit");
    });
  };
  driver.Press("cmdSearch");
  ASSERT_EQ(driver.answered.size(), 1u);
  EXPECT_NE(driver.Report().find("   *** Stopped ***\r\nin file " + scratch / "site/101.htm"),
            std::string::npos)
      << driver.Report();
  EXPECT_EQ(driver.Caption("cmdExit"), "E&xit");
  EXPECT_EQ(driver.Caption("cmdSearch"), "To &Main");
  EXPECT_TRUE(driver.Find("cmdSearch")->hasFocus());
  driver.on_dialog = {};
  EXPECT_EQ(driver.Find<FolderList>("dirList")->OpenFolder(), scratch / "site");
  driver.Press("cmdSearch");
  EXPECT_EQ(driver.Caption("lblCount"), "0");
  driver.answers = {"stop"};
  driver.Press("cmdSearch");
  EXPECT_NE(driver.Report().find("in file " + scratch / "site/100.htm"), std::string::npos);
  driver.Press("cmdSearch");
  const std::string report = driver.Report();
  driver.Press("cmdSeeResults");
  EXPECT_TRUE(driver.IsShown("Picture2"));
  EXPECT_EQ(driver.Caption("cmdSearch"), "To &Main");
  EXPECT_EQ(driver.Report(), report);
}

TEST(WindowRun, LeavesInTheMiddleWithoutAReport) {
  ScratchFolder scratch;
  WritePages(scratch, 3, 1);
  Driver driver(scratch / "site");
  driver.Choose(4);
  driver.Type("SearchTekst", "hit");
  driver.Type("ReplaceText", "new");
  int dialogs = 0;
  driver.on_dialog = [&](QWidget&) {
    if (++dialogs == 2) driver.start_up->Frame().close();
  };
  driver.answers = {"replace"};
  driver.Press("cmdSearch");
  EXPECT_EQ(dialogs, 2);
  EXPECT_EQ(scratch.Read("site/100.htm"), "new x");
  EXPECT_EQ(scratch.Read("site/101.htm"), "hit x");
  EXPECT_EQ(driver.Report().find("Stopped"), std::string::npos);
  EXPECT_NE(driver.program.Read("TSL32.ini").find("LastDir = " + scratch / "site\r\n"), std::string::npos);
}

TEST(WindowRun, LeavesBeforeTheFirstFile) {
  ScratchFolder scratch;
  scratch.Write("a.htm", "hit");
  Driver driver(scratch.path());
  driver.Choose(4);
  driver.Press("ShowEach");
  driver.Type("SearchTekst", "hit");
  driver.Type("ReplaceText", QString::fromUtf8("\xC4\x8D"));  // has no name, which is warned of
  driver.ClickItem("filList", "a.htm");
  driver.on_dialog = [&driver](QWidget&) { driver.start_up->Frame().Leave(); };
  driver.Press("cmdSearch");
  EXPECT_EQ(scratch.Read("a.htm"), "hit");
}

TEST(WindowRun, ShortensALongReport) {
  const struct {
    std::size_t bytes;  // of the report
    const char* answer;
    std::size_t messages;
  } rows[] = {{54000, "", 0}, {54001, "no", 1}, {54001, "yes", 1}};
  ScratchFolder scratch;
  scratch.Write("a.htm", "");
  Driver driver(scratch.path());
  driver.Choose(3);
  driver.Press("ShowEach");
  driver.Type("SearchTekst", "hit");
  int printed = 0;  // times that the user was asked where to
  driver.on_dialog = [&printed](QWidget& dialog) {
    if (auto* const print = qobject_cast<QPrintDialog*>(&dialog)) {
      ++printed;
      print->reject();
    }
  };
  const auto report_of = [&](std::size_t hits, std::size_t tail) {
    std::string page;
    for (std::size_t i = 0; i < hits; ++i) page += std::string(150, '-') + "hit";
    scratch.Write("a.htm", page + std::string(tail, '-'));
    driver.said.clear();
    driver.Press("cmdSearch");
    driver.Press("cmdSearch");
    return driver.Report().size();
  };
  const std::size_t one = report_of(1, 0);
  const std::size_t step = report_of(3, 0) - report_of(2, 0);
  for (const auto& row : rows) {
    if (*row.answer != '\0') driver.answers = {row.answer};
    const std::size_t shown = report_of(1 + (row.bytes - one) / step, (row.bytes - one) % step);
    EXPECT_EQ(driver.said.size(), row.messages);
    EXPECT_EQ(printed, row.answer == std::string("yes") ? 1 : 0);
    const auto* const box = driver.Find<ByteTextBox>("UdTxt");
    EXPECT_EQ(box->isReadOnly(), row.messages > 0);
    if (row.messages == 0) {
      EXPECT_EQ(shown, row.bytes);
      EXPECT_EQ(box->palette().color(QPalette::Base), QColor(192, 255, 255));
      continue;
    }
    EXPECT_TRUE(
        driver.said[0].starts_with("Output text too long to display in window!\nOnly the first approx. "));
    EXPECT_TRUE(
        driver.Report().ends_with("\r\r\n\r\n" + std::string(50, '=') + "\r\n*** Report Abbreviated ***"));
    EXPECT_EQ(box->palette().color(QPalette::Base), QColor(255, 255, 192));
    QTest::keyClicks(driver.Find("UdTxt"), "x");
    EXPECT_EQ(driver.Report().size(), shown);
  }
}

TEST(WindowRun, SavesWhatTheBoxHolds) {
  ScratchFolder scratch;
  scratch.Write("site/a.htm", "\xE9 hit\r\n\xC3\xA9 line");
  scratch.Write("old.txt", "old");
  Driver driver(scratch / "site");
  driver.Choose(3);
  driver.Type("SearchTekst", "hit");
  driver.Press("cmdSearch");
  auto* const box = driver.Find<ByteTextBox>("UdTxt");
  QTest::keyClicks(box, "My ");
  const std::string edited = driver.Report();
  EXPECT_TRUE(edited.starts_with("My In \""));
  EXPECT_NE(edited.find("\xE9 hit\r\n\xC3\xA9 line"), std::string::npos);
  for (const char* const name : {"new.txt", "old.txt", "missing/new.txt"}) {
    driver.said.clear();
    driver.on_dialog = [&](QWidget& dialog) {
      auto* const save = qobject_cast<QFileDialog*>(&dialog);
      if (save == nullptr) return;
      EXPECT_EQ(save->nameFilters().first(), "*.txt");
      save->setOption(QFileDialog::DontConfirmOverwrite);
      save->findChild<QLineEdit*>()->setText(QString::fromStdString(scratch / name));
      QTest::keyClick(save->findChild<QLineEdit*>(), Qt::Key_Return);
    };
    driver.Press("cmdSaveAs");
  }
  EXPECT_EQ(scratch.Read("new.txt"), edited);
  EXPECT_EQ(scratch.Read("old.txt"), edited);
  EXPECT_EQ(driver.said, std::vector<std::string>{"Not saved: No such file or directory"});
}

TEST(WindowRun, TellsOnceWhatCouldNotBeRead) {
  ScratchFolder scratch;
  WritePages(scratch, 13, 1);
  Driver driver(scratch / "site");
  driver.Choose(3);
  driver.Type("SearchTekst", "hit");
  driver.on_dialog = [&](QWidget& dialog) {
    if (dialog.objectName() == "frmReplace")
      fs::remove_all(scratch / "site");
    else
      EXPECT_NE(driver.Report().find("*** Found:"), std::string::npos);
  };
  driver.Press("cmdSearch");
  ASSERT_EQ(driver.answered.size(), 2u);
  const std::string& told = driver.LastSaid();
  EXPECT_NE(told.find("\n" + scratch / "site/110.htm: No such file or directory\nand 2 more"),
            std::string::npos)
      << told;
  EXPECT_EQ(std::count(told.begin(), told.end(), '\n'), 11);
  driver.Press("cmdSearch");  // the folder is gone: the nearest one above is opened
  EXPECT_EQ(driver.Find<FolderList>("dirList")->OpenFolder(), scratch.path());
}

TEST(StartUp, ReadsTheSettingsInTheirOrder) {
  ScratchFolder site;
  site.Write("sub/a.htm", "");
  const std::string settings = "[LastDir]\r\n   LastDir = " + site / "sub" +
                               "\r\n[Font]\r\n   Size = 8.25\r\n   Name = Times\r\n[CGI]\r\n   CGI =  x \r\n"
                               "[BrowserFirst]\r\n   BrowserFirst = 0\r\n[UPPERcaseFilenames]\r\n"
                               "   UPPERcaseFilenames = -1\r\n\r\n";
  Driver driver("", settings);
  EXPECT_EQ(driver.Find<QListWidget>("filList")->count(), 1);
  EXPECT_EQ(driver.Caption("CGI"), "Don't check links with \"x\"");
  EXPECT_EQ(driver.Caption("Option1_5"), "Sho&w file - Start in Editor");
  EXPECT_TRUE(driver.Find<QCheckBox>("UCfilename")->isChecked());
  driver.answers = {"cancel", "ok"};
  driver.Press("cmdExit");
  EXPECT_EQ(driver.LastSaid(), "Leave Tessaril?");
  EXPECT_EQ(driver.program.Read("TSL32.ini"), settings);
  driver.Press("cmdExit");
  const std::string saved = driver.program.Read("TSL32.ini");
  EXPECT_TRUE(
      saved.starts_with("[LastDir]\r\n   LastDir = " + site / "sub" + "/\r\n[Font]\r\n   Size = 8.25\r\n"));
  EXPECT_TRUE(saved.ends_with("   CGI = x\r\n" + settings.substr(settings.find("[BrowserFirst]"))));
}

TEST(StartUp, TakesTheCurrentFolderForOneThatIsNone) {
  Driver driver("");
  EXPECT_EQ(driver.Find<FolderList>("dirList")->OpenFolder(), fs::current_path());
  const std::string start = "[LastDir]\r\n   LastDir = ";
  const std::string settings = driver.program.Read("TSL32.ini");
  ASSERT_TRUE(settings.starts_with(start + "c:\\\r\n")) << settings;
  driver.answers = {"ok"};
  driver.Press("cmdExit");
  EXPECT_EQ(driver.program.Read("TSL32.ini"),
            start + fs::current_path().string() + "/" + settings.substr(start.size() + 3));
}

TEST(StartUp, EndsWithoutEntityData) {
  ScratchFolder scratch;
  StartUp start_up(scratch.path(), scratch / "user", BrowserFromPlugin(scratch.path()));
  QString told;
  int boxes = 0;
  QTimer::singleShot(0, [&told] {
    auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    told = box->text();
    QTimer::singleShot(50, box, &QDialog::accept);  // nothing else is said meanwhile
  });
  QTimer::singleShot(30, [&boxes] {
    for (const QWidget* const window : QApplication::topLevelWidgets()) {
      boxes += window->isVisible() && qobject_cast<const QMessageBox*>(window) != nullptr;
    }
  });
  EXPECT_FALSE(start_up.Run({"/no/such/file.htm"}));
  EXPECT_EQ(boxes, 1);
  EXPECT_EQ(told.toStdString(), "No such file or directory\nCan't find file " + scratch / "alphatg1.dat");
}

}  // namespace
}  // namespace tessaril
