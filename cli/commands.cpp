#include "cli/commands.h"

#include <algorithm>

namespace tessaril {
namespace {

std::string_view PositionalsOf(Function function) {
  if (function == Function::kSearch) return "TEXT PATH";
  if (function == Function::kReplace) return "TEXT NEWTEXT PATH";
  return "PATH";
}

std::vector<CommandRow> MakeCommands() {
  std::vector<CommandRow> commands;
  for (const FunctionRow& row : AllFunctions()) {
    if (row.command.empty()) continue;
    commands.push_back({row.command, PositionalsOf(row.function), row.summary, row.function});
  }
  commands.push_back({kInitCommand, "PATH", "make a file that says by which rules a site is checked", {}});
  commands.push_back(
      {kUndoCommand, "[RUN]", "restore what the last run changed, or the one of that number", {}});
  return commands;
}

}  // namespace

const std::vector<CommandRow>& AllCommands() {
  static const std::vector<CommandRow> commands = MakeCommands();
  return commands;
}

const CommandRow* FindCommand(std::string_view name) {
  const auto command = std::ranges::find(AllCommands(), name, &CommandRow::name);
  return command == AllCommands().end() ? nullptr : &*command;
}

}  // namespace tessaril
