#include "formats/sarif.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string_view>
#include <utility>

#include "engine/version.h"
#include "engine/web_address.h"
#include "formats/machine_text.h"

namespace tessaril {
namespace {

using Json = nlohmann::ordered_json;

constexpr std::string_view kSchema =
    "https://docs.oasis-open.org/sarif/sarif/v2.1.0/errata01/os/schemas/sarif-schema-2.1.0.json";
constexpr std::string_view kBase = "%SRCROOT%";

std::string_view LevelName(FindingLevel level) {
  switch (level) {
    case FindingLevel::kError:
      return "error";
    case FindingLevel::kWarning:
      return "warning";
    case FindingLevel::kNote:
      break;
  }
  return "note";
}

// The bytes of a path as a part of an address.
std::string PercentEncoded(std::string_view path) {
  constexpr std::string_view kPlain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
  std::string encoded;
  for (const char c : path) {
    if (kPlain.find(c) != std::string_view::npos) {
      encoded += c;
    } else {
      AppendPercentEncoded(c, encoded);
    }
  }
  return encoded;
}

std::string FileAddress(std::string_view path) {
  return "file:///" + PercentEncoded(path.substr(std::min(path.find_first_not_of('/'), path.size())));
}

Json ArtifactLocation(const RunFacts& facts, const std::string& path) {
  const std::string_view shown = PathFrom(facts.start_folder, path);
  if (facts.start_folder.empty() || shown.size() == path.size()) return {{"uri", FileAddress(path)}};
  return {{"uri", PercentEncoded(shown)}, {"uriBaseId", kBase}};
}

Json Text(std::string text) {
  return {{"text", std::move(text)}};
}

Json Region(const FindingRecord& finding) {
  const PagePlace end = EndOf(finding);
  return {{"startLine", finding.place.line},
          {"startColumn", finding.place.column},
          {"endLine", end.line},
          {"endColumn", end.column}};
}

Json Fix(const FindingRecord& finding, const Json& artifact) {
  const Json replacement = {{"deletedRegion", Region(finding)},
                            {"insertedContent", Text(PageUtf8(*finding.proposal, finding.encoding))}};
  const Json change = {{"artifactLocation", artifact}, {"replacements", Json::array({replacement})}};
  return {{"artifactChanges", Json::array({change})}};
}

Json Driver(const std::vector<FindingKind>& kinds) {
  Json rules = Json::array();
  for (const FindingKind kind : kinds) {
    const FindingKindRow& row = RowOf(kind);
    rules.push_back({{"id", row.id},
                     {"shortDescription", Text(std::string(row.summary))},
                     {"defaultConfiguration", {{"level", LevelName(row.level)}}}});
  }
  return {{"name", "Tessaril"}, {"version", Version()}, {"rules", std::move(rules)}};
}

}  // namespace

SarifWriter::SarifWriter(RunFacts facts, BlockWriter& out) : facts_(std::move(facts)), out_(out) {
  const Function maker = facts_.function == Function::kReplace ? Function::kSearch : facts_.function;
  for (const FindingKindRow& row : AllFindingKinds()) {
    if (row.function == maker) rules_.push_back(row.kind);
  }
}

void SarifWriter::Begin() {
  Json run = {{"tool", {{"driver", Driver(rules_)}}}};
  if (!facts_.start_folder.empty()) {
    const std::string address = FileAddress(facts_.start_folder);
    run["originalUriBaseIds"] = {
        {std::string(kBase), {{"uri", address.ends_with('/') ? address : address + "/"}}}};
  }
  run["columnKind"] = "unicodeCodePoints";
  std::string opened = run.dump();
  opened.pop_back();  // its "}" follows at the end
  out_.Append("{\"$schema\":\"" + std::string(kSchema) + "\",\"version\":\"2.1.0\",\"runs\":[" + opened +
              ",\"results\":[");
}

void SarifWriter::Write(const FindingRecord& finding) {
  const FindingKindRow& row = RowOf(finding.kind);
  const auto rule = std::find(rules_.begin(), rules_.end(), finding.kind);
  const Json artifact = ArtifactLocation(facts_, finding.file);
  Json place = {{"artifactLocation", artifact}};
  if (finding.place.line > 0) {
    place["region"] = Region(finding);
    place["region"]["snippet"] = Text(PageUtf8(finding.found, finding.encoding));
  }
  Json result = {{"ruleId", row.id}};
  if (rule != rules_.end()) result["ruleIndex"] = rule - rules_.begin();
  result["level"] = LevelName(row.level);
  result["message"] = Text(Sentence(finding));
  result["locations"] = Json::array({{{"physicalLocation", place}}});
  if (finding.proposal && finding.place.line > 0) result["fixes"] = Json::array({Fix(finding, artifact)});
  out_.Append((std::exchange(has_results_, true) ? ",\n" : "\n") + result.dump());
}

void SarifWriter::WriteFailure(const std::string& path, const std::string& reason) {
  const Json place = {{"artifactLocation", ArtifactLocation(facts_, path)}};
  const Json notification = {{"level", "error"},
                             {"message", Text(PathUtf8(path + ": " + reason))},
                             {"locations", Json::array({{{"physicalLocation", place}}})}};
  notifications_ += (notifications_.empty() ? "" : ",") + notification.dump();
}

void SarifWriter::End(int exit_status) {
  constexpr int kFirstFailure = 2;
  out_.Append("\n],\"invocations\":[{\"executionSuccessful\":" +
              std::string(exit_status < kFirstFailure ? "true" : "false") +
              ",\"exitCode\":" + std::to_string(exit_status) + ",\"toolExecutionNotifications\":[" +
              notifications_ + "]}]}]}\n");
  out_.Flush();
}

}  // namespace tessaril
