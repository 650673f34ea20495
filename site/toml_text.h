#ifndef TESSARIL_SITE_TOML_TEXT_H_
#define TESSARIL_SITE_TOML_TEXT_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "engine/status.h"

// A TOML text as entries that know where they stand in it, so that it can be told what is wrong with one, and
// one can be changed and all else left alone. Offsets count bytes from 0.

namespace tessaril {

struct TomlValue {
  enum class Kind { kText, kFlag, kList, kOther };
  Kind kind = Kind::kOther;
  std::size_t begin = 0;  // of the value as it is written, quotes and brackets included
  std::size_t end = 0;
  std::string text;                 // of kText, without quotes and escapes
  bool flag = false;                // of kFlag
  std::vector<TomlValue> elements;  // of kList, in order
};

/// An entry outside of tables, or a table as a whole (its value is kOther).
struct TomlEntry {
  std::string key;
  std::size_t begin = 0;  // of the key
  TomlValue value;
};

/// All entries of `text`, in its order. On failure the reason begins with a place ("line 3, column 5: "), and
/// `fault`, at most the size of the text, is there, too.
Status ReadToml(std::string_view text, std::vector<TomlEntry>& entries, std::size_t& fault);

/// "line 3, column 5: " for an offset. Both count from 1, columns count characters.
std::string TomlPlace(std::string_view text, std::size_t offset);

/// A text (UTF-8) as TOML writes it on one line, quotes included.
std::string TomlQuoted(std::string_view text);

}  // namespace tessaril

#endif  // TESSARIL_SITE_TOML_TEXT_H_
