#ifndef TESSARIL_UI_MAIN_REPORT_VIEW_H_
#define TESSARIL_UI_MAIN_REPORT_VIEW_H_

#include <QElapsedTimer>
#include <functional>
#include <string>
#include <string_view>

#include "ui/main/results_panel.h"

namespace tessaril {

/// How a report, or what a run tells meanwhile, comes into the results box. While files are searched, box and
/// counter are brought up to date a few times a second only, since setting them costs more than searching a
/// file.
class ReportView {
 public:
  /// `print` prints a text under a title.
  ReportView(ResultsPanel& panel, std::function<void(const std::string&, const std::string&)> print)
      : panel_(panel), print_(std::move(print)) {}

  /// Shows a report, shortened when it is too long, after a question whether to print it. The question is
  /// asked once while files are searched. `report` must then live, and at most grow, until the search ends.
  void ShowReport(const std::string& report, const std::string& title);

  /// Shows a short line instead.
  void ShowActivity(std::string_view text);

  /// One more file has been taken up.
  void CountFile() { ++count_; }
  void ResetCount();

  void BeginSearch();
  /// Findings that are not in the box by now are left to the finished report.
  void EndSearch();

  /// Brings box and counter up to date if it is time to.
  void Update();

  /// The same at once.
  void UpdateNow();

  /// Whether the box's text is being changed by this class.
  bool IsFilling() const { return filling_; }

 private:
  void Fill(const std::string& text);

  ResultsPanel& panel_;
  std::function<void(const std::string&, const std::string&)> print_;
  bool searching_ = false;
  bool asked_ = false;  // in this search
  bool filling_ = false;
  long count_ = 0;
  long count_shown_ = 0;

  // What the box is to show: a line, or the first bytes of a report.
  struct Content {
    std::string line;
    const std::string* report = nullptr;
    std::size_t size = 0;
    bool operator==(const Content&) const = default;
  };
  Content wanted_;
  Content shown_;
  std::string long_text_;  // that is in the box, where it is one that is not shown whole
  QElapsedTimer since_update_;
  qint64 pause_ = 0;  // milliseconds from one update to the next
};

}  // namespace tessaril

#endif  // TESSARIL_UI_MAIN_REPORT_VIEW_H_
