#include "engine/character_references.h"

#include <algorithm>

#include "engine/ascii.h"
#include "engine/characters.h"
#include "engine/named_references.h"

namespace tessaril {
namespace {

using Fault = CharacterReference::Fault;

constexpr char32_t kBehindLast = 0x110000;
constexpr char32_t kReplacement = 0xFFFD;

constexpr bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

constexpr bool IsNamePart(char c) {
  return IsAsciiLetter(c) || IsDigit(c);
}

struct KnownName {
  std::string_view characters;  // empty: the name is not known
  bool good_unclosed = false;
};

KnownName LookUp(std::string_view name) {
  const std::string_view all = NamedReferences();
  std::size_t begin = 0;
  std::size_t end = all.size();
  while (begin < end) {
    std::size_t entry = begin + (end - begin) / 2;
    while (entry > begin && all[entry - 1] != ' ') --entry;
    const std::size_t mark = all.find_first_of(",;", entry);
    const std::size_t blank = all.find(' ', mark);
    const int order = name.compare(all.substr(entry, mark - entry));
    if (order == 0) return {all.substr(mark + 1, blank - mark - 1), all[mark] == ','};
    if (order < 0) {
      end = entry;
    } else {
      begin = blank + 1;
    }
  }
  return {};
}

CharacterReference ReadNamed(std::string_view text, bool in_attribute) {
  constexpr std::size_t kLongest = 31;         // characters of a name
  constexpr std::size_t kLongestUnclosed = 6;  // of one that is known without ";"
  const std::string_view rest = text.substr(1);
  const auto* const stop = std::find_if_not(rest.begin(), rest.end(), IsNamePart);
  const std::string_view name(rest.begin(), static_cast<std::size_t>(stop - rest.begin()));
  const bool closed = stop != rest.end() && *stop == ';';
  if (closed && name.size() <= kLongest) {
    const KnownName known = LookUp(name);
    if (!known.characters.empty()) return {name.size() + 2, std::string(known.characters), Fault::kNone};
  }
  for (std::size_t size = std::min(name.size(), kLongestUnclosed); size > 1; --size) {
    const KnownName known = LookUp(name.substr(0, size));
    if (!known.good_unclosed) continue;
    const char next = size < rest.size() ? rest[size] : '\0';
    if (in_attribute && (next == '=' || IsNamePart(next))) return {};
    return {size + 1, std::string(known.characters), Fault::kUnclosed};
  }
  return {0, {}, closed && !name.empty() ? Fault::kUnknown : Fault::kNone};
}

struct Number {
  std::size_t length = 0;  // bytes with "&#"; 0 when there are no digits
  char32_t code = 0;       // at most kBehindLast
};

// `text` begins with "&#".
Number ReadNumber(std::string_view text) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  const bool hexadecimal = text.size() > 2 && ToLower(text[2]) == 'x';
  const char32_t base = hexadecimal ? 16 : 10;
  const std::size_t begin = hexadecimal ? 3 : 2;
  Number number;
  for (std::size_t at = begin; at < text.size(); ++at) {
    const std::size_t digit = kDigits.find(ToLower(text[at]));
    if (digit >= base) break;
    number.code = std::min<char32_t>(number.code * base + static_cast<char32_t>(digit), kBehindLast);
    number.length = at + 1;
  }
  return number;
}

// What can be written as a reference and stands for what it says: no control codes but for the blanks among
// them, none of the codes that never will be characters.
bool IsGoodCode(char32_t code) {
  if (code < 0x20) return code == '\t' || code == '\n' || code == '\f';
  if (code >= 0x7F && code <= 0x9F) return false;
  return IsCharacter(code) && (code < 0xFDD0 || code > 0xFDEF) && (code & 0xFFFE) != 0xFFFE;
}

CharacterReference ReadNumeric(std::string_view text) {
  const Number number = ReadNumber(text);
  if (number.length == 0) return {0, {}, Fault::kNoCharacter};
  const bool closed = text.substr(number.length).starts_with(';');
  CharacterReference reference{number.length + (closed ? 1 : 0), {}, Fault::kNone};
  char32_t code = number.code;
  if (code == 0 || !IsCharacter(code)) code = kReplacement;
  if (code >= 0x80 && code <= 0x9F) code = EightBitCharacter(static_cast<char>(code));
  AppendUtf8(code, reference.characters);
  if (!closed) reference.fault = Fault::kUnclosed;
  if (!IsGoodCode(number.code)) reference.fault = Fault::kNoCharacter;
  return reference;
}

}  // namespace

CharacterReference ReadCharacterReference(std::string_view text, bool in_attribute) {
  return text.substr(1).starts_with('#') ? ReadNumeric(text) : ReadNamed(text, in_attribute);
}

std::string ResolveReferences(std::string_view attribute_value) {
  std::string resolved;
  std::string_view rest = attribute_value;
  for (std::size_t at = rest.find('&'); at != std::string_view::npos; at = rest.find('&')) {
    resolved += rest.substr(0, at);
    rest.remove_prefix(at);
    const CharacterReference reference = ReadCharacterReference(rest, true);
    if (reference.length == 0) {
      resolved += '&';
      rest.remove_prefix(1);
    } else {
      resolved += reference.characters;
      rest.remove_prefix(reference.length);
    }
  }
  resolved += rest;
  return resolved;
}

char32_t ReferencedCode(std::string_view text) {
  return ReadNumber(text).code;
}

}  // namespace tessaril
