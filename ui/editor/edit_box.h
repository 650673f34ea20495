#ifndef TESSARIL_UI_EDITOR_EDIT_BOX_H_
#define TESSARIL_UI_EDITOR_EDIT_BOX_H_

#include <string>
#include <string_view>

#include "engine/page_encoding.h"
#include "ui/shared/byte_text_box.h"

namespace tessaril {

/// The text box `EditTekst` of the editor. It tells the moves of the caret that the user makes from those
/// that the program makes.
class EditBox : public ByteTextBox {
  Q_OBJECT

 public:
  explicit EditBox(QWidget* parent);

  /// Shows a text with the caret in front. What is typed into it is written in its code and with its line
  /// end.
  void Load(std::string_view bytes, PageEncoding encoding, std::string_view line_end);

  /// Selects as ByteTextBox does; a move of the program.
  void Move(const Selection& selection);

  /// The line of the caret, from 1: one more than the text's own line ends that lie wholly before it.
  long CaretLine() const;

  PageEncoding Encoding() const { return encoding_; }
  const std::string& OwnLineEnd() const { return line_end_; }

  /// A font in which all characters are of one width, or the usual one. The size stays.
  void UseMonospacedFont(bool monospaced);

 signals:
  /// The caret has moved, or the mouse was pressed in the text.
  void CaretMoved();

  /// It was the program that moved it; comes after the other.
  void CaretPut();

  /// The user has clicked into the text.
  void Clicked();

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  PageEncoding encoding_ = PageEncoding::kUtf8;
  std::string line_end_ = "\n";
};

}  // namespace tessaril

#endif  // TESSARIL_UI_EDITOR_EDIT_BOX_H_
