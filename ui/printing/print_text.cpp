#include "ui/printing/print_text.h"

#include <QDate>
#include <QFile>
#include <QLocale>
#include <QPrinter>
#include <string_view>

#include "engine/disk_files.h"
#include "engine/paths.h"
#include "printing/text_pages.h"
#include "ui/printing/paper.h"
#include "ui/printing/print_dialog.h"
#include "ui/printing/printing_notice.h"
#include "ui/printing/send_to_printer.h"
#include "ui/shared/byte_text.h"
#include "ui/shared/message_boxes.h"
#include "ui/shared/save_file.h"

namespace tessaril {
namespace {

// A line as the text box shows it; an end of line within it, as a title may have, is a blank.
std::string ShownLine(std::string_view line) {
  QString shown;
  for (const MarkedText& piece : ShownBytes(line)) shown += piece.text;
  return shown.replace('\n', ' ').toStdString();
}

Status Deliver(QPrinter& printer, std::string_view pdf) {
  if (printer.outputFormat() != QPrinter::PdfFormat) return SendToPrinter(printer, pdf);
  DiskFiles files;
  return SaveFile(files, QFile::encodeName(printer.outputFileName()).toStdString(), pdf);
}

Status PrintOn(QPrinter& printer, const PrintJob& job, QWidget& window) {
  PrintingNotice notice(window);
  Paper paper(printer.pageLayout(), printer.docName(), [&notice](int page) { notice.ShowPage(page); });
  std::string_view pdf;
  Status status = paper.Begin();
  if (status.ok()) status = PrintPages(paper, job);
  if (status.ok()) status = paper.Document(pdf);
  return status.ok() ? Deliver(printer, pdf) : status;
}

}  // namespace

Status PrintText(QWidget* window, const Session& session, const std::string& text, const std::string& title) {
  if (text.empty()) {
    Tell(window, "No text to print!");
    return {};
  }
  PrintJob job;
  job.text = text;
  job.title = ShownLine(title);
  job.date = QLocale::system().toString(QDate::currentDate(), QLocale::ShortFormat).toStdString();
  job.font_name = session.PrinterFontName;
  job.font_size = session.PrinterFontSize;
  job.shown = ShownLine;
  QPrinter printer(QPrinter::HighResolution);
  printer.setDocName(QString::fromStdString(std::string(NameOf(job.title))).trimmed());
  if (PrintDialog(printer, window).exec() != QDialog::Accepted) return {};
  job.copies = printer.copyCount();
  return PrintOn(printer, job, *window);
}

}  // namespace tessaril
