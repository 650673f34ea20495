#include "ui/printing/print_dialog.h"

#include <QLineEdit>
#include <QPrinter>

namespace tessaril {

PrintDialog::PrintDialog(QPrinter& printer, QWidget* window) : QPrintDialog(&printer, window) {
  for (const PrintDialogOption option :
       {PrintPageRange, PrintSelection, PrintCurrentPage, PrintCollateCopies}) {
    setOption(option, false);
  }
  // On some screens the toolkit proposes a folder only.
  auto* const file = findChild<QLineEdit*>("filename");
  if (file == nullptr || !file->text().endsWith('/')) return;
  file->setText(file->text() + printer.docName() + ".pdf");
}

// With a print system that can choose pages itself the toolkit offers that each time the dialog is shown.
void PrintDialog::setVisible(bool visible) {
  QPrintDialog::setVisible(visible);
  for (const char* const name : {"gbPrintRange", "reverse"}) {
    if (auto* const control = findChild<QWidget*>(name)) control->hide();
  }
}

}  // namespace tessaril
