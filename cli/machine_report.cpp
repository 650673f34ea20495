#include "cli/machine_report.h"

#include <unistd.h>

#include <cerrno>
#include <exception>

#include "cli/output.h"
#include "engine/start_places.h"

namespace tessaril {

MachineReport::~MachineReport() {
  constexpr int kFailed = 2;
  try {
    (void)End(kFailed);
  } catch (const std::exception&) {  // no memory for it; what was written stays
  }
}

Status MachineReport::Begin() {
  if (!arguments_.report.empty()) {
    if (Status status = CreateFile(arguments_.report, file_); !status.ok()) return status;
  }
  RunFacts facts;
  facts.function = arguments_.options.function;
  if (!MakeAbsolute(".", facts.start_folder).ok()) facts.start_folder.clear();  // it is there no more
  out_.emplace(arguments_.report.empty() ? STDOUT_FILENO : file_.get());
  writer_ = MakeFindingsWriter(*arguments_.format, facts, *out_);
  writer_->Begin();
  return {};
}

Status MachineReport::End(int exit_status) {
  if (!writer_) return {};
  const std::unique_ptr<FindingsWriter> writer = std::move(writer_);
  writer->End(exit_status);
  if (!out_->status().ok()) return out_->status();
  return file_.Close() ? Status() : Status::System(errno);
}

}  // namespace tessaril
