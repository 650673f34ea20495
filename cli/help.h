#ifndef TESSARIL_CLI_HELP_H_
#define TESSARIL_CLI_HELP_H_

#include <string>
#include <string_view>
#include <vector>

namespace tessaril {

/// A command of the examples and what it does.
struct Example {
  std::string_view command;
  std::string_view meaning;
};
const std::vector<Example>& Examples();

struct ExitStatus {
  std::string_view status;
  std::string_view meaning;
};
const std::vector<ExitStatus>& ExitStatuses();

/// What `tsl --help` says; for the name of a command, what is of use with it.
std::string HelpText(std::string_view command);

/// "tsl 1.2.3" and a line end.
std::string VersionText();

/// The man page tsl.1, in roff.
std::string ManPage();

}  // namespace tessaril

#endif  // TESSARIL_CLI_HELP_H_
