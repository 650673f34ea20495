#ifndef TESSARIL_CLI_ANSWERS_FILE_H_
#define TESSARIL_CLI_ANSWERS_FILE_H_

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "cli/answerer.h"

namespace tessaril {

/// A line of the answers file is malformed or does not fit its question. The text names file and line.
class AnswersError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Answers from a file, one a line, in the order of the questions:
///   keep, replace, stop [TEXT]   that button, with the editable field holding TEXT (or as proposed); TEXT is
///                                bytes, with the escapes \\ \r \n \t \xHH, one blank in front of it
///   ok, cancel                   for a question
/// Lines end in LF or CR LF. After the last line everything is kept and cancelled.
class AnswersFile : public Answerer {
 public:
  /// `name` is used in messages only, `content` is the whole file.
  AnswersFile(std::string name, const std::string& content);

  ProposalAnswer Propose(const Proposal& proposal) override;
  bool Ask(const Question& question) override;

 private:
  struct Line {
    std::string word;
    std::optional<std::string> text;
  };
  std::optional<Line> Next();
  std::string Unescaped(const std::string& text) const;
  [[noreturn]] void Fail(const std::string& reason) const;

  std::string name_;
  std::vector<std::string> lines_;
  std::size_t next_ = 0;  // number of lines taken
};

}  // namespace tessaril

#endif  // TESSARIL_CLI_ANSWERS_FILE_H_
