#ifndef TESSARIL_FORMATS_JSON_LINES_H_
#define TESSARIL_FORMATS_JSON_LINES_H_

#include "formats/findings_writer.h"

namespace tessaril {

/// One object of JSON a line and finding, written at the latest when the next file is begun. Paths are
/// absolute; failures are not in it.
class JsonLinesWriter : public FindingsWriter {
 public:
  explicit JsonLinesWriter(BlockWriter& out) : out_(out) {}

  void BeginFile(const std::string& path) override;
  void Write(const FindingRecord& finding) override;
  void End(int exit_status) override;

 private:
  BlockWriter& out_;
};

}  // namespace tessaril

#endif  // TESSARIL_FORMATS_JSON_LINES_H_
