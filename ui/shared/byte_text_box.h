#ifndef TESSARIL_UI_SHARED_BYTE_TEXT_BOX_H_
#define TESSARIL_UI_SHARED_BYTE_TEXT_BOX_H_

#include <QPlainTextEdit>
#include <string>
#include <string_view>
#include <vector>

#include "engine/page_encoding.h"
#include "engine/run_host.h"
#include "ui/shared/byte_text.h"

namespace tessaril {

/// A text box for bytes. It shows them line by line: a line that is valid UTF-8 as UTF-8, any other as 8-bit.
/// Setting a text and reading it back gives the same bytes, whatever they are; after an edit every byte
/// outside the edit is still what it was, also when the edit is undone.
///
/// Everything that comes in by another way than SetBytes (keys, input methods, clipboard, drag and drop, the
/// property plainText, a cursor without formats) is typed text, and never more than plain text. What goes out
/// by clipboard or drag is plain text with LF between lines.
///
/// Unless the owner says otherwise, long lines are not wrapped, and Tab leaves the box. After
/// setTabChangesFocus(false) Tab types a tab; Ctrl+Tab leaves the box, and Shift+Tab backwards. A box that is
/// read-only lets text be selected and copied, by keyboard too. Where lines are wrapped, a text with a word
/// of many thousand characters is broken anywhere.
class ByteTextBox : public QPlainTextEdit {
  Q_OBJECT

 public:
  explicit ByteTextBox(QWidget* parent = nullptr);

  /// Shows `bytes` with the caret in front; nothing of what was shown can be undone to. Emits textChanged
  /// once, when all of the text is set.
  void SetBytes(std::string_view bytes);
  std::string Bytes() const;

  /// What typed characters become, and what Enter types. UTF-8 and CR LF unless set; to be set before the
  /// text that is to be edited, as it is for all that is typed into it.
  void SetTyping(PageEncoding encoding, std::string_view line_end);

  /// Selects a range of bytes with the caret at its end, and scrolls it into view: all of it when it fits,
  /// else its end. It ends where the text does; a bound inside a character or inside CR LF moves to the
  /// character's start (the range's start) or end. An empty range stays empty.
  void Select(const Selection& selection);
  Selection Selected() const;

  /// What lies in front of the caret.
  std::string BytesBeforeCaret() const;

 protected:
  bool event(QEvent* event) override;
  void changeEvent(QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  QMimeData* createMimeDataFromSelection() const override;
  void insertFromMimeData(const QMimeData* source) override;

 private:
  void Insert(const std::vector<MarkedText>& texts, QTextCursor& cursor);
  void NoteChange(int position, int removed, int added);
  void ForgetMarksOfForeignText();
  void Type(const QString& text);
  void Leave(bool forwards);
  void Reveal(const QTextCursor& selection);
  void ColourSelectionWithoutFocus();

  Typing typing_;
  bool is_text_foreign_ = false;  // the document was emptied, and not by SetBytes or by an edit
  bool reveal_when_shown_ = false;
};

}  // namespace tessaril

#endif  // TESSARIL_UI_SHARED_BYTE_TEXT_BOX_H_
