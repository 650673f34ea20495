#include "ui/printing/print_text.h"

#include <QDate>
#include <QFile>
#include <QLocale>
#include <QPrinter>
#include <memory>

#include "engine/paths.h"
#include "printing/text_pages.h"
#include "ui/printing/paper.h"
#include "ui/printing/pdf_file.h"
#include "ui/printing/print_dialog.h"
#include "ui/printing/printer_job.h"
#include "ui/printing/printing_notice.h"
#include "ui/shared/byte_text.h"
#include "ui/shared/message_boxes.h"

namespace tessaril {
namespace {

// A line as the text box shows it; an end of line within it, as a title may have, is a blank.
std::string ShownLine(std::string_view line) {
  QString shown;
  for (const MarkedText& piece : ShownBytes(line)) shown += piece.text;
  return shown.replace('\n', ' ').toStdString();
}

std::unique_ptr<PrintTarget> TargetOf(QPrinter& printer) {
  if (printer.outputFormat() != QPrinter::PdfFormat) return std::make_unique<PrinterJob>(printer);
  const std::string path = QFile::encodeName(printer.outputFileName()).toStdString();
  return std::make_unique<PdfFile>(path, printer.pageLayout(), printer.docName());
}

Status PrintOn(PrintTarget& target, const PrintJob& job, QWidget& window) {
  PrintingNotice notice(window);
  Paper paper(target, [&notice](int page) { notice.ShowPage(page); });
  Status status = paper.Begin();
  return status.ok() ? PrintPages(paper, job) : status;
}

}  // namespace

void PrintText(QWidget* window, const Session& session, const std::string& text, const std::string& title) {
  if (text.empty()) return Tell(window, "No text to print!");
  PrintJob job;
  job.text = text;
  job.title = ShownLine(title);
  job.date = QLocale::system().toString(QDate::currentDate(), QLocale::ShortFormat).toStdString();
  job.font_name = session.PrinterFontName;
  job.font_size = session.PrinterFontSize;
  job.shown = ShownLine;
  QPrinter printer(QPrinter::HighResolution);
  printer.setDocName(QString::fromStdString(std::string(NameOf(job.title))).trimmed());
  if (PrintDialog(printer, window).exec() != QDialog::Accepted) return;
  job.copies = printer.copyCount();
  printer.setCopyCount(1);
  const std::unique_ptr<PrintTarget> target = TargetOf(printer);
  if (const Status status = PrintOn(*target, job, *window); !status.ok()) {
    Tell(window, "Error: " + status.reason());
  }
}

}  // namespace tessaril
