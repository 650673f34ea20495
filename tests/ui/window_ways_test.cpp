#include <QCheckBox>
#include <QComboBox>
#include <QMdiSubWindow>

#include "tests/ui/support/editor_test.h"
#include "ui/shared/place.h"

// The ways between the main window, the browser and the editor.

namespace tessaril {
namespace {

class WindowWays : public EditorTest {};

TEST_F(WindowWays, LeadsBackToTheMainWindow) {
  driver->ClickItem("filList", "a.htm");
  Open("a.htm");
  EXPECT_EQ(ShownWindow(), "frmEditor");
  EXPECT_TRUE(Box().hasFocus());
  EXPECT_FALSE(driver->IsShown("cmdErrorList"));
  EXPECT_EQ(driver->Find("frmEditor")->width(), driver->start_up->Frame().width());
  driver->Press("MainScreen");
  EXPECT_EQ(Said(), Words());
  EXPECT_EQ(driver->Find("MainWindow")->size(), QSize(Pixels(7110), Pixels(5355)));
  EXPECT_FALSE(driver->IsShown("cmdUdskriv"));
  EXPECT_FALSE(driver->IsShown("cmdSearch"));
  EXPECT_TRUE(driver->Find<QCheckBox>("MarkedOnly")->isChecked());

  const std::function<void()> ways[] = {[&] { driver->Press("MainScreen"); },
                                        [&] { driver->Find("frmEditor")->parentWidget()->close(); },
                                        [&] { QTest::keyClick(&Box(), Qt::Key_M, Qt::AltModifier); }};
  for (const auto& leave : ways) {
    Open("a.htm");
    TypeAtStart("+");
    leave();
    driver->Activate();
    EXPECT_EQ(ShownWindow(), "frmEditor");
    driver->answers = {"ok"};
    leave();
    EXPECT_EQ(Said(), Words(2, kLeaveUnsaved));
    EXPECT_EQ(ShownWindow(), "MainWindow");
    EXPECT_EQ(site.Read("a.htm"), "<P>one\r\ntwo</P>\r\n");
    EXPECT_EQ(Box().Bytes(), "+<P>one\r\ntwo</P>\r\n");
  }
  driver->Find("MarkedOnly")->setProperty("Tag", "0");
  Open("a.htm");
  driver->Find("MarkedOnly")->setProperty("Tag", "0");
  driver->Press("MainScreen");
  EXPECT_FALSE(driver->Find<QCheckBox>("MarkedOnly")->isChecked());
}

TEST_F(WindowWays, ShowsTheResultsAndComesBack) {
  driver->Choose(3);
  driver->Type("SearchTekst", "one");
  driver->Press("cmdSearch");
  driver->Press("cmdSearch");  // "To Main"
  const std::string report = driver->Report();
  Said();
  Open("a.htm");
  ASSERT_TRUE(driver->IsShown("cmdErrorList"));
  TypeAtStart("+");
  driver->Press("Command2");
  EXPECT_FALSE(driver->Find("cmdSearch")->isHidden());
  EditHtml();
  QTest::mouseClick(Box().viewport(), Qt::LeftButton, {}, {5, 5});
  EXPECT_EQ(Shown("lblLine"), "Line 1");
  driver->Press("cmdErrorList");
  EXPECT_EQ(ShownWindow(), "MainWindow");
  EXPECT_TRUE(driver->IsShown("Picture2"));
  EXPECT_FALSE(driver->IsShown("cmdSearch"));
  EXPECT_TRUE(driver->IsShown("cmdUdskriv"));
  EXPECT_EQ(driver->Caption("cmdExit"), "&Return");
  EXPECT_EQ(driver->Find("cmdExit")->toolTip(), "Return to the Editor");
  const int width = driver->Find("MainWindow")->width();
  EXPECT_EQ(width, driver->start_up->Frame().width());
  EXPECT_EQ(driver->Find("cmdExit")->pos(), QPoint(width - Pixels(1200), Pixels(72)));
  EXPECT_EQ(driver->Find("cmdUdskriv")->pos(), QPoint(width - Pixels(3200), Pixels(72)));
  EXPECT_EQ(driver->Report(), report);

  driver->Press("cmdExit");
  EXPECT_EQ(ShownWindow(), "frmEditor");
  EXPECT_TRUE(Box().hasFocus());
  EXPECT_EQ(Shown("lblLine"), "");
  EXPECT_EQ(Said(), Words());
  EXPECT_EQ(Box().Bytes(), "+<P>one\r\ntwo</P>\r\n");
  driver->Press("MainScreen");
  EXPECT_EQ(Said(), Words{kLeaveUnsaved});
  driver->Press("Gem");
  driver->Press("MainScreen");
  EXPECT_EQ(driver->Caption("cmdExit"), "E&xit");
  EXPECT_TRUE(driver->IsShown("Picture1"));

  driver->Find<ByteTextBox>("UdTxt")->SetBytes("one line\n");
  Open("a.htm");
  driver->Press("cmdErrorList");
  EXPECT_EQ(Said(), Words{"No search results to display!"});
  EXPECT_EQ(ShownWindow(), "frmEditor");
}

TEST_F(WindowWays, ShowsWhatIsSavedInTheBrowser) {
  Open("a.htm");
  driver->Press("Command2");
  EXPECT_EQ(ShownWindow(), "frmBrowser");
  EXPECT_EQ(browser.Asked(), Words{Address("a.htm")});
  EXPECT_TRUE(driver->Find("Reset")->isEnabled());
  EXPECT_FALSE(Exists("~temp.htm"));
  driver->Press("Reset");
  EXPECT_EQ(ShownWindow(), "MainWindow");
  EXPECT_EQ(Said(), Words());
  Open("a.htm");
  driver->Press("Command2");
  EXPECT_EQ(browser.Asked(), Words{Address("a.htm")});  // anew
}

TEST_F(WindowWays, ShowsUnsavedTextInTheBrowserAndTakesItBack) {
  Open("a.htm");
  for (int round = 0; round < 2; ++round) {
    TypeAtStart("+");
    const std::string text = Box().Bytes();
    driver->Press("Command2");
    EXPECT_EQ(ShownWindow(), "frmBrowser");
    EXPECT_EQ(browser.Asked().back(), Address("~temp.htm"));
    EXPECT_EQ(site.Read("~temp.htm"), text);
    EXPECT_FALSE(driver->Find("Reset")->isEnabled());
    QTest::keyClick(driver->Find("brwWebBrowser"), Qt::Key_M, Qt::AltModifier);
    driver->Find("frmBrowser")->parentWidget()->close();
    EXPECT_EQ(ShownWindow(), "frmBrowser");
    browser.Complete("A", QString::fromStdString(Address("b.htm")));
    EditHtml();
    EXPECT_EQ(ShownWindow(), "frmEditor");
    EXPECT_TRUE(Box().hasFocus());
    EXPECT_FALSE(Exists("~temp.htm"));
    EXPECT_EQ(Box().Bytes(), text);
    EXPECT_EQ(site.Read("a.htm"), "<P>one\r\ntwo</P>\r\n");
  }
  driver->Press("MainScreen");
  EXPECT_EQ(Said(), Words{kLeaveUnsaved});
  driver->Press("Gem");
  EXPECT_EQ(site.Read("a.htm"), "++<P>one\r\ntwo</P>\r\n");
  driver->Press("Command2");
  EXPECT_EQ(browser.Asked(), Words{Address("a.htm")});
  EXPECT_TRUE(driver->Find("Reset")->isEnabled());
  EditHtml();

  // A new document is not the one whose text was shown before.
  TypeAtStart("+");
  driver->Press("Command2");
  EditHtml();
  driver->answers = {"ok"};
  Item("menuNewDoc").trigger();
  driver->Press("Command2");
  EXPECT_TRUE(driver->Find("Reset")->isEnabled());
  EditHtml();
  EXPECT_EQ(site.Read("a.htm"), "++<P>one\r\ntwo</P>\r\n");
  EXPECT_EQ(Shown("Filname"), site / "Doc0.txt");

  TypeAtStart("+");
  driver->Press("Command2");
  EditHtml();
  driver->answers = {"ok"};
  driver->Press("MainScreen");
  Item("menuStartInBrowser").trigger();
  Open("a.htm");
  EXPECT_TRUE(driver->Find("Reset")->isEnabled());
}

TEST_F(WindowWays, LeavesForeignTemporaryPagesAlone) {
  const std::string question = (site / "~temp.htm") + "\nexists already. Overwrite it?";
  site.Write("~temp.htm", "the user's");
  Open("a.htm");
  driver->Press("Command2");
  EditHtml();
  EXPECT_EQ(site.Read("~temp.htm"), "the user's");
  TypeAtStart("+");
  driver->Press("Command2");
  EXPECT_EQ(ShownWindow(), "frmEditor");
  EXPECT_EQ(site.Read("~temp.htm"), "the user's");
  driver->answers = {"ok"};
  driver->Press("Command2");
  EXPECT_EQ(Said(), Words(2, question));
  site.Write("~temp.htm", "changed meanwhile");
  EditHtml();
  EXPECT_EQ(site.Read("~temp.htm"), "changed meanwhile");
  std::filesystem::remove(site / "~temp.htm");
}

TEST_F(WindowWays, KeepsTheEditedFileThatIsCalledLikeTheTemporaryPage) {
  std::filesystem::create_symlink("~temp.htm", site / "link.htm");
  for (const char* const name : {"~temp.htm", "link.htm"}) {
    site.Write("~temp.htm", std::string(70000, 'x'));
    Open(name);
    TypeAtStart("+");
    const std::string text = Box().Bytes();
    driver->answers = {"ok"};
    driver->Press("Command2");  // the second question is whether the file is to be cut
    EXPECT_EQ(site.Read("~temp.htm").size(), 70000u);
    driver->answers = {"ok", "ok"};
    driver->Press("Command2");
    EditHtml();
    EXPECT_EQ(site.Read("~temp.htm"), text);
    driver->answers = {"ok"};
    driver->Press("MainScreen");
  }
  Open("~temp.htm");
  TypeAtStart("+");
  driver->answers = {"ok", "ok"};
  driver->Press("Command2");
  driver->start_up->Frame().close();
  EXPECT_EQ(ShownWindow(), "frmBrowser");
  EXPECT_TRUE(Exists("~temp.htm"));
}

TEST_F(WindowWays, WritesThroughNoLinkUnasked) {
  for (const bool is_symbolic : {true, false}) {
    if (is_symbolic) {
      std::filesystem::create_symlink("b.htm", site / "~temp.htm");
    } else {
      std::filesystem::create_hard_link(site / "b.htm", site / "~temp.htm");
    }
    Open("a.htm");
    TypeAtStart("+");
    driver->answers = {"ok"};
    driver->Press("Command2");
    EXPECT_EQ(site.Read("b.htm"), "<P>other</P>") << is_symbolic;
    if (ShownWindow() == "frmBrowser") EditHtml();
    std::filesystem::remove(site / "~temp.htm");
    site.Write("b.htm", "<P>other</P>");
    driver->answers = {"ok"};
    driver->Press("MainScreen");
  }
}

TEST_F(WindowWays, LeavesForeignTemporaryPagesAloneWhereThereIsNoBrowser) {
  browser.can_start = false;
  site.Write("~temp.htm", "the user's");
  Open("a.htm");
  TypeAtStart("+");
  for (int times = 0; times < 2; ++times) {
    driver->answers = {"ok", "ok"};
    driver->Press("Command2");
    EXPECT_EQ(site.Read("~temp.htm"), "the user's");
  }
}

TEST_F(WindowWays, EditsOnlyFilesWithAWholePath) {
  site.Write("relative.htm", "text");
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(site.path());
  Open("a.htm");
  driver->Press("Command2");
  driver->Find<QComboBox>("cboAddress")->setEditText("file://relative.htm");
  EditHtml();
  EXPECT_EQ(ShownWindow(), "frmBrowser");
  std::filesystem::current_path(before);
}

TEST_F(WindowWays, TakesUpWhatTheBrowserShows) {
  site.Write("x y.htm", "blank");
  site.Write("x%20y.htm", "percent");
  site.Write("\xE6.htm", "8-bit name");
  Item("menuStartInBrowser").trigger();
  Open("\xC3\xA6.htm");
  EditHtml();  // at once, while the box shows a path that is no text
  EXPECT_EQ(Box().Bytes(), "8-bit name");
  driver->Press("Command2");
  const std::string root = "file://" + site.path();
  const struct {
    std::string address;
    std::string path;  // empty: no such file
  } rows[] = {
      {site / "a.htm", site / "a.htm"},
      {root + "/a.htm#top", site / "a.htm"},
      {root + "/x%20y.htm#a%20b", site / "x y.htm"},
      {root + "/x%2520y.htm?q=1#b", site / "x%20y.htm"},
      {site / "x%20y.htm", site / "x%20y.htm"},
      {root + "/%E6.htm", site / "\xE6.htm"},
      {"http://127.0.0.1/a.htm", ""},
      {site / "gone.htm", ""},
      {"", ""},
  };
  for (const auto& [address, path] : rows) {
    SCOPED_TRACE(address);
    browser.Complete("page", "file:///x");
    driver->Find<QComboBox>("cboAddress")->setEditText(QString::fromStdString(address));
    EditHtml();
    if (path.empty()) {
      EXPECT_EQ(Said(), Words{"Can't open this file in a text editor!"});
      EXPECT_EQ(ShownWindow(), "frmBrowser");
      continue;
    }
    EXPECT_EQ(ShownWindow(), "frmEditor");
    EXPECT_FALSE(driver->IsShown("cmdErrorList"));
    EXPECT_EQ(Box().Bytes(), site.Read(std::filesystem::path(path).filename()));
    TypeAtStart("+");
    driver->Press("Gem");
    EXPECT_EQ(Box().Bytes(), site.Read(std::filesystem::path(path).filename()));
    driver->Press("Command2");
  }
  browser.events->DownloadBegun();
  EditHtml();
  EXPECT_EQ(Said(), Words{"Cancel dial-up window(s) to complete the \"download\"!"});
  EXPECT_EQ(ShownWindow(), "frmBrowser");
  browser.events->DownloadCompleted();
  driver->Find<ByteTextBox>("UdTxt")->SetBytes("a\r\nb");
  driver->Find<QComboBox>("cboAddress")->setEditText(QString::fromStdString(site / "b.htm"));
  EditHtml();
  EXPECT_TRUE(driver->IsShown("cmdErrorList"));
  EXPECT_FALSE(driver->Find("cmdUdskriv")->isHidden());
  driver->Press("MainScreen");
  driver->Choose(2);
  driver->Press("cmdSearch");
  EditHtml();
  EXPECT_EQ(Shown("Filname"), driver->program / "~TSLtemp.htm");
  EXPECT_EQ(Box().Bytes(), driver->program.Read("~TSLtemp.htm"));
}

TEST_F(WindowWays, WritesIntoTheFolderThatIsThereNow) {
  namespace fs = std::filesystem;
  const ScratchFolder kept;
  const auto replace_site = [&](const std::string& name) {
    fs::rename(site.path(), kept / name);
    fs::copy(kept / name, site.path(), fs::copy_options::recursive);
  };
  site.Write("tessaril.toml", "");
  Open("a.htm");
  TypeAtStart("+");
  replace_site("first");
  driver->answers = {"ok"};
  driver->Press("Gem");
  EXPECT_EQ(Said(), Words{"The file was changed on disk. Overwrite it?"});
  EXPECT_EQ(site.Read("a.htm"), "+<P>one\r\ntwo</P>\r\n");
  driver->Press("MainScreen");
  driver->Choose(4);
  driver->Type("SearchTekst", "two");
  driver->Type("ReplaceText", "three");
  replace_site("second");
  driver->answers = {"replace"};
  driver->Press("cmdSearch");
  EXPECT_EQ(site.Read("a.htm"), "+<P>one\r\nthree</P>\r\n");
  EXPECT_EQ(kept.Read("first/a.htm"), "<P>one\r\ntwo</P>\r\n");
  EXPECT_EQ(kept.Read("second/a.htm"), "+<P>one\r\ntwo</P>\r\n");
}

TEST_F(WindowWays, StaysWhereThereIsNoBrowser) {
  browser.can_start = false;
  Open("a.htm");
  TypeAtStart("+");
  driver->Press("Command2");
  EXPECT_EQ(Said(), Words{"Can't open the browser because Microsoft Internet Explorer 4+ is not installed!"});
  EXPECT_EQ(ShownWindow(), "frmEditor");
  EXPECT_FALSE(Exists("~temp.htm"));
  EXPECT_FALSE(Item("menuStartInBrowser").isEnabled());
  EXPECT_TRUE(Item("menuStartInEditor").isChecked());
  EXPECT_EQ(driver->Find<QRadioButton>("Option1_5")->text(), "Sho&w file in Editor, only");
  EXPECT_NE(driver->program.Read("TSL32.ini").find("BrowserFirst = 0\r\n"), std::string::npos);
  driver->Press("Gem");
  EXPECT_EQ(site.Read("a.htm"), "+<P>one\r\ntwo</P>\r\n");
}

TEST_F(WindowWays, LeavesNothingBehindAtTheEnd) {
  site.Write("sub/n.htm", "text");
  driver->start_up->Frame().Main().OpenFolder(site / "sub");
  Open("n.htm");
  TypeAtStart("+");
  driver->Press("Command2");
  ASSERT_TRUE(Exists("sub/~temp.htm"));
  std::filesystem::rename(site / "sub", site / "away");
  EditHtml();
  std::filesystem::rename(site / "away", site / "sub");
  EXPECT_TRUE(Exists("sub/~temp.htm"));  // it could not be deleted then
  driver->answers = {"ok"};
  Item("menuEExit").trigger();
  EXPECT_EQ(Said(), Words{"Leave Tessaril?"});
  EXPECT_FALSE(Exists("sub/~temp.htm"));
  EXPECT_EQ(site.Read("sub/n.htm"), "text");
}

}  // namespace
}  // namespace tessaril
