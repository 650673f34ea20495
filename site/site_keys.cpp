#include "site/site_keys.h"

#include <algorithm>
#include <array>

namespace tessaril {
namespace {

using Kind = TomlValue::Kind;
using List = std::vector<std::string> SiteRules::*;

constexpr std::string_view kToday = "today";
constexpr std::string_view kClassic = "classic";
constexpr std::string_view kUtf8 = "utf-8";
constexpr std::string_view kAscii = "ascii";
constexpr std::string_view kListExpected = R"(a list of texts that are not empty, as ["one", "two"])";

// A key with one of two words, of which the first is the default.
bool TakeWord(const TomlValue& value, std::string_view first, std::string_view second, bool& is_second) {
  is_second = value.text == second;
  return value.kind == Kind::kText && (is_second || value.text == first);
}

bool TakeRules(const TomlValue& value, SiteRules& rules) {
  bool is_classic = false;
  if (!TakeWord(value, kToday, kClassic, is_classic)) return false;
  rules.rules = is_classic ? Rules::kClassic : Rules::kToday;
  return true;
}

bool TakeEntities(const TomlValue& value, SiteRules& rules) {
  bool is_ascii = false;
  if (!TakeWord(value, kUtf8, kAscii, is_ascii)) return false;
  rules.ascii_entities = is_ascii;
  return true;
}

bool TakeLowercaseNames(const TomlValue& value, SiteRules& rules) {
  if (value.kind != Kind::kFlag) return false;
  rules.lowercase_names = value.flag;
  return true;
}

template <List list>
bool TakeList(const TomlValue& value, SiteRules& rules) {
  if (value.kind != Kind::kList || !std::ranges::all_of(value.elements, FitsList)) return false;
  (rules.*list).clear();
  for (const TomlValue& element : value.elements) (rules.*list).push_back(element.text);
  return true;
}

template <List list>
constexpr SiteKey ListKey(std::string_view name, std::string_view comment) {
  return {name,
          comment,
          kListExpected,
          TakeList<list>,
          [](const SiteRules& rules) { return StatedList(rules.*list); },
          list};
}

constexpr std::array<SiteKey, 9> kKeys = {{
    {"rules",
     R"(# "today": links and entities are judged as a visitor's browser judges them.
# "classic": they are judged as in a folder without this file.
)",
     R"("today" or "classic")", TakeRules,
     [](const SiteRules& rules) { return TomlQuoted(rules.rules == Rules::kToday ? kToday : kClassic); },
     nullptr},
    ListKey<&SiteRules::index>(
        "index",
        R"(# Names of files that stand for their folder: a link to a folder that holds one is in order.
)"),
    ListKey<&SiteRules::ignore_files>("ignore_files",
                                      R"(# Patterns: files that are not checked, as ["old/**", "draft-*"].
)"),
    ListKey<&SiteRules::ignore_links>(
        "ignore_links",
        R"(# Patterns: links that are not checked. Each link is compared as the page writes it, and by the path that
# it leads to.
)"),
    {"lowercase_names",
     R"(# true: upper-case letters in the names of linked files are reported, too.
)",
     "true or false", TakeLowercaseNames,
     [](const SiteRules& rules) { return std::string(rules.lowercase_names ? "true" : "false"); }, nullptr},
    ListKey<&SiteRules::start>(
        "start",
        R"(# Pages from which a visitor should be able to reach everything, as ["index.html"]; what cannot be reached
# is listed as unlinked. Empty: a file counts as linked when any page or style sheet leads to it.
)"),
    ListKey<&SiteRules::allow_missing>(
        "allow_missing",
        R"(# Patterns: targets of links that need not be there, because the server makes them.
)"),
    ListKey<&SiteRules::allow_unlinked>("allow_unlinked",
                                        R"(# Patterns: files that are in order though nothing leads to them.
)"),
    {"entities",
     R"(# "utf-8": on pages in UTF-8 that say so, every character may stand as it is.
# "ascii": there, too, characters beyond ASCII are to be written as entities.
)",
     R"("utf-8" or "ascii")", TakeEntities,
     [](const SiteRules& rules) { return TomlQuoted(rules.ascii_entities ? kAscii : kUtf8); }, nullptr},
}};

}  // namespace

std::span<const SiteKey> AllSiteKeys() {
  return kKeys;
}

bool FitsList(const TomlValue& element) {
  return element.kind == Kind::kText && !element.text.empty();
}

std::string StatedList(const std::vector<std::string>& texts) {
  std::string stated;
  for (const std::string& text : texts) stated += (stated.empty() ? "" : ", ") + TomlQuoted(text);
  return "[" + stated + "]";
}

}  // namespace tessaril
