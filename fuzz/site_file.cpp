// The site file: read, and changed in place to state other rules.
// Input: a byte that chooses what changes, the other rules (seven texts: lists, their elements parted by
// \x1F, then a byte for the rest), the file.

#include "site/site_file.h"

#include "engine/characters.h"
#include "fuzz/input.h"
#include "site/site_keys.h"
#include "site/toml_text.h"

namespace tessaril {
namespace {

using Texts = std::vector<std::string>;

Texts Parts(const std::string& text) {
  Texts parts;
  for (Input rest(text); !rest.empty();) parts.push_back(rest.Field('\x1F'));
  return parts;
}

// Comments in their order, as they stand from "#" to the end of the line; of a valid file.
Texts CommentsOf(std::string_view text) {
  Texts comments;
  while (!text.empty()) {
    std::string_view quote = text.substr(0, 3);
    if (quote != "\"\"\"" && quote != "'''") quote = text.substr(0, 1);
    if (quote[0] == '#') {
      const std::string_view comment = text.substr(0, text.find('\n'));
      comments.emplace_back(comment.substr(0, comment.find_last_not_of('\r') + 1));
      text.remove_prefix(comment.size());
    } else if (quote[0] == '"' || quote[0] == '\'') {
      text.remove_prefix(quote.size());
      while (!text.empty() && !text.starts_with(quote))
        text.remove_prefix(text[0] == '\\' && quote[0] == '"' ? 2 : 1);
      text.remove_prefix(std::min(quote.size(), text.size()));
      // Up to two more quotes may end a text of several lines.
      while (quote.size() == 3 && text.starts_with(quote[0])) text.remove_prefix(1);
    } else {
      text.remove_prefix(1);
    }
  }
  return comments;
}

// The file without the values of keys whose values differ, piece by piece.
Texts PiecesAround(const std::string& text, const SiteRules& before, const SiteRules& after) {
  std::vector<TomlEntry> entries;
  std::size_t fault = 0;
  Require(ReadToml(text, entries, fault).ok(), "a site file that is no TOML");
  Texts pieces;
  std::size_t at = 0;
  for (const TomlEntry& entry : entries) {
    for (const SiteKey& key : AllSiteKeys()) {
      if (key.name != entry.key || key.state(before) == key.state(after)) continue;
      pieces.push_back(text.substr(at, entry.value.begin - at));
      at = entry.value.end;
    }
  }
  pieces.push_back(text.substr(at));
  return pieces;
}

bool CanBeStated(const SiteRules& rules) {
  for (const SiteKey& key : AllSiteKeys()) {
    if (key.list == nullptr) continue;
    for (const std::string& text : rules.*key.list) {
      if (text.empty() || !IsUtf8(text)) return false;
    }
  }
  return true;
}

void CheckChange(const std::string& text, const SiteRules& old_rules, const SiteRules& rules) {
  const std::string changed = ChangedSiteText(text, rules);
  SiteRules stated;
  const Status status = ReadSiteRules(changed, stated);
  if (!CanBeStated(rules)) return;  // which SaveSiteRules refuses
  Require(status.ok(), "a changed file is not valid: " + status.reason() + "\n" + Readable(changed));
  Require(stated == rules, "a changed file states other rules: " + Readable(changed));

  Texts before = PiecesAround(text, old_rules, rules);
  Texts after = PiecesAround(changed, old_rules, rules);
  // What is added stands at the end.
  std::string added = after.size() > before.size()
                          ? ""
                          : after.back().substr(std::min(before.back().size(), after.back().size()));
  after.resize(std::min(after.size(), before.size()));
  Require(after.size() == before.size(), "a key is gone: " + Readable(changed));
  for (std::size_t i = 0; i < before.size(); ++i) {
    const bool is_last = i + 1 == before.size();
    RequireEqual(is_last ? after[i].substr(0, before[i].size()) : after[i], before[i],
                 "what is not to change");
  }
  if (CommentsOf(changed) != CommentsOf(text))
    Fail("comments are changed\n  was: " + Readable(text) + "\n  is:  " + Readable(changed));
  RequireEqual(ChangedSiteText(changed, rules), changed, "a file that states the rules already");

  SiteRules again;
  Require(ReadSiteRules(ChangedSiteText(changed, old_rules), again).ok() && again == old_rules,
          "a file changed back states other rules: " + Readable(changed));
}

}  // namespace
}  // namespace tessaril

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tessaril;
  Input input(data, size);
  const unsigned changes = input.Byte();
  Texts lists;
  for (int i = 0; i < 6; ++i) lists.push_back(input.Field());
  const unsigned others = input.Byte();
  const std::string text = input.Rest();

  SiteRules old_rules;
  old_rules.index = {"kept"};
  const Status status = ReadSiteRules(text, old_rules);
  if (!status.ok()) {
    Require(old_rules.index == Texts{"kept"}, "rules of a file that is not understood");
    Require(status.reason().starts_with("line ") && status.reason().find(": ") != std::string::npos,
            "a fault without its place: " + status.reason());
    RequireEqual(ChangedSiteText(text, SiteRules()), text, "a file that is not understood");
    return 0;
  }
  RequireEqual(ChangedSiteText(text, old_rules), text, "a file that states the rules already");

  SiteRules rules = old_rules;
  std::size_t list = 0;
  for (const SiteKey& key : AllSiteKeys()) {
    if (key.list == nullptr) continue;
    if ((changes >> list & 1U) != 0) rules.*key.list = Parts(lists[list]);
    ++list;
  }
  if ((others & 1U) != 0) rules.rules = Rules::kClassic;
  if ((others & 2U) != 0) rules.lowercase_names = !rules.lowercase_names;
  if ((others & 4U) != 0) rules.ascii_entities = !rules.ascii_entities;
  CheckChange(text, old_rules, rules);

  SiteRules stated;
  if (CanBeStated(rules))
    Require(ReadSiteRules(NewSiteText(rules), stated).ok() && stated == rules,
            "a new file states other rules");
  return 0;
}
