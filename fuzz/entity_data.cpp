// Entities::Load, held against the plain rules of the two data files; and texts written with them.
// Input: the table, the doubtful names, a text.

#include <set>

#include "engine/characters.h"
#include "engine/entities.h"
#include "engine/page_encoding.h"
#include "fuzz/input.h"
#include "tests/support/memory_files.h"

namespace tessaril {
namespace {

using Lines = std::vector<std::string>;

Lines LinesOf(std::string text) {
  if (text.starts_with(kByteOrderMark)) text.erase(0, 3);
  Lines lines(1);
  for (const char c : text) {
    if (c == '\n') {
      if (lines.back().ends_with('\r')) lines.back().pop_back();
      lines.emplace_back();
    } else {
      lines.back() += c;
    }
  }
  if (lines.back().empty()) {
    lines.pop_back();
  } else if (lines.back().ends_with('\r')) {
    lines.back().pop_back();
  }
  return lines;
}

// The plain reading.
struct PlainEntities {
  std::vector<std::pair<std::string, char>> rows;
  std::set<std::string> doubtful;

  // A decimal code from 0 to 255, halves rounded up.
  static std::optional<char> Code(const std::string& text) {
    const std::size_t point = text.find('.');
    const std::string whole = text.substr(0, point);
    const std::string fraction = point == std::string::npos ? "0" : text.substr(point + 1);
    const auto is_number = [](const std::string& digits) {
      return !digits.empty() && digits.find_first_not_of("0123456789") == std::string::npos;
    };
    if (!is_number(whole) || !is_number(fraction)) return std::nullopt;
    const std::size_t first = std::min(whole.find_first_not_of('0'), whole.size());
    const std::string digits = whole.substr(first).substr(0, 4);
    const int code = (digits.empty() ? 0 : std::stoi(digits)) + (fraction[0] >= '5' ? 1 : 0);
    return code > 255 ? std::nullopt : std::optional(static_cast<char>(code));
  }

  void ReadTable(const std::string& content) {
    for (const std::string& line : LinesOf(content)) {
      const std::size_t comma = line.find(',');
      if (comma == std::string::npos) continue;
      const std::string name = line.substr(0, comma);
      const std::string value = line.substr(comma + 1);
      const std::optional<char> character = value.starts_with('#') ? Code(value.substr(1))
                                            : value.size() == 1    ? std::optional(value[0])
                                                                   : std::nullopt;
      const bool is_plain = std::ranges::all_of(name, [](char c) { return c >= 0 && c != '&'; });
      if (!character || !is_plain) continue;
      if (rows.size() == 131 || (name.empty() && !rows.empty())) return;
      rows.emplace_back(name, *character);
    }
  }
  void ReadDoubtful(const std::string& content) {
    const Lines lines = LinesOf(content);
    for (std::size_t i = 0; i < std::min<std::size_t>(lines.size(), 201) && !lines[i].empty(); ++i)
      doubtful.insert(lines[i]);
  }

  std::string Name(char c, std::size_t first_row) const {
    const bool has_first = !rows.empty() && !rows[0].first.empty();
    if (first_row == 0 && !has_first) return "";
    for (std::size_t i = first_row; i < rows.size(); ++i) {
      if (rows[i].second == c) return rows[i].first;
    }
    return "";
  }
  bool IsGood(const std::string& name) const {
    if (rows.empty() || rows[0].first.empty()) return false;
    return std::ranges::any_of(rows, [&name](const auto& row) { return row.first == name; });
  }
};

void CheckText(const Entities& entities, const PlainEntities& plain, const std::string& text) {
  std::string expected;
  for (std::string_view rest = text; !rest.empty();) {
    const std::string_view before = rest;
    const std::optional<char> byte = EightBitCode(TakeCharacter(rest));
    const std::string name = byte ? plain.Name(*byte, 1) : "";
    expected += name.empty() ? std::string(before.substr(0, before.size() - rest.size())) : "&" + name + ";";
  }
  RequireEqual(entities.EncodeEntities(text), expected, "a text with entities");
}

}  // namespace
}  // namespace tessaril

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tessaril;
  Input input(data, size);
  const std::string table = input.Field();
  const std::string doubtful = input.Field();
  const std::string text = EnteredText(input.Rest());
  MemoryFiles files;
  files.contents["/d/alphatg1.dat"] = table;
  files.contents["/d/alphatg2.dat"] = doubtful;
  Entities entities;
  Lines notices;
  Require(entities.Load(files, "/d", notices).ok(), "the files cannot be read");
  for (const std::string& notice : notices)
    Require(notice.starts_with("/d/alphatg"), "a notice without a file");
  Require(notices.size() <= 30, "more notices than anybody reads");

  PlainEntities plain;
  plain.ReadTable(table);
  plain.ReadDoubtful(doubtful);
  for (int code = 0; code < 256; ++code) {
    const char c = static_cast<char>(code);
    RequireEqual(entities.NameForCharacter(c), plain.Name(c, 1),
                 "the name for character " + std::to_string(code));
    RequireEqual(entities.NameForNumeric(c), plain.Name(c, 0), "the name for code " + std::to_string(code));
  }
  Lines names = LinesOf(doubtful);
  for (const std::string& line : LinesOf(table)) names.push_back(line.substr(0, line.find(',')));
  for (const std::string& name : names) {
    Require(entities.IsGood(name) == plain.IsGood(name), "whether a name is good: " + Readable(name));
    Require(entities.IsDoubtful(name) == plain.doubtful.contains(name),
            "whether a name is doubtful: " + Readable(name));
  }
  CheckText(entities, plain, text);

  // What fails leaves all as it was.
  files.contents.erase("/d/alphatg2.dat");
  Require(!entities.Load(files, "/d", notices).ok(), "a missing file is read");
  CheckText(entities, plain, text);
  return 0;
}
