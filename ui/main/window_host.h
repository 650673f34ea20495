#ifndef TESSARIL_UI_MAIN_WINDOW_HOST_H_
#define TESSARIL_UI_MAIN_WINDOW_HOST_H_

#include <chrono>
#include <string>
#include <vector>

#include "engine/run.h"
#include "engine/run_host.h"
#include "ui/dialogs/replace_dialog.h"
#include "ui/main/report_view.h"

namespace tessaril {

/// What a run changes in the main window, step by step; the words are those of RunHost.
class RunStage {
 public:
  virtual ~RunStage() = default;
  virtual void BeginRun() = 0;
  virtual void TakeTexts(const SearchTexts& texts) = 0;
  virtual bool BeginWalk() = 0;
  virtual void EndWalk() = 0;
  virtual void ShowPage(const std::string& page) = 0;
};

/// The host of a run in the main window: proposals go to the confirmation dialog, questions to message boxes,
/// reports to the results box, and the window stays alive meanwhile.
class WindowHost : public RunHost {
 public:
  WindowHost(QWidget& window, RunStage& stage, ReportView& view, ReplaceDialog& dialog, RunState& state)
      : window_(window), stage_(stage), view_(view), dialog_(dialog), state_(state) {}

  /// To be called before each run.
  void Reset();

  /// The user has pressed Cancel.
  void Cancel();

  /// The program is to be left: the run is cancelled, what is open is closed, and nothing more is asked,
  /// told or shown.
  void CancelAndLeave();
  bool IsLeaving() const { return leaving_; }

  /// What could not be read or written, in words for the user; empty when there is nothing.
  std::string FailureText() const;

  void BeginRun() override { stage_.BeginRun(); }
  void TakeTexts(const SearchTexts& texts) override { stage_.TakeTexts(texts); }
  bool BeginWalk() override { return stage_.BeginWalk(); }
  void EndWalk() override { stage_.EndWalk(); }
  ProposalAnswer Propose(const Proposal& proposal) override;
  bool AnswersUnasked() const override { return false; }
  bool Ask(const Question& question) override;
  void Tell(const std::string& text) override;
  void Warn(const std::string& text) override;
  void TellFailure(const std::string& path, const std::string& reason) override;
  void CountFile(const std::string&) override { view_.CountFile(); }
  void ShowActivity(std::string_view text) override { view_.ShowActivity(text); }
  void ShowReport(const std::string& report, const std::string& title) override;
  void ShowPage(const std::string& page) override;
  void HandleInput() override;
  bool CancelRequested() const override { return cancelled_; }

 private:
  QWidget& window_;
  RunStage& stage_;
  ReportView& view_;
  ReplaceDialog& dialog_;
  RunState& state_;
  bool cancelled_ = false;
  bool leaving_ = false;
  int calls_for_input_ = 0;
  std::chrono::steady_clock::time_point last_input_;
  std::vector<std::string> failures_;  // the first ones
  std::size_t failure_count_ = 0;
};

}  // namespace tessaril

#endif  // TESSARIL_UI_MAIN_WINDOW_HOST_H_
