#ifndef TESSARIL_ENGINE_REPORT_DISPLAY_H_
#define TESSARIL_ENGINE_REPORT_DISPLAY_H_

#include <cstddef>
#include <string>
#include <string_view>

// What the results box shows of a report.

namespace tessaril {

/// Most bytes of a report that are shown whole.
inline constexpr std::size_t kDisplayLimit = 54000;

/// What the user is asked, with Yes and No, before a longer report is shortened.
std::string PrintInsteadQuestion();

/// A longer report as it is shown: up to the carriage return of the first CR LF at or behind the limit, and a
/// line that says so. Nothing of a report that has no CR LF there.
std::string AbbreviatedReport(std::string_view report);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_REPORT_DISPLAY_H_
