#include "ui/printing/print_target.h"

#include <QFile>

#include "engine/disk_files.h"
#include "ui/printing/print_dialog.h"
#include "ui/printing/send_to_printer.h"
#include "ui/shared/save_file.h"

namespace tessaril {

PrintTarget::PrintTarget(const QString& name) : name_(name), printer_(QPrinter::HighResolution) {
  printer_.setDocName(name);
}

bool PrintTarget::Choose(QWidget* window) {
  return PrintDialog(printer_, window).exec() == QDialog::Accepted;
}

Status PrintTarget::Deliver(std::string_view pdf, int copies) {
  if (printer_.outputFormat() != QPrinter::PdfFormat) return SendToPrinter(printer_, pdf, copies);
  DiskFiles files;
  return SaveFile(files, QFile::encodeName(printer_.outputFileName()).toStdString(), pdf);
}

}  // namespace tessaril
