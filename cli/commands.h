#ifndef TESSARIL_CLI_COMMANDS_H_
#define TESSARIL_CLI_COMMANDS_H_

#include <optional>
#include <string_view>
#include <vector>

#include "engine/functions.h"

namespace tessaril {

inline constexpr std::string_view kInitCommand = "init";
inline constexpr std::string_view kUndoCommand = "undo";

/// A command of `tsl`, the first word behind its name.
struct CommandRow {
  std::string_view name;
  std::string_view
      positionals;           // what stands behind the name, in order: "TEXT PATH"; "[RUN]" may be left out
  std::string_view summary;  // one line
  std::optional<Function> function;  // that it runs, if any
};

/// The functions' commands in their order, then the others.
const std::vector<CommandRow>& AllCommands();

/// Null when there is no such command.
const CommandRow* FindCommand(std::string_view name);

}  // namespace tessaril

#endif  // TESSARIL_CLI_COMMANDS_H_
