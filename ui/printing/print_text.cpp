#include "ui/printing/print_text.h"

#include <QDate>
#include <QLocale>
#include <string_view>

#include "engine/paths.h"
#include "printing/text_pages.h"
#include "ui/printing/paper.h"
#include "ui/printing/print_target.h"
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

// The copies are pages like others, so that a file holds them, too.
Status PrintOn(PrintTarget& target, const PrintJob& job, QWidget& window) {
  PrintingNotice notice(window);
  Paper paper(target.Layout(), target.name(), [&notice](int page) { notice.ShowPage(page); });
  std::string_view pdf;
  Status status = paper.Begin();
  if (status.ok()) status = PrintPages(paper, job);
  if (status.ok()) status = paper.Document(pdf);
  return status.ok() ? target.Deliver(pdf, 1) : status;
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
  PrintTarget target(QString::fromStdString(std::string(NameOf(job.title))).trimmed());
  if (!target.Choose(window)) return {};
  job.copies = target.Copies();
  return PrintOn(target, job, *window);
}

}  // namespace tessaril
