#include "ui/shared/byte_text_box.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QHBoxLayout>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QTest>
#include <functional>
#include <random>

namespace tessaril {

static void PrintTo(const Selection& selection, std::ostream* out) {
  *out << selection.start << "+" << selection.length;
}

static bool operator==(const Selection& a, const Selection& b) {
  return a.start == b.start && a.length == b.length;
}

namespace {

using std::string_literals::operator""s;
using Random = std::mt19937;

std::size_t Below(std::size_t bound, Random& random) {
  return std::uniform_int_distribution<std::size_t>(0, bound - 1)(random);
}

void Paste(ByteTextBox& box, const QString& text) {
  QApplication::clipboard()->setText(text);
  QTest::keyClick(&box, Qt::Key_V, Qt::ControlModifier);
}

void Commit(ByteTextBox& box, const QString& text) {
  QInputMethodEvent event;
  event.setCommitString(text);
  QApplication::sendEvent(&box, &event);
}

void Drop(ByteTextBox& box, const QString& text) {
  QMimeData dragged;
  dragged.setText(text);
  const QRect caret = box.cursorRect();
  const QPoint point(caret.left() + 1, caret.center().y());
  QDragEnterEvent enter(point, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(box.viewport(), &enter);
  QDropEvent drop(point, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(box.viewport(), &drop);
}

TEST(ByteTextBox, GivesBackWhatItWasGiven) {
  const std::vector<std::string> pieces = {"a",
                                           "\r\n",
                                           "\n",
                                           "\r",
                                           "\0"s,
                                           "\x01",
                                           "\t",
                                           "\xE9",
                                           "\x80\x81",
                                           "\xC3\xA9",
                                           "\xC4\x8D",
                                           "\xE2\x80\xA8",
                                           "\xE2\x80\xA9",
                                           "\xEF\xB7\x90",
                                           "\x7F",
                                           "\xEF\xB7\x91",
                                           "\xEF\xBF\xBC",
                                           "\xEF\xBB\xBF",
                                           "\xC2\xA0",
                                           "\xC2\x85",
                                           "\xF0\x9F\x98\x80",
                                           "\xC0\x80",
                                           "\xED\xA0\x80",
                                           "\xF0\x9F\x98",
                                           "\xF4\x90\x80\x80",
                                           "\xE2\x90\x80",
                                           "\xCC\x81",
                                           "\xE2\x80\xAE",
                                           "\xEF\xBF\xBF",
                                           "\xFF"};
  ByteTextBox box;
  Random random(20);
  for (int round = 0; round < 3000; ++round) {
    std::string bytes;
    for (std::size_t count = Below(12, random); count > 0; --count)
      bytes += pieces[Below(pieces.size(), random)];
    box.SetBytes(bytes);
    ASSERT_EQ(box.Bytes(), bytes) << testing::PrintToString(bytes);
    box.Select({0, bytes.size()});
    ASSERT_EQ(box.Selected(), (Selection{0, bytes.size()})) << testing::PrintToString(bytes);
  }
}

TEST(ByteTextBox, ShowsEachLineInItsOwnCode) {
  ByteTextBox box;
  box.SetBytes("\xC3\xA9\xC4\x8D\n\xC3\xA9\xE9\x80z\x81\rx\0\r\n\xE2\x80\xA9"s);
  EXPECT_EQ(box.toPlainText(), u"\u00E9\u010D\n\u00C3\u00A9\u00E9\u20ACz\u0081\nx\u2400\n\u00B6"_qs);
}

TEST(ByteTextBox, SelectsInBytes) {
  // Lines of 3 bytes and CR LF, 3 bytes and LF, 1 byte; the first is UTF-8, the second 8-bit.
  const std::string text = "a\xC4\x8D\r\n\xE9\xC4\x8D\n\xF0\x9F\x98\x80z";
  const struct {
    Selection given;
    Selection taken;
  } rows[] = {{{0, 1}, {0, 1}},   {{1, 2}, {1, 2}},   {{2, 1}, {1, 2}},
              {{1, 1}, {1, 2}},   {{2, 0}, {1, 0}},   {{3, 1}, {3, 2}},
              {{4, 1}, {3, 2}},   {{4, 3}, {3, 4}},   {{5, 1}, {5, 1}},
              {{6, 1}, {6, 1}},   {{8, 1}, {8, 1}},   {{8, 3}, {8, 5}},
              {{10, 1}, {9, 4}},  {{13, 1}, {13, 1}}, {{13, 9}, {13, 1}},
              {{14, 3}, {14, 0}}, {{99, 3}, {14, 0}}, {{5, std::string::npos}, {5, 9}}};
  ByteTextBox box;
  box.SetBytes(text);
  for (const auto& row : rows) {
    box.Select(row.given);
    EXPECT_EQ(box.Selected(), row.taken) << testing::PrintToString(row.given);
    EXPECT_EQ(box.textCursor().position(), box.textCursor().selectionEnd());
  }
}

TEST(ByteTextBox, TakesWhatIsTypedInWhateverWay) {
  const std::vector<std::pair<const char*, std::function<void(ByteTextBox&, const QString&)>>> ways = {
      {"paste", Paste},
      {"drop", Drop},
      {"input method", Commit},
      {"keys",
       [](ByteTextBox& box, const QString& text) {
         QTest::sendKeyEvent(QTest::Click, &box, Qt::Key_unknown, text, Qt::NoModifier);
       }},
      {"cursor", [](ByteTextBox& box, const QString& text) { box.textCursor().insertText(text); }},
      {"insertPlainText", [](ByteTextBox& box, const QString& text) { box.insertPlainText(text); }}};
  const struct {
    PageEncoding page;
    std::string left;
    QString typed;
    std::string written;
  } rows[] = {
      {PageEncoding::kUtf8, "\xC4\x8D", u"\u00E9\u010D"_qs, "\xC3\xA9\xC4\x8D"},
      {PageEncoding::kUtf8, "\xE9", u"\u00E9\u20AC\U0001F600"_qs, "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"},
      {PageEncoding::kEightBit, "\xE9", u"\u00E9\u20AC\u010D\u0081"_qs, "\xE9\x80&#269;\x81"},
      {PageEncoding::kEightBit, "\xC4\x8D", u"\u00E9\U0001F600"_qs, "\xE9&#128512;"},
      {PageEncoding::kUtf8, "\0"s, u"\u2400\u00A0"_qs, "\xE2\x90\x80\xC2\xA0"},
      {PageEncoding::kEightBit, "\xE2\x80\xA9", u"\u00B6"_qs, "\xB6"}};
  for (const auto& [name, type] : ways) {
    for (const auto& row : rows) {
      ByteTextBox box;
      box.SetTyping(row.page, "\n");
      box.SetBytes(row.left + "\r\nz");
      box.Select({row.left.size(), 0});
      type(box, row.typed);
      EXPECT_EQ(box.Bytes(), row.left + row.written + "\r\nz")
          << name << " " << testing::PrintToString(row.left);
      box.setProperty("plainText", row.typed + "\n");
      EXPECT_EQ(box.Bytes(), row.written + "\n") << name << " " << testing::PrintToString(row.left);
    }
  }
}

// A character as a page holds it, and as typing writes it in a page of UTF-8 and in one of 8 bits.
struct Unit {
  std::string bytes;
  std::string utf8;
  std::string eight_bit;
};

// A text as a list of characters, edited by the plain rules; `box` must follow it.
class EditedText {
 public:
  EditedText(PageEncoding page, Random& random) : page_(page), random_(random) {
    for (std::size_t lines = Below(6, random_); lines > 0; --lines) AddLine();
    box_.SetTyping(page, "\r\n");
    box_.SetBytes(Written(units_));
    history_ = {units_};
  }

  void Edit() {
    from_ = Below(units_.size() + 1, random_);
    to_ = from_ + Below(std::min<std::size_t>(units_.size() - from_, 6) + 1, random_);
    const Selection selection = {Written(units_, 0, from_).size(), Written(units_, from_, to_).size()};
    box_.Select(selection);
    ASSERT_EQ(box_.Selected(), selection);
    switch (Below(12, random_)) {
      case 0:
        return Step(Qt::Key_Backspace, from_ > 0 ? from_ - 1 : 0, to_);
      case 1:
        return Step(Qt::Key_Delete, from_, std::min(to_ + 1, units_.size()));
      case 2:
        return Enter(Qt::NoModifier);
      case 3:
        return Enter(Qt::ShiftModifier);
      case 4:
        QTest::keyClicks(&box_, "kl");
        return Put({kPlain('k'), kPlain('l')});
      case 5:
        Commit(box_, u"\u010D"_qs);
        return Put({kForeign});
      case 6:
        Paste(box_, u"\u00E9\r\u2028\r\n\n"_qs);
        return Put({kAccent, LineEnd(), kSeparator, LineEnd(), LineEnd()});
      case 7:
        return Move(Qt::Key_X);
      case 8:
        return Move(Qt::Key_C);
      case 9:
        return Undo(1 + Below(4, random_));
      case 10:
        return Undo(1000);
      default:
        QTest::keyClick(&box_, Qt::Key_Q);
        return Put({kPlain('q')});
    }
  }

  void Compare() const { ASSERT_EQ(box_.Bytes(), Written(units_)); }

 private:
  static Unit kPlain(char c) { return {{c}, {c}, {c}}; }
  static Unit LineEnd() { return {"\r\n", "\r\n", "\r\n"}; }
  inline static const Unit kForeign = {"\xC4\x8D", "\xC4\x8D", "&#269;"};
  inline static const Unit kAccent = {"\xC3\xA9", "\xC3\xA9", "\xE9"};
  inline static const Unit kSeparator = {"\xE2\x80\xA8", "\xE2\x80\xA8", "&#8232;"};

  static std::string Written(const std::vector<Unit>& units, std::size_t from = 0, std::size_t to = 999999) {
    std::string bytes;
    for (std::size_t i = from; i < std::min(to, units.size()); ++i) bytes += units[i].bytes;
    return bytes;
  }

  // Begins with "x", so that CR and the LF of an empty line never meet, or with a byte that is no UTF-8.
  void AddLine() {
    static const std::vector<Unit> utf8 = {kPlain('a'),
                                           kPlain('\0'),
                                           kPlain('\t'),
                                           kForeign,
                                           kAccent,
                                           kSeparator,
                                           {"\xE2\x80\xA9", "\xE2\x80\xA9", "&#8233;"},
                                           {"\xEF\xB7\x90", "\xEF\xB7\x90", "&#64976;"},
                                           {"\xEF\xBF\xBC", "\xEF\xBF\xBC", "&#65532;"},
                                           {"\xC2\xA0", "\xC2\xA0", "\xA0"},
                                           {"\xF0\x9F\x98\x80", "\xF0\x9F\x98\x80", "&#128512;"}};
    static const std::vector<Unit> eight_bit = {kPlain('b'),
                                                kPlain('\0'),
                                                {"\xE9", "\xC3\xA9", "\xE9"},
                                                {"\x80", "\xE2\x82\xAC", "\x80"},
                                                {"\x81", "\xC2\x81", "\x81"},
                                                {"\xC3", "\xC3\x83", "\xC3"},
                                                {"\xA9", "\xC2\xA9", "\xA9"}};
    const bool is_utf8 = Below(2, random_) == 0;
    units_.push_back(is_utf8 ? kPlain('x') : Unit{"\xFF", "\xC3\xBF", "\xFF"});
    const std::vector<Unit>& alphabet = is_utf8 ? utf8 : eight_bit;
    for (std::size_t count = Below(5, random_); count > 0; --count) {
      units_.push_back(alphabet[Below(alphabet.size(), random_)]);
    }
    const std::array<const char*, 4> ends = {"\r\n", "\n", "\r", "\r\n"};
    units_.push_back({ends[Below(4, random_)], "\r\n", "\r\n"});
  }

  void Put(const std::vector<Unit>& typed) {
    const auto begin = units_.begin() + static_cast<std::ptrdiff_t>(from_);
    units_.erase(begin, units_.begin() + static_cast<std::ptrdiff_t>(to_));
    for (std::size_t i = 0; i < typed.size(); ++i) {
      Unit unit = typed[i];
      unit.bytes = page_ == PageEncoding::kUtf8 ? unit.utf8 : unit.eight_bit;
      units_.insert(units_.begin() + static_cast<std::ptrdiff_t>(from_ + i), unit);
    }
    history_.push_back(units_);
  }

  void Step(Qt::Key key, std::size_t from, std::size_t to) {
    QTest::keyClick(&box_, key);
    if (from_ == to_) std::tie(from_, to_) = std::tie(from, to);
    Put({});
  }

  void Enter(Qt::KeyboardModifier modifier) {
    QTest::keyClick(&box_, Qt::Key_Return, modifier);
    Put({LineEnd()});
  }

  // Cut or copy, and paste in another place.
  void Move(Qt::Key key) {
    if (from_ == to_) return;
    const std::vector<Unit> moved(units_.begin() + static_cast<std::ptrdiff_t>(from_),
                                  units_.begin() + static_cast<std::ptrdiff_t>(to_));
    QTest::keyClick(&box_, key, Qt::ControlModifier);
    if (key == Qt::Key_X) Put({});
    from_ = to_ = Below(units_.size() + 1, random_);
    box_.Select({Written(units_, 0, from_).size(), 0});
    QTest::keyClick(&box_, Qt::Key_V, Qt::ControlModifier);
    Put(moved);
  }

  // Undoing leads back through texts that were there before, redoing everything to the newest; then some
  // steps are undone for good.
  void Undo(std::size_t steps) {
    std::size_t undone = 0;
    std::size_t at = history_.size() - 1;
    for (; undone < steps && box_.document()->isUndoAvailable(); ++undone) {
      QTest::keyClick(&box_, Qt::Key_Z, Qt::ControlModifier);
      while (at > 0 && Written(history_[at]) != box_.Bytes()) --at;
      ASSERT_EQ(box_.Bytes(), Written(history_[at]));
    }
    if (!box_.document()->isUndoAvailable()) {
      ASSERT_EQ(box_.Bytes(), Written(history_[0]));
    }
    for (; undone > 0; --undone) QTest::keyClick(&box_, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    Compare();
    if (steps > 100 || !box_.document()->isUndoAvailable()) return;
    QTest::keyClick(&box_, Qt::Key_Z, Qt::ControlModifier);
    while (history_.size() > 1 && Written(history_.back()) != box_.Bytes()) history_.pop_back();
    units_ = history_.back();
  }

  PageEncoding page_;
  Random& random_;
  ByteTextBox box_;
  std::vector<Unit> units_;
  std::vector<std::vector<Unit>> history_;
  std::size_t from_ = 0;
  std::size_t to_ = 0;
};

TEST(ByteTextBox, FollowsRandomEdits) {
  Random random(7);
  for (int round = 0; round < 300; ++round) {
    EditedText text(round % 2 == 0 ? PageEncoding::kUtf8 : PageEncoding::kEightBit, random);
    for (int edit = 0; edit < 25; ++edit) {
      text.Edit();
      text.Compare();
      if (testing::Test::HasFatalFailure()) FAIL() << "round " << round << ", edit " << edit;
    }
  }
}

TEST(ByteTextBox, TellsOfANewTextOnceAndUndoesNothingOfTheOld) {
  ByteTextBox box;
  std::vector<std::string> told;
  QObject::connect(&box, &QPlainTextEdit::textChanged, [&] { told.push_back(box.Bytes()); });
  box.SetBytes("one\r\ntwo");
  QTest::keyClick(&box, Qt::Key_A);
  box.SetBytes("\xE9\n");
  EXPECT_FALSE(box.document()->isUndoAvailable());
  box.undo();
  box.SetBytes("");
  EXPECT_EQ(told, (std::vector<std::string>{"one\r\ntwo", "aone\r\ntwo", "\xE9\n", ""}));
}

TEST(ByteTextBox, CopiesPlainTextAndTakesNoOther) {
  ByteTextBox box;
  box.SetBytes("\xE9\r\n\xE2\x80\xA9\0\xC2\xA0\r"s);
  box.setReadOnly(true);
  QTest::keyClick(&box, Qt::Key_End, Qt::ControlModifier | Qt::ShiftModifier);
  QTest::keyClick(&box, Qt::Key_C, Qt::ControlModifier);
  const QMimeData* copied = QApplication::clipboard()->mimeData();
  EXPECT_EQ(copied->text(), u"\u00E9\n\u2029\u2400\u00A0\n"_qs);
  EXPECT_FALSE(copied->hasHtml());
  const std::string before = box.Bytes();
  QTest::keyClicks(&box, "a\b\r");
  QTest::keyClick(&box, Qt::Key_X, Qt::ControlModifier);
  QTest::keyClick(&box, Qt::Key_V, Qt::ControlModifier);
  Drop(box, "d");
  EXPECT_EQ(box.Bytes(), before);

  box.setReadOnly(false);
  auto* rich = new QMimeData;
  rich->setHtml("<b>bold</b>");
  QApplication::clipboard()->setMimeData(rich);
  QTest::keyClick(&box, Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(box.Bytes(), before);
}

TEST(ByteTextBox, IsLeftByTabOrTypesIt) {
  QWidget window;
  QHBoxLayout layout(&window);
  ByteTextBox first;
  ByteTextBox second;
  layout.addWidget(&first);
  layout.addWidget(&second);
  window.show();
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  first.setFocus();
  QTest::keyClick(&first, Qt::Key_Tab);
  EXPECT_TRUE(second.hasFocus());
  QTest::keyClick(&second, Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_TRUE(first.hasFocus());
  first.setTabChangesFocus(false);
  QTest::keyClick(&first, Qt::Key_Tab);
  EXPECT_TRUE(first.hasFocus());
  QTest::keyClick(&first, Qt::Key_Tab, Qt::ControlModifier);
  EXPECT_TRUE(second.hasFocus());
  EXPECT_EQ(first.Bytes() + second.Bytes(), "\t");
}

TEST(ByteTextBox, ShowsItsSelectionInTheSameColoursWithoutFocus) {
  const auto expect_same = [](const ByteTextBox& box, QColor highlight) {
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
      EXPECT_EQ(box.palette().color(group, QPalette::Highlight), highlight);
    }
  };
  QPalette blue;
  blue.setColor(QPalette::Active, QPalette::Highlight, Qt::blue);
  blue.setColor(QPalette::Inactive, QPalette::Highlight, Qt::gray);
  QPalette dark = blue;
  dark.setColor(QPalette::Active, QPalette::Highlight, Qt::green);
  dark.setColor(QPalette::All, QPalette::Base, Qt::black);
  QWidget window;
  window.setPalette(blue);
  ByteTextBox box(&window);
  expect_same(box, Qt::blue);
  window.setPalette(dark);
  expect_same(box, Qt::green);
  EXPECT_EQ(box.palette().color(QPalette::Base), QColor(Qt::black));
  box.setPalette(blue);
  expect_same(box, Qt::blue);
}

TEST(ByteTextBox, ScrollsASelectionIntoViewWithItsStart) {
  const std::string long_line(400, 'm');
  std::string text;
  for (int line = 0; line < 200; ++line) text += long_line + "\r\n";
  for (const bool shown_before : {false, true}) {
    ByteTextBox box;
    box.SetBytes(text);
    box.resize(400, 200);
    if (shown_before) box.show();
    for (const Selection selection :
         {Selection{402 * 100 + 300, 20}, Selection{402 * 20 + 10, 402 * 4}, Selection{0, 3}}) {
      box.Select(selection);
      box.show();
      QTextCursor start = box.textCursor();
      start.setPosition(start.selectionStart());
      EXPECT_TRUE(box.viewport()->rect().contains(box.cursorRect(start)))
          << testing::PrintToString(selection);
      EXPECT_TRUE(box.viewport()->rect().contains(box.cursorRect())) << testing::PrintToString(selection);
    }
  }
}

}  // namespace
}  // namespace tessaril
