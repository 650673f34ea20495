#ifndef TESSARIL_CLI_MACHINE_REPORT_H_
#define TESSARIL_CLI_MACHINE_REPORT_H_

#include <memory>
#include <optional>
#include <string>

#include "cli/arguments.h"
#include "engine/file_handle.h"
#include "engine/status.h"
#include "formats/block_writer.h"
#include "formats/findings_writer.h"

namespace tessaril {

/// The report of a run for machines, where the command line asks for one: in that format, to the file that it
/// names or to standard output. Nothing is touched before Begin. A report that was begun is always ended, by
/// its destructor as that of a run that failed.
class MachineReport {
 public:
  /// `arguments` must outlive the report.
  explicit MachineReport(const Arguments& arguments) : arguments_(arguments) {}
  MachineReport(const MachineReport&) = delete;
  MachineReport& operator=(const MachineReport&) = delete;
  ~MachineReport();

  bool wanted() const { return arguments_.format.has_value(); }

  /// What messages call it.
  std::string name() const { return arguments_.report.empty() ? "standard output" : arguments_.report; }

  /// Creates or empties the file and begins the report. Only when it is wanted.
  Status Begin();

  /// Takes what there is to tell; null before Begin and after End.
  FindingsWriter* writer() { return writer_.get(); }

  /// Ends a report that was begun. Fails when any of it could not be written.
  Status End(int exit_status);

 private:
  Status Show();

  const Arguments& arguments_;
  FileHandle file_;
  bool is_shown_ = false;  // on a terminal, when it is complete
  std::optional<BlockWriter> out_;
  std::unique_ptr<FindingsWriter> writer_;
};

}  // namespace tessaril

#endif  // TESSARIL_CLI_MACHINE_REPORT_H_
