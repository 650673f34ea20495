#include "cli/answers_file.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace tessaril {

AnswersFile::AnswersFile(std::string name, const std::string& content) : name_(std::move(name)) {
  for (std::size_t begin = 0; begin < content.size();) {
    const std::size_t end = std::min(content.find('\n', begin), content.size());
    std::string line = content.substr(begin, end - begin);
    if (line.ends_with('\r')) line.pop_back();
    lines_.push_back(std::move(line));
    begin = end + 1;
  }
}

ProposalAnswer AnswersFile::Propose(const Proposal& proposal) {
  const std::optional<Line> line = Next();
  const std::string proposed = proposal.ReplaceText.value_or("");
  if (!line) return {kKeep, proposed};
  const bool keep = line->word == "keep";
  const bool replace = line->word == "replace";
  if (!keep && !replace && line->word != "stop") Fail("\"" + line->word + "\" does not answer a proposal");
  if (!proposal.ReplaceText && (replace || line->text)) Fail("there is nothing to replace here");
  return {keep ? kKeep : replace ? kReplace : kStop, line->text.value_or(proposed)};
}

bool AnswersFile::Ask(const Question&) {
  const std::optional<Line> line = Next();
  if (!line) return false;
  if (line->text || (line->word != "ok" && line->word != "cancel")) {
    Fail("\"" + line->word + "\" does not answer a question");
  }
  return line->word == "ok";
}

std::optional<AnswersFile::Line> AnswersFile::Next() {
  if (next_ == lines_.size()) return std::nullopt;
  const std::string& raw = lines_[next_++];
  const std::size_t blank = raw.find(' ');
  Line line{raw.substr(0, blank), std::nullopt};
  if (blank != std::string::npos) line.text = Unescaped(raw.substr(blank + 1));
  return line;
}

std::string AnswersFile::Unescaped(const std::string& text) const {
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\') {
      bytes += text[i];
      continue;
    }
    const char kind = ++i < text.size() ? text[i] : '\0';
    constexpr std::string_view kKinds = "\\rnt";
    constexpr std::string_view kMeanings = "\\\r\n\t";
    if (const std::size_t known = kKinds.find(kind); known != std::string_view::npos) {
      bytes += kMeanings[known];
      continue;
    }
    unsigned code = 0;
    const char* const digits = text.data() + i + 1;
    const bool complete = kind == 'x' && i + 2 < text.size();
    if (!complete || std::from_chars(digits, digits + 2, code, 16).ptr != digits + 2) {
      Fail("unknown escape in \"" + text + "\"");
    }
    bytes += static_cast<char>(static_cast<unsigned char>(code));
    i += 2;
  }
  return bytes;
}

void AnswersFile::Fail(const std::string& reason) const {
  throw AnswersError(name_ + ":" + std::to_string(next_) + ": " + reason);
}

}  // namespace tessaril
