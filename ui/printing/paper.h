#ifndef TESSARIL_UI_PRINTING_PAPER_H_
#define TESSARIL_UI_PRINTING_PAPER_H_

#include <QFontMetricsF>
#include <QPainter>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "printing/print_device.h"
#include "ui/printing/print_target.h"

namespace tessaril {

/// The pages of a target, as the layout wants them: in twips.
class Paper : public PrintDevice {
 public:
  /// `on_page` is called when a page, counted from 1 through all copies, begins.
  Paper(PrintTarget& target, std::function<void(int page)> on_page);

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

 private:
  double FromTwips(double twips) const;
  double ToTwips(double length) const;

  PrintTarget& target_;
  std::function<void(int page)> on_page_;
  QPainter painter_;
  std::optional<QFontMetricsF> metrics_;
  int page_ = 1;
  QPointF position_;  // in units of the target
};

}  // namespace tessaril

#endif  // TESSARIL_UI_PRINTING_PAPER_H_
