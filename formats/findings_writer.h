#ifndef TESSARIL_FORMATS_FINDINGS_WRITER_H_
#define TESSARIL_FORMATS_FINDINGS_WRITER_H_

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "engine/finding_kinds.h"
#include "engine/functions.h"
#include "formats/block_writer.h"

namespace tessaril {

/// The reports for machines.
enum class MachineFormat { kJson, kSarif, kJunit, kGithub };

/// The format of a name, as "sarif"; nothing when no report for machines has it.
std::optional<MachineFormat> FormatNamed(std::string_view name);

/// What is known of a run before it begins.
struct RunFacts {
  Function function = Function::kLinks;
  std::string start_folder;  // absolute; what lies below is named from there, where a format allows it. Empty
                             // when it is not known
};

/// Writes what a run finds for machines, in one format. All that is written is valid UTF-8, whatever bytes
/// pages and paths have. Calls come in the order of the members; files, findings and failures mixed.
class FindingsWriter {
 public:
  virtual ~FindingsWriter() = default;

  /// The run begins.
  virtual void Begin() {}

  /// One more file is checked, `path` is absolute.
  virtual void BeginFile(const std::string& path) = 0;

  /// A finding, in the file that was begun last or another one.
  virtual void Write(const FindingRecord& finding) = 0;

  /// A file or folder that could not be read or written.
  virtual void WriteFailure(const std::string& /*path*/, const std::string& /*reason*/) {}

  /// The run is over, stopped or not; `exit_status` is that of `tsl`.
  virtual void End(int exit_status) = 0;
};

/// `out` must outlive the writer. What a writer leaves in it is complete after End and Flush.
std::unique_ptr<FindingsWriter> MakeFindingsWriter(MachineFormat format, RunFacts facts, BlockWriter& out);

}  // namespace tessaril

#endif  // TESSARIL_FORMATS_FINDINGS_WRITER_H_
