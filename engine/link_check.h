#ifndef TESSARIL_ENGINE_LINK_CHECK_H_
#define TESSARIL_ENGINE_LINK_CHECK_H_

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "engine/anchors.h"
#include "engine/byte_search.h"
#include "engine/html_page.h"
#include "engine/link_scanner.h"
#include "engine/link_targets.h"
#include "engine/run.h"

namespace tessaril {

/// Verifies the links of one page that lead to files and anchors: what they name must be there, and in lower
/// case unless that is permitted. Findings go into the report and, if the user wants to see each, to the
/// user, whose correction of the page is written at once. Files that are there are marked in the register.
class LinkCheck {
 public:
  /// `scanner` is the one that finds the links; it is sent back when a correction changes the page.
  LinkCheck(HtmlPage& page, LinkScanner& scanner, RunContext& run);

  /// Verifies one link; false when the check of the page is to end.
  bool Verify(const Link& link);

  /// What went wrong with the page itself, if anything did.
  const Status& status() const { return status_; }

 private:
  // The name of the folder whose links are passed over, and where it was found last: the first place at or
  // after `from` in the page.
  struct Cgi {
    std::string name;    // as the user has it
    std::string sought;  // in the bytes of the page
    bool can_occur;      // in its encoding
    ByteSearch search;
    std::size_t from = ByteSearch::kNone;
    std::size_t place = 0;
  };

  bool IsForCgi(const Link& link);
  void PrepareCgi();
  bool VerifySamePage(const Link& link);
  bool VerifyFile(const Link& link);
  bool OfferRename(LinkTarget& target);
  void NoteOffer(const LinkTarget& target);
  bool VerifyTarget(const Link& link, LinkTarget& target, std::string_view shown_path,
                    std::string_view anchor);
  bool ReportLinkError(const Link& link, FindingKind kind, std::string_view error);
  bool PutToUser(const Link& link, std::string_view error, std::size_t begin, std::size_t end);
  bool Correct(std::size_t begin, std::size_t end, const std::string& text);

  HtmlPage& page_;
  LinkScanner& scanner_;
  RunContext& run_;
  Status status_;
  std::shared_ptr<Anchors> anchors_;  // of this page, as far as they are known
  std::string value_;                 // of the link in hand
  std::string excerpt_;
  std::optional<Cgi> cgi_;
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_LINK_CHECK_H_
