#ifndef TESSARIL_ENGINE_PAGE_FINDINGS_H_
#define TESSARIL_ENGINE_PAGE_FINDINGS_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "engine/finding_kinds.h"
#include "engine/page_places.h"
#include "engine/page_text.h"
#include "engine/run_host.h"

namespace tessaril {

/// What a worker finds in one page, on its way to a host that wants it for machines. Where the host does not,
/// nothing is looked at or copied.
class PageFindings {
 public:
  explicit PageFindings(RunHost& host) : host_(host), wanted_(host.WantsFindings()) {}

  bool wanted() const { return wanted_; }

  /// Tells of the bytes of `page` from `begin` up to, not including, `end`; both are cut to the page. `path`
  /// is that of the page. Blanks and ":" at the end of `message` are dropped. `proposal`, in the page's
  /// bytes, is what should stand there instead.
  void Note(FindingKind kind, const std::string& path, PageText& page, std::size_t begin, std::size_t end,
            std::string_view message, std::optional<std::string> proposal = std::nullopt);

  /// Line and column of a place in it.
  PagePlace PlaceOf(PageText& page, std::size_t offset) { return places_.At(page, offset); }

  /// The page has changed from `begin` on.
  void NoteChange(std::size_t begin) { places_.NoteChange(begin); }

 private:
  RunHost& host_;
  bool wanted_;
  PagePlaces places_;
};

/// Tells of a file by its path alone: `found` is what is not in order about it.
void NoteFileFinding(RunHost& host, FindingKind kind, const std::string& path, std::string_view message,
                     const std::string& found);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_PAGE_FINDINGS_H_
