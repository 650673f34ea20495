#ifndef TESSARIL_TESTS_SUPPORT_SCRIPT_HOST_H_
#define TESSARIL_TESTS_SUPPORT_SCRIPT_HOST_H_

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "engine/run_host.h"

namespace tessaril {

/// A user made of lists: gives the answers in order (keep and Cancel when they are used up) and notes what it
/// is shown.
class ScriptHost : public RunHost {
 public:
  std::deque<ProposalAnswer> answers;
  std::deque<bool> replies;
  int cancel_at = 0;  // Cancel is pressed at this call for input, counted from 1; 0 for never
  bool unasked = false;
  bool takes_proposals = false;  // what is not answered is replaced as proposed
  bool wants_findings = false;
  std::function<void(const std::string& path)> on_file;
  std::function<void()> on_proposal;

  std::vector<Proposal> proposals;
  std::vector<FindingRecord> findings;
  std::vector<std::string> questions;
  std::vector<std::string> messages;
  std::vector<std::string> failures;
  std::vector<std::string> files;
  std::vector<std::string> activities;
  std::vector<std::string> shown;  // titles of the reports shown, "page" for a page

  ProposalAnswer Propose(const Proposal& proposal) override {
    proposals.push_back(proposal);
    if (on_proposal) on_proposal();
    if (answers.empty()) return {takes_proposals ? kReplace : kKeep, proposal.ReplaceText.value_or("")};
    ProposalAnswer answer = answers.front();
    answers.pop_front();
    return answer;
  }
  bool Ask(const Question& question) override {
    questions.push_back(question.text);
    if (replies.empty()) return false;
    const bool reply = replies.front();
    replies.pop_front();
    return reply;
  }
  bool AnswersUnasked() const override { return unasked; }
  void Tell(const std::string& text) override { messages.push_back(text); }
  void Warn(const std::string& text) override { messages.push_back("(!) " + text); }
  void TellFailure(const std::string& path, const std::string& reason) override {
    failures.push_back(path + ": " + reason);
  }
  bool WantsFindings() const override { return wants_findings; }
  void NoteFinding(const FindingRecord& finding) override { findings.push_back(finding); }
  void CountFile(const std::string& path) override {
    files.push_back(path);
    if (on_file) on_file(path);
  }
  void ShowActivity(std::string_view text) override { activities.emplace_back(text); }
  void ShowReport(const std::string&, const std::string& title) override { shown.push_back(title); }
  void ShowPage(const std::string&) override { shown.emplace_back("page"); }
  void HandleInput() override { ++input_calls_; }
  bool CancelRequested() const override { return cancel_at > 0 && input_calls_ >= cancel_at; }

 private:
  int input_calls_ = 0;
};

}  // namespace tessaril

#endif  // TESSARIL_TESTS_SUPPORT_SCRIPT_HOST_H_
