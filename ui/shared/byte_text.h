#ifndef TESSARIL_UI_SHARED_BYTE_TEXT_H_
#define TESSARIL_UI_SHARED_BYTE_TEXT_H_

#include <QString>
#include <QTextCharFormat>
#include <QTextDocument>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/page_encoding.h"

// Bytes as the characters of a text document, and back. What a character was in bytes stands beside it as a
// mark in its format, so that cutting, joining, undoing and redoing keep it. A character without a mark was
// typed. Positions in a document count UTF-16 units, as the toolkit does; everything else counts bytes.

namespace tessaril {

enum class LineEnd { kTyped, kCrLf, kLf, kCr };

/// What a character was in bytes. A mark with nothing set is that of typed text.
struct ByteMark {
  std::optional<PageEncoding> encoding;  // of the line that it was read from; nothing for a typed one
  LineEnd line_end = LineEnd::kTyped;    // when the character is a line's end: which one
  std::optional<char32_t> character;     // the one shown stands in for this one, which a document cannot hold

  bool operator==(const ByteMark&) const = default;
};

/// What typed characters become in bytes, and what a typed line end becomes.
struct Typing {
  PageEncoding encoding = PageEncoding::kUtf8;
  std::string line_end = "\r\n";
};

/// Characters as a document shows them, all with one mark. A line's end is "\n".
struct MarkedText {
  QString text;
  ByteMark mark;
};

/// `bytes` line by line (a line ends at CR LF, LF or CR): one that is valid UTF-8 as UTF-8, any other as
/// Windows-1252.
std::vector<MarkedText> ShownBytes(std::string_view bytes);

/// Text from a keyboard, a clipboard or another program. CR LF, LF and CR are its line ends.
std::vector<MarkedText> TypedText(QStringView text);

/// A format that keeps `mark`. Text that is typed behind a character takes over the character's format, but
/// not its mark.
QTextCharFormat FormatWith(const ByteMark& mark);

/// The bytes of a document between two of its positions (0 <= from <= to <= EndOf).
std::string BytesBetween(const QTextDocument& document, int from, int to, const Typing& typing);

/// The characters of a document between two of its positions, stand-ins replaced by what they stand for,
/// line ends by "\n".
QString CharactersBetween(const QTextDocument& document, int from, int to);

/// The position behind the last character.
int EndOf(const QTextDocument& document);

enum class Rounding { kDown, kUp };

/// The position where `offset` bytes lie in front; the end when there are fewer. An offset inside a character
/// or inside CR LF goes to its start or its end.
int PositionAt(const QTextDocument& document, std::size_t offset, Rounding rounding, const Typing& typing);

}  // namespace tessaril

#endif  // TESSARIL_UI_SHARED_BYTE_TEXT_H_
