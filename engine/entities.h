#ifndef TESSARIL_ENGINE_ENTITIES_H_
#define TESSARIL_ENGINE_ENTITIES_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "engine/files.h"
#include "engine/status.h"

namespace tessaril {

/// The program's knowledge of character entities, read once from two data files. Characters are bytes of
/// Windows-1252, names stand without "&" and ";", and every comparison is exact, letter case included.
class Entities {
 public:
  /// The paths of "alphatg1.dat" (lines of a name, "," and a character or "#" and its decimal code) and
  /// "alphatg2.dat" (lines of a name).
  static std::array<std::string, 2> DataFiles(const std::string& folder);

  /// Reads both in `folder`. A line that cannot be used takes no row and is named in `notices`, as are rows
  /// too many. On failure the reason is the whole message for the user, two lines that name the file, and
  /// nothing has been read.
  Status Load(Files& files, const std::string& folder, std::vector<std::string>& notices);

  /// The name that is proposed for a character, from row 1 on; empty when it has none. (Row 0 is the
  /// no-break space, which a page may well hold as it is.)
  std::string_view NameForCharacter(char c) const;

  /// The same for the character of Windows-1252 that a code point stands for; empty when there is none.
  std::string_view NameForCodePoint(char32_t code) const;

  /// The name that is proposed for a numeric entity, from row 0 on; empty when the character has none.
  std::string_view NameForNumeric(char c) const;

  bool IsGood(std::string_view name) const { return names_.contains(name); }

  /// Whether the name is one that some browsers do not know.
  bool IsDoubtful(std::string_view name) const { return DoubtfulNames.contains(name); }

  /// `text`, valid UTF-8, with every character that has a name in row 1 or above written as an entity.
  std::string EncodeEntities(std::string_view text) const;

 private:
  struct Row {
    std::string name;
    char character;
  };
  struct Hash : std::hash<std::string_view> {
    using is_transparent = void;
  };
  using NameSet = std::unordered_set<std::string, Hash, std::equal_to<>>;

  class Notices;
  // A look-up ends at the first row without a name; only row 0 is kept then, for those that begin behind it.
  bool RowZeroHasName() const { return !EntityTable.empty() && !EntityTable[0].name.empty(); }
  void ReadTable(std::string_view content, Notices& notices);
  void ReadDoubtful(std::string_view content, Notices& notices);

  std::vector<Row> EntityTable;  // at most 131
  std::string EntityChars;       // the characters of rows 1 up
  NameSet names_;                // of all rows from row 0 on
  NameSet DoubtfulNames;         // at most 201
};

/// A decimal number, with at most one point, between digits; halves are rounded up. Nothing for all else.
/// What is too large for the type becomes its greatest value.
std::optional<std::uint32_t> DecimalCode(std::string_view text);

/// The same for hexadecimal digits.
std::optional<std::uint32_t> HexadecimalCode(std::string_view text);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_ENTITIES_H_
