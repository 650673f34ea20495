#include "engine/classic_entities.h"

#include <cstdint>

#include "engine/byte_search.h"
#include "engine/characters.h"

namespace tessaril {
namespace {

using enum FindingKind;

constexpr std::string_view kShouldBeEntity = "Character should be written as an entity";

EntityVerdict InOrder(std::size_t length) {
  EntityVerdict verdict;
  verdict.step = length;
  return verdict;
}

EntityVerdict JudgeBareAmpersand(const Entities& entities) {
  const std::string_view name = entities.NameForCharacter('&');
  constexpr std::string_view kMessage = "\"&\" should be written as an entity";
  if (!name.empty()) return {kAmpersand, 0, 1, 1, Entity(name), "", kMessage};
  return {kAmpersand, 0, 1, 1, "&amp;", "If not in tag/link!", kMessage};
}

// A byte above 127 of an 8-bit page.
EntityVerdict JudgeByte(const Entities& entities, char c) {
  const std::string_view name = entities.NameForCharacter(c);
  if (!name.empty()) return {kCharacter, 0, 1, 1, Entity(name), "", kShouldBeEntity};
  const std::string proposed = NumericEntity(static_cast<unsigned char>(c));
  return {kCharacter, 0, 1, 1, proposed, "Windows only tag?", kShouldBeEntity};
}

// A character above 127 of a UTF-8 page. A byte that begins none (an edit may have brought it, or left the
// check in the middle of a sequence) is passed over.
EntityVerdict JudgeSequence(const Entities& entities, std::string_view text) {
  const std::size_t length = SequenceLength(text);
  if (length == 0) return InOrder(1);
  const char32_t code = CodePoint(text.substr(0, length));
  const std::string_view name = entities.NameForCodePoint(code);
  return {kCharacter, 0, length, 1, name.empty() ? NumericEntity(code) : Entity(name), "", kShouldBeEntity};
}

// `name` begins with "#". What is no number counts as 0.
EntityVerdict JudgeNumeric(const Entities& entities, std::string_view name) {
  constexpr char32_t kLastEightBit = 255;
  const std::string_view number = name.substr(1);
  const bool hexadecimal = number.starts_with('x') || number.starts_with('X');
  char32_t code = (hexadecimal ? HexadecimalCode(number.substr(1)) : DecimalCode(number)).value_or(0);
  std::optional<char> eight_bit = EightBitCode(code);
  if (code <= kLastEightBit) {
    eight_bit = static_cast<char>(static_cast<unsigned char>(code));
    code = EightBitCharacter(*eight_bit);
  }
  const std::string_view known = eight_bit ? entities.NameForNumeric(*eight_bit) : std::string_view();
  std::string hint = "Character: ";
  if (code != 0 && IsCharacter(code)) AppendUtf8(code, hint);
  const std::size_t length = name.size() + 2;
  const std::string_view message =
      known.empty() ? "Numeric entity without a name" : "Numeric entity should be written by its name";
  return {kNumericEntity, 0, length, length, Entity(known.empty() ? name : known), hint, message};
}

EntityVerdict JudgeAmpersand(const Entities& entities, std::string_view text) {
  constexpr std::size_t kFarthest = 20;  // where the ";" of an entity may be, counted from its "&"
  const std::size_t length = text.substr(1, kFarthest).find(';');
  if (length == std::string_view::npos) return JudgeBareAmpersand(entities);
  const std::string_view name = text.substr(1, length);
  const std::size_t behind = length + 2;
  if (name == "lt" || name == "gt" || name == "quot" || name == "amp") return InOrder(behind);
  if (name.starts_with('#')) return JudgeNumeric(entities, name);
  if (entities.IsDoubtful(name)) {
    return {kDoubtfulEntity,
            0,
            behind,
            behind,
            Entity(name),
            "Replace doubtful tag!",
            "Entity that some browsers do not know"};
  }
  if (entities.IsGood(name)) return InOrder(behind);
  return JudgeBareAmpersand(entities);
}

}  // namespace

std::string Entity(std::string_view name) {
  return "&" + std::string(name) + ";";
}

std::string NumericEntity(char32_t code) {
  return Entity("#" + std::to_string(static_cast<std::uint32_t>(code)));
}

EntityVerdict JudgeCharacter(const Entities& entities, PageEncoding encoding, std::string_view text) {
  return encoding == PageEncoding::kUtf8 ? JudgeSequence(entities, text) : JudgeByte(entities, text[0]);
}

std::optional<EntityVerdict> ClassicEntities::Next(PageText& page, std::size_t from) {
  if (from == 0 && page.Tail(0).starts_with(kByteOrderMark) && page.Encoding() == PageEncoding::kUtf8) {
    from = kByteOrderMark.size();
  }
  while (from < page.size()) {
    const std::string_view text = page.Tail(from);
    const std::size_t next = FindHighByteOr('&', text);
    if (next == ByteSearch::kNone) break;
    from += next;
    EntityVerdict verdict = Judge(page, text.substr(next));
    if (verdict.length > 0) {
      verdict.place = from;
      return verdict;
    }
    from += verdict.step;
  }
  return std::nullopt;
}

EntityVerdict ClassicEntities::Judge(PageText& page, std::string_view text) const {
  if (text[0] == '&') return JudgeAmpersand(entities_, text);
  return JudgeCharacter(entities_, page.Encoding(), text);
}

std::size_t ClassicEntities::GoOn(const EntityVerdict& verdict, Outcome, std::size_t) {
  return verdict.place + verdict.step;
}

}  // namespace tessaril
