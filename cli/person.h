#ifndef TESSARIL_CLI_PERSON_H_
#define TESSARIL_CLI_PERSON_H_

#include <string>

#include "cli/answerer.h"
#include "engine/functions.h"

namespace tessaril {

/// A person at the terminal: sees each finding with its surroundings on standard error and answers with one
/// key on standard input. Colours are used on a terminal, unless NO_COLOR is set; elsewhere >>> and <<< mark
/// what is meant.
class Person : public Answerer {
 public:
  /// For findings of `function`.
  explicit Person(const FunctionRow& function);
  ProposalAnswer Propose(const Proposal& proposal) override;
  bool Ask(const Question& question) override;

 private:
  std::string Marked(const std::string& text, Selection selection, PageEncoding encoding,
                     const char* colour) const;
  std::string Bold(const std::string& text) const;
  void Show(const Proposal& proposal, const std::string& field, bool edited) const;

  const FunctionRow& function_;
  bool colours_;
};

}  // namespace tessaril

#endif  // TESSARIL_CLI_PERSON_H_
