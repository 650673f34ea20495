#ifndef TESSARIL_ENGINE_ENTITY_RULES_H_
#define TESSARIL_ENGINE_ENTITY_RULES_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "engine/finding_kinds.h"
#include "engine/page_text.h"

namespace tessaril {

/// What is not in order with a character, "&" or entity, and what should stand in its place. Positions and
/// lengths are bytes.
struct EntityVerdict {
  FindingKind kind = FindingKind::kCharacter;
  std::size_t place = 0;     // in the page, from 0
  std::size_t length = 0;    // of what is to be replaced; 0 when all is in order
  std::size_t step = 1;      // from the place to where the check goes on when nothing is replaced
  std::string proposed;      // in the place of these `length` bytes
  std::string hint;          // for the user
  std::string_view message;  // one sentence without its end, for machines
  std::size_t judged = 0;    // of what is not in order, when that is more than is to be replaced
};

/// By which characters, "&" and entities of one page are judged.
class EntityRules {
 public:
  enum class Outcome { kKept, kAsProposed, kEdited };

  virtual ~EntityRules() = default;

  /// The first finding at or behind `from` in the page as it stands; nothing when there is none.
  virtual std::optional<EntityVerdict> Next(PageText& page, std::size_t from) = 0;

  /// Where the check goes on. Must be told of each finding what became of it, before the next is asked for;
  /// `behind` is the place in the page as it stands now of what stood behind the finding, as far as that was
  /// left as it was.
  virtual std::size_t GoOn(const EntityVerdict& verdict, Outcome outcome, std::size_t behind) = 0;
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_ENTITY_RULES_H_
