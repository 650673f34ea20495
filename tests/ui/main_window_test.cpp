#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QRadioButton>
#include <QtTest>
#include <filesystem>

#include "tests/ui/support/driver.h"
#include "ui/main/folder_list.h"
#include "ui/shared/byte_text_box.h"
#include "ui/shared/place.h"

namespace tessaril {
namespace {

ScratchFolder& Site() {
  static ScratchFolder site;
  site.Write("a.htm", "<P>one hit</P>");
  site.Write("notes.txt", "a note");
  site.Write("sub/b.htm", "<P>two hits</P>");
  site.Write("sub/deep/c.htm", "<P>three</P>");
  return site;
}

TEST(MainWindow, ChoosesAFunctionByMouseAndSpaceOnly) {
  Driver driver(Site().path());
  const char* const controls[] = {"CGI",      "CGIname",     "CGIlabel",    "UCfilename",  "chkTags",
                                  "ULcase",   "SearchTekst", "SearchLabel", "ReplaceText", "ReplaceLabel",
                                  "ShowEach", "cmdSearch",   "MarkedOnly"};
  const struct {
    int function;
    const char* shown;  // one character for each control
    const char* ShowEachCaption;
    const char* filListToolTip;
  } rows[] = {
      {0, "xxxx------xxx", "See each result",
       "Doubleclick file to show in browser. Single-click to select a file."},
      {1, "----------xxx", "Confirm before replacing", "Doubleclick file to show in browser"},
      {2, "-----------xx", "Confirm before replacing", "Doubleclick file to show in browser"},
      {3, "----xxxx--xxx", "See each result", "Doubleclick file to show in browser"},
      {4, "----xxxxxxxxx", "Confirm before replacing", "Doubleclick file to show in browser"},
      {5, "-------------", "Confirm before replacing", "Click file to be shown in browser"},
      {6, "-----------xx", "Confirm before replacing", "Doubleclick file to show in browser"},
  };
  EXPECT_EQ(driver.Find("filList")->toolTip(),
            "Doubleclick file to show in browser. Single-click to select a file");
  EXPECT_EQ(driver.Find("dirList")->toolTip(), "Search highlighted directory and its subdirectories");
  const auto shown = [&] {
    std::string text;
    for (const char* const control : controls) text += driver.IsShown(control) ? 'x' : '-';
    return text;
  };
  EXPECT_EQ(shown(), "----------xxx");
  for (const auto& row : rows) {
    driver.Choose(row.function);
    EXPECT_EQ(shown(), row.shown) << row.function;
    EXPECT_EQ(driver.Caption("ShowEach"), row.ShowEachCaption) << row.function;
    EXPECT_EQ(driver.Find("filList")->toolTip(), row.filListToolTip) << row.function;
  }
  auto* const colours = driver.Find<QRadioButton>("Option1_6");
  colours->setFocus();
  for (int i = 0; i < 3; ++i) QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
  EXPECT_TRUE(driver.Find<QRadioButton>("Option1_4")->isChecked());
  EXPECT_EQ(shown(), "-----------xx");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_T, Qt::AltModifier);
  EXPECT_TRUE(driver.Find<QRadioButton>("Option1_3")->isChecked());
  EXPECT_EQ(shown(), "-----------xx");
  QTest::keyClick(driver.Find("Option1_3"), Qt::Key_Space);
  EXPECT_EQ(shown(), "----xxxx--xxx");
  QTest::keyClick(driver.Find("Option1_3"), Qt::Key_Down);
  driver.Press("cmdSearch");  // applies the selection, then searches
  EXPECT_EQ(driver.Report().substr(driver.Report().find("\r\n\r\n") + 4, 8), "Search t");
  driver.Press("cmdSearch");
  EXPECT_EQ(shown(), "----xxxxxxxxx");
}

TEST(MainWindow, MarksShowsAndSwitchesToTheEditor) {
  Driver driver(Site().path());
  auto* const marked = driver.Find<QCheckBox>("MarkedOnly");
  driver.ClickItem("filList", "a.htm");
  EXPECT_TRUE(marked->isChecked());
  EXPECT_EQ(marked->property("Tag"), "1");
  EXPECT_EQ(driver.Find("dirList")->toolTip(), "Change directory.");
  driver.Press("MarkedOnly");
  EXPECT_EQ(marked->property("Tag"), "0");
  EXPECT_TRUE(driver.Find<QListWidget>("filList")->selectedItems().isEmpty());
  EXPECT_EQ(driver.Find("dirList")->toolTip(),
            "Change directory or search highlighted directory and its subdirectories");
  driver.Choose(5);
  EXPECT_EQ(driver.LastSaid(), "Select a file to show!");
  driver.Choose(3);
  driver.ClickItem("filList", "a.htm", true);
  EXPECT_EQ(driver.LastSaid(),
            "Can't open the browser because Microsoft Internet Explorer 4+ is not installed!");
  EXPECT_EQ(driver.Caption("Option1_5"), "Sho&w file in Editor, only");
  EXPECT_FALSE(driver.start_up->Frame().findChild<QAction*>("menuStartInBrowser")->isEnabled());
  EXPECT_TRUE(driver.start_up->Frame().findChild<QAction*>("menuStartInEditor")->isChecked());
  const std::string settings = driver.program.Read("TSL32.ini");
  EXPECT_NE(settings.find("BrowserFirst = 0\r\n"), std::string::npos);
  EXPECT_NE(settings.find("LastDir = " + Site().path() + "\r\n"), std::string::npos) << settings;
  driver.Find<QComboBox>("cboSearchSpec")->setFocus();
  QTest::keyClick(driver.Find("cboSearchSpec"), Qt::Key_Down);
  QTest::keyClick(driver.Find("cboSearchSpec"), Qt::Key_Down);  // pictures, which the browser would show
  EXPECT_EQ(driver.Caption("Option1_5"), "Sho&w file in Editor, only");
}

TEST(MainWindow, PicksFiltersAndTypesThem) {
  Driver driver(Site().path());
  auto* const filter = driver.Find<QComboBox>("cboSearchSpec");
  auto* const files = driver.Find<QListWidget>("filList");
  EXPECT_TRUE(filter->hasFocus());
  EXPECT_EQ(files->count(), 1);
  filter->lineEdit()->selectAll();
  QTest::keyClicks(filter->lineEdit(), "*.txt");
  QTest::keyClick(filter->lineEdit(), Qt::Key_Return);
  QTest::keyClick(filter->lineEdit(), Qt::Key_Tab);
  EXPECT_EQ(filter->currentText(), "*.txt");
  EXPECT_EQ(files->count(), 1);
  EXPECT_EQ(driver.Caption("Option1_5"), "Sho&w file - Start in Browser");
  filter->setCurrentIndex(2);
  QTest::keyClick(filter, Qt::Key_Down);
  EXPECT_EQ(filter->currentText(), "*.txt");
  EXPECT_EQ(files->item(0)->text(), "notes.txt");
  EXPECT_EQ(driver.Caption("Option1_5"), "Sho&w file - Start in Editor");
  EXPECT_NE(driver.program.Read("TSL32.ini").find("BrowserFirst = 0\r\n"), std::string::npos);
}

TEST(MainWindow, OpensFoldersByClickEnterAndLeaving) {
  Driver driver(Site().path());
  auto* const folders = driver.Find<FolderList>("dirList");
  const auto down = [&](int times) {
    for (int i = 0; i < times; ++i) QTest::keyClick(folders, Qt::Key_Down);
  };
  folders->setFocus();
  down(1);
  EXPECT_EQ(folders->Highlighted(), Site() / "sub");
  EXPECT_EQ(folders->OpenFolder(), Site().path());
  driver.Choose(3);
  driver.Type("SearchTekst", "hit");  // leaves the list
  EXPECT_EQ(folders->OpenFolder(), Site() / "sub");
  driver.ClickItem("dirList", "deep", true);
  EXPECT_EQ(folders->OpenFolder(), Site() / "sub/deep");
  EXPECT_EQ(driver.Find<QListWidget>("filList")->item(0)->text(), "c.htm");
  folders->setFocus();
  QTest::keyClick(folders, Qt::Key_Up);
  QTest::keyClick(folders, Qt::Key_Up);
  folders->clearFocus();
  driver.Type("SearchTekst", QString::fromUtf8("h\xC3\xA9"));
  folders->OpenHighlighted();
  folders->setFocus();
  down(1);
  driver.Press("cmdSearch");  // only opens the highlighted folder
  EXPECT_EQ(folders->OpenFolder(), Site() / "sub");
  EXPECT_TRUE(driver.IsShown("Picture1"));
  EXPECT_EQ(driver.Caption("cmdSearch"), "&Search");
  EXPECT_EQ(driver.Find("cmdSearch")->toolTip(), "Click to start the search");
  EXPECT_EQ(driver.Find<QLineEdit>("SearchTekst")->text(), QString::fromUtf8("h\xC3\xA9"));
  driver.Press("cmdSearch");
  EXPECT_TRUE(driver.IsShown("Picture2"));
  EXPECT_TRUE(driver.Report().starts_with("In \"" + (Site() / "sub") + "\" and all")) << driver.Report();
  driver.Press("cmdSearch");
  std::filesystem::remove_all(Site() / "sub/deep");
  down(1);
  for (const bool searches :
       {false, true}) {  // the highlighted folder is gone, and then no longer highlighted
    driver.Press("cmdSearch");
    EXPECT_EQ(driver.IsShown("Picture2"), searches);
  }
}

TEST(MainWindow, TextBoxesForgetTheirHintOnce) {
  Driver driver(Site().path());
  driver.Choose(4);
  auto* const search = driver.Find<QLineEdit>("SearchTekst");
  auto* const replace = driver.Find<QLineEdit>("ReplaceText");
  EXPECT_EQ(search->text(), "Insert search text here");
  driver.Press("SearchTekst");
  EXPECT_EQ(search->text(), "");
  QTest::keyClicks(search, "abc");
  driver.Press("SearchTekst");
  EXPECT_EQ(search->text(), "abc");
  replace->setFocus(Qt::TabFocusReason);
  QTest::keyClicks(replace, "x");
  EXPECT_EQ(replace->text(), "x");
  driver.Press("ReplaceText");
  EXPECT_EQ(replace->text(), "x");
}

TEST(MainWindow, WarnsWhenProposalsAreNoLongerShown) {
  Driver driver(Site().path());
  driver.Press("ShowEach");
  driver.Press("ShowEach");
  driver.Press("ShowEach");
  ASSERT_EQ(driver.said.size(), 2u);
  EXPECT_EQ(driver.said[0],
            "Warning!\nSwitching this function off may be dangerous,\n"
            "especially if used with the \"&xxxx;\" function!");
  driver.answers = {"cancel"};
  driver.Press("cmdSearch");
  EXPECT_TRUE(driver.LastSaid().starts_with("Performing this function without manual control"));
  EXPECT_TRUE(driver.IsShown("Picture1"));
  driver.Choose(0);
  driver.Type("CGIname", "a&b");
  EXPECT_EQ(driver.Caption("CGI"), "Don't check links with \"a&&b\"");
  driver.Press("CGI");
  EXPECT_FALSE(driver.IsShown("CGIname") || driver.IsShown("CGIlabel"));
}

TEST(MainWindow, LiesWhereThePanelsSay) {
  Driver driver(Site().path());
  FrameWindow& frame = driver.start_up->Frame();
  const auto left = [&](const char* name) { return driver.Find(name)->x(); };
  EXPECT_EQ(frame.windowTitle(), "Tessaril");
  EXPECT_EQ(driver.Find("MainWindow")->size(), QSize(Pixels(7110), Pixels(5355)));
  EXPECT_EQ(left("cmdExit"), Pixels(5940));
  EXPECT_EQ(left("cmdSearch"), Pixels(4968));
  EXPECT_FALSE(driver.IsShown("cmdUdskriv") || driver.IsShown("cmdSeeResults"));
  driver.Choose(3);
  driver.Press("cmdSearch");
  for (const QSize size : {frame.size(), QSize(1200, 900), QSize(10, 10)}) {
    frame.resize(size);
    QTest::qWait(1);
    EXPECT_GE(frame.width(), Pixels(7290));
    EXPECT_GE(frame.height(), Pixels(6105));
    const int width = driver.Find("MainWindow")->width();
    EXPECT_EQ(width, frame.width());
    EXPECT_EQ(left("cmdExit"), width - Pixels(1200));
    EXPECT_EQ(left("cmdSearch"), width - Pixels(2200));
    EXPECT_EQ(left("cmdUdskriv"), width - Pixels(3200));
    EXPECT_EQ(left("cmdSaveAs"), width - Pixels(4200));
    EXPECT_EQ(driver.Find("UdTxt")->geometry(),
              QRect(Pixels(72), Pixels(432), frame.width() - Pixels(360), frame.height() - Pixels(1230)));
  }
  EXPECT_EQ(frame.windowTitle(), "Tessaril");
  QTest::keyClick(driver.Find("cmdSearch"), Qt::Key_M, Qt::AltModifier);  // "To Main", not the menu "Misc."
  EXPECT_TRUE(driver.IsShown("Picture1"));
  EXPECT_EQ(driver.Find("MainWindow")->size(), QSize(Pixels(7110), Pixels(5355)));
  EXPECT_TRUE(driver.Find("cboSearchSpec")->hasFocus());
}

// The items of a menu, those of menus in it indented.
std::string ItemsOf(const QMenu& menu, const std::string& indent = "  ") {
  std::string items;
  for (const QAction* const item : menu.actions()) {
    const std::string name = (item->menu() ? item->menu()->objectName() : item->objectName()).toStdString();
    items += indent + name + " " + item->text().toStdString() + (item->isSeparator() ? "---" : "") +
             (item->isChecked()     ? " [x]"
              : item->isCheckable() ? " [ ]"
                                    : "") +
             (item->isEnabled() ? "" : " disabled") +
             (item->shortcut().isEmpty() ? "" : " " + item->shortcut().toString().toStdString()) + "\n";
    if (item->menu()) items += ItemsOf(*item->menu(), indent + "  ");
  }
  return items;
}

TEST(Frame, HasItsMenus) {
  Driver driver(Site().path());
  std::string menus;
  for (const QAction* const menu : driver.start_up->Frame().menuBar()->actions()) {
    menus += menu->menu()->objectName().toStdString() + " " + menu->text().toStdString() + "\n";
    menus += ItemsOf(*menu->menu());
  }
  EXPECT_EQ(menus, R"(menuMisc &Misc.
  menu0PrinterFont &Printer Font
  menu0Monospaced &Monospaced Results Font [ ]
  menuSpace0 ---
  menuShowFile "&Show file" starts in
    menuStartInBrowser &Browser [x]
    menuStartInEditor &Editor [ ]
  menuSpace1 ---
  menuExit &Exit
menuSite &Site
  menuSiteRules &Rules of this site...
  menuNoRules &No rules (classic) disabled
  menuSpace2 ---
  menuUndo &Undo last run...
menu0Help &Help
  menuHelp &Help F1
  menu1About &About
)");
}

TEST(Frame, KeepsWhatItsMenusSay) {
  Driver driver(Site().path());
  FrameWindow& frame = driver.start_up->Frame();
  const auto item = [&frame](const char* name) { return frame.findChild<QAction*>(name); };
  for (const char* const first : {"menuStartInEditor", "menuStartInEditor", "menuStartInBrowser"}) {
    const bool browser = first == std::string("menuStartInBrowser");
    item(first)->trigger();  // the ticked one stays ticked
    EXPECT_EQ(item("menuStartInBrowser")->isChecked(), browser);
    EXPECT_EQ(item("menuStartInEditor")->isChecked(), !browser);
    EXPECT_EQ(driver.Caption("Option1_5"),
              browser ? "Sho&w file - Start in Browser" : "Sho&w file - Start in Editor");
    EXPECT_NE(
        driver.program.Read("TSL32.ini").find(browser ? "BrowserFirst = -1\r\n" : "BrowserFirst = 0\r\n"),
        std::string::npos);
  }
  const QFont usual = driver.Find("UdTxt")->font();
  item("menu0Monospaced")->trigger();
  EXPECT_TRUE(driver.Find("UdTxt")->font().fixedPitch());
  EXPECT_EQ(driver.Find("UdTxt")->font().pointSizeF(), usual.pointSizeF());
  item("menu0Monospaced")->trigger();
  EXPECT_EQ(driver.Find("UdTxt")->font(), usual);
  driver.program.Write("~TSLtemp.htm", "a page that a run left");
  for (const char* const answer : {"cancel", "ok"}) {
    driver.answers = {answer};
    item("menuExit")->trigger();
    EXPECT_EQ(driver.LastSaid(), "Leave Tessaril?");
    EXPECT_EQ(std::filesystem::exists(driver.program / "~TSLtemp.htm"), answer == std::string("cancel"));
  }
}

}  // namespace
}  // namespace tessaril
