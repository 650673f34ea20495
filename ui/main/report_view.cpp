#include "ui/main/report_view.h"

#include <QScopedValueRollback>
#include <algorithm>

#include "engine/report_display.h"
#include "ui/shared/message_boxes.h"

namespace tessaril {
namespace {

constexpr qint64 kLeastPause = 50;  // milliseconds
constexpr qint64 kShare = 20;       // an update takes at most about one part in so many of the time

}  // namespace

void ReportView::ShowReport(const std::string& report, const std::string& title) {
  const bool too_long = report.size() > kDisplayLimit;
  if (too_long) {
    if (!searching_ || !asked_) {
      asked_ = true;
      UpdateNow();
      if (AskYesNo(panel_.window(), PrintInsteadQuestion(), "Warning")) print_(report, "Tessaril " + title);
    }
    panel_.MakeReadOnly();
  }
  wanted_ = {{}, &report, report.size()};
  if (!searching_) UpdateNow();
}

void ReportView::ShowActivity(std::string_view text) {
  wanted_ = {std::string(text), nullptr, 0};
  if (!searching_) UpdateNow();
}

void ReportView::ResetCount() {
  count_ = 0;
  UpdateNow();
}

void ReportView::BeginSearch() {
  searching_ = true;
  asked_ = false;
  pause_ = 0;
  since_update_.start();
  wanted_ = {};
  shown_ = {};
  long_text_.clear();
  panel_.MakeEditable();
}

void ReportView::EndSearch() {
  if (wanted_.report != nullptr) wanted_ = shown_;  // the finished report follows at once
  UpdateNow();
  searching_ = false;
}

void ReportView::Update() {
  if (since_update_.elapsed() < pause_) return;
  since_update_.start();
  UpdateNow();
  pause_ = std::max(kLeastPause, kShare * since_update_.elapsed());
}

void ReportView::UpdateNow() {
  if (count_ != count_shown_) panel_.lblCount->setText(QString::number(count_));
  count_shown_ = count_;
  if (wanted_ == shown_) return;
  shown_ = wanted_;
  if (wanted_.report == nullptr) return Fill(wanted_.line);
  const std::string_view text = std::string_view(*wanted_.report).substr(0, wanted_.size);
  Fill(text.size() > kDisplayLimit ? AbbreviatedReport(text) : std::string(text));
  if (!searching_) wanted_ = shown_ = {};
}

// A report that grows beyond what is shown is left in the box as it is.
void ReportView::Fill(const std::string& text) {
  const bool is_long = text.size() > kDisplayLimit;
  if (is_long && text == long_text_) return;
  const QScopedValueRollback<bool> filling(filling_, true);
  panel_.UdTxt->SetBytes(text);
  long_text_ = is_long ? text : std::string();
}

}  // namespace tessaril
