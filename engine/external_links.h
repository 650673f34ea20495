#ifndef TESSARIL_ENGINE_EXTERNAL_LINKS_H_
#define TESSARIL_ENGINE_EXTERNAL_LINKS_H_

#include "engine/html_page.h"
#include "engine/link_scanner.h"
#include "engine/run.h"

namespace tessaril {

/// Appends a link that leads to another server to the page of external links, below the name of the page that
/// it stands in. Any other link leaves nothing there.
void ListExternalLink(const Link& link, HtmlPage& page, RunState& state);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_EXTERNAL_LINKS_H_
