#ifndef TESSARIL_CLI_ANSWERER_H_
#define TESSARIL_CLI_ANSWERER_H_

#include "engine/run_host.h"

namespace tessaril {

/// Who answers for the user of `tsl`: nobody, a file, a person at the terminal. An answerer may throw to end
/// the run at once.
class Answerer {
 public:
  virtual ~Answerer() = default;
  virtual ProposalAnswer Propose(const Proposal& proposal) = 0;
  virtual bool Ask(const Question& question) = 0;
};

/// Nobody is asked: everything is accepted, or nothing is.
class Unattended : public Answerer {
 public:
  explicit Unattended(bool accept) : accept_(accept) {}

  ProposalAnswer Propose(const Proposal& proposal) override {
    return {accept_ && proposal.ReplaceText ? kReplace : kKeep, proposal.ReplaceText.value_or("")};
  }

  bool Ask(const Question& question) override {
    return accept_ || question.when == Question::When::kBeforeWalk;
  }

 private:
  bool accept_;
};

}  // namespace tessaril

#endif  // TESSARIL_CLI_ANSWERER_H_
