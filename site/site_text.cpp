#include <algorithm>
#include <iterator>
#include <utility>

#include "site/list_edit.h"
#include "site/site_file.h"
#include "site/site_keys.h"
#include "site/toml_text.h"

namespace tessaril {
namespace {

constexpr std::string_view kIntroduction =
    R"(# What Tessaril and its command tsl need to know of this site. The folder of this file is the site's root.
# A key that is left out has the value that stands in a new file.
#
# Paths start at the site's root, as "shop/index.html". In patterns "*" stands for any characters of a name
# and "?" for one, "**" also crosses folders: "shop/*.html" are the pages in the folder shop, "shop/**" is all
# in it and below. A pattern without "/" is compared with names, in whatever folder: "*.bak".
)";

const SiteKey* FindKey(std::string_view name) {
  const auto keys = AllSiteKeys();
  const auto key = std::ranges::find(keys, name, &SiteKey::name);
  return key == keys.end() ? nullptr : &*key;
}

std::string AllNames() {
  std::string names;
  for (const SiteKey& key : AllSiteKeys()) names += (names.empty() ? "" : ", ") + std::string(key.name);
  return names;
}

// Where a value that does not fit is wrong.
std::size_t WrongPlace(const TomlValue& value) {
  const auto wrong = std::ranges::find_if_not(value.elements, FitsList);
  return wrong == value.elements.end() ? value.begin : wrong->begin;
}

std::string Expectation(const SiteKey& key) {
  return std::string(key.name) + " must be " + std::string(key.expected);
}

// What may be meant where the text is no TOML, as a word without quotes: the key whose line it is tells.
std::string Hint(std::string_view text, std::size_t fault) {
  const std::size_t line_end = text.substr(0, fault).rfind('\n');
  std::string_view line = text.substr(line_end == std::string_view::npos ? 0 : line_end + 1);
  line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
  const SiteKey* const key = FindKey(line.substr(0, line.find_first_of(" \t=\r\n")));
  return key == nullptr ? "" : "; " + Expectation(*key);
}

std::string Line(const SiteKey& key, const SiteRules& rules) {
  return std::string(key.name) + " = " + key.state(rules);
}

}  // namespace

Status ReadSiteRules(std::string_view text, SiteRules& rules) {
  std::vector<TomlEntry> entries;
  std::size_t fault = 0;
  if (Status status = ReadToml(text, entries, fault); !status.ok()) {
    const bool is_there_twice = status.reason().find("cannot redefine") != std::string::npos;
    return Status::Failure(status.reason() +
                           (is_there_twice ? "; a key may stand only once" : Hint(text, fault)));
  }
  SiteRules read;
  for (const TomlEntry& entry : entries) {
    const SiteKey* const key = FindKey(entry.key);
    if (key == nullptr) {
      return Status::Failure(TomlPlace(text, entry.begin) + "unknown key \"" + entry.key +
                             "\"; expected is one of " + AllNames());
    }
    if (!key->take(entry.value, read)) {
      return Status::Failure(TomlPlace(text, WrongPlace(entry.value)) + Expectation(*key));
    }
  }
  rules = std::move(read);
  return {};
}

std::string NewSiteText(const SiteRules& rules) {
  std::string text(kIntroduction);
  for (const SiteKey& key : AllSiteKeys()) {
    text += "\n" + std::string(key.comment) + Line(key, rules) + "\n";
  }
  return text;
}

std::string ChangedSiteText(std::string_view text, const SiteRules& rules) {
  std::vector<TomlEntry> entries;
  SiteRules old_rules;
  std::size_t fault = 0;
  if (!ReadSiteRules(text, old_rules).ok() || !ReadToml(text, entries, fault).ok()) return std::string(text);
  std::vector<TextEdit> edits;
  const std::string line_end = text.find("\r\n") == std::string_view::npos ? "\n" : "\r\n";
  std::string missing = text.empty() || text.back() == '\n' ? "" : line_end;
  for (const SiteKey& key : AllSiteKeys()) {
    if (key.state(rules) == key.state(old_rules)) continue;
    const auto entry = std::ranges::find(entries, key.name, &TomlEntry::key);
    if (entry == entries.end()) {
      edits.push_back({text.size(), text.size(), std::exchange(missing, "") + Line(key, rules) + line_end});
    } else if (key.list != nullptr) {
      std::ranges::move(EditsOfList(text, entry->value, rules.*key.list), std::back_inserter(edits));
    } else {
      edits.push_back({entry->value.begin, entry->value.end, key.state(rules)});
    }
  }
  return Edited(text, std::move(edits));
}

}  // namespace tessaril
