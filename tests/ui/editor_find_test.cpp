#include <QCheckBox>
#include <QLineEdit>
#include <QScreen>

#include "tests/ui/support/editor_test.h"

namespace tessaril {
namespace {

// The find dialog is filled in and answered; then Find Again is pressed until there is nothing more.
class Finding : public EditorTest {
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
