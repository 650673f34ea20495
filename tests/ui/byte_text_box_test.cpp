#include "ui/shared/byte_text_box.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QTest>
#include <algorithm>
#include <iterator>
#include <random>

#include "engine/characters.h"

namespace tessaril {
namespace {

using std::string_literals::operator""s;
using Random = std::mt19937;
using Texts = std::vector<std::string>;

std::pair<std::size_t, std::size_t> Selected(const ByteTextBox& box) {
  return {box.Selected().start, box.Selected().length};
}

std::size_t Below(std::size_t bound, Random& random) {
  return std::uniform_int_distribution<std::size_t>(0, bound - 1)(random);
}

void Press(QWidget& box, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
  QTest::keyClick(&box, key, modifiers);
}

void Paste(ByteTextBox& box, const QString& text) {
  QApplication::clipboard()->setText(text);
  Press(box, Qt::Key_V, Qt::ControlModifier);
}

void Commit(ByteTextBox& box, const QString& text) {
  QInputMethodEvent event;
  event.setCommitString(text);
  QApplication::sendEvent(&box, &event);
}

void Drop(ByteTextBox& box, const QString& text) {
  QMimeData dragged;
  dragged.setText(text);
  const QPoint caret = box.cursorRect().center();
  QDragEnterEvent enter(caret, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(box.viewport(), &enter);
  QDropEvent drop(caret, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(box.viewport(), &drop);
}

Texts Characters(std::u32string_view codes) {
  Texts characters;
  for (const char32_t code : codes) AppendUtf8(code, characters.emplace_back());
  return characters;
}

TEST(ByteTextBox, ShowsAndGivesBackWhatItWasGiven) {
  using namespace std::string_view_literals;
  Texts pieces = Characters(
      U"a\0\1\t\x7F\r\n\u0085\u00A0\u00E9\u010D\u0301\u2028\u2029\u202E\u2066\u2400\uFDD0\uFDD1\uFEFF\uFFFC\uFFFF\U0001F600"sv);
  for (const char* broken :
       {"\xE9", "\x80\x81", "\xC0\x80", "\xED\xA0\x80", "\xF0\x9F\x98", "\xF4\x90\x80\x80"}) {
    pieces.insert(pieces.end(), {broken, "\r\n"});
  }
  ByteTextBox box;
  Random random(20);
  for (int round = 0; round < 2000; ++round) {
    std::string bytes;
    for (std::size_t left = Below(12, random); left > 0; --left)
      bytes += pieces[Below(pieces.size(), random)];
    box.SetBytes(bytes);
    ASSERT_EQ(box.Bytes(), bytes);
    box.Select({0, bytes.size()});
    ASSERT_EQ(Selected(box), std::pair(0UL, bytes.size())) << testing::PrintToString(bytes);
  }
  box.SetBytes("\xC3\xA9\xC4\x8D\n\xC3\xA9\xE9\x80z\x81\rx\0\r\n\xE2\x80\xA9\xE2\x80\xAE"s);
  EXPECT_EQ(box.toPlainText(), u"\u00E9\u010D\n\u00C3\u00A9\u00E9\u20ACz\u0081\nx\u2400\n\u00B6\u21E6"_qs);
}

TEST(ByteTextBox, SelectsWholeCharactersInBytes) {
  ByteTextBox box;
  box.SetBytes("a\xC4\x8D\r\n\xE9\xC4\x8D\n\xF0\x9F\x98\x80z");
  const auto bounds = {0UL, 1UL, 3UL, 5UL, 6UL, 7UL, 8UL, 9UL, 13UL, 14UL};
  for (std::size_t start = 0; start < 17; ++start) {
    const std::size_t first = *std::prev(std::upper_bound(bounds.begin(), bounds.end(), start));
    box.Select({start, 0});
    EXPECT_EQ(Selected(box), std::pair(first, 0UL)) << start;
    for (std::size_t end = start + 1; end < 17; ++end) {
      const std::size_t last = *std::lower_bound(bounds.begin(), bounds.end(), std::min(end, 14UL));
      box.Select({start, end - start});
      EXPECT_EQ(Selected(box), std::pair(first, last - first)) << start << " " << end;
      EXPECT_EQ(box.textCursor().position(), box.textCursor().selectionEnd());
    }
  }
  box.Select({5, std::string::npos});
  EXPECT_EQ(Selected(box), std::pair(5UL, 9UL));
}

TEST(ByteTextBox, TakesWhatIsTypedInWhateverWay) {
  using Way = void (*)(ByteTextBox&, const QString&);
  const std::initializer_list<Way> ways = {
      Paste, Drop, Commit,
      [](ByteTextBox& box, const QString& text) {
        QTest::sendKeyEvent(QTest::Click, &box, Qt::Key_unknown, text, Qt::NoModifier);
      },
      [](ByteTextBox& box, const QString& text) { box.textCursor().insertText(text); }};
  const auto utf8 = PageEncoding::kUtf8;
  const auto eight_bit = PageEncoding::kEightBit;
  const std::tuple<PageEncoding, std::string, QString, std::string> rows[] = {
      {utf8, "\xC4\x8D", u"\u00E9\u010D"_qs, "\xC3\xA9\xC4\x8D"},
      {utf8, "\xE9", u"\u00E9\u20AC\U0001F600"_qs, "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"},
      {utf8, "\0"s, u"\u2400\u00A0"_qs, "\xE2\x90\x80\xC2\xA0"},
      {eight_bit, "\xE9", u"\u00E9\u20AC\u010D\u0081"_qs, "\xE9\x80&#269;\x81"},
      {eight_bit, "\xC4\x8D", u"\u00E9\U0001F600"_qs, "\xE9&#128512;"},
      {eight_bit, "\xE2\x80\xA9", u"\u00B6"_qs, "\xB6"}};
  for (const Way way : ways) {
    for (const auto& [page, left, typed, written] : rows) {
      ByteTextBox box;
      box.SetTyping(page, "\n");
      box.SetBytes(left + "\r\nz");
      box.Select({left.size(), 0});
      way(box, typed);
      EXPECT_EQ(box.Bytes(), left + written + "\r\nz");
      box.Select({left.size(), 0});
      box.setProperty("plainText", typed + "\n");
      EXPECT_EQ(box.Bytes(), written + "\n");
    }
  }
}

// A text as a list of characters, edited by the plain rules; a box must follow it.
class EditedText {
 public:
  EditedText(PageEncoding page, Random& random) : page_(page), random_(random), history_(1) {
    for (std::size_t left = Below(6, random_); left > 0; --left) AddLine(history_[0]);
    box_.SetTyping(page, "\r\n");
    box_.SetBytes(Written(size()));
  }

  void Edit() {
    from_ = Below(size() + 1, random_);
    to_ = std::min(from_ + Below(6, random_), size());
    const std::pair range(Written(from_).size(), Written(to_).size() - Written(from_).size());
    box_.Select({range.first, range.second});
    EXPECT_EQ(Selected(box_), range);
    const std::size_t kind = Below(10, random_);
    if (kind == 0) Delete(Qt::Key_Backspace, from_ - std::min<std::size_t>(from_, 1), to_);
    if (kind == 1) Delete(Qt::Key_Delete, from_, std::min(to_ + 1, size()));
    if (kind == 2) Press(box_, Qt::Key_Return), Put({"\n"});
    if (kind == 3) Press(box_, Qt::Key_Enter, Qt::ShiftModifier), Put({"\n"});
    if (kind == 4) QTest::keyClicks(&box_, "kl"), Put({"k", "l"});
    if (kind == 5) Commit(box_, u"\u010D"_qs), Put({"\xC4\x8D"});
    if (kind == 6) Paste(box_, u"\u00E9\r\u2028\r\n\n"_qs), Put(Characters(U"\u00E9\n\u2028\n\n"));
    if (kind == 7) Move(Qt::Key_X);
    if (kind == 8) Move(Qt::Key_C);
    if (kind == 9) UndoAndRedo();
    Compare();
  }

 private:
  struct Unit {
    std::string bytes, utf8;
  };
  using Units = std::vector<Unit>;

  std::size_t size() const { return history_.back().size(); }

  std::string Written(std::size_t count) const {
    std::string bytes;
    for (std::size_t i = 0; i < count; ++i) bytes += history_.back()[i].bytes;
    return bytes;
  }

  void Compare() const { EXPECT_EQ(box_.Bytes(), Written(size())); }

  // A line begins with "x", so that CR and LF never meet by chance, or with a byte that is no UTF-8.
  void AddLine(Units& units) {
    static const Texts utf8 = Characters(U"a\0\t\u010D\u00E9\u2028\u2029\uFDD0\uFFFC\u00A0\U0001F600"s);
    static const std::string eight_bit = "b\0\xE9\x80\x81\xC3\xA9"s;
    const bool is_utf8 = Below(2, random_) == 0;
    units.push_back(is_utf8 ? Unit{"x", "x"} : Unit{"\xFF", "\xC3\xBF"});
    for (std::size_t left = Below(5, random_); left > 0; --left) {
      const std::string& character = utf8[Below(utf8.size(), random_)];
      const std::string byte(1, eight_bit[Below(eight_bit.size(), random_)]);
      units.push_back(is_utf8 ? Unit{character, character} : Unit{byte, EightBitToUtf8(byte)});
    }
    units.push_back({Texts{"\r\n", "\n", "\r"}[Below(3, random_)], "\n"});
  }

  void Put(const Texts& typed) {
    Units units = history_.back();
    const auto begin = units.begin() + static_cast<std::ptrdiff_t>(from_);
    auto at = units.erase(begin, units.begin() + static_cast<std::ptrdiff_t>(to_));
    for (const std::string& character : typed) {
      const std::string bytes = character == "\n" ? "\r\n" : WrittenBytes(character, page_);
      at = units.insert(at, {bytes, character}) + 1;
    }
    history_.push_back(units);
  }

  void Delete(Qt::Key key, std::size_t from, std::size_t to) {
    Press(box_, key);
    if (from_ == to_) std::tie(from_, to_) = std::tie(from, to);
    Put({});
  }

  // Cut or copy, and paste in another place.
  void Move(Qt::Key key) {
    if (from_ == to_) return;
    Texts moved;
    for (std::size_t i = from_; i < to_; ++i) moved.push_back(history_.back()[i].utf8);
    Press(box_, key, Qt::ControlModifier);
    if (key == Qt::Key_X) Put({});
    from_ = to_ = Below(size() + 1, random_);
    box_.Select({Written(from_).size(), 0});
    Press(box_, Qt::Key_V, Qt::ControlModifier);
    Put(moved);
  }

  // Undoing leads back to the first text through others that were there, redoing to the newest. Then some of
  // it is undone for good.
  void UndoAndRedo() {
    const std::vector<Units> history = history_;
    const int undone = Undo(1000);
    history_.resize(1);
    Compare();
    for (int left = undone; left > 0; --left) Press(box_, Qt::Key_Y, Qt::ControlModifier);
    history_ = history;
    Compare();
    Undo(static_cast<int>(Below(4, random_)));
  }

  int Undo(int most) {
    int undone = 0;
    for (; undone < most && box_.document()->isUndoAvailable(); ++undone) {
      Press(box_, Qt::Key_Z, Qt::ControlModifier);
      while (history_.size() > 1 && Written(size()) != box_.Bytes()) history_.pop_back();
      Compare();
    }
    return undone;
  }

  PageEncoding page_;
  Random& random_;
  std::vector<Units> history_;  // the text after each edit; the last one is shown
  ByteTextBox box_;
  std::size_t from_ = 0;
  std::size_t to_ = 0;
};

TEST(ByteTextBox, FollowsRandomEdits) {
  Random random(7);
  for (int round = 0; round < 250; ++round) {
    EditedText text(round % 2 == 0 ? PageEncoding::kUtf8 : PageEncoding::kEightBit, random);
    for (int edit = 0; edit < 20; ++edit) {
      text.Edit();
      if (testing::Test::HasFailure()) FAIL() << "round " << round << ", edit " << edit;
    }
  }
}

TEST(ByteTextBox, TellsOfANewTextOnceAndUndoesNothingOfTheOld) {
  ByteTextBox box;
  Texts told;
  QObject::connect(&box, &QPlainTextEdit::textChanged, [&] { told.push_back(box.Bytes()); });
  box.SetBytes("one\r\ntwo");
  Press(box, Qt::Key_Return);
  box.SetBytes("\xE9\n");
  box.undo();
  box.SetBytes("");
  box.undo();
  EXPECT_EQ(told, (Texts{"one\r\ntwo", "\r\none\r\ntwo", "\xE9\n", ""}));
}

TEST(ByteTextBox, CopiesPlainTextAndTakesNoOther) {
  ByteTextBox box;
  const std::string bytes = "\xE9\r\n\xE2\x80\xA9\0\xC2\xA0\r"s;
  box.SetBytes(bytes);
  box.setReadOnly(true);
  Press(box, Qt::Key_End, Qt::ControlModifier | Qt::ShiftModifier);
  Press(box, Qt::Key_C, Qt::ControlModifier);
  const QMimeData* copied = QApplication::clipboard()->mimeData();
  EXPECT_EQ(copied->text(), u"\u00E9\n\u2029\u2400\u00A0\n"_qs);
  EXPECT_FALSE(copied->hasHtml());
  QTest::keyClicks(&box, "a\b\r");
  Press(box, Qt::Key_Return);
  Press(box, Qt::Key_X, Qt::ControlModifier);
  Paste(box, "b");
  Drop(box, "c");
  EXPECT_EQ(box.Bytes(), bytes);

  box.setReadOnly(false);
  auto* rich = new QMimeData;
  rich->setHtml("<b>bold</b>");
  QApplication::clipboard()->setMimeData(rich);
  Press(box, Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(box.Bytes(), bytes);
}

TEST(ByteTextBox, IsLeftByTabOrTypesIt) {
  QWidget window;
  ByteTextBox first(&window);
  ByteTextBox second(&window);
  second.setTabChangesFocus(false);
  window.show();
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  first.setFocus();
  Press(first, Qt::Key_Tab);
  EXPECT_TRUE(second.hasFocus());
  Press(second, Qt::Key_Tab);
  EXPECT_TRUE(second.hasFocus());
  Press(second, Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_TRUE(first.hasFocus());
  second.setFocus();
  Press(second, Qt::Key_Tab, Qt::ControlModifier);
  EXPECT_TRUE(first.hasFocus());
  EXPECT_EQ(first.Bytes() + second.Bytes(), "\t");
}

TEST(ByteTextBox, ShowsItsSelectionInTheSameColoursWithoutFocus) {
  QPalette blue;
  blue.setColor(QPalette::Active, QPalette::Highlight, Qt::blue);
  blue.setColor(QPalette::Inactive, QPalette::Highlight, Qt::gray);
  QPalette dark = blue;
  dark.setColor(QPalette::Active, QPalette::Highlight, Qt::green);
  dark.setColor(QPalette::All, QPalette::Base, Qt::black);
  QWidget window;
  window.setPalette(blue);
  ByteTextBox box(&window);
  EXPECT_EQ(box.palette().color(QPalette::Inactive, QPalette::Highlight), QColor(Qt::blue));
  window.setPalette(dark);
  EXPECT_EQ(box.palette().color(QPalette::Inactive, QPalette::Highlight), QColor(Qt::green));
  EXPECT_EQ(box.palette().color(QPalette::Base), QColor(Qt::black));
  box.setPalette(blue);
  EXPECT_EQ(box.palette().color(QPalette::Active, QPalette::Highlight), QColor(Qt::blue));
  EXPECT_EQ(box.palette().color(QPalette::Inactive, QPalette::Highlight), QColor(Qt::blue));
}

// Looking for the end of a word takes the toolkit a time by the square of its length.
TEST(ByteTextBox, LooksForNoEndOfAWordThatIsLong) {
  ByteTextBox box;
  const std::string word(10000, 'x');
  const std::pair<std::string, QTextOption::WrapMode> rows[] = {
      {"<A HREF=\"data:" + word, QTextOption::WrapAnywhere},
      {"one two", QTextOption::WrapAtWordBoundaryOrAnywhere},
      {std::string(20000, ' ') + "two\r\n", QTextOption::WrapAtWordBoundaryOrAnywhere},
  };
  for (const auto& [bytes, mode] : rows) {
    box.SetBytes(bytes);
    EXPECT_EQ(box.wordWrapMode(), mode);
    EXPECT_EQ(box.Bytes(), bytes);
  }
  QApplication::clipboard()->setText(QString::fromStdString(word));
  box.paste();
  EXPECT_EQ(box.wordWrapMode(), QTextOption::WrapAnywhere);
}

TEST(ByteTextBox, ScrollsASelectionIntoViewWithItsStart) {
  std::string text;
  for (int line = 0; line < 200; ++line) text += std::string(400, 'm') + "\r\n";
  ByteTextBox box;
  box.SetBytes(text);
  box.resize(400, 200);
  for (const bool shown_before : {false, true}) {
    for (const Selection range : {Selection{402 * 100 + 300, 20}, {402 * 20 + 10, 402 * 4}, {0, 3}}) {
      box.setVisible(shown_before);
      box.Select(range);
      box.show();
      QTextCursor start = box.textCursor();
      start.setPosition(start.selectionStart());
      EXPECT_TRUE(box.viewport()->rect().contains(box.cursorRect(start))) << range.start;
      EXPECT_TRUE(box.viewport()->rect().contains(box.cursorRect())) << range.start;
    }
  }
}

}  // namespace
}  // namespace tessaril
