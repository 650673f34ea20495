#include "cli/terminal_host.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <iostream>

#include "cli/console_text.h"
#include "cli/interrupt.h"
#include "engine/page_encoding.h"
#include "engine/paths.h"

namespace tessaril {
namespace {

constexpr std::chrono::milliseconds kProgressInterval{100};

std::size_t TerminalWidth() {
  constexpr std::size_t kUsual = 80;
  winsize size{};
  const bool known = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
  return known ? size.ws_col : kUsual;
}

}  // namespace

TerminalHost::TerminalHost(Answerer& answerer, Transcript& transcript, MachineReport& machine_report,
                           bool unattended)
    : answerer_(answerer),
      transcript_(transcript),
      machine_report_(machine_report),
      unattended_(unattended),
      progress_(isatty(STDERR_FILENO) != 0),
      next_progress_(std::chrono::steady_clock::now() + kProgressInterval) {}

TerminalHost::~TerminalHost() {
  ClearProgress();
}

bool TerminalHost::BeginWalk() {
  if (!machine_report_.wanted()) return true;
  const Status status = machine_report_.Begin();
  if (!status.ok()) TellFailure(machine_report_.name(), status.reason());
  return status.ok();
}

ProposalAnswer TerminalHost::Propose(const Proposal& proposal) {
  ClearProgress();
  ProposalAnswer answer = answerer_.Propose(proposal);
  transcript_.Write(proposal, answer);
  return answer;
}

bool TerminalHost::Ask(const Question& question) {
  ClearProgress();
  if (unattended_ && question.when == Question::When::kBeforeWalk)
    std::cerr << "tsl: " << Lines(question.text) << "\n";
  const bool ok = answerer_.Ask(question);
  transcript_.WriteQuestion(question.text, ok);
  return ok;
}

void TerminalHost::Tell(const std::string& text) {
  ClearProgress();
  std::cerr << "tsl: " << Lines(text) << "\n";
  transcript_.WriteMessage(text);
}

void TerminalHost::TellFailure(const std::string& path, const std::string& reason) {
  ClearProgress();
  ++failures_;
  std::cerr << "tsl: " << OneLine(path) << ": " << OneLine(reason) << "\n";
  if (machine_report_.writer() != nullptr) machine_report_.writer()->WriteFailure(path, reason);
}

void TerminalHost::CountFile(const std::string& path) {
  ++files_;
  if (machine_report_.writer() != nullptr) machine_report_.writer()->BeginFile(path);
  if (!progress_) return;
  const auto now = std::chrono::steady_clock::now();
  if (now < next_progress_) return;
  next_progress_ = now + kProgressInterval;
  const std::string line = std::to_string(files_) + " files searched, in ";
  const std::string folder = OneLine(FolderOf(path));
  const std::size_t width = TerminalWidth();
  const std::size_t room = width > line.size() + 1 ? width - line.size() - 1 : 0;
  std::cerr << "\r\x1b[K" << line << LastCharacters(folder, room) << std::flush;
  progress_shown_ = true;
}

bool TerminalHost::CancelRequested() const {
  return Interrupted();
}

void TerminalHost::ClearProgress() {
  if (progress_shown_) std::cerr << "\r\x1b[K" << std::flush;
  progress_shown_ = false;
}

}  // namespace tessaril
