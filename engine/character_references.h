#ifndef TESSARIL_ENGINE_CHARACTER_REFERENCES_H_
#define TESSARIL_ENGINE_CHARACTER_REFERENCES_H_

#include <cstddef>
#include <string>
#include <string_view>

// Named and numeric character references ("&eacute;", "&#233;") as browsers read them by the rules of the
// HTML standard.

namespace tessaril {

/// What a "&" begins.
struct CharacterReference {
  enum class Fault {
    kNone,        // in order, be it a reference or a "&" that stands for itself
    kUnclosed,    // a reference without its ";"
    kUnknown,     // "&name;" with a name that no browser knows
    kNoCharacter  // "&#" without digits, or with a code that stands for no character, a control code or
                  // something else than it says; with its ";" or without
  };

  std::size_t length = 0;  // bytes with "&" and ";"; 0: the "&" stands for itself
  std::string characters;  // UTF-8; empty when `length` is 0
  Fault fault = Fault::kNone;
};

/// Reads what the "&" at the start of `text` begins. In the value of an attribute, which `text` must end
/// with, a name without ";" counts for nothing when "=", a letter or a digit follows.
CharacterReference ReadCharacterReference(std::string_view text, bool in_attribute);

/// The value of an attribute with the characters in the place of their references; all else stays as it is.
std::string ResolveReferences(std::string_view attribute_value);

/// The code of a numeric reference, which begins with "&#": as written, at most U+10FFFF + 1; 0 when there
/// are no digits.
char32_t ReferencedCode(std::string_view text);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_CHARACTER_REFERENCES_H_
