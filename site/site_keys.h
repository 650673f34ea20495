#ifndef TESSARIL_SITE_SITE_KEYS_H_
#define TESSARIL_SITE_SITE_KEYS_H_

#include <span>
#include <string>
#include <string_view>

#include "engine/site_rules.h"
#include "engine/status.h"
#include "site/toml_text.h"

// The keys of a site file: a new one plugs in here.

namespace tessaril {

struct SiteKey {
  std::string_view name;
  std::string_view comment;   // above the key in a new file: lines that begin with "#"
  std::string_view expected;  // what must stand behind "=", in words
  /// Takes a value over; false when it does not fit. What is wrong inside a list is told of the first element
  /// that does not fit, else of the whole value.
  bool (*take)(const TomlValue& value, SiteRules& rules);
  /// The value in `rules` as a file states it.
  std::string (*state)(const SiteRules& rules);
  /// Of a key that holds a list: where. Else null.
  std::vector<std::string> SiteRules::*list;
};

/// In the order of a new file.
std::span<const SiteKey> AllSiteKeys();

/// Whether a list may hold this element: a text that is not empty.
bool FitsList(const TomlValue& element);

/// `texts` as a file states them, on one line.
std::string StatedList(const std::vector<std::string>& texts);

}  // namespace tessaril

#endif  // TESSARIL_SITE_SITE_KEYS_H_
