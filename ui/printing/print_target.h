#ifndef TESSARIL_UI_PRINTING_PRINT_TARGET_H_
#define TESSARIL_UI_PRINTING_PRINT_TARGET_H_

#include <QPagedPaintDevice>

#include "engine/status.h"

namespace tessaril {

/// Where pages go. What goes wrong below the toolkit, which does not tell, is asked for here.
class PrintTarget {
 public:
  virtual ~PrintTarget() = default;

  /// Gets ready to be drawn on.
  virtual Status Open() = 0;

  /// To be drawn on from edge to edge of the paper.
  virtual QPagedPaintDevice& Pages() = 0;

  /// Whether all is well so far. Called while pages are drawn.
  virtual Status Check() = 0;

  /// Sends off what was drawn. Without this call nothing is left of it where that can be helped.
  virtual Status Finish() = 0;
};

}  // namespace tessaril

#endif  // TESSARIL_UI_PRINTING_PRINT_TARGET_H_
