#include "ui/printing/paper.h"

#include <utility>

#include "ui/printing/printer_font.h"

namespace tessaril {
namespace {

constexpr double kTwipsPerInch = 1440;

QString Characters(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace

Paper::Paper(const QPageLayout& layout, const QString& title, std::function<void(int page)> on_page)
    : writer_(&file_), on_page_(std::move(on_page)) {
  QPageLayout edge_to_edge = layout;
  edge_to_edge.setMode(QPageLayout::FullPageMode);
  writer_.setPageLayout(edge_to_edge);
  writer_.setTitle(title);
  writer_.setCreator("Tessaril");
}

Status Paper::Begin() {
  if (Status status = file_.Create(); !status.ok()) return status;
  if (!painter_.begin(&writer_)) return Status::Failure("The pages cannot be drawn");
  on_page_(page_);
  return {};
}

double Paper::FromTwips(double twips) const {
  return twips * writer_.logicalDpiX() / kTwipsPerInch;
}

double Paper::ToTwips(double length) const {
  return length * kTwipsPerInch / writer_.logicalDpiX();
}

void Paper::SetFont(const std::string& name, float size) {
  painter_.setFont(PrinterFont(name, size));
  metrics_.emplace(painter_.font(), &writer_);
}

double Paper::PageWidth() const {
  return writer_.pageLayout().fullRect(QPageLayout::Point).width() * 20;
}

double Paper::PageHeight() const {
  return writer_.pageLayout().fullRect(QPageLayout::Point).height() * 20;
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
  const bool begun = writer_.newPage();
  if (!file_.status().ok()) return file_.status();
  if (!begun) return Status::Failure("The pages cannot be drawn");
  on_page_(++page_);
  return {};
}

Status Paper::End() {
  painter_.end();
  return file_.status();
}

}  // namespace tessaril
