#include "engine/html_check.h"

#include "engine/colour_check.h"
#include "engine/external_links.h"
#include "engine/html_page.h"
#include "engine/link_check.h"
#include "engine/link_scanner.h"
#include "engine/paths.h"
#include "engine/site_check.h"

namespace tessaril {
namespace {

// Goes through the links of a page, one pass after the other, until there are no more or the run stops.
// `use` takes a link and gives false when the rest is not to be looked at.
template <typename Use>
void ScanLinks(HtmlPage& page, LinkScanner& scanner, RunContext& run, const Use& use) {
  Link link;
  while (run.HandleInput()) {
    const LinkScanner::Pass pass = scanner.Next(page.work_text(), link);
    if (pass == LinkScanner::Pass::kEnd) return;
    if (pass == LinkScanner::Pass::kLink && !use(link)) return;
  }
}

Status CheckLinks(HtmlPage& page, RunContext& run) {
  LinkScanner scanner;
  LinkCheck check(page, scanner, run);
  ScanLinks(page, scanner, run, [&check](const Link& link) { return check.Verify(link); });
  return check.status();
}

Status ListExternalLinks(HtmlPage& page, RunContext& run) {
  LinkScanner scanner;
  ScanLinks(page, scanner, run, [&](const Link& link) {
    ListExternalLink(link, page, run.state);
    return true;
  });
  return {};
}

}  // namespace

Status CheckHTML(std::string& page_path, RunContext& run) {
  run.host.CountFile(page_path);
  run.host.ShowActivity("Testing: " + std::string(NameOf(page_path)));
  if (run.site) return CheckSitePage(run);
  HtmlPage page(page_path, run);
  if (Status status = page.Read(); !status.ok()) return status;
  run.state.UnlinkedList.AddChecked(page_path);
  if (!page.MakeWorkText()) return {};
  if (run.options.function == Function::kColours) return CheckColours(page, run);
  return RowOf(run.options.function).HtmlOutput ? ListExternalLinks(page, run) : CheckLinks(page, run);
}

Status CheckPage(RunContext& run) {
  return CheckHTML(run.state.RunFile, run);
}

}  // namespace tessaril
