#ifndef TESSARIL_ENGINE_TODAY_ENTITIES_H_
#define TESSARIL_ENGINE_TODAY_ENTITIES_H_

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "engine/entities.h"
#include "engine/entity_rules.h"
#include "engine/reference_texts.h"

namespace tessaril {

/// Today's rules: what a browser reads well is in order. Judged are only texts and the values of attributes.
/// A "&" is a finding where the HTML standard calls it a fault; characters above 127 are findings by the
/// classic rules where the page is not UTF-8 or does not say so, or where the site wants ASCII.
class TodayEntities : public EntityRules {
 public:
  TodayEntities(const Entities& entities, bool wants_ascii)
      : entities_(entities), wants_ascii_(wants_ascii) {}

  std::optional<EntityVerdict> Next(PageText& page, std::size_t from) override;
  std::size_t GoOn(const EntityVerdict& verdict, Outcome outcome, std::size_t behind) override;

 private:
  void TakeApart(PageText& page, std::size_t from);
  std::optional<EntityVerdict> NextIn(PageText& page, std::size_t begin, std::size_t end, bool in_attribute);

  const Entities& entities_;
  const bool wants_ascii_;
  std::optional<bool> judges_characters_;  // nothing while it is not known
  // The texts as the page was when it was taken apart; since then replacements have added and removed bytes
  // ahead of the text in hand, or within it. Nothing when the page must be taken apart (anew).
  std::optional<std::vector<ReferenceText>> texts_;
  std::size_t text_ = 0;  // the one in hand
  std::size_t added_ = 0;
  std::size_t removed_ = 0;
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_TODAY_ENTITIES_H_
