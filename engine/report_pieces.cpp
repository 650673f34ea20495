#include "engine/report_pieces.h"

#include <initializer_list>

namespace tessaril {
namespace {

void Append(std::initializer_list<std::string_view> pieces, std::string& report) {
  for (const std::string_view piece : pieces) report += piece;
}

}  // namespace

void AppendFileHeader(std::string_view path, std::string& report) {
  constexpr std::string_view rule =
      "----------------------------------------"
      "----------------------------------------";
  static_assert(rule.size() == 80);
  Append({"\r\n\r\n", rule, "\r\n", path, "\r\n", rule}, report);
}

void AppendEntry(std::string_view label, std::string_view context, std::string& report) {
  Append({"\r\n\r\n", label, "\r\n...", context, "..."}, report);
}

void AppendManualChange(std::string_view edited, std::string& report) {
  Append({"\r\n--* Manually changed TO:\r\n...", edited, "..."}, report);
}

void AppendLinkError(std::string_view error, std::string_view excerpt, std::string& report) {
  if (excerpt.starts_with('\n')) excerpt.remove_prefix(1);
  Append({"\r\n\r\n*** Error:     ", error, "\r\n...in link:\r\n\r\n", excerpt}, report);
}

void AppendWasChanged(std::string_view text, std::string& report) {
  Append({"\r\n*** Was changed TO:\r\n...", text, "..."}, report);
}

void AppendStopLine(std::string_view path, std::string& report) {
  Append({"\r\n\r\n*** Stopped in ", path, " ***"}, report);
}

}  // namespace tessaril
