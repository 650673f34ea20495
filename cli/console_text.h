#ifndef TESSARIL_CLI_CONSOLE_TEXT_H_
#define TESSARIL_CLI_CONSOLE_TEXT_H_

#include <string>
#include <string_view>

#include "engine/page_encoding.h"

// Texts on their way to a terminal: what pages and file names hold is shown there, never obeyed.

namespace tessaril {

/// `text` as one line of UTF-8: control characters, line ends among them, and bytes that are no UTF-8 are
/// written as \xHH.
std::string OneLine(std::string_view text);

/// `text`, UTF-8, as lines: CR LF and LF part them, tabs stay, all else as in OneLine.
std::string Lines(std::string_view text);

/// A report for the eyes: all is as it is but control characters, which are written as \xHH. Tabs and line
/// ends stay, CR LF and LF.
std::string Harmless(std::string_view report);

/// A piece of a page as Lines has it.
std::string PageLines(std::string_view bytes, PageEncoding encoding);

}  // namespace tessaril

#endif  // TESSARIL_CLI_CONSOLE_TEXT_H_
