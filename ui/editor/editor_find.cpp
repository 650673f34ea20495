#include "ui/editor/editor_find.h"

#include <algorithm>
#include <string_view>

#include "engine/ascii.h"
#include "engine/byte_buffer.h"
#include "engine/characters.h"
#include "engine/page_text.h"
#include "ui/shared/message_boxes.h"

namespace tessaril {
namespace {

// How many bytes the first `count` characters have.
std::size_t BytesOfCharacters(std::string_view bytes, PageEncoding encoding, std::size_t count) {
  if (encoding == PageEncoding::kEightBit) return count;
  std::string_view rest = bytes;
  for (; count > 0 && !rest.empty(); --count) TakeCharacter(rest);
  return bytes.size() - rest.size();
}

// A text that has room on the screen.
std::string Shortened(const std::string& text) {
  constexpr std::size_t kMost = 500;  // characters
  if (CountCharacters(text) <= kMost) return text;
  return text.substr(0, BytesOfCharacters(text, PageEncoding::kUtf8, kMost)) + "...";
}

}  // namespace

EditorFind::EditorFind(EditBox& box, const Entities& entities) : EditTekst(box), entities_(entities) {
  connect(&EditTekst, &EditBox::Clicked, this, [this] {
    FindPosition = EditTekst.Selected().start + 1;
    shown_.reset();
  });
  connect(&EditTekst, &QPlainTextEdit::textChanged, this, [this] { shown_.reset(); });
}

// It closes before the box's window does.
FindDialog& EditorFind::frmFind() {
  if (frmFind_ == nullptr) frmFind_ = std::make_unique<FindDialog>(EditTekst.parentWidget());
  return *frmFind_;
}

void EditorFind::Find() {
  const std::size_t length = CountCharacters(frmFind().Text());
  EditTekst.Move({0, BytesOfCharacters(EditTekst.Bytes(), EditTekst.Encoding(), length)});
  if (!frmFind().Ask()) return;
  FindPosition = 0;
  FindInEditor();
}

void EditorFind::FindAgain() {
  // The box selects whole characters: a match that begins inside of one would be found over and over.
  const Selection selected = EditTekst.Selected();
  if (shown_ != selected) {
    EditTekst.Move({selected.start, FoundLength});
    FindPosition = selected.start + 1;
  }
  FindInEditor();
}

void EditorFind::FindInEditor() {
  FindText = frmFind().Text();
  const std::string sought = frmFind().ConvertsToTags() ? entities_.EncodeEntities(FindText) : FindText;
  if (frmFind().ConvertsToTags() && !IsAscii(sought)) {
    Warn(EditTekst.window(),
         "Warning!\r\nThere is an illegal HTML character in the Search string.\r\n"
         "The results may consequently be unreliable!");
  }
  const std::optional<PhraseSearch::Occurrence> found = Next(sought);
  if (!found) return TellNotFound();
  FindPosition = found->place + 1;
  FoundLength = found->match.length;
  EditTekst.Move({found->place, FoundLength});
  shown_ = EditTekst.Selected();
  emit Found();
}

// The first occurrence behind FindPosition.
std::optional<PhraseSearch::Occurrence> EditorFind::Next(const std::string& sought) {
  const std::string bytes = EditTekst.Bytes();
  const std::optional<std::string> sought_bytes = SoughtBytes(sought, EditTekst.Encoding());
  if (!sought_bytes) return std::nullopt;
  std::size_t from = FindPosition;
  const bool is_in_line_end = from > 0 && bytes.compare(from - 1, 2, "\r\n") == 0;
  if (sought.empty() && is_in_line_end) ++from;  // where no caret can stand
  ByteBuffer buffer;
  buffer.Reserve(bytes.size());
  std::copy(bytes.begin(), bytes.end(), buffer.data());
  buffer.SetSize(bytes.size());
  PageText page(buffer, EditTekst.Encoding(), EditTekst.OwnLineEnd());
  const LetterCase letter_case = frmFind().IsCaseDependent() ? LetterCase::kExact : LetterCase::kFolded;
  return PhraseSearch(*sought_bytes, letter_case).FindNext(page, from);
}

void EditorFind::TellNotFound() {
  FindPosition = 0;
  Tell(EditTekst.window(), "Text not found:\r\n\"" + Shortened(FindText) + "\"");
  EditTekst.Move({0, 0});
  shown_.reset();
}

}  // namespace tessaril
