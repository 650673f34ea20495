#include "ui/shared/byte_text_box.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QScrollBar>
#include <QStringDecoder>
#include <QTextCursor>
#include <algorithm>
#include <memory>

namespace tessaril {
namespace {

// Text with U+0000, which other programs would take for its end, on its way from one box to another.
const QString kExactText = QStringLiteral("application/x-tessaril-text");

// The colours that a widget was given itself. All others are those of its parent or of the program, and
// are to follow their changes.
QPalette OwnColours(const QWidget& widget) {
  const QPalette& colours = widget.palette();
  const QPalette inherited = widget.parentWidget() ? widget.parentWidget()->palette() : QPalette();
  QPalette own;
  for (int group = 0; group < QPalette::NColorGroups; ++group) {
    for (int role = 0; role < QPalette::NColorRoles; ++role) {
      const auto in_group = static_cast<QPalette::ColorGroup>(group);
      const auto with_role = static_cast<QPalette::ColorRole>(role);
      const QBrush& brush = colours.brush(in_group, with_role);
      const bool is_own =
          colours.isBrushSet(in_group, with_role) && brush != inherited.brush(in_group, with_role);
      if (is_own) own.setBrush(in_group, with_role, brush);
    }
  }
  return own;
}

bool LeavesTheBox(const QKeyEvent& event) {
  if (event.key() == Qt::Key_Tab) return event.modifiers() == Qt::ControlModifier;
  return event.key() == Qt::Key_Backtab;
}

// The toolkit would give the new line end the mark of the character in front of it, or type U+2028.
bool IsEnter(const QKeyEvent& event) {
  return event.matches(QKeySequence::InsertParagraphSeparator) ||
         event.matches(QKeySequence::InsertLineSeparator);
}

// The toolkit takes time by the square of a word's length to find that the word fits no line. A text with a
// long one is broken anywhere instead.
template <typename Text>
QTextOption::WrapMode WrapModeFor(const Text& text) {
  constexpr int kLongWord = 5000;  // characters
  int length = 0;
  for (const auto c : text) {
    length = c == ' ' || c == '\t' || c == '\n' || c == '\r' ? 0 : length + 1;
    if (length > kLongWord) return QTextOption::WrapAnywhere;
  }
  return QTextOption::WrapAtWordBoundaryOrAnywhere;
}

}  // namespace

ByteTextBox::ByteTextBox(QWidget* parent) : QPlainTextEdit(parent) {
  setLineWrapMode(NoWrap);
  setTabChangesFocus(true);
  ColourSelectionWithoutFocus();
  connect(document(), &QTextDocument::contentsChange, this, &ByteTextBox::NoteChange);
  connect(document(), &QTextDocument::contentsChanged, this, &ByteTextBox::ForgetMarksOfForeignText);
}

void ByteTextBox::SetBytes(std::string_view bytes) {
  const std::vector<MarkedText> texts = ShownBytes(bytes);
  const bool can_undo = isUndoRedoEnabled();
  setUndoRedoEnabled(false);
  QTextCursor cursor(document());
  cursor.beginEditBlock();
  document()->clear();
  setWordWrapMode(WrapModeFor(bytes));
  Insert(texts, cursor);
  cursor.endEditBlock();
  setUndoRedoEnabled(can_undo);
  document()->setModified(false);
  moveCursor(QTextCursor::Start);
}

std::string ByteTextBox::Bytes() const {
  return BytesBetween(*document(), 0, EndOf(*document()), typing_);
}

void ByteTextBox::SetTyping(PageEncoding encoding, std::string_view line_end) {
  typing_ = {encoding, std::string(line_end)};
}

void ByteTextBox::Select(const Selection& selection) {
  const auto position = [this](std::size_t offset, Rounding rounding) {
    return PositionAt(*document(), offset, rounding, typing_);
  };
  const std::size_t length = std::min(selection.length, std::string::npos - selection.start);
  QTextCursor cursor(document());
  cursor.setPosition(position(selection.start, Rounding::kDown));
  if (length > 0) {
    cursor.setPosition(position(selection.start + length, Rounding::kUp), QTextCursor::KeepAnchor);
  }
  Reveal(cursor);
  reveal_when_shown_ = !isVisible();
}

Selection ByteTextBox::Selected() const {
  const QTextCursor cursor = textCursor();
  const int start = cursor.selectionStart();
  return {BytesBetween(*document(), 0, start, typing_).size(),
          BytesBetween(*document(), start, cursor.selectionEnd(), typing_).size()};
}

std::string ByteTextBox::BytesBeforeCaret() const {
  return BytesBetween(*document(), 0, textCursor().position(), typing_);
}

void ByteTextBox::Insert(const std::vector<MarkedText>& texts, QTextCursor& cursor) {
  for (const MarkedText& piece : texts) cursor.insertText(piece.text, FormatWith(piece.mark));
  is_text_foreign_ = false;
}

// setPlainText empties the document, without undo, and gives the new text the format of the character before
// the caret, mark and all. It does so before it tells of the change; that is when the mark is taken off.
void ByteTextBox::NoteChange(int, int, int added) {
  if (added == 0 && EndOf(*document()) == 0) is_text_foreign_ = true;
}

void ByteTextBox::ForgetMarksOfForeignText() {
  if (!is_text_foreign_) return;
  is_text_foreign_ = false;
  if (isUndoRedoEnabled() || document()->isEmpty()) return;
  QTextCursor cursor(document());
  cursor.select(QTextCursor::Document);
  cursor.setCharFormat({});
}

bool ByteTextBox::event(QEvent* event) {
  const bool handled = QPlainTextEdit::event(event);
  if (event->type() == QEvent::ReadOnlyChange && isReadOnly()) {
    setTextInteractionFlags(textInteractionFlags() | Qt::TextSelectableByKeyboard);
  }
  return handled;
}

void ByteTextBox::changeEvent(QEvent* event) {
  QPlainTextEdit::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) ColourSelectionWithoutFocus();
}

// Before a box is shown its size is not known, and so not what is in view.
void ByteTextBox::showEvent(QShowEvent* event) {
  QPlainTextEdit::showEvent(event);
  if (reveal_when_shown_) Reveal(textCursor());
  reveal_when_shown_ = false;
}

void ByteTextBox::Type(const QString& text) {
  if (WrapModeFor(text) == QTextOption::WrapAnywhere) setWordWrapMode(QTextOption::WrapAnywhere);
  QTextCursor cursor = textCursor();
  cursor.beginEditBlock();
  cursor.removeSelectedText();
  Insert(TypedText(text), cursor);
  cursor.endEditBlock();
  setTextCursor(cursor);
  ensureCursorVisible();
}

void ByteTextBox::Leave(bool forwards) {
  const bool leaves_by_tab = tabChangesFocus();
  setTabChangesFocus(true);
  focusNextPrevChild(forwards);
  setTabChangesFocus(leaves_by_tab);
}

void ByteTextBox::keyPressEvent(QKeyEvent* event) {
  if (LeavesTheBox(*event)) {
    Leave(event->key() == Qt::Key_Tab);
  } else if (IsEnter(*event) && !isReadOnly()) {
    Type(QStringLiteral("\n"));
  } else {
    QPlainTextEdit::keyPressEvent(event);
  }
}

QMimeData* ByteTextBox::createMimeDataFromSelection() const {
  const QTextCursor cursor = textCursor();
  QString text = CharactersBetween(*document(), cursor.selectionStart(), cursor.selectionEnd());
  auto copied = std::make_unique<QMimeData>();
  if (text.contains(QChar::Null)) {
    copied->setData(kExactText, text.toUtf8());
    text.replace(QChar::Null, QChar(0x2400));
  }
  copied->setText(text);
  return copied.release();
}

void ByteTextBox::insertFromMimeData(const QMimeData* source) {
  QStringDecoder exact(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
  const QString text = source->hasFormat(kExactText) ? exact(source->data(kExactText)) : source->text();
  if (!text.isEmpty()) Type(text);
}

// The toolkit scrolls as little as it can downwards, but in a long line brings the caret to the middle.
void ByteTextBox::Reveal(const QTextCursor& selection) {
  QTextCursor start = selection;
  start.setPosition(selection.selectionStart());
  setTextCursor(start);
  ensureCursorVisible();
  setTextCursor(selection);
  ensureCursorVisible();
  const QRect range = cursorRect(start).united(cursorRect(selection));
  const int width = viewport()->width();
  if (range.width() > width) return;
  const int shift = std::min(range.left(), 0) + std::max(range.right() + 1 - width, 0);
  horizontalScrollBar()->setValue(horizontalScrollBar()->value() + shift);
}

void ByteTextBox::ColourSelectionWithoutFocus() {
  QPalette colours = OwnColours(*this);
  bool changed = false;
  for (const QPalette::ColorRole role : {QPalette::Highlight, QPalette::HighlightedText}) {
    const QBrush usual = palette().brush(QPalette::Active, role);
    changed |= palette().brush(QPalette::Inactive, role) != usual;
    colours.setBrush(QPalette::Inactive, role, usual);
  }
  if (changed) setPalette(colours);
}

}  // namespace tessaril
