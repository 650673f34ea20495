#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>

#include "tests/ui/support/editor_test.h"

namespace tessaril {
namespace {

constexpr char kOverwrite[] = "The file was changed on disk. Overwrite it?";

class Editor : public EditorTest {};

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
  driver->start_up->Frame().Main().OpenFolder(site.path());
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
  EXPECT_EQ(menus(), "menuMisc menuSite menu0Help ");
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
  EXPECT_EQ(menus(), "menuMisc menuSite menu0Help ");

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
  EXPECT_EQ(menus(), "menuMisc menuSite menu0Help ");
}

}  // namespace
}  // namespace tessaril
