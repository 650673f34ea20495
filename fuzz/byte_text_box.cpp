// The byte-true text box: any bytes set, edited and read back.
// Input: a byte that chooses the typing, the bytes, then edits: three bytes each and for some a text.

#include "ui/shared/byte_text_box.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <set>

#include "engine/characters.h"
#include "fuzz/input.h"

namespace tessaril {
namespace {

void Press(ByteTextBox& box, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
  QKeyEvent press(QEvent::KeyPress, key, modifiers);
  QApplication::sendEvent(&box, &press);
}

// What typed text becomes.
std::string Typed(std::string_view text, PageEncoding encoding, const std::string& line_end) {
  std::string typed;
  while (!text.empty()) {
    const std::string_view before = text;
    const char32_t code = TakeCharacter(text);
    if (code == '\r' && text.starts_with('\n')) continue;
    typed += code == '\r' || code == '\n'
                 ? line_end
                 : WrittenBytes(before.substr(0, before.size() - text.size()), encoding);
  }
  return typed;
}

class Editing {
 public:
  Editing(PageEncoding encoding, std::string line_end, const std::string& bytes)
      : encoding_(encoding), line_end_(std::move(line_end)) {
    box_.SetTyping(encoding_, line_end_);
    Set(bytes);
  }

  void Edit(Input& input) {
    Select(input);
    const std::size_t kind = input.Below(8);
    if (kind == 0) Type(input.Field());
    if (kind == 1) Replaced(line_end_, [this] { Press(box_, Qt::Key_Return); });
    if (kind == 2) Delete(Qt::Key_Backspace);
    if (kind == 3) Delete(Qt::Key_Delete);
    if (kind == 4) Move(input);
    if (kind == 5) UndoAndRedo(input.Below(8));
    if (kind == 6) Foreign(input.Field());
    if (kind == 7) Set(input.Field());
    texts_.insert(box_.Bytes());
  }

 private:
  void Set(const std::string& bytes) {
    box_.SetBytes(bytes);
    RequireEqual(box_.Bytes(), bytes, "what was set");
    box_.Select({0, bytes.size()});
    Require(box_.Selected() == Selection{0, bytes.size()}, "all is not selected");
    texts_ = {bytes};
  }

  void Select(Input& input) {
    const Selection wanted{input.Byte(), input.Byte()};
    before_ = box_.Bytes();
    box_.Select(wanted);
    range_ = box_.Selected();
    const std::size_t size = before_.size();
    const std::size_t end = std::min(wanted.start + wanted.length, size);
    Require(range_.start <= wanted.start && range_.start + range_.length <= size,
            "more is selected than there is");
    Require(range_.start + range_.length >= end || wanted.length == 0, "less is selected than was wanted");
    Require(wanted.length > 0 || range_.length == 0, "an empty range becomes another");
    RequireEqual(box_.BytesBeforeCaret(), before_.substr(0, range_.start + range_.length),
                 "before the caret");
  }

  template <typename Edit>
  void Replaced(const std::string& by, const Edit& edit) {
    edit();
    RequireEqual(box_.Bytes(), std::string(before_).replace(range_.start, range_.length, by),
                 "the edited text");
  }

  void Type(const std::string& bytes) {
    const std::string text = EnteredText(bytes);
    if (text.empty()) return;
    QApplication::clipboard()->setText(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
    Replaced(Typed(text, encoding_, line_end_), [this] { box_.paste(); });
  }

  // By a cursor that knows nothing of formats; what the toolkit makes of it is another matter.
  void Foreign(const std::string& bytes) {
    const std::string text = EnteredText(bytes);
    box_.textCursor().insertText(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
    KeepsAround(range_.start, before_.size() - range_.start - range_.length);
  }

  void Delete(Qt::Key key) {
    if (range_.length > 0) return Replaced("", [this, key] { Press(box_, key); });
    Press(box_, key);
    Require(box_.Bytes().size() <= before_.size(), "a deletion adds something");
    const bool backwards = key == Qt::Key_Backspace;
    KeepsAround(backwards ? 0 : range_.start, backwards ? before_.size() - range_.start : 0);
    const std::string now = box_.Bytes();
    const std::size_t left = now.size() - (backwards ? before_.size() - range_.start : range_.start);
    KeepsAround(backwards ? left : range_.start, backwards ? before_.size() - range_.start : left);
  }

  void KeepsAround(std::size_t in_front, std::size_t behind) const {
    const std::string now = box_.Bytes();
    Require(now.size() >= in_front + behind, "bytes outside the edit are gone");
    RequireEqual(now.substr(0, in_front), before_.substr(0, in_front), "what stands in front of the edit");
    RequireEqual(now.substr(now.size() - behind), before_.substr(before_.size() - behind),
                 "what stands behind it");
  }

  void Move(Input& input) {
    if (range_.length == 0) return;
    Replaced("", [this] { box_.cut(); });
    texts_.insert(box_.Bytes());
    Select(input);
    box_.paste();
    KeepsAround(range_.start, before_.size() - range_.start - range_.length);
  }

  void UndoAndRedo(std::size_t steps) {
    std::size_t undone = 0;
    for (; undone < steps && box_.document()->isUndoAvailable(); ++undone) {
      box_.undo();
      Require(texts_.contains(box_.Bytes()), "undone to a text that never was: " + Readable(box_.Bytes()));
    }
    for (; undone > 0; --undone) box_.redo();
    RequireEqual(box_.Bytes(), before_, "what is undone and redone");
  }

  ByteTextBox box_;
  PageEncoding encoding_;
  std::string line_end_;
  std::string before_;           // the edit in hand
  Selection range_;              // that it begins with
  std::set<std::string> texts_;  // all there were
};

}  // namespace
}  // namespace tessaril

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  static const auto* const application = new QApplication(*argc, *argv);  // lives to the very end
  (void)application;
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tessaril;
  Input input(data, size);
  const std::size_t typing = input.Below(4);
  Editing editing(typing % 2 == 0 ? PageEncoding::kUtf8 : PageEncoding::kEightBit, typing < 2 ? "\r\n" : "\n",
                  input.Field());
  for (int edits = 0; edits < 20 && !input.empty(); ++edits) editing.Edit(input);
  return 0;
}
