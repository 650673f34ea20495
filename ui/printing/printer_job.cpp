#include "ui/printing/printer_job.h"

#include <cups/cups.h>

namespace tessaril {

Status PrinterJob::Open() {
  printer_.setFullPage(true);
  return {};
}

Status PrinterJob::Check() {
  const QPrinter::PrinterState state = printer_.printerState();
  if (state != QPrinter::Error && state != QPrinter::Aborted) return {};
  return Status::Failure("The printer has failed");
}

// The toolkit hands the job over when the painter ends, and keeps to itself what comes of it. The print
// system remembers, in each thread.
Status PrinterJob::Finish() {
  if (Status status = Check(); !status.ok()) return status;
  const ipp_status_t outcome = cupsLastError();
  if (outcome >= IPP_STATUS_OK && outcome <= IPP_STATUS_OK_EVENTS_COMPLETE) return {};
  return Status::Failure(cupsLastErrorString());
}

}  // namespace tessaril
