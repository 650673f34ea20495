#include <gtest/gtest.h>

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QRadioButton>
#include <QScreen>
#include <QtTest>
#include <filesystem>

#include "tests/ui/support/driver.h"
#include "tests/ui/support/recorded_browser.h"
#include "ui/editor/edit_box.h"
#include "ui/main/file_list.h"
#include "ui/shared/place.h"

namespace tessaril {
namespace {

using Words = std::vector<std::string>;

const std::string kLeaveUnsaved = "Leave the editor WITHOUT saving the changes?";
const std::string kOverwrite = "The file was changed on disk. Overwrite it?";

// A program that shows files in the editor first, on a small site.
class Editor : public testing::Test {
 protected:
  Editor() {
    site.Write("a.htm", "<P>one\r\ntwo</P>\r\n");
    site.Write("b.htm", "<P>other</P>");
    driver.emplace(site.path(), "", browser.Maker());
    Item("menuStartInEditor").trigger();
  }

  QAction& Item(const char* name) { return *driver->Find<QAction>(name); }
  EditBox& Box() { return *driver->Find<EditBox>("EditTekst"); }
  // Marks a file, which may be new, and shows it.
  void Open(const char* name) {
    driver->Find<FileList>("filList")->Refresh();
    const bool twice = !driver->Find<QRadioButton>("Option1_5")->isChecked();
    driver->ClickItem("filList", QString::fromUtf8(name), twice);
  }
  void EditHtml() {
    QTest::mouseClick(driver->Find("frmBrowser")->findChild<QWidget*>("Command1"), Qt::LeftButton);
    driver->Activate();
  }
  void TypeAtStart(const QString& text) {
    Box().Move({0, 0});
    Driver::TypeInto(Box(), text);
  }
  std::string Shown(const char* label) { return driver->Caption(label).toStdString(); }
  std::string ShownWindow() {
    for (const char* const name : {"MainWindow", "frmEditor", "frmBrowser"}) {
      const auto* const window = driver->start_up->Frame().findChild<QWidget*>(name);
      if (window != nullptr && window->isVisible()) return name;
    }
    return "none";
  }
  bool Exists(const std::string& name) { return std::filesystem::exists(site / name); }
  Words Said() { return std::exchange(driver->said, {}); }
  std::string Address(const std::string& name) { return "file://" + (site / name); }

  // Saves under the name that `choose` enters.
  void SaveAs(const std::function<void(QFileDialog&)>& choose) {
    driver->on_dialog = [&](QWidget& dialog) {
      if (auto* const save = qobject_cast<QFileDialog*>(&dialog)) choose(*save);
    };
    driver->Press("GemSom");
    driver->on_dialog = nullptr;
  }

  ScratchFolder site;
  RecordedBrowser browser;
  std::optional<Driver> driver;
};

TEST_F(Editor, KeepsEveryByteThatIsNotEdited) {
  const std::string all_line_ends = "a\r\nb\nc\rd\n\r\n\re\r\r\n";
  const std::string rows[] = {
      "",
      all_line_ends,
      std::string("nul\0s\r\n\0", 8),
      "8-bit \xE6\x80\xFF\r\nutf-8 \xC3\xA6\r\nhalf \xC3\r\n",
      "\xEF\xBB\xBFmark \xE2\x80\xA8 \xE2\x80\xA9 \xEF\xBF\xBF\xF0\x9F\x98\x80\n\x1B\x0C\x7F",
      std::string(65536, 'x'),
      std::string(21845, '\r') + std::string(21845, '\n') + std::string(21846, '\xE6'),
  };
  for (const std::string& content : rows) {
    SCOPED_TRACE(content.substr(0, 30));
    site.Write("n.htm", content);
    Item("menuStartInEditor").trigger();
    Open("a.htm");
    driver->Press("MainScreen");
    Open("n.htm");
    EXPECT_EQ(Box().Bytes(), content);
    EXPECT_EQ(Shown("Filname"), site / "n.htm");
    EXPECT_EQ(Shown("lblLine"), "");
    TypeAtStart("+");
    driver->Press("Gem");
    EXPECT_EQ(site.Read("n.htm"), "+" + content);
    Box().undo();
    driver->Press("Gem");
    EXPECT_EQ(site.Read("n.htm"), content);
    driver->Press("MainScreen");
    EXPECT_EQ(Said(), Words());
  }
}

TEST_F(Editor, TypesInThePagesOwnCodeAndLineEnds) {
  const struct {
    const char* content;
    const char* saved;
  } rows[] = {{"a\n\xC3\xA6", "\xC3\xA6\xC4\x8D\na\n\xC3\xA6"},
              {"a\r\n\n\xE6", "\xE6&#269;\r\na\r\n\n\xE6"},
              {"ascii", "\xE6&#269;\nascii"}};
  for (const auto& row : rows) {
    site.Write("n.htm", row.content);
    Open("a.htm");
    driver->Press("MainScreen");
    Open("n.htm");
    TypeAtStart(QString::fromUtf8("\xC3\xA6\xC4\x8D\n"));
    driver->Press("Gem");
    EXPECT_EQ(site.Read("n.htm"), row.saved);
    driver->Press("MainScreen");
  }
}

TEST_F(Editor, ShowsTheBeginningOfWhatIsTooLong) {
  const auto of_size = [](std::string content, std::size_t size) {
    return content + std::string(size - content.size(), 'z');
  };
  const std::string most(55999, 'x');
  const struct {
    std::string content;
    std::size_t shown;
  } rows[] = {
      {std::string(65537, 'x'), 56000},
      {of_size(most + "\r\n", 70000), 56001},
      {of_size(most + "\n\r", 70000), 56000},
      {of_size(most + "\xC3\xA6", 65537), 56001},
      {of_size(most.substr(2) + "\xF0\x9F\x98\x80", 65537), 56001},
      {of_size("\xE6" + most.substr(1) + "\xC3\xA6", 65537), 56000},
      {of_size(most + "x\xA6", 65537), 56000},
  };
  for (const auto& [content, shown] : rows) {
    SCOPED_TRACE(shown);
    site.Write("n.htm", content);
    Open("n.htm");
    const std::string size = std::to_string(content.size());
    const std::string message =
        "File too lang: " + size + " bytes.\nShows the first 56.000 characters in HTML.";
    EXPECT_EQ(Said(), Words{message});
    EXPECT_EQ(Box().Bytes(), content.substr(0, shown));
    driver->Press("Gem");
    EXPECT_EQ(site.Read("n.htm"), content);
    driver->answers = {"ok"};
    driver->Press("Gem");
    EXPECT_EQ(site.Read("n.htm"), content.substr(0, shown));
    EXPECT_EQ(Said(), Words(2, "The file is longer than what is shown. Save only what is shown?"));
    driver->Press("Gem");
    driver->Press("MainScreen");
    EXPECT_EQ(Said(), Words());
    site.Write("n.htm", content);
    Open("n.htm");
    driver->Press("MainScreen");
    Open("a.htm");
    driver->Press("Gem");
    driver->Press("MainScreen");
    EXPECT_EQ(Said(), Words{message});
  }
}

TEST_F(Editor, KeepsTheTextWhereAFileCannotBeRead) {
  Open("a.htm");
  driver->Press("MainScreen");
  std::filesystem::remove(site / "b.htm");
  std::filesystem::create_directory(site / "b.htm");
  driver->ClickItem("filList", "b.htm");
  EXPECT_EQ(Said(), Words{"Can't open this file in a text editor!"});
  EXPECT_EQ(ShownWindow(), "frmEditor");
  EXPECT_EQ(Box().Bytes(), "<P>one\r\ntwo</P>\r\n");
  EXPECT_EQ(Shown("Filname"), site / "a.htm");
  TypeAtStart("+");
  driver->Press("Gem");
  EXPECT_EQ(site.Read("a.htm"), "+<P>one\r\ntwo</P>\r\n");
  TypeAtStart("+");
  driver->answers = {"ok"};
  driver->Press("MainScreen");
  site.Write("c.htm", "");
  driver->Find<FileList>("filList")->Refresh();
  std::filesystem::remove(site / "c.htm");
  driver->ClickItem("filList", "c.htm");
  Said();
  driver->Press("MainScreen");
  EXPECT_EQ(Said(), Words());  // the changes were given up before
}

TEST_F(Editor, AsksBeforeItOverwritesWhatItDoesNotKnow) {
  Open("a.htm");
  site.Write("a.htm", "of somebody else");
  TypeAtStart("+");
  driver->Press("Gem");
  EXPECT_EQ(site.Read("a.htm"), "of somebody else");
  driver->answers = {"ok"};
  driver->Press("Gem");
  EXPECT_EQ(site.Read("a.htm"), "+<P>one\r\ntwo</P>\r\n");
  EXPECT_EQ(Said(), Words(2, kOverwrite));
  std::filesystem::remove(site / "a.htm");
  driver->Press("Gem");
  EXPECT_EQ(Said(), Words());
  EXPECT_EQ(site.Read("a.htm"), "+<P>one\r\ntwo</P>\r\n");

  site.Write("Doc0.txt", "kept");
  Item("menuNewDoc").trigger();
  EXPECT_EQ(Shown("Filname"), site / "Doc0.txt");
  EXPECT_EQ(Box().Bytes(), "");
  driver->Press("Gem");
  EXPECT_EQ(site.Read("Doc0.txt"), "kept");
  EXPECT_EQ(Said(), Words{kOverwrite});
  std::filesystem::remove(site / "Doc0.txt");
  Item("menuNewDoc").trigger();
  EXPECT_FALSE(Exists("Doc0.txt"));
  Driver::TypeInto(Box(), QString::fromUtf8("a\n\xC4\x8D"));
  Item("menuNewDoc").trigger();
  EXPECT_EQ(Said(), Words{"Leave the document WITHOUT saving the changes?"});
  driver->Press("Gem");
  EXPECT_EQ(site.Read("Doc0.txt"), "a\n\xC4\x8D");
}

TEST_F(Editor, TellsWhatCouldNotBeSaved) {
  site.Write("sub/n.htm", "text");
  driver->start_up->OpenFolder(site.path());
  driver->ClickItem("dirList", "sub");
  Open("n.htm");
  TypeAtStart("+");
  std::filesystem::remove_all(site / "sub");
  driver->Press("Gem");
  driver->Press("Command2");
  SaveAs([&](QFileDialog& dialog) {
    dialog.findChild<QLineEdit*>("fileNameEdit")->setText(QString::fromStdString(site / "sub/n.htm"));
    QMetaObject::invokeMethod(&dialog, "accept");
  });
  EXPECT_EQ(Said(), Words(3, "Not saved: No such file or directory"));
  EXPECT_EQ(ShownWindow(), "frmEditor");
  EXPECT_EQ(Box().Bytes(), "+text");
  driver->Press("MainScreen");
  EXPECT_EQ(Said(), Words{kLeaveUnsaved});
  std::filesystem::create_directory(site / "sub");
  driver->Press("Gem");
  EXPECT_EQ(site.Read("sub/n.htm"), "+text");
}

TEST_F(Editor, SavesUnderAnotherName) {
  Open("a.htm");
  TypeAtStart("+");
  SaveAs([&](QFileDialog& dialog) {
    EXPECT_EQ(dialog.selectedFiles().value(0).toStdString(), site / "a.htm");
    dialog.reject();
  });
  EXPECT_EQ(Shown("Filname"), site / "a.htm");
  SaveAs([&](QFileDialog& dialog) {
    dialog.selectFile(QString::fromStdString(site / "c.htm"));
    QMetaObject::invokeMethod(&dialog, "accept");
  });
  EXPECT_EQ(Said(), Words());
  EXPECT_EQ(Shown("Filname"), site / "c.htm");
  EXPECT_EQ(site.Read("a.htm"), "<P>one\r\ntwo</P>\r\n");
  EXPECT_EQ(site.Read("c.htm"), "+<P>one\r\ntwo</P>\r\n");
  EXPECT_EQ(driver->Find<QListWidget>("filList")->count(), 3);
  driver->Press("MainScreen");
  EXPECT_EQ(Said(), Words());
}

TEST_F(Editor, LeadsBackToTheMainWindow) {
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

TEST_F(Editor, ShowsTheResultsAndComesBack) {
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

TEST_F(Editor, ShowsWhatIsSavedInTheBrowser) {
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

TEST_F(Editor, ShowsUnsavedTextInTheBrowserAndTakesItBack) {
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

TEST_F(Editor, LeavesForeignTemporaryPagesAlone) {
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

TEST_F(Editor, KeepsTheEditedFileThatIsCalledLikeTheTemporaryPage) {
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

TEST_F(Editor, WritesThroughNoLinkUnasked) {
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

TEST_F(Editor, LeavesForeignTemporaryPagesAloneWhereThereIsNoBrowser) {
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

// The toolkit's dialog takes what stands between quotation marks for a name.
TEST_F(Editor, ProposesNamesWithQuotationMarks) {
  site.Write("a\"b\".htm", "text");
  Open("a\"b\".htm");
  TypeAtStart("+");
  driver->answers = {"yes"};
  SaveAs([](QFileDialog& dialog) { QMetaObject::invokeMethod(&dialog, "accept"); });
  EXPECT_FALSE(Exists("b"));
  EXPECT_EQ(site.Read("a\"b\".htm"), "+text");
}

TEST_F(Editor, EditsOnlyFilesWithAWholePath) {
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

TEST_F(Editor, TakesUpWhatTheBrowserShows) {
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

TEST_F(Editor, StaysWhereThereIsNoBrowser) {
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

TEST_F(Editor, LeavesNothingBehindAtTheEnd) {
  site.Write("sub/n.htm", "text");
  driver->start_up->OpenFolder(site / "sub");
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

TEST_F(Editor, NamesTheLineOfTheCaret) {
  site.Write("n.htm", "a\r\nb\nc\r\nd");
  Open("n.htm");
  EXPECT_EQ(Shown("lblLine"), "");
  const int row = Box().fontMetrics().height();
  QTest::mousePress(Box().viewport(), Qt::LeftButton, {}, {5, 5});
  EXPECT_EQ(Shown("lblLine"), "Line 1");
  const struct {
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
    const char* line;
  } rows[] = {
      {Qt::Key_Down, {}, "Line 2"},
      {Qt::Key_Down, {}, "Line 2"},  // a line end of another kind
      {Qt::Key_Right, {}, "Line 2"},
      {Qt::Key_Right, {}, "Line 3"},
      {Qt::Key_Return, {}, "Line 4"},
      {Qt::Key_Z, Qt::ControlModifier, "Line 3"},
      {Qt::Key_Home, Qt::ControlModifier, "Line 1"},
      {Qt::Key_End, Qt::ControlModifier, "Line 3"},
      {Qt::Key_Up, Qt::ShiftModifier, "Line 2"},
  };
  for (const auto& step : rows) {
    QTest::keyClick(&Box(), step.key, step.modifiers);
    EXPECT_EQ(Shown("lblLine"), step.line) << step.key;
  }
  QTest::mousePress(Box().viewport(), Qt::RightButton, {}, {5, 5 + 3 * row});
  EXPECT_NE(Shown("lblLine"), "");
}

TEST_F(Editor, HasKeysAndMenusOfItsOwn) {
  const auto menus = [&] {
    std::string names;
    for (const QAction* const menu : driver->start_up->Frame().menuBar()->actions()) {
      if (menu->isVisible()) names += menu->menu()->objectName().toStdString() + " ";
    }
    return names;
  };
  EXPECT_EQ(menus(), "menuMisc menu0Help ");
  site.Write("n.htm", std::string(39, 'x') + "\ty\n" + std::string(40, 'x') + "y");
  Open("n.htm");
  EXPECT_EQ(menus(), "menuEMisc menuEdit menuEHelp ");
  const QFont usual = Box().font();
  const qreal tab = Box().tabStopDistance();
  Item("menuMonospaced").trigger();
  QTextCursor at_column = Box().textCursor();
  at_column.setPosition(40);
  QTextCursor below = at_column;
  below.setPosition(82);
  EXPECT_EQ(Box().cursorRect(at_column).left(), Box().cursorRect(below).left());
  EXPECT_NE(Box().font().family(), usual.family());
  EXPECT_EQ(Box().font().pointSizeF(), usual.pointSizeF());
  Item("menuMonospaced").trigger();
  EXPECT_EQ(Box().font(), usual);
  EXPECT_EQ(Box().tabStopDistance(), tab);
  driver->Press("MainScreen");
  EXPECT_EQ(Said(), Words());  // a font is no change of the text
  EXPECT_EQ(menus(), "menuMisc menu0Help ");

  int finds = 0;
  const auto count = [&] { ++finds; };
  QObject::connect(&Item("menuEditFind"), &QAction::triggered, &Box(), count);
  QObject::connect(&Item("menuEditFindAgain"), &QAction::triggered, &Box(), count);
  const auto press_keys = [&](QWidget* window) {
    QTest::keyClick(window, Qt::Key_F, Qt::ControlModifier);
    driver->Activate();
    QTest::keyClick(window, Qt::Key_F3);
    return std::exchange(finds, 0);
  };
  driver->on_dialog = [](QWidget& dialog) {
    EXPECT_TRUE(dialog.findChild<QCheckBox*>("chkTags")->isChecked());
    EXPECT_FALSE(dialog.findChild<QCheckBox*>("CaseDep")->isChecked());
    dialog.close();
  };
  EXPECT_EQ(press_keys(driver->Find("cboSearchSpec")), 0);
  Open("a.htm");
  EXPECT_EQ(press_keys(&Box()), 2);
  QTest::keyClick(&Box(), Qt::Key_Tab);
  EXPECT_NE(Box().Bytes().find('\t'), std::string::npos);
  QTest::keyClick(&Box(), Qt::Key_Tab, Qt::ControlModifier);
  EXPECT_FALSE(Box().hasFocus());
  driver->Press("Command2");
  EXPECT_EQ(press_keys(driver->Find("brwWebBrowser")), 0);
  EXPECT_EQ(menus(), "menuMisc menu0Help ");
}

// The find dialog is filled in and answered; then Find Again is pressed until there is nothing more.
class Finding : public Editor {
 protected:
  struct Steps {
    QString text;
    bool case_dependent = false;
    bool tags = true;
    std::string answer = "search";
  };
  void Find(const Steps& steps) {
    driver->on_dialog = [&](QWidget& dialog) {
      if (dialog.objectName() != "frmFind") return;
      dialog.findChild<QLineEdit*>("Text1")->setText(steps.text);
      dialog.findChild<QCheckBox*>("CaseDep")->setChecked(steps.case_dependent);
      dialog.findChild<QCheckBox*>("chkTags")->setChecked(steps.tags);
      driver->answers.push_front(steps.answer);
    };
    Item("menuEditFind").trigger();
    driver->on_dialog = nullptr;
  }
  std::string SelectedText() {
    return std::to_string(Box().Selected().start) + "+" + std::to_string(Box().Selected().length);
  }
  std::string AllFound(const Steps& steps) {
    std::string found;
    for (Find(steps); driver->said.empty() && found.size() < 200; Item("menuEditFindAgain").trigger()) {
      found += SelectedText() + " ";
    }
    return found;
  }
};

TEST_F(Finding, SelectsOneMatchAfterAnother) {
  const struct {
    const char* page;
    Steps steps;
    const char* found;
  } rows[] = {
      {"abc ABC abc", {"abc"}, "0+3 4+3 8+3 "},
      {"abc ABC abc", {"abc", true}, "0+3 8+3 "},
      {"aaa", {"aa"}, "0+2 1+2 "},
      {"x foo\r\nbar foo&nbsp;bar foo bar", {"foo bar"}, "2+8 11+12 24+7 "},
      {"FOO bar foo BAR foo bar", {"foo bar"}, "16+7 "},
      {"FOO bar", {"FOO bar", true}, "0+7 "},
      {"foo\r\nbar&nbsp;foo\r\nbar", {"bar&nbsp;foo bar"}, "5+17 "},
      {"foo\nbar", {"foo bar"}, "0+7 "},
      {"foo\nbar\r\n", {"foo bar"}, ""},
      {"r&aelig;v \xE6 \xC3", {"\xC3\xA6"}, "1+7 "},
      {"r&aelig;v \xE6 \xC3", {"\xC3\xA6", false, false}, "10+1 "},
      {"\xC3\xA6 x\xC3\xA6", {"x\xC3\xA6", false, false}, "3+3 "},
      {"a\r\n\xC3\xA6", {""}, "0+0 1+0 3+0 5+0 "},
      {"", {""}, "0+0 "},
      {"", {"a"}, ""},
      {" a a", {" a"}, "0+2 2+2 "},
      // An 8-bit page with a line that could be UTF-8, of which a match is a half
      {"\xE6\n\xC3\xA9\xC3\xA9", {"\xC2\xA9", false, false}, "2+2 4+2 "},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.page);
    site.Write("n.htm", row.page);
    Open("n.htm");
    const std::string text = Steps(row.steps).text.toStdString();
    EXPECT_EQ(AllFound(row.steps), row.found);
    EXPECT_EQ(Said(), Words{"Text not found:\n\"" + text + "\""});
    EXPECT_EQ(SelectedText(), "0+0");
    EXPECT_EQ(Shown("lblLine"), "");
    driver->Press("MainScreen");
  }
}

TEST_F(Finding, GoesOnFromWhereTheUserIs) {
  site.Write("n.htm", "abc\r\nabc\r\nabc");
  Open("n.htm");
  Find({"abc"});
  EXPECT_EQ(Shown("lblLine"), "Line 1");
  Item("menuEditFindAgain").trigger();
  EXPECT_EQ(Shown("lblLine"), "Line 2");
  QTest::keyClick(&Box(), Qt::Key_Home, Qt::ControlModifier);
  Item("menuEditFindAgain").trigger();
  EXPECT_EQ(SelectedText(), "5+3");  // the one at the caret is passed over
  const QPoint third_line(3, 5 + 2 * Box().fontMetrics().height());
  QTest::mouseClick(Box().viewport(), Qt::LeftButton, {}, third_line);
  EXPECT_EQ(SelectedText(), "10+0");
  Item("menuEditFindAgain").trigger();
  EXPECT_EQ(Said(), Words{"Text not found:\n\"abc\""});
  Item("menuEditFindAgain").trigger();
  EXPECT_EQ(SelectedText(), "5+3");  // from the second character on

  Find({"abcd", false, true, "cancel"});
  EXPECT_EQ(SelectedText(), "0+3");  // as long as the text was before
  EXPECT_EQ(Said(), Words());
  driver->on_dialog = [&](QWidget& dialog) {
    EXPECT_EQ(dialog.findChild<QLineEdit*>("Text1")->selectedText(), "abcd");
    EXPECT_EQ(dialog.windowTitle(), " ");
    QTest::keyClick(&dialog, Qt::Key_Escape);
  };
  driver->Activate();
  QTest::keyClick(&Box(), Qt::Key_F, Qt::ControlModifier);
  EXPECT_EQ(SelectedText(), "0+5");  // four, and no half of a line end
  EXPECT_EQ(driver->Find("frmFind")->property("Tag").toString(), "");
  driver->on_dialog = [&](QWidget& dialog) {
    if (dialog.objectName() != "frmFind") return;
    dialog.findChild<QLineEdit*>("Text1")->setText("bc\nABC");
    QTest::keyClick(dialog.findChild<QLineEdit*>("Text1"), Qt::Key_Return);
  };
  driver->Activate();
  QTest::keyClick(&Box(), Qt::Key_F, Qt::ControlModifier);
  EXPECT_EQ(driver->Find("frmFind")->property("Tag").toString(), " ");
  EXPECT_EQ(Said(), Words{"Text not found:\n\"bc ABC\""});
}

// A cancelled find selects the first characters, which may be the match of the find before.
TEST_F(Finding, GoesOnFromTheSelectionThatACancelledFindLeft) {
  site.Write("n.htm", "abc\r\nabc\r\nabc");
  Open("n.htm");
  Find({"abc"});
  const QPoint third_line(3, 5 + 2 * Box().fontMetrics().height());
  QTest::mouseClick(Box().viewport(), Qt::LeftButton, {}, third_line);
  Find({"abc", false, true, "cancel"});
  ASSERT_EQ(SelectedText(), "0+3");
  Item("menuEditFindAgain").trigger();
  EXPECT_EQ(SelectedText(), "5+3");
}

TEST_F(Finding, SaysWhatIsNotThereInABoxThatFitsTheScreen) {
  Open("a.htm");
  int bottom = 0;
  driver->on_dialog = [&](QWidget& dialog) {
    if (dialog.objectName() != "frmFind") {
      bottom = std::max(bottom, dialog.frameGeometry().bottom());
      return;
    }
    dialog.findChild<QLineEdit*>("Text1")->setText(QString("long word ").repeated(2000));
    driver->answers.push_front("search");
  };
  Item("menuEditFind").trigger();
  driver->on_dialog = nullptr;
  EXPECT_LT(bottom, QGuiApplication::primaryScreen()->geometry().bottom());
  EXPECT_GT(bottom, 0);
}

TEST_F(Finding, WarnsOfCharactersWithoutAName) {
  const std::string warning =
      "Warning!\nThere is an illegal HTML character in the Search string.\n"
      "The results may consequently be unreliable!";
  Open("a.htm");
  Find({"\xC3\xA6\xC4\x8D\xC4\x8D"});
  EXPECT_EQ(Said(), (Words{warning, "Text not found:\n\"\xC3\xA6\xC4\x8D\xC4\x8D\""}));
  Find({"\xC4\x8D", false, false});
  EXPECT_EQ(Said().size(), 1u);
  site.Write("n.htm", "&aelig;&oslash;");
  driver->Press("MainScreen");
  Open("n.htm");
  Find({"\xC3\xA6\xC3\xB8"});
  EXPECT_EQ(SelectedText(), "0+15");
  EXPECT_EQ(Said(), Words());
}

}  // namespace
}  // namespace tessaril
