#ifndef TESSARIL_FORMATS_SARIF_H_
#define TESSARIL_FORMATS_SARIF_H_

#include <string>
#include <vector>

#include "formats/findings_writer.h"

namespace tessaril {

/// SARIF 2.1.0, one run. Results are written as they come, what is known at the end only stands behind them.
///
/// Files below the folder that the program was started in are named from there, with "%SRCROOT%" as their
/// base, and the base's own address stands in the run: viewers that know bases find the file anywhere, and
/// those that pass them over take the name from the root of their work space, where programs are started as a
/// rule. Other files have their whole address.
class SarifWriter : public FindingsWriter {
 public:
  SarifWriter(RunFacts facts, BlockWriter& out);

  void Begin() override;
  void BeginFile(const std::string&) override {}
  void Write(const FindingRecord& finding) override;
  void WriteFailure(const std::string& path, const std::string& reason) override;
  void End(int exit_status) override;

 private:
  RunFacts facts_;
  BlockWriter& out_;
  std::vector<FindingKind> rules_;  // by their indices
  std::string notifications_;       // of failures: elements of an array, JSON
  bool has_results_ = false;
};

}  // namespace tessaril

#endif  // TESSARIL_FORMATS_SARIF_H_
