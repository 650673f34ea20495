#include "engine/finding_kinds.h"

#include <array>

namespace tessaril {
namespace {

using enum FindingKind;
using enum FindingLevel;

constexpr std::array<FindingKindRow, 18> kKinds = {{
    {kMissingFile, Function::kLinks, "missing-file", "A link leads to a file that is not there.", kError},
    {kMissingAnchor, Function::kLinks, "missing-anchor",
     "A link leads to an anchor that its page does not have.", kError},
    {kLetterCase, Function::kLinks, "letter-case", "A linked file is there in other letter case only.",
     kError},
    {kLeavesSite, Function::kLinks, "leaves-site", "A link climbs above the root of the site.", kError},
    {kNoIndexFile, Function::kLinks, "no-index-file", "A link leads to a folder without an index file.",
     kError},
    {kAnchorTwice, Function::kLinks, "anchor-twice", "An anchor is defined more than once on a page.",
     kWarning},
    {kFileLink, Function::kLinks, "file-link", "A link names a file of the author's own computer.", kError},
    {kUpperCaseLink, Function::kLinks, "upper-case-link", "The file name of a link has upper-case letters.",
     kWarning},
    {kUpperCaseFile, Function::kLinks, "upper-case-file", "The name of a linked file has upper-case letters.",
     kWarning},
    {kCharacter, Function::kEntities, "character", "A character should be written as an entity.", kWarning},
    {kAmpersand, Function::kEntities, "ampersand", "A bare \"&\" should be written \"&amp;\".", kWarning},
    {kNumericEntity, Function::kEntities, "numeric-entity", "A numeric entity should be written by its name.",
     kWarning},
    {kDoubtfulEntity, Function::kEntities, "doubtful-entity", "Some browsers do not know the entity.",
     kWarning},
    {kUnknownEntity, Function::kEntities, "unknown-entity", "No browser knows the entity.", kWarning},
    {kUnclosedEntity, Function::kEntities, "unclosed-entity", "An entity has no \";\" at its end.", kWarning},
    {kUnsafeColour, Function::kColours, "unsafe-colour", "A colour is not web-safe.", kWarning},
    {kExternalLink, Function::kExternal, "external-link", "A link leads to another server.", kNote},
    {kText, Function::kSearch, "text", "The text that was searched for.", kNote},
}};

}  // namespace

std::span<const FindingKindRow> AllFindingKinds() {
  return kKinds;
}

const FindingKindRow& RowOf(FindingKind kind) {
  return kKinds.at(static_cast<std::size_t>(kind));
}

}  // namespace tessaril
