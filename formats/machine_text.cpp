#include "formats/machine_text.h"

#include "engine/characters.h"

namespace tessaril {

std::string PageUtf8(std::string_view bytes, PageEncoding encoding) {
  return encoding == PageEncoding::kEightBit ? EightBitToUtf8(bytes) : PathUtf8(bytes);
}

std::string PathUtf8(std::string_view bytes) {
  if (IsUtf8(bytes)) return std::string(bytes);
  std::string text;
  while (!bytes.empty()) {
    const std::size_t length = SequenceLength(bytes);
    if (length == 0) {
      AppendUtf8(EightBitCharacter(bytes[0]), text);
    } else {
      text += bytes.substr(0, length);
    }
    bytes.remove_prefix(length == 0 ? 1 : length);
  }
  return text;
}

std::string_view PathFrom(std::string_view folder, std::string_view path) {
  if (folder.empty()) return path;
  if (folder.ends_with('/')) folder.remove_suffix(1);  // the root
  const bool below =
      path.size() > folder.size() + 1 && path.starts_with(folder) && path[folder.size()] == '/';
  return below && path[folder.size() + 1] != '/' ? path.substr(folder.size() + 1) : path;
}

std::string Sentence(const FindingRecord& finding) {
  const std::string found = PageUtf8(finding.found, finding.encoding);
  std::string text = PathUtf8(finding.message);
  if (!found.empty() && !text.ends_with(found)) text += (text.ends_with('!') ? " " : ": ") + found;
  return text;
}

std::string SentenceAndProposal(const FindingRecord& finding) {
  std::string text = Sentence(finding);
  if (finding.proposal) text += "\nProposed: " + PageUtf8(*finding.proposal, finding.encoding);
  return text;
}

PagePlace EndOf(const FindingRecord& finding) {
  PagePlace end = finding.place;
  const std::string text = PageUtf8(finding.found, finding.encoding);
  for (std::string_view rest = text; !rest.empty();) {
    const std::size_t line_end = rest.starts_with("\r\n") ? 2 : rest[0] == '\n' || rest[0] == '\r' ? 1 : 0;
    if (line_end > 0) {
      end = {end.line + 1, 1};
    } else {
      ++end.column;
    }
    rest.remove_prefix(line_end > 0 ? line_end : SequenceLength(rest));
  }
  return end;
}

}  // namespace tessaril
