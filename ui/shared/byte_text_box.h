#ifndef TESSARIL_UI_SHARED_BYTE_TEXT_BOX_H_
#define TESSARIL_UI_SHARED_BYTE_TEXT_BOX_H_

#include <QPlainTextEdit>
#include <string>
#include <string_view>

#include "engine/page_encoding.h"
#include "engine/run_host.h"

namespace tessaril {

/// A text box for bytes. It shows them line by line: a line that is valid UTF-8 as UTF-8, any other as 8-bit.
/// Setting a text and reading it back gives the same bytes, whatever they are; after an edit every byte
/// outside the edit is still what it was, also when the edit is undone. Long lines are not wrapped unless
/// the owner says so.
class ByteTextBox : public QPlainTextEdit {
  Q_OBJECT

 public:
  explicit ByteTextBox(QWidget* parent = nullptr);

  /// Shows `bytes` with the caret in front; nothing of what was shown can be undone to.
  void SetBytes(std::string_view bytes);
  std::string Bytes() const;

  /// What characters become that are typed or pasted from now on, and what Enter types. UTF-8 and CR LF
  /// unless set; to be set before the text that is to be edited.
  void SetTyping(PageEncoding encoding, std::string_view line_end);

  /// Selects a range of bytes and scrolls it into view. It ends where the text does; a bound inside a
  /// character moves to the character's start (the range's start) or end.
  void Select(const Selection& selection);
  Selection Selected() const;
};

}  // namespace tessaril

#endif  // TESSARIL_UI_SHARED_BYTE_TEXT_BOX_H_
