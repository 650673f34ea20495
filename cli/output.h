#ifndef TESSARIL_CLI_OUTPUT_H_
#define TESSARIL_CLI_OUTPUT_H_

#include <string>

#include "engine/file_handle.h"
#include "engine/status.h"

// What `tsl` writes for its user: messages, and files that may be devices or pipes.

namespace tessaril {

/// Exit statuses of `tsl`.
inline constexpr int kExitGood = 0;
inline constexpr int kExitFindings = 1;
inline constexpr int kExitFailure = 2;
inline constexpr int kExitStopped = 3;

/// Tells on standard error why `tsl` does not go on, and gives kExitFailure.
int Refuse(const std::string& text);

/// Writes a report to standard output, byte for byte; on a terminal without what would command it.
Status WriteToStandardOutput(const std::string& report);

/// Writes to standard output and gives kExitGood; a failure is told.
int WriteToUser(const std::string& text);

/// Makes sure that the numbers of the three standard streams are taken, so that no page is opened under one
/// of them and gets what is meant for the user. A stream that the caller closed fails when it is used.
void ReserveStandardStreams();

/// Creates a file or empties it, for writing.
Status CreateFile(const std::string& path, FileHandle& file);

/// Whether CreateFile would succeed as far as can be told without touching anything.
Status CheckWritable(const std::string& path);

/// Reads all of a file that may be a pipe; of an open one what is still to be read.
Status ReadFrom(const std::string& path, std::string& bytes);
Status ReadFrom(int file, std::string& bytes);

}  // namespace tessaril

#endif  // TESSARIL_CLI_OUTPUT_H_
