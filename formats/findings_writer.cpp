#include "formats/findings_writer.h"

#include <utility>

#include "formats/github_commands.h"
#include "formats/json_lines.h"
#include "formats/junit.h"
#include "formats/sarif.h"

namespace tessaril {

std::optional<MachineFormat> FormatNamed(std::string_view name) {
  using enum MachineFormat;
  constexpr std::pair<std::string_view, MachineFormat> kNames[] = {
      {"json", kJson}, {"sarif", kSarif}, {"junit", kJunit}, {"github", kGithub}};
  for (const auto& [known, format] : kNames) {
    if (known == name) return format;
  }
  return std::nullopt;
}

std::unique_ptr<FindingsWriter> MakeFindingsWriter(MachineFormat format, RunFacts facts, BlockWriter& out) {
  switch (format) {
    case MachineFormat::kJson:
      return std::make_unique<JsonLinesWriter>(out);
    case MachineFormat::kSarif:
      return std::make_unique<SarifWriter>(std::move(facts), out);
    case MachineFormat::kJunit:
      return std::make_unique<JunitWriter>(std::move(facts), out);
    case MachineFormat::kGithub:
      return std::make_unique<GithubWriter>(std::move(facts), out);
  }
  return nullptr;
}

}  // namespace tessaril
