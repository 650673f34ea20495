#include "formats/junit.h"

#include <string_view>
#include <utility>

#include "engine/characters.h"
#include "formats/machine_text.h"

namespace tessaril {
namespace {

// Whether XML 1.0 can hold the character at all.
bool IsXmlCharacter(char32_t code) {
  if (code < 0x20) return code == '\t' || code == '\n' || code == '\r';
  return code != 0xFFFE && code != 0xFFFF;
}

// The text of an attribute or element. Line ends and tabs are written by their numbers, as they would else be
// read as something else; U+FFFD stands for what XML cannot hold.
std::string Xml(std::string_view text) {
  std::string escaped;
  while (!text.empty()) {
    const char32_t code = TakeCharacter(text);
    const bool special = code < 0x20 || code == '"' || code == '&' || code == '<' || code == '>';
    if (!IsXmlCharacter(code)) {
      AppendUtf8(0xFFFD, escaped);
    } else if (special) {
      escaped += "&#" + std::to_string(static_cast<unsigned>(code)) + ";";
    } else {
      AppendUtf8(code, escaped);
    }
  }
  return escaped;
}

std::string Attribute(std::string_view name, std::string_view value) {
  return " " + std::string(name) + "=\"" + Xml(value) + "\"";
}

std::string Attribute(std::string_view name, std::size_t number) {
  return Attribute(name, std::to_string(number));
}

}  // namespace

JunitWriter::JunitWriter(RunFacts facts, BlockWriter& out)
    : facts_(std::move(facts)), out_(out), group_("tsl." + std::string(RowOf(facts_.function).command)) {}

void JunitWriter::BeginFile(const std::string& path) {
  checked_.push_back(path);
}

void JunitWriter::Write(const FindingRecord& finding) {
  not_in_order_.insert(finding.file);
  ++failures_;
  const std::string id(RowOf(finding.kind).id);
  const std::string path = PathText(finding.file);
  const std::string sentence = SentenceAndProposal(finding);
  std::string name = path;
  std::string line;
  if (finding.place.line > 0) {
    name += ":" + std::to_string(finding.place.line) + ":" + std::to_string(finding.place.column);
    line = Attribute("line", finding.place.line);
  }
  cases_ += "<testcase" + Attribute("classname", group_ + "." + id) +
            Attribute("name", name + ": " + sentence) + Attribute("file", path) + line +
            " time=\"0\"><failure" + Attribute("type", id) + Attribute("message", sentence) +
            "/></testcase>\n";
}

void JunitWriter::WriteFailure(const std::string& path, const std::string& reason) {
  not_in_order_.insert(path);
  ++errors_;
  const std::string text = PathText(path);
  cases_ += "<testcase" + Attribute("classname", group_) + Attribute("name", text) + Attribute("file", text) +
            " time=\"0\"><error type=\"file\"" + Attribute("message", PathUtf8(reason)) + "/></testcase>\n";
}

void JunitWriter::End(int) {
  std::size_t tests = failures_ + errors_;
  for (const std::string& checked : checked_) {
    if (not_in_order_.contains(checked)) continue;
    ++tests;
    const std::string path = PathText(checked);
    cases_ += "<testcase" + Attribute("classname", group_) + Attribute("name", path) +
              Attribute("file", path) + " time=\"0\"/>\n";
  }
  const std::string facts = Attribute("name", "tsl " + std::string(RowOf(facts_.function).command)) +
                            Attribute("tests", tests) + Attribute("failures", failures_) +
                            Attribute("errors", errors_) + " time=\"0\">\n";
  out_.Append("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites" + facts + "<testsuite" + facts);
  out_.Append(cases_);
  out_.Append("</testsuite>\n</testsuites>\n");
  out_.Flush();
}

std::string JunitWriter::PathText(const std::string& path) const {
  return PathUtf8(PathFrom(facts_.start_folder, path));
}

}  // namespace tessaril
