#include "ui/printing/print_dialog.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QLineEdit>
#include <QPrinter>

#include "engine/disk_files.h"
#include "ui/shared/message_boxes.h"
#include "ui/shared/save_file.h"

namespace tessaril {

PrintDialog::PrintDialog(QPrinter& printer, QWidget* window) : QPrintDialog(&printer, window) {
  for (const PrintDialogOption option :
       {PrintPageRange, PrintSelection, PrintCurrentPage, PrintCollateCopies}) {
    setOption(option, false);
  }
  auto* const buttons = findChild<QDialogButtonBox*>();
  auto* const file = findChild<QLineEdit*>("filename");
  if (buttons == nullptr || file == nullptr) return;  // a dialog of the platform's own
  disconnect(buttons, &QDialogButtonBox::accepted, this, nullptr);
  connect(buttons, &QDialogButtonBox::accepted, this, &PrintDialog::Check);
  // On some screens the toolkit proposes a folder only.
  constexpr qsizetype kLongest = 60;  // characters
  QString name = printer.docName().left(kLongest);
  if (file->text().endsWith('/')) file->setText(file->text() + name.replace('/', '_') + ".pdf");
}

// With a print system that can choose pages itself the toolkit offers that each time the dialog is shown.
void PrintDialog::setVisible(bool visible) {
  QPrintDialog::setVisible(visible);
  for (const char* const name : {"gbPrintRange", "reverse"}) {
    if (auto* const control = findChild<QWidget*>(name)) control->hide();
  }
}

// The toolkit checks a file by opening it, which waits for ever at a pipe and takes a symbolic link away, and
// overwrites it when the end of the program closes its question. Its check of a printer's options is kept.
void PrintDialog::Check() {
  const auto* const file = findChild<QLineEdit*>("filename");
  if (!file->isEnabled()) {
    QMetaObject::invokeMethod(this, "_q_checkFields");
  } else if (FileWillDo(QDir::home().absoluteFilePath(file->text()))) {
    accept();
  }
}

bool PrintDialog::FileWillDo(const QString& path) {
  DiskFiles files;
  const std::string name = path.toStdString();
  if (const Status status = LookBeforeSaving(files, QFile::encodeName(path).toStdString()); !status.ok()) {
    Tell(this, name + ": " + status.reason());
    return false;
  }
  return !QFileInfo::exists(path) ||
         AskYesNo(this, name + " already exists.\r\nDo you want to overwrite it?", "Print");
}

}  // namespace tessaril
