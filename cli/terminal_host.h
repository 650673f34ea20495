#ifndef TESSARIL_CLI_TERMINAL_HOST_H_
#define TESSARIL_CLI_TERMINAL_HOST_H_

#include <chrono>
#include <string>

#include "cli/answerer.h"
#include "cli/machine_report.h"
#include "cli/transcript.h"
#include "engine/run_host.h"

namespace tessaril {

/// The host of a run in `tsl`: an answerer answers, the transcript notes it, a report for machines gets the
/// findings where it is wanted, messages go to standard error, and a line there tells how far the run is when
/// it is a terminal.
class TerminalHost : public RunHost {
 public:
  /// `unattended`: the answerer asks nobody, so that questions before the walk are shown as messages.
  TerminalHost(Answerer& answerer, Transcript& transcript, MachineReport& machine_report, bool unattended);
  ~TerminalHost() override;
  TerminalHost(const TerminalHost&) = delete;
  TerminalHost& operator=(const TerminalHost&) = delete;

  bool BeginWalk() override;
  ProposalAnswer Propose(const Proposal& proposal) override;
  bool AnswersUnasked() const override { return unattended_; }
  bool Ask(const Question& question) override;
  void Tell(const std::string& text) override;
  void Warn(const std::string& text) override { Tell(text); }
  void TellFailure(const std::string& path, const std::string& reason) override;
  bool WantsFindings() const override { return machine_report_.wanted(); }
  void NoteFinding(const FindingRecord& finding) override { machine_report_.writer()->Write(finding); }
  void CountFile(const std::string& path) override;
  void ShowActivity(std::string_view) override {}
  void ShowReport(const std::string&, const std::string&) override {}  // written when the run is over
  void ShowPage(const std::string&) override {}
  void HandleInput() override {}  // signals come in by themselves
  bool CancelRequested() const override;

  /// Files and folders that could not be read or written, and a report for machines that could not be begun.
  int failures() const { return failures_; }

 private:
  void ClearProgress();

  Answerer& answerer_;
  Transcript& transcript_;
  MachineReport& machine_report_;
  bool unattended_;
  bool progress_;
  bool progress_shown_ = false;
  std::chrono::steady_clock::time_point next_progress_;
  long files_ = 0;
  int failures_ = 0;
};

}  // namespace tessaril

#endif  // TESSARIL_CLI_TERMINAL_HOST_H_
