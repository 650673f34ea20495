#include "engine/report_display.h"

#include "engine/ascii.h"

namespace tessaril {

std::string PrintInsteadQuestion() {
  return "Output text too long to display in window!\r\nOnly the first approx. " +
         std::to_string(kDisplayLimit) +
         " char. will be displayed.\r\nEditing the results is not possible!\r\n\r\nDo you want to print it?";
}

std::string AbbreviatedReport(std::string_view report) {
  const std::size_t cut = report.find(CrLf, kDisplayLimit - 1);
  std::string shown;
  if (cut != std::string_view::npos) shown = report.substr(0, cut + 1);
  return shown + "\r\n\r\n" + std::string(50, '=') + "\r\n*** Report Abbreviated ***";
}

}  // namespace tessaril
