#ifndef TESSARIL_UI_PRINTING_PDF_FILE_H_
#define TESSARIL_UI_PRINTING_PDF_FILE_H_

#include <QPdfWriter>
#include <string>

#include "ui/printing/print_target.h"
#include "ui/printing/spool_file.h"

namespace tessaril {

/// A PDF file that the user has named. The pages gather in a temporary file; the one named is replaced, as a
/// whole, when they are complete.
class PdfFile : public PrintTarget {
 public:
  /// `path` is absolute, in the file system's bytes; `title` is kept in the file for its readers.
  PdfFile(const std::string& path, const QPageLayout& layout, const QString& title);

  Status Open() override { return file_.Create(); }
  QPagedPaintDevice& Pages() override { return writer_; }
  Status Check() override { return file_.status(); }
  Status Finish() override;

 private:
  std::string path_;
  SpoolFile file_;
  QPdfWriter writer_;
};

}  // namespace tessaril

#endif  // TESSARIL_UI_PRINTING_PDF_FILE_H_
