#ifndef TESSARIL_CLI_ARGUMENTS_H_
#define TESSARIL_CLI_ARGUMENTS_H_

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "cli/commands.h"
#include "engine/run.h"
#include "formats/findings_writer.h"

namespace tessaril {

/// Who answers what a run asks.
enum class Mode { kReportOnly, kYes, kAsk, kAnswers };

/// What the command line says of a run.
struct Arguments {
  RunOptions options;  // all but dirList, filList, MarkedOnly and site, which come of `path`
  std::string path;    // as given
  Mode mode = Mode::kReportOnly;
  std::string answers;                  // file names as given; empty when the option is not there
  std::optional<MachineFormat> format;  // nothing: the text report
  std::string report;
  std::string transcript;
  std::string data;
  std::optional<Rules> rules;  // that hold whatever the site file says
  bool keeps_undo = true;
};

/// That a site file is to be made.
struct SiteFileWish {
  std::string path;  // as given
};

/// That a run is to be undone, or those listed that can be.
struct UndoWish {
  std::optional<unsigned> run;  // its number; nothing: the last one
  bool list = false;
  bool unasked = false;
  bool keeps_undo = true;
};

/// An option of `tsl`: everything that parser, help and man page say of it.
struct OptionRow {
  std::string_view name;
  std::string_view value;  // what stands behind it, or the words for it, with "|" between; empty for a switch
  std::string_view help;   // one line
  std::vector<std::string_view> only;  // the commands that it belongs to; empty for all that run a function

  bool IsChoice() const { return value.find('|') != std::string_view::npos; }
};
const std::vector<OptionRow>& AllOptions();
bool Applies(const OptionRow& option, const CommandRow& command);

/// The command line ends the program by itself: a text for standard output (help, version) with exit status
/// 0, or a message for standard error with exit status 2.
struct Farewell {
  std::string text;
  int exit_status;
};

using Understood = std::variant<Arguments, SiteFileWish, UndoWish, Farewell>;
Understood ParseArguments(int argc, const char* const* argv);

}  // namespace tessaril

#endif  // TESSARIL_CLI_ARGUMENTS_H_
