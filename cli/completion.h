#ifndef TESSARIL_CLI_COMPLETION_H_
#define TESSARIL_CLI_COMPLETION_H_

#include <string>

namespace tessaril {

/// A script for bash that completes the command lines of `tsl`.
std::string BashCompletion();

}  // namespace tessaril

#endif  // TESSARIL_CLI_COMPLETION_H_
