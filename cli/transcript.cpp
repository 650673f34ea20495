#include "cli/transcript.h"

#include "cli/output.h"

namespace tessaril {
namespace {

std::string Quoted(const std::string& bytes) {
  std::string quoted = "\"";
  for (const char c : bytes) {
    const auto code = static_cast<unsigned char>(c);
    const bool plain = code >= 0x20 && code < 0x80 && c != '"' && c != '\\';
    if (plain) {
      quoted += c;
      continue;
    }
    constexpr std::string_view kSpecial = "\"\\\b\f\n\r\t";
    constexpr std::string_view kLetters = "\"\\bfnrt";
    if (const std::size_t special = kSpecial.find(c); special != std::string_view::npos) {
      quoted += '\\';
      quoted += kLetters[special];
    } else if (code < 0x20) {
      constexpr std::string_view kDigits = "0123456789abcdef";
      quoted += "\\u00";
      quoted += kDigits[code >> 4];
      quoted += kDigits[code & 0xF];
    } else {
      quoted += static_cast<char>(0xC0 | code >> 6);
      quoted += static_cast<char>(0x80 | (code & 0x3F));
    }
  }
  return quoted + "\"";
}

// One line of JSON, field by field.
class JsonLine {
 public:
  void Add(const char* key, const std::string& json_value) {
    text_ += std::string(text_.empty() ? "{\"" : ", \"") + key + "\": " + json_value;
  }
  void Add(const char* key, std::size_t number) { Add(key, std::to_string(number)); }
  std::string Finished() const { return text_ + "}\n"; }

 private:
  std::string text_;
};

std::string Name(int answer) {
  return answer == kReplace ? "replace" : answer == kStop ? "stop" : "keep";
}

std::string MessageLine(const std::string& text, const char* buttons, const char* answer) {
  JsonLine line;
  line.Add("message", Quoted(text));
  line.Add("buttons", Quoted(buttons));
  line.Add("answer", Quoted(answer));
  return line.Finished();
}

}  // namespace

Status Transcript::Open(const std::string& path) {
  return CreateFile(path, file_);
}

void Transcript::Write(const Proposal& proposal, const ProposalAnswer& answer) {
  if (!file_.is_open()) return;  // a run may have more findings than are worth writing for nobody
  const bool editable = proposal.ReplaceText.has_value();
  const Selection replace = editable ? proposal.ReplaceSelection : Selection{};
  const bool edited = editable && answer.ReplaceText != *proposal.ReplaceText;
  JsonLine line;
  line.Add("file", Quoted(proposal.FileName));
  line.Add("found", Quoted(proposal.SearchText));
  line.Add("found_start", proposal.SearchSelection.start);
  line.Add("found_length", proposal.SearchSelection.length);
  line.Add("new", editable ? Quoted(*proposal.ReplaceText) : "null");
  line.Add("new_start", replace.start);
  line.Add("new_length", replace.length);
  line.Add("hint", Quoted(proposal.Label4));
  line.Add("answer", Quoted(Name(answer.ReplaceAnswer)));
  line.Add("edited", edited ? Quoted(answer.ReplaceText) : "null");
  WriteLine(line.Finished());
}

void Transcript::WriteQuestion(const std::string& text, bool ok) {
  if (!file_.is_open()) return;
  WriteLine(MessageLine(text, "okcancel", ok ? "ok" : "cancel"));
}

void Transcript::WriteMessage(const std::string& text) {
  WriteLine(MessageLine(text, "ok", "ok"));
}

void Transcript::WriteLine(const std::string& line) {
  if (!file_.is_open() || !status_.ok()) return;
  status_ = WriteAll(file_.get(), line);
}

}  // namespace tessaril
