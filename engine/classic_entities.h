#ifndef TESSARIL_ENGINE_CLASSIC_ENTITIES_H_
#define TESSARIL_ENGINE_CLASSIC_ENTITIES_H_

#include <string>
#include <string_view>

#include "engine/entities.h"
#include "engine/entity_rules.h"

namespace tessaril {

/// The classic rules: every character above 127, bare "&", numeric and doubtful entity of a page, wherever it
/// stands, is a finding.
class ClassicEntities : public EntityRules {
 public:
  explicit ClassicEntities(const Entities& entities) : entities_(entities) {}

  std::optional<EntityVerdict> Next(PageText& page, std::size_t from) override;
  std::size_t GoOn(const EntityVerdict& verdict, Outcome outcome, std::size_t behind) override;

 private:
  EntityVerdict Judge(PageText& page, std::string_view text) const;

  const Entities& entities_;
};

/// "&name;", "&#code;".
std::string Entity(std::string_view name);
std::string NumericEntity(char32_t code);

/// Judges the character at the start of `text`, which begins with a byte above 127. A byte of a UTF-8 page
/// that begins no character is in order.
EntityVerdict JudgeCharacter(const Entities& entities, PageEncoding encoding, std::string_view text);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_CLASSIC_ENTITIES_H_
