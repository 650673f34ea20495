#include "ui/shared/byte_text.h"

#include <QTextBlock>
#include <QTextFragment>
#include <algorithm>

#include "engine/characters.h"
#include "ui/shared/stand_ins.h"

namespace tessaril {
namespace {

// The toolkit takes the type of an object off a format that typed text inherits, and off nothing else. A mark
// counts only with this type, so that it never spreads to typed text.
constexpr int kMarked = QTextFormat::UserObject + 1;
constexpr int kEncoding = QTextFormat::UserProperty + 1;
constexpr int kLineEnd = QTextFormat::UserProperty + 2;
constexpr int kCharacter = QTextFormat::UserProperty + 3;

// The first character of `text` (not empty), which is taken off. Half a surrogate pair is U+FFFD.
char32_t TakeShown(QStringView& text) {
  const QChar first = text[0];
  const bool pair = first.isHighSurrogate() && text.size() > 1 && text[1].isLowSurrogate();
  const char32_t code = pair                  ? QChar::surrogateToUcs4(first, text[1])
                        : first.isSurrogate() ? char32_t{QChar::ReplacementCharacter}
                                              : char32_t{first.unicode()};
  text = text.mid(pair ? 2 : 1);
  return code;
}

// Collects characters to as few texts as possible.
class Marking {
 public:
  void AddLineEnd(const ByteMark& mark) { Add(U'\n', mark); }

  void AddCharacter(char32_t code, const ByteMark& line) {
    if (const std::optional<char16_t> shown = StandIn(code)) {
      Add(*shown, {line.encoding, LineEnd::kTyped, code});
    } else {
      Add(code, line);
    }
  }

  std::vector<MarkedText> Take() { return std::move(texts_); }

 private:
  void Add(char32_t code, const ByteMark& mark) {
    if (texts_.empty() || texts_.back().mark != mark) texts_.push_back({QString(), mark});
    QString& text = texts_.back().text;
    if (QChar::requiresSurrogates(code)) {
      text += QChar(QChar::highSurrogate(code));
      text += QChar(QChar::lowSurrogate(code));
    } else {
      text += QChar(static_cast<char16_t>(code));
    }
  }

  std::vector<MarkedText> texts_;
};

LineEnd LineEndAt(std::string_view bytes) {
  if (bytes.starts_with("\r\n")) return LineEnd::kCrLf;
  if (bytes.starts_with('\n')) return LineEnd::kLf;
  return bytes.starts_with('\r') ? LineEnd::kCr : LineEnd::kTyped;
}

std::string_view LineEndBytes(LineEnd line_end, const Typing& typing) {
  switch (line_end) {
    case LineEnd::kCrLf:
      return "\r\n";
    case LineEnd::kLf:
      return "\n";
    case LineEnd::kCr:
      return "\r";
    default:
      return typing.line_end;
  }
}

void ShowLine(std::string_view line, const ByteMark& mark, Marking& shown) {
  if (mark.encoding == PageEncoding::kEightBit) {
    for (const char c : line) shown.AddCharacter(EightBitCharacter(c), mark);
  } else {
    while (!line.empty()) shown.AddCharacter(TakeCharacter(line), mark);
  }
}

ByteMark MarkOf(const QTextCharFormat& format) {
  ByteMark mark;
  if (format.objectType() != kMarked) return mark;
  if (format.hasProperty(kEncoding)) mark.encoding = static_cast<PageEncoding>(format.intProperty(kEncoding));
  mark.line_end = static_cast<LineEnd>(format.intProperty(kLineEnd));
  if (format.hasProperty(kCharacter)) mark.character = static_cast<char32_t>(format.intProperty(kCharacter));
  return mark;
}

// A stretch of a document with one mark: characters of one line, or the end of a line.
struct Piece {
  int position;
  QString text;
  ByteMark mark;
  bool is_line_end;

  int End() const { return position + static_cast<int>(text.size()); }
};

// Calls `visit` with each piece between two positions, cut to them, until it returns false.
template <class Visit>
void VisitPieces(const QTextDocument& document, int from, int to, Visit visit) {
  QTextBlock block = document.findBlock(from);
  for (int begin = block.position(); block.isValid() && begin < to;) {
    for (QTextBlock::iterator it = block.begin(); !it.atEnd(); ++it) {
      const QTextFragment fragment = it.fragment();
      const int skipped = std::max(from - begin, 0);
      const int taken = std::min(fragment.length(), to - begin) - skipped;
      if (taken > 0) {
        const QString text = fragment.text().mid(skipped, taken);
        if (!visit(Piece{begin + skipped, text, MarkOf(fragment.charFormat()), false})) return;
      }
      begin += fragment.length();
    }
    block = block.next();
    const bool is_inside = block.isValid() && from <= begin && begin < to;
    const QString line_end = QStringLiteral("\n");
    if (is_inside && !visit(Piece{begin, line_end, MarkOf(block.charFormat()), true})) return;
    ++begin;
  }
}

char32_t TrueCharacter(char32_t shown, const ByteMark& mark) {
  return mark.character && StandIn(*mark.character) == shown ? *mark.character : shown;
}

std::string BytesOf(char32_t shown, const ByteMark& mark, const Typing& typing) {
  std::string utf8;
  AppendUtf8(TrueCharacter(shown, mark), utf8);
  return WrittenBytes(utf8, mark.encoding.value_or(typing.encoding));
}

std::string BytesOf(const Piece& piece, const Typing& typing) {
  if (piece.is_line_end) return std::string(LineEndBytes(piece.mark.line_end, typing));
  std::string utf8;
  utf8.reserve(static_cast<std::size_t>(piece.text.size()));
  for (QStringView rest = piece.text; !rest.empty();) {
    AppendUtf8(TrueCharacter(TakeShown(rest), piece.mark), utf8);
  }
  return WrittenBytes(utf8, piece.mark.encoding.value_or(typing.encoding));
}

// The position in `piece` where `offset` of its bytes lie in front; there are more.
int PositionIn(const Piece& piece, std::size_t offset, Rounding rounding, const Typing& typing) {
  if (piece.is_line_end) return rounding == Rounding::kUp && offset > 0 ? piece.End() : piece.position;
  QStringView rest = piece.text;
  while (offset > 0) {
    const QStringView here = rest;
    const std::size_t size = BytesOf(TakeShown(rest), piece.mark, typing).size();
    if (size > offset && rounding == Rounding::kDown) rest = here;
    offset -= std::min(size, offset);
  }
  return piece.End() - static_cast<int>(rest.size());
}

}  // namespace

std::vector<MarkedText> ShownBytes(std::string_view bytes) {
  Marking shown;
  while (!bytes.empty()) {
    const std::string_view line = bytes.substr(0, bytes.find_first_of("\r\n"));
    bytes.remove_prefix(line.size());
    const PageEncoding encoding = IsUtf8(line) ? PageEncoding::kUtf8 : PageEncoding::kEightBit;
    const ByteMark mark{encoding, LineEndAt(bytes), std::nullopt};
    ShowLine(line, mark, shown);
    if (bytes.empty()) break;
    shown.AddLineEnd(mark);
    bytes.remove_prefix(mark.line_end == LineEnd::kCrLf ? 2 : 1);
  }
  return shown.Take();
}

std::vector<MarkedText> TypedText(QStringView text) {
  Marking typed;
  while (!text.empty()) {
    const char32_t code = TakeShown(text);
    if (code == '\r' && text.startsWith(QChar::LineFeed)) continue;
    if (code == '\r' || code == '\n') {
      typed.AddLineEnd({});
    } else {
      typed.AddCharacter(code, {});
    }
  }
  return typed.Take();
}

QTextCharFormat FormatWith(const ByteMark& mark) {
  QTextCharFormat format;
  if (mark == ByteMark{}) return format;
  format.setObjectType(kMarked);
  if (mark.encoding) format.setProperty(kEncoding, static_cast<int>(*mark.encoding));
  format.setProperty(kLineEnd, static_cast<int>(mark.line_end));
  if (mark.character) format.setProperty(kCharacter, static_cast<int>(*mark.character));
  return format;
}

std::string BytesBetween(const QTextDocument& document, int from, int to, const Typing& typing) {
  std::string bytes;
  bytes.reserve(static_cast<std::size_t>(to - from));
  VisitPieces(document, from, to, [&](const Piece& piece) {
    bytes += BytesOf(piece, typing);
    return true;
  });
  return bytes;
}

QString CharactersBetween(const QTextDocument& document, int from, int to) {
  QString characters;
  VisitPieces(document, from, to, [&](const Piece& piece) {
    if (piece.mark.character) {
      for (const QChar shown : piece.text) characters += QChar(TrueCharacter(shown.unicode(), piece.mark));
    } else {
      characters += piece.text;
    }
    return true;
  });
  return characters;
}

int EndOf(const QTextDocument& document) {
  return document.characterCount() - 1;
}

int PositionAt(const QTextDocument& document, std::size_t offset, Rounding rounding, const Typing& typing) {
  int position = 0;
  VisitPieces(document, 0, EndOf(document), [&](const Piece& piece) {
    const std::size_t size = BytesOf(piece, typing).size();
    position = offset < size ? PositionIn(piece, offset, rounding, typing) : piece.End();
    const bool is_behind = offset >= size;
    offset -= std::min(offset, size);
    return is_behind;
  });
  return position;
}

}  // namespace tessaril
