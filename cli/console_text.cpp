#include "cli/console_text.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "engine/characters.h"

namespace tessaril {
namespace {

// The control characters of the range 128 to 159 are two bytes in UTF-8, of which the first is this one.
constexpr char kLeadOfHighControls = '\xC2';

bool IsControl(std::string_view sequence) {
  const auto code = static_cast<unsigned char>(sequence.back());
  if (sequence.size() == 1) return code < 0x20 || code == 0x7F;
  return sequence.size() == 2 && sequence.front() == kLeadOfHighControls && code < 0xA0;
}

// The next character of a text that is not empty; a byte where there is none.
std::string_view NextOf(std::string_view text) {
  return text.substr(0, std::max<std::size_t>(SequenceLength(text), 1));
}

void AppendEscaped(std::string_view sequence, std::string& shown) {
  for (const char c : sequence) {
    std::array<char, 8> escape;
    std::snprintf(escape.data(), escape.size(), "\\x%02X",
                  static_cast<unsigned>(static_cast<unsigned char>(c)));
    shown += escape.data();
  }
}

std::string Shown(std::string_view text, std::string_view kept_controls) {
  std::string shown;
  while (!text.empty()) {
    const std::string_view sequence = NextOf(text);
    const bool is_character = SequenceLength(text) > 0;
    text.remove_prefix(sequence.size());
    const bool kept = kept_controls.find(sequence) != std::string_view::npos;
    if (kept || (is_character && !IsControl(sequence))) {
      shown += sequence;
    } else {
      AppendEscaped(sequence, shown);
    }
  }
  return shown;
}

}  // namespace

std::string OneLine(std::string_view text) {
  return Shown(text, "");
}

std::string Lines(std::string_view text) {
  std::string lines;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool line_end = text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n';
    if (!line_end) lines += text[i];
  }
  return Shown(lines, "\n\t");
}

std::string Harmless(std::string_view report) {
  std::string shown;
  while (!report.empty()) {
    const std::string_view sequence = NextOf(report);
    const auto code = static_cast<unsigned char>(sequence.front());
    const bool stays = sequence == "\n" || sequence == "\t" || report.starts_with("\r\n");
    // A byte that is no UTF-8 may be a control character of the terminal's own code.
    const bool is_control = IsControl(sequence) || (sequence.size() == 1 && code >= 0x80 && code < 0xA0);
    report.remove_prefix(sequence.size());
    if (stays || !is_control) {
      shown += sequence;
    } else {
      AppendEscaped(sequence, shown);
    }
  }
  return shown;
}

std::string PageLines(std::string_view bytes, PageEncoding encoding) {
  return Lines(encoding == PageEncoding::kUtf8 ? std::string(bytes) : EightBitToUtf8(bytes));
}

}  // namespace tessaril
