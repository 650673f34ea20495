#include "cli/console_text.h"

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

std::string Shown(std::string_view text, std::string_view kept_controls) {
  std::string shown;
  while (!text.empty()) {
    const std::size_t length = SequenceLength(text);
    const std::string_view sequence = text.substr(0, length == 0 ? 1 : length);
    text.remove_prefix(sequence.size());
    const bool kept = kept_controls.find(sequence) != std::string_view::npos;
    if (kept || (length > 0 && !IsControl(sequence))) {
      shown += sequence;
      continue;
    }
    for (const char c : sequence) {
      std::array<char, 8> escape;
      std::snprintf(escape.data(), escape.size(), "\\x%02X",
                    static_cast<unsigned>(static_cast<unsigned char>(c)));
      shown += escape.data();
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

std::string PageLines(std::string_view bytes, PageEncoding encoding) {
  return Lines(encoding == PageEncoding::kUtf8 ? std::string(bytes) : EightBitToUtf8(bytes));
}

}  // namespace tessaril
