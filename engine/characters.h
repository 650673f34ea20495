#ifndef TESSARIL_ENGINE_CHARACTERS_H_
#define TESSARIL_ENGINE_CHARACTERS_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

// Single characters: as code points of Unicode, as sequences of UTF-8, as bytes of Windows-1252 (whose five
// unused codes stand for themselves).

namespace tessaril {

/// What may stand in front of a UTF-8 text.
inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// How many bytes at the start are ASCII.
std::size_t AsciiPrefix(std::string_view bytes);

/// The length of the valid UTF-8 sequence at the start of `bytes`, 1 to 4; 0 when there is none.
std::size_t SequenceLength(std::string_view bytes);

/// Whether `c` is a byte of a sequence other than its first.
constexpr bool IsContinuation(char c) {
  return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

/// Whether all of `bytes` is valid UTF-8 (no surrogates, no over-long forms, nothing above U+10FFFF).
bool IsUtf8(std::string_view bytes);

/// The code point of one sequence, which must be valid.
char32_t CodePoint(std::string_view sequence);

/// Takes the first character off `text` (not empty) and gives its code point; a byte that begins no valid
/// sequence goes for one.
char32_t TakeCharacter(std::string_view& text);

/// Whether UTF-8 has a sequence for `code`: it is no surrogate and at most U+10FFFF.
constexpr bool IsCharacter(char32_t code) {
  return code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
}

/// Appends the sequence of `code`, for which IsCharacter must hold.
void AppendUtf8(char32_t code, std::string& out);

/// The byte of Windows-1252 for a code point; nothing when it has none.
std::optional<char> EightBitCode(char32_t code);

/// The code point of a byte of Windows-1252.
char32_t EightBitCharacter(char c);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_CHARACTERS_H_
