// The answers file of `tsl`, held against a plain reading line by line.
// Input: the questions, a byte each, and the file.

#include "cli/answers_file.h"

#include "fuzz/input.h"

namespace tessaril {
namespace {

constexpr const char* kProposed = "as proposed";

// One line as its answer: "keep TEXT", "ok" or "error".
std::string PlainAnswer(const std::string& line, char question) {
  const std::size_t blank = line.find(' ');
  const std::string word = line.substr(0, blank);
  const bool has_text = blank != std::string::npos;
  std::string text;
  for (std::size_t i = blank; has_text && ++i < line.size();) {
    if (line[i] != '\\') {
      text += line[i];
      continue;
    }
    const std::string escape = line.substr(i + 1, 3);
    const std::string digits = "0123456789abcdef0123456789ABCDEF";
    const auto digit = [&](std::size_t at) {
      return escape.size() > at ? digits.find(escape[at]) : std::string::npos;
    };
    if (escape.starts_with('\\') || escape.starts_with('r') || escape.starts_with('n') ||
        escape.starts_with('t')) {
      text += escape[0] == 'r' ? '\r' : escape[0] == 'n' ? '\n' : escape[0] == 't' ? '\t' : '\\';
      i += 1;
    } else if (escape.starts_with('x') && digit(1) != std::string::npos && digit(2) != std::string::npos) {
      text += static_cast<char>(digit(1) % 16 * 16 + digit(2) % 16);
      i += 3;
    } else {
      return "error";
    }
  }
  if (question == 'q') return !has_text && (word == "ok" || word == "cancel") ? word : "error";
  if (word != "keep" && word != "replace" && word != "stop") return "error";
  if (question == 'f' && (word == "replace" || has_text)) return "error";
  return word + " " + (question == 'f' ? "" : has_text ? text : kProposed);
}

std::string Answer(AnswersFile& answers, char question) {
  if (question == 'q') return answers.Ask({"?", Question::When::kDuringWalk}) ? "ok" : "cancel";
  Proposal proposal;
  if (question == 'p') proposal.ReplaceText = kProposed;
  const ProposalAnswer answer = answers.Propose(proposal);
  const char* const word = answer.ReplaceAnswer == kKeep      ? "keep "
                           : answer.ReplaceAnswer == kReplace ? "replace "
                                                              : "stop ";
  return word + answer.ReplaceText;
}

}  // namespace
}  // namespace tessaril

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tessaril;
  Input input(data, size);
  const std::string questions = input.Field();  // a proposal, a finding without a field, a question
  std::string rest = input.Rest();
  AnswersFile answers("answers", rest);
  std::size_t number = 0;
  for (const char byte : questions) {
    const char question = "pfq"[static_cast<unsigned char>(byte) % 3];
    std::string expected = question == 'q'   ? "cancel"
                           : question == 'p' ? std::string("keep ") + kProposed
                                             : "keep ";
    if (!rest.empty()) {
      ++number;
      const std::size_t end = rest.find('\n');
      std::string line = rest.substr(0, end);
      rest.erase(0, end == std::string::npos ? rest.size() : end + 1);
      if (line.ends_with('\r')) line.pop_back();
      expected = PlainAnswer(line, question);
    }
    try {
      RequireEqual(Answer(answers, question), expected, "the answer");
    } catch (const AnswersError& error) {
      RequireEqual("error", expected, "the answer");
      Require(std::string(error.what()).starts_with("answers:" + std::to_string(number) + ": "),
              "an error without file and line");
      return 0;
    }
  }
  return 0;
}
