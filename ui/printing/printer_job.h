#ifndef TESSARIL_UI_PRINTING_PRINTER_JOB_H_
#define TESSARIL_UI_PRINTING_PRINTER_JOB_H_

#include <QPrinter>

#include "ui/printing/print_target.h"

namespace tessaril {

/// A job for a printer of the print system.
class PrinterJob : public PrintTarget {
 public:
  explicit PrinterJob(QPrinter& printer) : printer_(printer) {}

  Status Open() override;
  QPagedPaintDevice& Pages() override { return printer_; }
  Status Check() override;
  Status Finish() override;

 private:
  QPrinter& printer_;
};

}  // namespace tessaril

#endif  // TESSARIL_UI_PRINTING_PRINTER_JOB_H_
