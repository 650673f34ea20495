#ifndef TESSARIL_CLI_OUTPUT_H_
#define TESSARIL_CLI_OUTPUT_H_

#include <string>

#include "engine/file_handle.h"
#include "engine/status.h"

// Files that `tsl` writes for its user: the report and the transcript. They may be devices or pipes.

namespace tessaril {

/// Makes sure that the numbers of the three standard streams are taken, so that no page is opened under one
/// of them and gets what is meant for the user. A stream that the caller closed fails when it is used.
void ReserveStandardStreams();

/// Creates a file or empties it, for writing.
Status CreateFile(const std::string& path, FileHandle& file);

/// Whether CreateFile would succeed as far as can be told without touching anything.
Status CheckWritable(const std::string& path);

/// Reads all of a file that may be a pipe.
Status ReadFrom(const std::string& path, std::string& bytes);

}  // namespace tessaril

#endif  // TESSARIL_CLI_OUTPUT_H_
