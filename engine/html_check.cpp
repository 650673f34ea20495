#include "engine/html_check.h"

#include "engine/colour_check.h"
#include "engine/external_links.h"
#include "engine/html_page.h"
#include "engine/link_check.h"
#include "engine/link_scanner.h"
#include "engine/paths.h"

namespace tessaril {
namespace {

// Goes through the links of a page, one pass after the other, until there are no more or the run stops.
Status ScanLinks(HtmlPage& page, RunContext& run) {
  const bool list_external = RowOf(run.options.function).HtmlOutput;
  LinkScanner scanner;
  LinkCheck check(page, scanner, run);
  Link link;
  while (run.HandleInput()) {
    const LinkScanner::Pass pass = scanner.Next(page.work_text(), link);
    if (pass == LinkScanner::Pass::kEnd) break;
    if (pass == LinkScanner::Pass::kSkipped) continue;
    if (list_external) {
      ListExternalLink(link, page, run.state);
    } else if (!check.Verify(link)) {
      return check.status();
    }
  }
  return {};
}

}  // namespace

Status CheckHTML(std::string& page_path, RunContext& run) {
  run.host.CountFile(page_path);
  run.host.ShowActivity("Testing: " + std::string(NameOf(page_path)));
  HtmlPage page(page_path, run);
  if (Status status = page.Read(); !status.ok()) return status;
  run.state.UnlinkedList.AddChecked(page_path);
  if (!page.MakeWorkText()) return {};
  if (run.options.function == Function::kColours) return CheckColours(page, run);
  if (run.options.function == Function::kLinks) {
    run.targets.EnterFolder(FolderOf(page_path), run.options.dirList);
    run.targets.NotePage(page_path, page.stamp(), page.text().Tail(0));
  }
  return ScanLinks(page, run);
}

Status CheckPage(RunContext& run) {
  return CheckHTML(run.state.RunFile, run);
}

}  // namespace tessaril
