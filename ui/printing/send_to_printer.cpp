#include "ui/printing/send_to_printer.h"

#include <cups/cups.h>

#include <QPrintEngine>
#include <string>

// The toolkit hands jobs over, too, but neither tells when that fails nor when a document was cut short.

namespace tessaril {
namespace {

class JobOptions {
 public:
  JobOptions() = default;
  ~JobOptions() { cupsFreeOptions(count_, options_); }
  JobOptions(const JobOptions&) = delete;
  JobOptions& operator=(const JobOptions&) = delete;

  void Add(const QString& name, const QString& value) {
    count_ =
        cupsAddOption(name.toLocal8Bit().constData(), value.toLocal8Bit().constData(), count_, &options_);
  }
  int count() const { return count_; }
  cups_option_t* options() const { return options_; }

 private:
  int count_ = 0;
  cups_option_t* options_ = nullptr;
};

const char* Sides(QPrinter::DuplexMode duplex, QPageLayout::Orientation orientation) {
  const bool upright = orientation == QPageLayout::Portrait;
  switch (duplex) {
    case QPrinter::DuplexNone:
      return "one-sided";
    case QPrinter::DuplexLongSide:
      return "two-sided-long-edge";
    case QPrinter::DuplexShortSide:
      return "two-sided-short-edge";
    default:
      return upright ? "two-sided-long-edge" : "two-sided-short-edge";
  }
}

void TakeOptions(const QPrinter& printer, JobOptions& options) {
  const QPageLayout layout = printer.pageLayout();
  options.Add("media", layout.pageSize().key());
  options.Add("sides", Sides(printer.duplex(), layout.orientation()));
  if (layout.orientation() == QPageLayout::Landscape) options.Add("landscape", "");
  // What the dialog's further pages offer, as a list of names and values. The toolkit has no name for it.
  constexpr auto kFurtherOptions = QPrintEngine::PrintEnginePropertyKey(0xfe00);
  const QStringList further = printer.printEngine()->property(kFurtherOptions).toStringList();
  for (qsizetype i = 0; i + 1 < further.size(); i += 2) options.Add(further[i], further[i + 1]);
}

Status Failure() {
  const char* const words = cupsLastErrorString();
  return Status::Failure(words == nullptr ? "" : words);
}

Status SendDocument(const char* name, int job, const char* title, std::string_view pdf) {
  constexpr std::size_t kMost = 1 << 16;  // bytes at once
  http_status_t http = cupsStartDocument(CUPS_HTTP_DEFAULT, name, job, title, CUPS_FORMAT_PDF, 1);
  while (http == HTTP_STATUS_CONTINUE && !pdf.empty()) {
    const std::string_view piece = pdf.substr(0, kMost);
    http = cupsWriteRequestData(CUPS_HTTP_DEFAULT, piece.data(), piece.size());
    pdf.remove_prefix(piece.size());
  }
  if (http != HTTP_STATUS_CONTINUE) return Failure();
  return cupsFinishDocument(CUPS_HTTP_DEFAULT, name) <= IPP_STATUS_OK_EVENTS_COMPLETE ? Status() : Failure();
}

}  // namespace

Status SendToPrinter(QPrinter& printer, std::string_view pdf, int copies) {
  JobOptions options;
  TakeOptions(printer, options);
  options.Add("copies", QString::number(copies));
  // Behind "/" stands the name of a set of options, which the list holds.
  const QByteArray name = printer.printerName().section('/', 0, 0).toLocal8Bit();
  const QByteArray title = printer.docName().toUtf8();
  const int job = cupsCreateJob(CUPS_HTTP_DEFAULT, name.constData(), title.constData(), options.count(),
                                options.options());
  if (job == 0) return Failure();
  Status status = SendDocument(name.constData(), job, title.constData(), pdf);
  if (!status.ok()) cupsCancelJob(name.constData(), job);
  return status;
}

}  // namespace tessaril
