#include "engine/external_links.h"

#include <string>

#include "engine/html_text.h"

namespace tessaril {

void ListExternalLink(const Link& link, HtmlPage& page, RunState& state) {
  if (!link.IsExternal()) return;
  page.NoteFinding(FindingKind::kExternalLink, link.start, link.start + link.value.size(), "External link");
  std::string entry;
  if (page.IsFirstFinding()) entry = "<H3>" + EscapedPath(page.path()) + "</H3>\r\n";
  const std::string value = EscapedValue(link.value);
  entry += "<A HREF = \"" + value + "\"> " + value + "</A><BR>\r\n";
  state.MakeRoom(entry.size());
  state.Results += entry;
}

}  // namespace tessaril
