#include "engine/today_entities.h"

#include <algorithm>

#include "engine/byte_search.h"
#include "engine/character_references.h"
#include "engine/characters.h"
#include "engine/classic_entities.h"
#include "engine/declared_encoding.h"

namespace tessaril {
namespace {

using enum FindingKind;
using Fault = CharacterReference::Fault;

constexpr std::string_view kUnclosed = "Entity without \";\" at its end";
constexpr std::string_view kNoCharacter = "Numeric entity that stands for no character";

// Whether browsers read a numeric reference with this code by Windows-1252, as another character.
bool IsReadAsWindows(char32_t code) {
  constexpr char32_t kFirst = 0x80;
  constexpr char32_t kLast = 0x9F;
  if (code < kFirst || code > kLast) return false;
  return EightBitCharacter(static_cast<char>(static_cast<unsigned char>(code))) != code;
}

EntityVerdict JudgeUnclosed(std::string_view reference) {
  const std::string closed = std::string(reference) + ";";
  const std::size_t length = reference.size();
  return {kUnclosedEntity, 0, length, length, closed, "\";\" is missing!", kUnclosed};
}

EntityVerdict JudgeUnknown(std::string_view reference) {
  EntityVerdict verdict{kUnknownEntity, 0, 1, 1, "&amp;", "Unknown tag!", "Entity that no browser knows"};
  verdict.judged = reference.size();
  return verdict;
}

// "&#" or "&#x" without digits; it stands for itself.
EntityVerdict JudgeWithoutDigits(std::string_view text) {
  EntityVerdict verdict{kNumericEntity, 0, 1, 1, "&amp;", "No number!", "Numeric entity without a number"};
  verdict.judged = text.substr(2, 1).find_first_of("xX") == 0 ? 3 : 2;
  if (text.substr(verdict.judged).starts_with(';')) ++verdict.judged;
  return verdict;
}

// A code that is no character's. Those of Windows-1252 are read as they were meant; for the others nobody
// knows what was, so that the proposal is the text as it stands.
EntityVerdict JudgeCode(const Entities& entities, std::string_view text, std::size_t length) {
  const std::string as_it_stands(text.substr(0, length));
  EntityVerdict verdict{kNumericEntity, 0, length, length, as_it_stands, "Character: ", kNoCharacter};
  const char32_t code = ReferencedCode(text);
  if (!IsReadAsWindows(code)) return verdict;
  const char byte = static_cast<char>(static_cast<unsigned char>(code));
  const char32_t meant = EightBitCharacter(byte);
  const std::string_view name = entities.NameForNumeric(byte);
  verdict.proposed = name.empty() ? NumericEntity(meant) : Entity(name);
  AppendUtf8(meant, verdict.hint);
  verdict.message = "Numeric entity with a code of Windows-1252";
  return verdict;
}

EntityVerdict JudgeAmpersand(const Entities& entities, std::string_view text, bool in_attribute) {
  const CharacterReference reference = ReadCharacterReference(text, in_attribute);
  const std::size_t length = reference.length;
  EntityVerdict in_order;
  in_order.step = std::max<std::size_t>(length, 1);
  switch (reference.fault) {
    case Fault::kNone:
      return in_order;
    case Fault::kUnclosed:
      return JudgeUnclosed(text.substr(0, length));
    case Fault::kUnknown:
      return JudgeUnknown(text.substr(0, text.find(';') + 1));
    case Fault::kNoCharacter:
      break;
  }
  return length == 0 ? JudgeWithoutDigits(text) : JudgeCode(entities, text, length);
}

// Of a control character that no reference stands for ("&#150;" is a dash to browsers) nobody knows what was
// meant, so that the proposal is the character itself.
EntityVerdict JudgeHighCharacter(const Entities& entities, PageEncoding encoding, std::string_view text) {
  EntityVerdict verdict = JudgeCharacter(entities, encoding, text);
  if (encoding != PageEncoding::kUtf8 || verdict.length == 0) return verdict;
  const std::string_view character = text.substr(0, verdict.length);
  if (IsReadAsWindows(CodePoint(character))) verdict.proposed = character;
  return verdict;
}

}  // namespace

std::optional<EntityVerdict> TodayEntities::Next(PageText& page, std::size_t from) {
  if (!texts_) TakeApart(page, from);
  for (; text_ < texts_->size(); ++text_) {
    const auto [text_begin, text_end, in_attribute] = (*texts_)[text_];
    // Of the text in hand more may have been removed than stands ahead of its beginning.
    const std::size_t begin = std::max(from, std::max(text_begin + added_, removed_) - removed_);
    const std::size_t end = text_end + added_ - removed_;
    if (begin >= end) continue;
    if (std::optional<EntityVerdict> verdict = NextIn(page, begin, end, in_attribute)) return verdict;
  }
  return std::nullopt;
}

void TodayEntities::TakeApart(PageText& page, std::size_t from) {
  const std::string_view text = page.Tail(0);
  if (!judges_characters_) {
    // What the bytes of an encoding that is not known here stand for is known to the browser only.
    const DeclaredEncoding declared = DeclaredEncodingOf(text);
    const bool is_read_well = page.Encoding() == PageEncoding::kUtf8 && declared == DeclaredEncoding::kUtf8;
    judges_characters_ = declared != DeclaredEncoding::kOther && (wants_ascii_ || !is_read_well);
  }
  texts_ = FindReferenceTexts(text, *judges_characters_);
  text_ = 0;
  added_ = removed_ = 0;
  const bool has_mark = text.starts_with(kByteOrderMark) && page.Encoding() == PageEncoding::kUtf8;
  if (from == 0 && has_mark && !texts_->empty()) {
    std::size_t& begin = texts_->front().begin;
    begin = std::max(begin, kByteOrderMark.size());
  }
}

std::optional<EntityVerdict> TodayEntities::NextIn(PageText& page, std::size_t begin, std::size_t end,
                                                   bool in_attribute) {
  std::string_view text = page.Tail(begin).substr(0, end - begin);
  while (!text.empty()) {
    const std::size_t next = *judges_characters_ ? FindHighByteOr('&', text) : text.find('&');
    if (next == std::string_view::npos) break;
    text.remove_prefix(next);
    EntityVerdict verdict = text[0] == '&' ? JudgeAmpersand(entities_, text, in_attribute)
                                           : JudgeHighCharacter(entities_, page.Encoding(), text);
    if (verdict.length > 0) {
      verdict.place = end - text.size();
      return verdict;
    }
    text.remove_prefix(verdict.step);
  }
  return std::nullopt;
}

// What is replaced as proposed leaves the structure of the page as it is. After all else that the user may
// have written the page is taken apart anew, and what was written is judged, too.
std::size_t TodayEntities::GoOn(const EntityVerdict& verdict, Outcome outcome, std::size_t behind) {
  if (outcome == Outcome::kKept) return verdict.place + verdict.step;
  if (outcome == Outcome::kAsProposed) {
    added_ += verdict.proposed.size();
    removed_ += verdict.length;
    return behind;
  }
  texts_.reset();
  return std::min(verdict.place + 1, behind);
}

}  // namespace tessaril
