#include "formats/json_lines.h"

#include <nlohmann/json.hpp>

#include "formats/machine_text.h"

namespace tessaril {

using Json = nlohmann::ordered_json;

void JsonLinesWriter::BeginFile(const std::string&) {
  out_.Flush();
}

void JsonLinesWriter::Write(const FindingRecord& finding) {
  const bool placed = finding.place.line > 0;
  Json line;
  line["file"] = PathUtf8(finding.file);
  line["line"] = placed ? Json(finding.place.line) : Json();
  line["column"] = placed ? Json(finding.place.column) : Json();
  line["kind"] = RowOf(finding.kind).id;
  line["message"] = PathUtf8(finding.message);
  line["found"] = PageUtf8(finding.found, finding.encoding);
  line["proposal"] = finding.proposal ? Json(PageUtf8(*finding.proposal, finding.encoding)) : Json();
  out_.Append(line.dump() + "\n");
}

void JsonLinesWriter::End(int) {
  out_.Flush();
}

}  // namespace tessaril
