#include "ui/main/window_host.h"

#include <QApplication>
#include <QDialog>

#include "engine/paths.h"
#include "ui/shared/message_boxes.h"

namespace tessaril {
namespace {

constexpr std::size_t kFailuresTold = 10;

// Ends whatever waits for the user, as if it had been closed.
void CloseModalWindows() {
  while (auto* const open = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
    open->reject();
    if (open->isVisible()) return;
  }
}

}  // namespace

void WindowHost::Reset() {
  cancelled_ = leaving_ = false;
  calls_for_input_ = 0;
  failures_.clear();
  failure_count_ = 0;
}

void WindowHost::Cancel() {
  cancelled_ = true;
  state_.Cancel();
}

void WindowHost::CancelAndLeave() {
  leaving_ = true;
  Cancel();
  dialog_.StopAsking();
  CloseModalWindows();
}

std::string WindowHost::FailureText() const {
  if (failure_count_ == 0) return {};
  std::string text = "Could not be read or written:";
  for (const std::string& failure : failures_) text += "\r\n" + failure;
  if (failure_count_ > failures_.size()) {
    text += "\r\nand " + std::to_string(failure_count_ - failures_.size()) + " more";
  }
  return text;
}

ProposalAnswer WindowHost::Propose(const Proposal& proposal) {
  if (leaving_) return {kStop, proposal.ReplaceText.value_or("")};
  view_.UpdateNow();
  return dialog_.Ask(proposal, state_.ColourParts);
}

bool WindowHost::Ask(const Question& question) {
  return !leaving_ && AskOkCancel(&window_, question.text);
}

void WindowHost::Tell(const std::string& text) {
  if (!leaving_) tessaril::Tell(&window_, text);
}

void WindowHost::Warn(const std::string& text) {
  if (!leaving_) tessaril::Warn(&window_, text);
}

void WindowHost::TellFailure(const std::string& path, const std::string& reason) {
  ++failure_count_;
  if (failures_.size() >= kFailuresTold) return;
  constexpr std::size_t kLongPath = 250;  // bytes; ten longer ones would fill the screen
  failures_.push_back((path.size() > kLongPath ? ShortenedPath(path) : path) + ": " + reason);
}

void WindowHost::ShowReport(const std::string& report, const std::string& title) {
  if (!leaving_) view_.ShowReport(report, title);
}

void WindowHost::ShowPage(const std::string& page) {
  if (!leaving_) stage_.ShowPage(page);
}

// To look for input costs about as much as to search a small file. So it is done before each of the first
// files, and then a thousand times a second.
void WindowHost::HandleInput() {
  constexpr int kAlways = 100;
  constexpr std::chrono::milliseconds kPause{1};
  const auto now = std::chrono::steady_clock::now();
  if (++calls_for_input_ > kAlways && now - last_input_ < kPause) return;
  view_.Update();
  QCoreApplication::processEvents();
  last_input_ = std::chrono::steady_clock::now();
}

}  // namespace tessaril
