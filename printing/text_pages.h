#ifndef TESSARIL_PRINTING_TEXT_PAGES_H_
#define TESSARIL_PRINTING_TEXT_PAGES_H_

#include <functional>
#include <string>
#include <string_view>

#include "printing/print_device.h"

// A plain text on pages: margins, a header and a rule above each page, and lines that are too wide wrapped at
// their blanks.

namespace tessaril {

/// The font size to print in, in points: the one given, or 10 for one that is not above 0.
constexpr float PrintedFontSize(float size) {
  constexpr float kFallback = 10;
  return size > 0 ? size : kFallback;
}

/// What is printed, and how.
struct PrintJob {
  std::string_view text;  // any bytes; CR LF and LF part lines, a CR alone is printed as a blank
  std::string title;      // UTF-8
  std::string date;       // UTF-8, in the user's way of writing it
  std::string font_name;  // UTF-8
  float font_size = 0;    // points; see PrintedFontSize
  int copies = 1;

  /// Makes UTF-8 without line ends of a piece of the text without CR and LF.
  std::function<std::string(std::string_view)> shown;
};

/// Prints all copies, each from a page 1 of its own, and ends the document. A line is at most as wide as the
/// page between its margins, but for a single word that is wider: it stands in a line of its own and ends at
/// the paper's edge. A header that is too wide ends at the right margin. Tabs reach the next multiple of
/// eight characters of their line on paper.
///
/// At the first failure it stops, without ending the document, and returns the failure.
Status PrintPages(PrintDevice& device, const PrintJob& job);

}  // namespace tessaril

#endif  // TESSARIL_PRINTING_TEXT_PAGES_H_
