#ifndef TESSARIL_UI_PRINTING_PAPER_H_
#define TESSARIL_UI_PRINTING_PAPER_H_

#include <QFontMetricsF>
#include <QPainter>
#include <QPdfWriter>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "printing/print_device.h"
#include "ui/printing/spool_file.h"

namespace tessaril {

/// Pages that the toolkit draws, from edge to edge of the paper, as a PDF document, which is also what
/// printers are given.
class Paper : public PrintDevice {
 public:
  /// `title` is kept in the document for its readers. `on_page` is called when a page, counted from 1 through
  /// all copies, begins.
  Paper(const QPageLayout& layout, const QString& title, std::function<void(int page)> on_page);

  /// To be called first; the rest only when this has not failed.
  Status Begin();

  void SetFont(const std::string& name, float size) override;
  double PageWidth() const override;
  double PageHeight() const override;
  double TextWidth(std::string_view text) const override;
  double TextHeight(std::string_view text) const override;
  void MoveTo(double x, double y) override;
  void Print(std::string_view text) override;
  void PrintAndMoveOn(std::string_view text) override;
  Status NewPage() override;
  Status End() override;

  /// The document, which lives as long as the paper. To be called after the end.
  Status Document(std::string_view& pdf) { return file_.Content(pdf); }

 private:
  double FromTwips(double twips) const;
  double ToTwips(double length) const;

  SpoolFile file_;
  QPdfWriter writer_;
  std::function<void(int page)> on_page_;
  QPainter painter_;
  std::optional<QFontMetricsF> metrics_;
  int page_ = 1;
  QPointF position_;  // in units of the writer
};

}  // namespace tessaril

#endif  // TESSARIL_UI_PRINTING_PAPER_H_
