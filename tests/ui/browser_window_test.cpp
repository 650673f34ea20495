#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QPrintDialog>
#include <QtTest>
#include <filesystem>

#include "tests/ui/support/driver.h"
#include "tests/ui/support/print_steps.h"
#include "tests/ui/support/recorded_browser.h"
#include "ui/shared/place.h"

namespace tessaril {
namespace {

using Words = std::vector<std::string>;

// A program with a browser component, on a small site.
class Browser : public testing::Test {
 protected:
  Browser() {
    site.Write("a b%.htm", "<P>a page</P>");
    site.Write("b.htm", "<A HREF=http://127.0.0.1/x>out</A>");
    site.Write("\xE6.htm", "<P>a page</P>");
    driver.emplace(site.path(), "", browser.Maker());
  }

  void ShowFirstPage() {
    driver->ClickItem("filList", "b.htm", true);
    browser.Complete("B", Address("b.htm"));
    browser.asked.clear();
  }
  QString Address(const std::string& name) const { return QString::fromStdString("file://" + (site / name)); }
  QComboBox& Box() { return *driver->Find<QComboBox>("cboAddress"); }
  Words List() {
    Words list;
    for (int i = 0; i < Box().count(); ++i) list.push_back(Box().itemText(i).toStdString());
    return list;
  }
  bool IsTimerOn() { return driver->start_up->Frame().findChild<QTimer*>("timTimer")->isActive(); }
  std::string FrameCaption() { return driver->start_up->Frame().windowTitle().toStdString(); }
  std::string Caption() { return driver->Find("frmBrowser")->windowTitle().toStdString(); }

  ScratchFolder site;
  RecordedBrowser browser;
  std::optional<Driver> driver;
};

TEST_F(Browser, ShowsTheMarkedFileAndLeadsBack) {
  driver->ClickItem("filList", "a b%.htm", true);
  const std::string path = site / "a b%.htm";
  EXPECT_EQ(browser.Asked(), Words{"file://" + site.path() + "/a%20b%25.htm"});  // once, though it is new
  EXPECT_EQ(Box().currentText().toStdString(), path);
  EXPECT_EQ(List(), Words{path});
  EXPECT_TRUE(IsTimerOn());
  EXPECT_TRUE(driver->IsShown("frmBrowser"));
  EXPECT_FALSE(driver->IsShown("MainWindow"));
  EXPECT_EQ(driver->Find("frmBrowser")->width(), driver->start_up->Frame().width());
  EXPECT_TRUE(driver->Find("Reset")->isEnabled());
  EXPECT_TRUE(driver->Find("brwWebBrowser")->hasFocus());
  EXPECT_EQ(driver->said, Words());

  browser.events->DownloadBegun();
  EXPECT_EQ(driver->Find("Command1")->property("Tag"), "0");
  browser.Complete("A page", Address("a%20b%25.htm"));
  EXPECT_EQ(driver->Find("Command1")->property("Tag"), "");
  EXPECT_EQ(Caption(), "A page");
  EXPECT_EQ(FrameCaption(), "Tessaril - [A page]");
  EXPECT_EQ(driver->Caption("StatusBar1_3"), "A page");
  EXPECT_EQ(Box().currentText(), Address("a%20b%25.htm"));
  browser.Complete("A page", Address("a%20b%25.htm"));
  EXPECT_EQ(List(), (Words{path, Address("a%20b%25.htm").toStdString()}));

  FrameWindow& frame = driver->start_up->Frame();
  frame.showMinimized();
  frame.showNormal();
  QTest::qWait(1);
  EXPECT_EQ(FrameCaption(), "Tessaril - [A page]");

  driver->Press("Reset");
  EXPECT_EQ(FrameCaption(), "Tessaril");
  EXPECT_FALSE(driver->IsShown("frmBrowser"));
  EXPECT_TRUE(driver->IsShown("Picture1"));
  EXPECT_FALSE(driver->IsShown("cmdSearch"));
  EXPECT_EQ(driver->Find("MainWindow")->size(), QSize(Pixels(7110), Pixels(5355)));
  EXPECT_TRUE(driver->Find<QCheckBox>("MarkedOnly")->isChecked());
  browser.Complete("Late", "file:///late.htm");
  EXPECT_EQ(FrameCaption(), "Tessaril");
  browser.asked.clear();

  driver->ClickItem("filList", "b.htm");
  EXPECT_EQ(browser.Asked(), Words{Address("b.htm").toStdString()});
  EXPECT_EQ(Box().currentText().toStdString(), site / "b.htm");
  EXPECT_EQ(browser.made, 1);
}

TEST_F(Browser, ShowsThePageOfExternalLinks) {
  driver->Choose(3);
  driver->Type("SearchTekst", "typed");
  driver->Choose(2);
  driver->Press("cmdSearch");
  const std::string page = driver->program / "~TSLtemp.htm";
  EXPECT_EQ(browser.Asked(), Words{"file://" + page});
  EXPECT_EQ(List(), Words{page});
  EXPECT_NE(driver->program.Read("~TSLtemp.htm").find("127.0.0.1/x"), std::string::npos);
  QTest::keyClick(driver->Find("Reset"), Qt::Key_M, Qt::AltModifier);  // "To Main", not the menu "Misc."
  EXPECT_TRUE(driver->IsShown("Picture1"));
  EXPECT_TRUE(driver->IsShown("cmdSearch"));
  EXPECT_FALSE(driver->IsShown("cmdUdskriv"));
  EXPECT_FALSE(driver->IsShown("cmdSeeResults"));
  EXPECT_EQ(driver->Caption("cmdSearch"), "&Search");
  EXPECT_EQ(driver->Caption("cmdExit"), "E&xit");
  EXPECT_EQ(driver->Caption("lblCount"), "0");
  driver->Choose(3);
  EXPECT_EQ(driver->Find<QLineEdit>("SearchTekst")->text(), "typed");  // this way back leaves it alone
  driver->Choose(2);
  driver->Press("cmdSearch");
  EXPECT_EQ(browser.Asked(), Words{"file://" + page});
}

TEST_F(Browser, RestoresTheMarkFromItsTag) {
  for (const char* const tag : {"1", "0", ""}) {
    driver->Choose(3);
    driver->ClickItem("filList", "b.htm");
    driver->ClickItem("filList", "b.htm", true);
    driver->Find("MarkedOnly")->setProperty("Tag", tag);
    driver->Press("Reset");
    EXPECT_EQ(driver->Find<QCheckBox>("MarkedOnly")->isChecked(), *tag != '0') << tag;
    EXPECT_EQ(driver->Find<QListWidget>("filList")->selectedItems().isEmpty(), *tag == '0') << tag;
  }
}

TEST_F(Browser, TellsHowFarAPageIs) {
  ShowFirstPage();
  const struct {
    int progress;
    int max;
    const char* shown;
  } rows[] = {{50, 100, "Got 50 %"}, {1, 3, "Got 33 %"},    {2, 3, "Got 67 %"},   {1, 200, "Got 1 %"},
              {7, 0, "Got 1 %"},     {-1, 77, "Got 100 %"}, {-1, 0, "Got 100 %"}, {0, 10, "Got 0 %"}};
  for (const auto& row : rows) {
    browser.events->ProgressChanged(row.progress, row.max);
    EXPECT_EQ(driver->Caption("StatusBar1_1"), row.shown) << row.progress;
  }
  const QString wide = "<b>" + QString(500, 'x');
  browser.events->StatusTextChanged(wide);
  EXPECT_TRUE(driver->Caption("StatusBar1_2").startsWith("<b>xxxx"));
  EXPECT_TRUE(driver->Caption("StatusBar1_2").endsWith(QChar(0x2026)));
  EXPECT_EQ(driver->Find("StatusBar1_2")->toolTip(), "Status text");
}

TEST_F(Browser, DoesWhatToolsAndKeysSay) {
  ShowFirstPage();
  const struct {
    const char* tool;
    int key;
    Qt::KeyboardModifiers modifiers;
    const char* asked;
  } rows[] = {
      {"Back", Qt::Key_Left, Qt::AltModifier, "back"},
      {"Forward", Qt::Key_Right, Qt::AltModifier, "forward"},
      {"Refresh", Qt::Key_F5, {}, "refresh"},
      {"Stop", Qt::Key_Escape, {}, "stop"},
      {"Home", 0, {}, "home"},
      {"Search", 0, {}, "search"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.tool);
    const std::string tool = std::string("tbToolBar_") + row.tool;
    EXPECT_EQ(driver->Find(tool.c_str())->toolTip(), row.tool);
    browser.busy = true;
    driver->Press("tbToolBar_Refresh");  // so that the timer is on before
    ASSERT_TRUE(IsTimerOn());
    browser.asked.clear();
    driver->Press(tool.c_str());
    driver->Find("brwWebBrowser")->setFocus();
    if (row.key != 0) QTest::keyClick(driver->Find("brwWebBrowser"), Qt::Key(row.key), row.modifiers);
    EXPECT_EQ(browser.Asked(), Words(row.key != 0 ? 2 : 1, row.asked));
    const bool stops = row.key == Qt::Key_Escape;
    EXPECT_EQ(IsTimerOn(), !stops);
    browser.name = "The title";
    if (stops) driver->Press(tool.c_str());
    EXPECT_TRUE(QTest::qWaitFor([&] { return Caption() == (stops ? "The title" : "Working..."); }));
    browser.busy = false;
    EXPECT_TRUE(QTest::qWaitFor([&] { return !IsTimerOn(); }));
    EXPECT_EQ(Caption(), "The title");
    browser.asked.clear();
  }
  QTest::keyClick(driver->Find("brwWebBrowser"), Qt::Key_L, Qt::ControlModifier);
  EXPECT_TRUE(Box().hasFocus());
  EXPECT_EQ(Box().lineEdit()->selectedText(), Address("b.htm"));
  driver->Press("Reset");
  QTest::keyClick(driver->Find("cboSearchSpec"), Qt::Key_F5);
  EXPECT_EQ(browser.Asked(), Words());
}

TEST_F(Browser, GoesWhereTheAddressSays) {
  site.Write("c%20d.htm", "");
  site.Write("e f.htm", "");
  site.Write("g#h.htm", "");
  site.Write("sub/i.htm", "");
  ShowFirstPage();
  const std::string root = "file://" + site.path();
  const struct {
    std::string typed;
    std::string wanted;
  } rows[] = {
      {site / "a b%.htm", root + "/a%20b%25.htm"},
      {site / "c%20d.htm", root + "/c%2520d.htm"},
      {site / "e%20f.htm", root + "/e%20f.htm"},
      {" " + (site / "b.htm#top") + " ", root + "/b.htm#top"},
      {site / "e%20f.htm#x", root + "/e%20f.htm#x"},
      {site / "g#h.htm", root + "/g%23h.htm"},
      {site / "gone.htm", root + "/gone.htm"},
      {"b.htm", root + "/b.htm"},
      {"sub/i.htm#a", root + "/sub/i.htm#a"},
      {root + "/e%20f.htm", root + "/e%20f.htm"},
      {"http://127.0.0.1:8080/a?b#c", "http://127.0.0.1:8080/a?b#c"},
      {"localhost:8080/a", "http://localhost:8080/a"},
      {"example.org", "http://example.org"},
  };
  for (const auto& row : rows) {
    ASSERT_TRUE(QTest::qWaitFor([&] { return !IsTimerOn(); }));
    Box().setEditText(QString::fromStdString(row.typed));
    QTest::keyClick(&Box(), Qt::Key_Return);
    EXPECT_EQ(browser.Asked(), Words{row.wanted}) << row.typed;
    EXPECT_TRUE(driver->Find("brwWebBrowser")->hasFocus());
    EXPECT_TRUE(IsTimerOn());
  }
  Box().setEditText("  ");
  QTest::keyClick(&Box(), Qt::Key_Return);
  EXPECT_EQ(browser.Asked(), Words());
  EXPECT_EQ(driver->Caption("StatusBar1_2"), "Not an address:   ");
  driver->Press("cboAddress");
  QTest::keyClick(&Box(), Qt::Key_Escape);
  EXPECT_EQ(Box().currentText(), Address("b.htm"));
  browser.asked.clear();
  EXPECT_EQ(List().size(), 2u);  // what is typed joins when it is shown
  Box().setEditText(Box().itemText(1));
  QTest::keyClick(&Box(), Qt::Key_Tab);  // typed, not chosen
  EXPECT_EQ(browser.Asked(), Words());
  Box().setCurrentIndex(1);
  QTest::keyClick(&Box(), Qt::Key_Up);
  EXPECT_EQ(browser.Asked(), Words{Address("b.htm").toStdString()});
}

TEST_F(Browser, NamesFilesThatAreNoText) {
  driver->ClickItem("filList", QString::fromUtf8("\xC3\xA6.htm"), true);
  EXPECT_EQ(browser.Asked(), Words{"file://" + site.path() + "/%E6.htm"});
}

TEST_F(Browser, LaysItselfOut) {
  ShowFirstPage();
  const QWidget* const window = driver->Find("frmBrowser");
  const QWidget* const page = driver->Find("brwWebBrowser");
  for (const QSize size : {driver->start_up->Frame().size(), QSize(1200, 900), QSize(10, 10)}) {
    driver->start_up->Frame().resize(size);
    QTest::qWait(1);
    const int bar_end = driver->Find("picAddress")->geometry().bottom() + 1;
    EXPECT_EQ(Box().width(), window->width() - Pixels(1200));
    EXPECT_EQ(page->width(), window->width() - Pixels(100));
    EXPECT_EQ(page->y(), bar_end);
    EXPECT_EQ(page->height(), window->height() - bar_end - Pixels(320));
  }
  EXPECT_LE(driver->Find("tbToolBar_Search")->geometry().right(), Pixels(3100));
  EXPECT_FALSE(driver->IsShown("qt_toolbar_ext_button"));
}

TEST_F(Browser, PrintsThePage) {
  ShowFirstPage();
  const std::string out = site / "out.pdf";
  driver->on_dialog = [&](QWidget& dialog) {
    auto* const print = qobject_cast<QPrintDialog*>(&dialog);
    ASSERT_NE(print, nullptr);
    dialog.findChild<QLineEdit*>("filename")->setText(QString::fromStdString(out));
    PressPrint(*print, 1);
  };
  driver->Press("PrintWB");  // which the component cannot draw
  EXPECT_EQ(driver->Caption("StatusBar1_2"), "Not printed: The page cannot be drawn");
  EXPECT_FALSE(std::filesystem::exists(out));
  browser.pdf = "%PDF, as it were";
  driver->Press("PrintWB");
  EXPECT_EQ(driver->Caption("StatusBar1_2"), "Printed");
  EXPECT_EQ(site.Read("out.pdf"), "%PDF, as it were");
}

TEST_F(Browser, AsksWhereToSave) {
  ShowFirstPage();
  for (const bool wanted : {true, false}) {
    driver->on_dialog = [&](QWidget& dialog) {
      auto* const save = qobject_cast<QFileDialog*>(&dialog);
      ASSERT_NE(save, nullptr);
      EXPECT_EQ(save->selectedFiles().value(0).toStdString(), site / "x.zip");
      if (wanted) QMetaObject::invokeMethod(save, "accept");
      if (!wanted) save->reject();
    };
    EXPECT_EQ(browser.events->AskWhereToSave("x.zip").toStdString(), wanted ? site / "x.zip" : "");
  }
  driver->on_dialog = nullptr;
  browser.events->SavingFailed("/x.zip", "No space");
  EXPECT_EQ(driver->LastSaid(), "Not saved: /x.zip: No space");
}

TEST_F(Browser, IsMissingForGoodWhenItCannotStart) {
  browser.can_start = false;
  driver->Choose(2);
  driver->Press("cmdSearch");
  EXPECT_TRUE(driver->LastSaid().starts_with("Can't display the results in the browser because"));
  EXPECT_TRUE(driver->IsShown("Picture2"));
  EXPECT_FALSE(driver->start_up->Frame().findChild<QAction*>("menuStartInBrowser")->isEnabled());
  EXPECT_NE(driver->program.Read("TSL32.ini").find("BrowserFirst = 0\r\n"), std::string::npos);
  EXPECT_EQ(driver->start_up->Frame().findChild<QWidget*>("frmBrowser"), nullptr);
  browser.can_start = true;
  driver->Press("cmdSearch");
  driver->Press("cmdSearch");
  EXPECT_EQ(driver->said.size(), 2u);
  EXPECT_EQ(browser.made, 1);
}

}  // namespace
}  // namespace tessaril
