#ifndef TESSARIL_CLI_TRANSCRIPT_H_
#define TESSARIL_CLI_TRANSCRIPT_H_

#include <string>

#include "engine/file_handle.h"
#include "engine/run_host.h"
#include "engine/status.h"

namespace tessaril {

/// Writes each question of a run and its answer as a line of JSON, at once. Each character of a string there
/// is one byte of the text (128 to 255 as U+0080 to U+00FF). Without an open file it writes nothing.
class Transcript {
 public:
  /// Creates or empties the file.
  Status Open(const std::string& path);

  void Write(const Proposal& proposal, const ProposalAnswer& answer);
  void WriteQuestion(const std::string& text, bool ok);
  void WriteMessage(const std::string& text);

  /// The first failure to write, if there was one.
  const Status& status() const { return status_; }

 private:
  void WriteLine(const std::string& line);

  FileHandle file_;
  Status status_;
};

}  // namespace tessaril

#endif  // TESSARIL_CLI_TRANSCRIPT_H_
