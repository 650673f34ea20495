#include "ui/dialogs/replace_dialog.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <functional>

#include "ui/shared/place.h"

namespace tessaril {
namespace {

class ReplaceDialogTest : public testing::Test {
 protected:
  ReplaceDialogTest() {
    proposal.FileName = "a & b.htm";
    proposal.SearchText = "old <b>#123456</b>";
    proposal.SearchSelection = {7, 7};
    proposal.ReplaceText = "new text";
    proposal.ReplaceSelection = {0, 3};
    proposal.encoding = PageEncoding::kUtf8;
    dialog.ChooseFunction(Function::kColours);
    dialog.SetUp(RowOf(Function::kColours));
  }

  template <class Widget = QWidget>
  Widget* Find(const char* name) {
    return dialog.findChild<Widget*>(name);
  }

  // Acts in the open dialog, which is to be closed then.
  ProposalAnswer Ask(const std::function<void()>& act) {
    QTimer::singleShot(0, &dialog, [&] {
      act();
      EXPECT_TRUE(dialog.isHidden());
      dialog.StopAsking();
    });
    return dialog.Ask(proposal, {"12", "34", "56"});
  }

  void Press(Qt::Key key) { QTest::keyClick(dialog.focusWidget(), key); }
  void Click(const char* button) { QTest::mouseClick(Find(button), Qt::LeftButton); }

  // Opens the palette and acts in it.
  void InPalette(const std::function<void(QDialog&)>& act) {
    QTimer::singleShot(0, &dialog, [&] {
      auto* palette = Find<QDialog>("frmSafeColour");
      act(*palette);
      EXPECT_TRUE(palette->isHidden());
      if (palette->isVisible()) palette->reject();
    });
    Click("btnPalette");
  }

  // Takes the colour of a field of the palette.
  void Take(const char* field) {
    InPalette(
        [&](QDialog& palette) { QTest::mouseClick(palette.findChild<QWidget*>(field), Qt::LeftButton); });
  }

  void ExpectSelected(const char* box, const Selection& selection) {
    EXPECT_EQ(Find<ByteTextBox>(box)->Selected().start, selection.start) << box;
    EXPECT_EQ(Find<ByteTextBox>(box)->Selected().length, selection.length) << box;
  }

  ReplaceDialog dialog;
  Proposal proposal;
};

TEST_F(ReplaceDialogTest, IsSetUpForTheFunctionOfTheRun) {
  const struct {
    Function function;
    const char* label1;
    const char* label2;
    bool editable;
  } rows[] = {
      {Function::kLinks, "Error type:", "... in link (editable):", true},
      {Function::kSearch, "Found:", "... in link (editable):", false},
      {Function::kExternal, "Found:", "... in link (editable):", false},
      {Function::kEntities, "Replace:", "... with (editable):", true},
      {Function::kColours, "Not a web safe colour:", "Replace with:", true},
      {Function::kReplace, "Replace:", "... with (editable):", true},
  };
  for (const auto& row : rows) {
    dialog.SetUp(RowOf(row.function));
    EXPECT_EQ(Find<QLabel>("Label1")->text(), row.label1);
    EXPECT_EQ(Find<QLabel>("Label2")->text(), row.label2);
    for (const char* name : {"Label2", "ReplaceText", "btnReplace"}) {
      EXPECT_EQ(Find(name)->isVisibleTo(&dialog), row.editable) << name << row.label1;
    }
    EXPECT_EQ(Find<QPushButton>("btnStop")->text(), row.editable ? "Keep old && Stop !" : "Stop !");
    EXPECT_EQ(Find<QPushButton>("btnKeep")->text(), row.editable ? "Keep old" : "Next");
    for (const char* name : {"btnReplace", "btnStop", "btnKeep"}) {
      EXPECT_EQ(Find(name)->y(), Pixels(row.editable ? 4032 : 2124)) << name << row.label1;
    }
    dialog.resize(1000, 1000);
    EXPECT_EQ(dialog.size(), QSize(Pixels(5544), Pixels(row.editable ? 4764 : 2858)));
  }
}

TEST_F(ReplaceDialogTest, KeepsWhatAChoiceOfFunctionLeavesOpen) {
  const struct {
    Function function;
    bool palette;
    const char* tooltip;
  } rows[] = {
      {Function::kColours, true, "Next (no change)"},
      {Function::kShowFile, true, "Next (no change)"},
      {Function::kLinks, false, "Next (replacing as shown in the white field if changed)"},
      {Function::kShowFile, false, "Next (replacing as shown in the white field if changed)"},
      {Function::kReplace, false, "Next, keeping the old text (no change)"},
      {Function::kColours, true, "Next, keeping the old text (no change)"},
      {Function::kExternal, false, "Next, keeping the old text (no change)"},
  };
  for (const auto& row : rows) {
    dialog.ChooseFunction(row.function);
    EXPECT_EQ(Find("btnPalette")->isVisibleTo(&dialog), row.palette);
    EXPECT_EQ(Find("btnKeep")->toolTip(), row.tooltip);
  }
}

TEST_F(ReplaceDialogTest, ShowsTheFindingAndEmptiesTheHintBehindIt) {
  std::string lines;
  for (int i = 0; i < 50; ++i) lines += "line\n";
  proposal.SearchText = lines + proposal.SearchText;
  proposal.SearchSelection.start += lines.size();
  proposal.Label4 = "Character: & " + std::string(100, 'x') + "<b>";
  Ask([&] {
    EXPECT_EQ(Find<QLabel>("FileName")->text(), "a & b.htm");
    EXPECT_TRUE(Find<QLabel>("Label4")->text().startsWith("Character: & x"));
    EXPECT_LE(Find<QLabel>("Label4")->sizeHint().width(), Find("Label4")->width());
    EXPECT_TRUE(Find("Label4")->toolTip().contains("x&lt;b&gt;"));
    EXPECT_EQ(Find<ByteTextBox>("ReplaceText")->Bytes(), "new text");
    EXPECT_TRUE(Find<ByteTextBox>("SearchText")->isReadOnly());
    ExpectSelected("SearchText", proposal.SearchSelection);
    ExpectSelected("ReplaceText", proposal.ReplaceSelection);
    const auto* box = Find<ByteTextBox>("SearchText");
    EXPECT_TRUE(box->viewport()->rect().contains(box->cursorRect()));
    EXPECT_EQ(dialog.focusWidget(), Find("btnKeep"));
    dialog.close();
  });
  EXPECT_EQ(Find<QLabel>("Label4")->text(), "");
}

TEST_F(ReplaceDialogTest, AnswersAsItWasClosed) {
  const struct {
    std::function<void()> close;
    int answer;
    const char* text;
  } rows[] = {
      {[&] { Click("btnKeep"); }, kKeep, "x text"},
      {[&] { Click("btnReplace"); }, kReplace, "x text"},
      {[&] { Click("btnStop"); }, kStop, "x text"},
      {[&] { QTest::keyClick(&dialog, Qt::Key_R, Qt::AltModifier); }, kReplace, "x text"},
      {[&] { Press(Qt::Key_Escape); }, kKeep, "new text"},
      {[&] { QTest::keyClick(Find("ReplaceText"), Qt::Key_Escape); }, kKeep, "new text"},
      {[&] { dialog.close(); }, kKeep, "new text"},
      {[&] { dialog.StopAsking(); }, kStop, "new text"},
      {[&] { InPalette([&](QDialog&) { dialog.StopAsking(); }); }, kStop, "new text"},
  };
  for (const auto& row : rows) {
    const ProposalAnswer answer = Ask([&] {
      QTest::keyClicks(Find("ReplaceText"), "x");
      row.close();
    });
    const auto index = &row - rows;
    EXPECT_EQ(answer.ReplaceAnswer, row.answer) << index;
    EXPECT_EQ(answer.ReplaceText, row.text) << index;
    EXPECT_TRUE(dialog.isHidden()) << index;
  }
}

TEST_F(ReplaceDialogTest, StopsWhenTheProgramEnds) {
  ProposalAnswer answer;
  QTimer::singleShot(0, &dialog, [&] {
    QTimer::singleShot(0, &dialog, [] { QCoreApplication::exit(); });
    answer = dialog.Ask(proposal, {});
  });
  QCoreApplication::exec();
  EXPECT_EQ(answer.ReplaceAnswer, kStop);
  EXPECT_TRUE(dialog.isHidden());
}

TEST_F(ReplaceDialogTest, GivesNoTextWhereNoneCanBeEdited) {
  proposal.ReplaceText.reset();
  dialog.SetUp(RowOf(Function::kSearch));
  EXPECT_EQ(Ask([&] { Click("btnKeep"); }).ReplaceText, "");
}

TEST_F(ReplaceDialogTest, LeadsThroughAHundredFindingsByKeyboard) {
  dialog.ChooseFunction(Function::kReplace);  // no palette on the way
  const struct {
    std::vector<Qt::Key> keys;
    int answer;
  } rows[] = {
      {{Qt::Key_Return}, kKeep},
      {{Qt::Key_Right, Qt::Key_Enter}, kReplace},
      {{Qt::Key_Down, Qt::Key_Down, Qt::Key_Return}, kStop},
      {{Qt::Key_Left, Qt::Key_Space}, kStop},
      {{Qt::Key_Up, Qt::Key_Right, Qt::Key_Return}, kKeep},
      {{Qt::Key_Tab, Qt::Key_Return}, kReplace},
      {{Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Space}, kStop},
      // From the last button through both fields.
      {{Qt::Key_Left, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Return}, kKeep},
      // Enter in the upper field presses nothing.
      {{Qt::Key_Left, Qt::Key_Tab, Qt::Key_Return, Qt::Key_Backtab, Qt::Key_Return}, kStop},
  };
  for (std::size_t i = 0; i < 100; ++i) {
    const auto& row = rows[i % std::size(rows)];
    const ProposalAnswer answer = Ask([&] {
      for (const Qt::Key key : row.keys) Press(key);
    });
    EXPECT_EQ(answer.ReplaceAnswer, row.answer) << i;
    EXPECT_EQ(answer.ReplaceText, "new text") << i;
  }
}

TEST_F(ReplaceDialogTest, TypesALineEndWithEnterInTheField) {
  const ProposalAnswer answer = Ask([&] {
    QTest::keyClick(Find("ReplaceText"), Qt::Key_Return);
    EXPECT_FALSE(dialog.isHidden());
    Click("btnReplace");
  });
  EXPECT_NE(answer.ReplaceText.find('\n'), std::string::npos);
}

TEST_F(ReplaceDialogTest, IsNotAnsweredAgainByAKeyHeldDown) {
  Ask([&] {
    QKeyEvent again(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r", true);
    QApplication::sendEvent(Find("btnKeep"), &again);
    EXPECT_FALSE(dialog.isHidden());
    dialog.close();
  });
}

TEST_F(ReplaceDialogTest, PutsTheColourOfThePaletteIntoTheField) {
  QStringList told;
  QObject::connect(
      &dialog, &ReplaceDialog::ColourChosen, &dialog,
      [&](const QString& old_digits, const QString& digits) { told += old_digits + ">" + digits; });
  Ask([&] {
    auto* field = Find<ByteTextBox>("ReplaceText");
    Find<ByteTextBox>("SearchText")->Select({0, 2});  // what the user selects does not matter
    InPalette([](QDialog& palette) { palette.close(); });
    EXPECT_EQ(field->Bytes(), "new text");
    Take("lblOldCol");
    EXPECT_EQ(field->Bytes(), "old <b>#123456</b>");
    EXPECT_TRUE(told.isEmpty());
    Take("lblSafeCol_7");
    EXPECT_EQ(field->Bytes(), "old <b>#003333</b>");
    ExpectSelected("ReplaceText", {7, 7});
    EXPECT_EQ(told, QStringList("123456>003333"));
    dialog.close();
  });
}

}  // namespace
}  // namespace tessaril
