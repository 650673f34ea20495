#ifndef TESSARIL_ENGINE_FINDING_KINDS_H_
#define TESSARIL_ENGINE_FINDING_KINDS_H_

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "engine/functions.h"
#include "engine/page_encoding.h"

namespace tessaril {

/// Every kind of finding that a function can make.
enum class FindingKind {
  kMissingFile,     // a link to a file that is not there or cannot be opened
  kMissingAnchor,   // a link to an anchor that its page does not have
  kLetterCase,      // a link to a file that is there in other letter case only
  kLeavesSite,      // a link that climbs above the site's root
  kNoIndexFile,     // a link to a folder without an index file
  kAnchorTwice,     // an anchor that its page defines once more
  kFileLink,        // a link with "file:"
  kUpperCaseLink,   // upper-case letters in the file name of a link
  kUpperCaseFile,   // upper-case letters in the name of a linked file
  kCharacter,       // a character above 127
  kAmpersand,       // "&" that begins no entity
  kNumericEntity,   // "&#233;"
  kDoubtfulEntity,  // a name that some browsers do not know
  kUnknownEntity,   // a name that no browser knows
  kUnclosedEntity,  // a name without its ";"
  kUnsafeColour,    // a colour that is not web-safe
  kExternalLink,    // a link to another server
  kText             // a text that was searched for
};

enum class FindingLevel { kError, kWarning, kNote };

/// What there is to know about a kind in one place.
struct FindingKindRow {
  FindingKind kind;
  Function function;         // that makes it; kReplace makes those of kSearch, too
  std::string_view id;       // for machines: "missing-file"; never changes
  std::string_view summary;  // one sentence
  FindingLevel level;
};

/// In the order of their values.
std::span<const FindingKindRow> AllFindingKinds();
const FindingKindRow& RowOf(FindingKind kind);

/// A place in a page: lines end with CR LF, LF or CR; columns count characters (in 8-bit pages: bytes). Both
/// count from 1.
struct PagePlace {
  std::size_t line = 0;  // 0: the finding has no place in a page
  std::size_t column = 0;
};

/// A finding for machines, as it is told when it is made.
struct FindingRecord {
  FindingKind kind;
  std::string file;     // absolute path, the file system's bytes
  PagePlace place;      // of `found`, in the page as it stands when the finding is made
  std::string message;  // what is wrong, in the words of the report; ends without blank or ":"
  std::string found;    // the text of the page that is not in order, in the page's bytes
  std::optional<std::string> proposal;          // what should stand in its place, in the page's bytes
  PageEncoding encoding = PageEncoding::kUtf8;  // what those bytes mean
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_FINDING_KINDS_H_
