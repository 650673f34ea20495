#ifndef TESSARIL_PRINTING_PRINT_DEVICE_H_
#define TESSARIL_PRINTING_PRINT_DEVICE_H_

#include <string>
#include <string_view>

#include "engine/status.h"

namespace tessaril {

/// A printer, a file of pages, or the recording of a test. Lengths are in twips, 1/1440 inch; positions are
/// those of a text's upper left corner and count from the paper's upper left corner. Texts are UTF-8 without
/// line ends and tabs. The first page is there from the start.
class PrintDevice {
 public:
  virtual ~PrintDevice() = default;

  /// `size` is in points and above 0. For a name that the device does not know (UTF-8) the platform's
  /// sans-serif takes its place.
  virtual void SetFont(const std::string& name, float size) = 0;

  virtual double PageWidth() const = 0;
  virtual double PageHeight() const = 0;

  /// Of a text in the current font. The height is that of a line, also for an empty text.
  virtual double TextWidth(std::string_view text) const = 0;
  virtual double TextHeight(std::string_view text) const = 0;

  virtual void MoveTo(double x, double y) = 0;

  /// Prints at the current position, which stays.
  virtual void Print(std::string_view text) = 0;

  /// Prints at the current position, which moves to the paper's left edge, a line lower.
  virtual void PrintAndMoveOn(std::string_view text) = 0;

  /// These fail when something printed before has failed, as far as that is known by then.
  virtual Status NewPage() = 0;
  virtual Status End() = 0;
};

}  // namespace tessaril

#endif  // TESSARIL_PRINTING_PRINT_DEVICE_H_
