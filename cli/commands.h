#ifndef TESSARIL_CLI_COMMANDS_H_
#define TESSARIL_CLI_COMMANDS_H_

#include <optional>
#include <string_view>
#include <vector>

#include "engine/functions.h"

namespace tessaril {

/// A command of `tsl`, the first word behind its name.
struct CommandRow {
  std::string_view name;
  std::string_view positionals;      // what stands behind the name, in order: "TEXT PATH"
  std::string_view summary;          // one line
  std::optional<Function> function;  // that it runs; none: it makes a site file
};

/// The functions' commands in their order, then the others.
const std::vector<CommandRow>& AllCommands();

/// Null when there is no such command.
const CommandRow* FindCommand(std::string_view name);

}  // namespace tessaril

#endif  // TESSARIL_CLI_COMMANDS_H_
