#ifndef TESSARIL_FORMATS_GITHUB_COMMANDS_H_
#define TESSARIL_FORMATS_GITHUB_COMMANDS_H_

#include <string>

#include "formats/findings_writer.h"

namespace tessaril {

/// Workflow commands, one a line and finding, that show the findings beside the changed lines. Files are
/// named from the folder that the program was started in, which in a workflow is the repository's.
class GithubWriter : public FindingsWriter {
 public:
  GithubWriter(RunFacts facts, BlockWriter& out) : facts_(std::move(facts)), out_(out) {}

  void BeginFile(const std::string& path) override;
  void Write(const FindingRecord& finding) override;
  void WriteFailure(const std::string& path, const std::string& reason) override;
  void End(int exit_status) override;

 private:
  std::string FileProperty(const std::string& path) const;

  RunFacts facts_;
  BlockWriter& out_;
};

}  // namespace tessaril

#endif  // TESSARIL_FORMATS_GITHUB_COMMANDS_H_
