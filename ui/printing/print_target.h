#ifndef TESSARIL_UI_PRINTING_PRINT_TARGET_H_
#define TESSARIL_UI_PRINTING_PRINT_TARGET_H_

#include <QPrinter>
#include <QString>
#include <QWidget>
#include <string_view>

#include "engine/status.h"

namespace tessaril {

/// The printer or PDF file that the user chooses for a document.
class PrintTarget {
 public:
  /// `name` is what the print system calls the document, and a proposal for the name of a file.
  explicit PrintTarget(const QString& name);

  /// Lets the user choose; false when the user does not want to print.
  bool Choose(QWidget* window);

  const QString& name() const { return name_; }
  QPageLayout Layout() const { return printer_.pageLayout(); }
  int Copies() const { return printer_.copyCount(); }

  /// Hands the complete PDF document over: to the print system, which prints it `copies` times, or to the
  /// file, where it stands once. On failure nothing is printed, and an old file stays as it was.
  Status Deliver(std::string_view pdf, int copies);

 private:
  QString name_;
  QPrinter printer_;
};

}  // namespace tessaril

#endif  // TESSARIL_UI_PRINTING_PRINT_TARGET_H_
