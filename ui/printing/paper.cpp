#include "ui/printing/paper.h"

#include <cerrno>
#include <utility>

#include "ui/printing/printer_font.h"

namespace tessaril {
namespace {

constexpr double kTwipsPerInch = 1440;

QString Characters(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace

Paper::Paper(PrintTarget& target, std::function<void(int page)> on_page)
    : target_(target), on_page_(std::move(on_page)) {}

Status Paper::Begin() {
  if (Status status = target_.Open(); !status.ok()) return status;
  errno = 0;
  if (!painter_.begin(&target_.Pages())) {
    return errno == 0 ? Status::Failure("The printer cannot be used") : Status::System(errno);
  }
  on_page_(page_);
  return target_.Check();
}

double Paper::FromTwips(double twips) const {
  return twips * target_.Pages().logicalDpiX() / kTwipsPerInch;
}

double Paper::ToTwips(double length) const {
  return length * kTwipsPerInch / target_.Pages().logicalDpiX();
}

void Paper::SetFont(const std::string& name, float size) {
  painter_.setFont(PrinterFont(name, size));
  metrics_.emplace(painter_.font(), &target_.Pages());
}

double Paper::PageWidth() const {
  return target_.Pages().pageLayout().fullRect(QPageLayout::Point).width() * 20;
}

double Paper::PageHeight() const {
  return target_.Pages().pageLayout().fullRect(QPageLayout::Point).height() * 20;
}

double Paper::TextWidth(std::string_view text) const {
  return ToTwips(metrics_->horizontalAdvance(Characters(text)));
}

double Paper::TextHeight(std::string_view) const {
  return ToTwips(metrics_->height());
}

void Paper::MoveTo(double x, double y) {
  position_ = {FromTwips(x), FromTwips(y)};
}

void Paper::Print(std::string_view text) {
  if (text.empty()) return;
  painter_.drawText(position_ + QPointF(0, metrics_->ascent()), Characters(text));
}

void Paper::PrintAndMoveOn(std::string_view text) {
  Print(text);
  position_ = {0, position_.y() + metrics_->height()};
}

Status Paper::NewPage() {
  const bool begun = target_.Pages().newPage();
  if (Status status = target_.Check(); !status.ok()) return status;
  if (!begun) return Status::Failure("The printer takes no further page");
  on_page_(++page_);
  return {};
}

Status Paper::End() {
  painter_.end();
  return target_.Finish();
}

}  // namespace tessaril
