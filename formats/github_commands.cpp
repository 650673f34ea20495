#include "formats/github_commands.h"

#include <string_view>

#include "engine/web_address.h"
#include "formats/machine_text.h"

namespace tessaril {
namespace {

std::string Escaped(std::string_view text, std::string_view special) {
  std::string escaped;
  for (const char c : text) {
    if (special.find(c) == std::string_view::npos) {
      escaped += c;
    } else {
      AppendPercentEncoded(c, escaped);
    }
  }
  return escaped;
}

std::string Property(std::string_view text) {
  return Escaped(text, "%\r\n:,");
}

std::string Message(std::string_view text) {
  return Escaped(text, "%\r\n");
}

std::string_view CommandOf(FindingLevel level) {
  switch (level) {
    case FindingLevel::kError:
      return "error";
    case FindingLevel::kWarning:
      return "warning";
    case FindingLevel::kNote:
      break;
  }
  return "notice";
}

}  // namespace

std::string GithubWriter::FileProperty(const std::string& path) const {
  return "file=" + Property(PathUtf8(PathFrom(facts_.start_folder, path)));
}

void GithubWriter::BeginFile(const std::string&) {
  out_.Flush();
}

void GithubWriter::Write(const FindingRecord& finding) {
  const FindingKindRow& row = RowOf(finding.kind);
  std::string line = "::" + std::string(CommandOf(row.level)) + " " + FileProperty(finding.file);
  if (finding.place.line > 0) {
    line += ",line=" + std::to_string(finding.place.line) + ",col=" + std::to_string(finding.place.column);
  }
  out_.Append(line + ",title=" + Property(row.summary) + "::" + Message(SentenceAndProposal(finding)) + "\n");
}

void GithubWriter::WriteFailure(const std::string& path, const std::string& reason) {
  out_.Append("::error " + FileProperty(path) +
              ",title=A file could not be read or written.::" + Message(PathUtf8(reason)) + "\n");
}

void GithubWriter::End(int) {
  out_.Flush();
}

}  // namespace tessaril
