#include "ui/shared/stand_ins.h"

namespace tessaril {

std::optional<char16_t> StandIn(char32_t code) {
  if (code < 0x20 && code != '\t') return static_cast<char16_t>(0x2400 + code);
  switch (code) {
    case 0x7F:
      return u'\u2421';
    case 0x2028:
      return u'\u21B5';
    case 0x2029:
      return u'\u00B6';
    case 0x202A:  // the text behind it is embedded, left to right
      return u'\u21E2';
    case 0x202B:  // right to left
      return u'\u21E0';
    case 0x202C:  // the end of such text
      return u'\u21E5';
    case 0x202D:  // all characters behind it run left to right
      return u'\u21E8';
    case 0x202E:  // right to left
      return u'\u21E6';
    case 0x2066:  // the text behind it is isolated, left to right
      return u'\u21FE';
    case 0x2067:  // right to left
      return u'\u21FD';
    case 0x2068:  // as its first letter
      return u'\u21FF';
    case 0x2069:  // the end of such text
      return u'\u21E4';
    case 0xFDD0:
      return u'\u25C7';
    case 0xFDD1:
      return u'\u25C6';
    case 0xFFFC:
      return u'\u25A1';
    default:
      return std::nullopt;
  }
}

QString Harmless(QString text) {
  constexpr char16_t kNoSign = u'\u2426';  // of the control characters above 127
  for (QChar& c : text) {
    const char16_t code = c.unicode();
    c = 0x80 <= code && code < 0xA0 ? QChar(kNoSign) : QChar(StandIn(code).value_or(code));
  }
  return text;
}

}  // namespace tessaril
