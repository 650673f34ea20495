#include "cli/machine_report.h"

#include <sys/mman.h>
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
  is_shown_ = arguments_.report.empty() && isatty(STDOUT_FILENO) != 0;
  if (is_shown_) {
    file_ = FileHandle(memfd_create("report", MFD_CLOEXEC));
    if (!file_.is_open()) return Status::System(errno);
  }
  RunFacts facts;
  facts.function = arguments_.options.function;
  if (!MakeAbsolute(".", facts.start_folder).ok()) facts.start_folder.clear();  // it is there no more
  out_.emplace(file_.is_open() ? file_.get() : STDOUT_FILENO);
  writer_ = MakeFindingsWriter(*arguments_.format, facts, *out_);
  writer_->Begin();
  return {};
}

Status MachineReport::End(int exit_status) {
  if (!writer_) return {};
  const std::unique_ptr<FindingsWriter> writer = std::move(writer_);
  writer->End(exit_status);
  if (!out_->status().ok()) return out_->status();
  if (is_shown_) return Show();
  return file_.Close() ? Status() : Status::System(errno);
}

Status MachineReport::Show() {
  std::string report;
  if (lseek(file_.get(), 0, SEEK_SET) != 0) return Status::System(errno);
  if (Status status = ReadFrom(file_.get(), report); !status.ok()) return status;
  return WriteToStandardOutput(report);
}

}  // namespace tessaril
