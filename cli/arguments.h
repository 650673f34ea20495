#ifndef TESSARIL_CLI_ARGUMENTS_H_
#define TESSARIL_CLI_ARGUMENTS_H_

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "engine/run.h"
#include "formats/findings_writer.h"

namespace tessaril {

/// Who answers what a run asks.
enum class Mode { kReportOnly, kYes, kAsk, kAnswers };

/// What the command line says.
struct Arguments {
  RunOptions options;  // all but dirList, filList and MarkedOnly, which come of `path`
  std::string path;    // as given
  Mode mode = Mode::kReportOnly;
  std::string answers;                  // file names as given; empty when the option is not there
  std::optional<MachineFormat> format;  // nothing: the text report
  std::string report;
  std::string transcript;
  std::string data;
};

/// An option of `tsl`: everything that parser, help and man page say of it.
struct OptionRow {
  std::string_view name;
  std::string_view value;                      // what stands behind it; empty for a switch
  std::string_view help;                       // one line
  std::vector<Function> only;                  // the functions that it belongs to; empty for all
  std::vector<std::string_view> choices = {};  // the values that it takes; empty for any
};
const std::vector<OptionRow>& AllOptions();
bool Applies(const OptionRow& option, Function function);

/// What stands behind the command's name, in order: "TEXT PATH".
std::string_view PositionalsOf(Function function);

/// The command line ends the program by itself: a text for standard output (help, version) with exit status
/// 0, or a message for standard error with exit status 2.
struct Farewell {
  std::string text;
  int exit_status;
};

std::variant<Arguments, Farewell> ParseArguments(int argc, const char* const* argv);

}  // namespace tessaril

#endif  // TESSARIL_CLI_ARGUMENTS_H_
