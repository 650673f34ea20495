#ifndef TESSARIL_CLI_RUN_COMMAND_H_
#define TESSARIL_CLI_RUN_COMMAND_H_

namespace tessaril {

/// Everything that `tsl` does; returns its exit status.
int RunCommand(int argc, const char* const* argv);

}  // namespace tessaril

#endif  // TESSARIL_CLI_RUN_COMMAND_H_
