#ifndef TESSARIL_ENGINE_FUNCTIONS_H_
#define TESSARIL_ENGINE_FUNCTIONS_H_

#include <span>
#include <string_view>

#include "engine/status.h"

namespace tessaril {

struct RunContext;

/// The program's functions by the index of their option button.
enum class Function : int {
  kLinks = 0,
  kEntities = 1,
  kExternal = 2,
  kSearch = 3,
  kReplace = 4,
  kShowFile = 5,
  kColours = 6
};

/// Works on one file, `RunFile`. A failure to read or write it comes back, for the walk to tell; nothing of
/// the file is then in the report.
using Worker = Status (*)(RunContext& run);

/// What there is to know about a function in one place; a worker plugs in here.
struct FunctionRow {
  Function function;
  std::string_view caption;  // "&" before the access key
  std::string_view command;  // name for `tsl`; empty when it does not offer the function
  std::string_view summary;  // one line for `tsl --help`
  bool HtmlOutput;           // the result is a page, not a text report
  std::string_view Label1;   // above what was found, where findings are put to the user
  std::string_view Label2;   // above what can be edited; empty when there is nothing to edit
  Worker worker;             // null for the function that only shows a file
};

/// In the order of their indices.
std::span<const FunctionRow> AllFunctions();
const FunctionRow& RowOf(Function function);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_FUNCTIONS_H_
