#ifndef TESSARIL_FORMATS_JUNIT_H_
#define TESSARIL_FORMATS_JUNIT_H_

#include <cstddef>
#include <string>
#include <unordered_set>
#include <vector>

#include "formats/findings_writer.h"

namespace tessaril {

/// XML as test servers read it: a failed test for each finding, a passed one for each file without findings,
/// an error for what could not be read or written. It is written at the end, as the counts come first and any
/// page may have a finding about any file.
class JunitWriter : public FindingsWriter {
 public:
  JunitWriter(RunFacts facts, BlockWriter& out);

  void BeginFile(const std::string& path) override;
  void Write(const FindingRecord& finding) override;
  void WriteFailure(const std::string& path, const std::string& reason) override;
  void End(int exit_status) override;

 private:
  std::string PathText(const std::string& path) const;

  RunFacts facts_;
  BlockWriter& out_;
  std::string group_;  // "tsl.links"
  std::string cases_;
  std::vector<std::string> checked_;              // paths
  std::unordered_set<std::string> not_in_order_;  // paths
  std::size_t failures_ = 0;
  std::size_t errors_ = 0;
};

}  // namespace tessaril

#endif  // TESSARIL_FORMATS_JUNIT_H_
