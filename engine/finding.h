#ifndef TESSARIL_ENGINE_FINDING_H_
#define TESSARIL_ENGINE_FINDING_H_

#include <cstddef>
#include <string>
#include <string_view>

#include "engine/page_text.h"
#include "engine/run_host.h"

// One finding on its way from the page to the user and into the report; what the workers that replace texts
// have in common.

namespace tessaril {

/// A place in a page, in bytes from 0, and the slice around it that is shown: 20 bytes ahead and 100 behind,
/// fewer at the page's ends, more where a bound would cut a character.
struct Finding {
  std::size_t place;
  std::size_t length;
  std::size_t context_begin;
  std::size_t context_end;
};

Finding FindingAt(PageText& page, std::size_t place, std::size_t length);

/// The finding without an editable field. `file_name` is the page's path, shortened.
Proposal ShowFinding(const std::string& file_name, PageText& page, const Finding& finding);

/// The finding with an editable field that holds the same slice with `text` in the finding's place, selected.
Proposal ProposeText(const std::string& file_name, PageText& page, const Finding& finding,
                     std::string_view text);

/// Enters into a file's report what the user said to a proposal. An answer that does not fit it (no known
/// one, or a replacement where there is no editable field) leaves no trace.
void AppendAnswer(const Proposal& proposal, const ProposalAnswer& answer, const std::string& path,
                  std::string& report);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_FINDING_H_
