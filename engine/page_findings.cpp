#include "engine/page_findings.h"

#include <algorithm>
#include <utility>

namespace tessaril {
namespace {

std::string Trimmed(std::string_view message) {
  return std::string(message.substr(0, message.find_last_not_of(" :") + 1));
}

}  // namespace

void PageFindings::Note(FindingKind kind, const std::string& path, PageText& page, std::size_t begin,
                        std::size_t end, std::string_view message, std::optional<std::string> proposal) {
  if (!wanted_) return;
  FindingRecord record;
  record.kind = kind;
  record.file = path;
  record.encoding = page.Encoding();
  record.place = places_.At(page, std::min(begin, page.size()));
  record.message = Trimmed(message);
  page.AppendSlice(begin, end, record.found);
  record.proposal = std::move(proposal);
  host_.NoteFinding(record);
}

void NoteFileFinding(RunHost& host, FindingKind kind, const std::string& path, std::string_view message,
                     const std::string& found) {
  if (!host.WantsFindings()) return;
  FindingRecord record;
  record.kind = kind;
  record.file = path;
  record.message = Trimmed(message);
  record.found = found;
  host.NoteFinding(record);
}

}  // namespace tessaril
