#include "engine/entities.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "engine/ascii.h"
#include "engine/characters.h"
#include "engine/paths.h"

namespace tessaril {
namespace {

constexpr std::size_t kMostRows = 131;
constexpr std::size_t kMostDoubtful = 201;
constexpr char32_t kLastEightBit = 255;

// Calls `use` with each line and its number, counted from 1, until it returns false. Line ends are CR LF; a
// lone LF is taken for one, too.
template <typename Use>
void ForEachLine(std::string_view content, Use use) {
  for (std::size_t number = 1; !content.empty(); ++number) {
    const std::size_t end = std::min(content.find('\n'), content.size());
    std::string_view line = content.substr(0, end);
    content.remove_prefix(std::min(end + 1, content.size()));
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (!use(line, number)) return;
  }
}

// What the value of a row stands for; nothing when that is not one character.
std::optional<char> CharacterOf(std::string_view value) {
  if (!value.starts_with('#')) return value.size() == 1 ? std::optional(value[0]) : std::nullopt;
  const std::optional<std::uint32_t> code = DecimalCode(value.substr(1));
  if (!code || *code > kLastEightBit) return std::nullopt;
  return static_cast<char>(static_cast<unsigned char>(*code));
}

std::optional<std::uint32_t> Number(std::string_view digits, std::uint32_t base) {
  constexpr std::uint64_t kMost = std::numeric_limits<std::uint32_t>::max();
  if (digits.empty()) return std::nullopt;
  std::uint64_t number = 0;
  for (const char c : digits) {
    const char lower = ToLower(c);
    std::uint32_t digit = base;
    if (c >= '0' && c <= '9') digit = static_cast<std::uint32_t>(c - '0');
    if (lower >= 'a' && lower <= 'f') digit = static_cast<std::uint32_t>(lower - 'a' + 10);
    if (digit >= base) return std::nullopt;
    number = std::min(number * base + digit, kMost);
  }
  return static_cast<std::uint32_t>(number);
}

}  // namespace

std::optional<std::uint32_t> DecimalCode(std::string_view text) {
  constexpr std::uint32_t kBase = 10;
  const std::size_t point = text.find('.');
  const std::optional<std::uint32_t> whole = Number(text.substr(0, point), kBase);
  if (!whole || point == std::string_view::npos) return whole;
  const std::string_view fraction = text.substr(point + 1);
  if (!Number(fraction, kBase)) return std::nullopt;
  const bool up = fraction[0] >= '5' && *whole < std::numeric_limits<std::uint32_t>::max();
  return *whole + (up ? 1U : 0U);
}

std::optional<std::uint32_t> HexadecimalCode(std::string_view text) {
  return Number(text, 16);
}

Status Entities::Load(Files& files, const std::string& folder, std::vector<std::string>& notices) {
  Entities loaded;
  ByteBuffer bytes;
  FileStamp stamp;
  const auto read = [&](const char* name, auto read_content) -> Status {
    const std::string path = JoinPath(folder, name);
    if (Status status = files.Read(path, bytes, stamp); !status.ok()) {
      return Status::Failure(status.reason() + "\r\nCan't find file " + path);
    }
    (loaded.*read_content)(path, bytes.view(), notices);
    return {};
  };
  if (Status status = read("alphatg1.dat", &Entities::ReadTable); !status.ok()) return status;
  if (Status status = read("alphatg2.dat", &Entities::ReadDoubtful); !status.ok()) return status;
  *this = std::move(loaded);
  return {};
}

void Entities::ReadTable(const std::string& path, std::string_view content,
                         std::vector<std::string>& notices) {
  ForEachLine(content, [&](std::string_view line, std::size_t number) {
    const auto notice = [&](const char* reason) {
      notices.push_back(path + ":" + std::to_string(number) + ": " + reason);
    };
    if (EntityTable.size() == kMostRows) {
      notice("more than 131 rows; the rest is ignored");
      return false;
    }
    const std::size_t comma = line.find(',');
    if (comma == std::string_view::npos) {
      notice("no comma; the line is skipped");
      return true;
    }
    const std::optional<char> character = CharacterOf(line.substr(comma + 1));
    if (!character) {
      notice("not one character of a code from 0 to 255; the line is skipped");
      return true;
    }
    if (comma == 0) {
      notice("no name; the table ends here");
      return false;
    }
    EntityTable.push_back({std::string(line.substr(0, comma)), *character});
    return true;
  });
  for (const Row& row : EntityTable) {
    names_.insert(row.name);
    EntityChars += row.character;
  }
  EntityChars.erase(0, 1);
}

void Entities::ReadDoubtful(const std::string& path, std::string_view content,
                            std::vector<std::string>& notices) {
  std::size_t count = 0;
  ForEachLine(content, [&](std::string_view line, std::size_t number) {
    const auto end_with = [&](const char* reason) {
      notices.push_back(path + ":" + std::to_string(number) + ": " + reason);
      return false;
    };
    if (count == kMostDoubtful) return end_with("more than 201 rows; the rest is ignored");
    if (line.empty()) return end_with("no name; the list ends here");
    DoubtfulNames.emplace(line);
    ++count;
    return true;
  });
}

std::string_view Entities::NameForCharacter(char c) const {
  const std::size_t row = EntityChars.find(c);
  return row == std::string::npos ? std::string_view() : EntityTable[row + 1].name;
}

std::string_view Entities::NameForNumeric(char c) const {
  if (!EntityTable.empty() && EntityTable[0].character == c) return EntityTable[0].name;
  return NameForCharacter(c);
}

std::string Entities::EncodeEntities(std::string_view text) const {
  std::string encoded;
  while (!text.empty()) {
    std::string_view rest = text;
    const std::optional<char> code = EightBitCode(TakeCharacter(rest));
    const std::string_view name = code ? NameForCharacter(*code) : std::string_view();
    if (name.empty()) {
      encoded += text.substr(0, text.size() - rest.size());
    } else {
      encoded += '&';
      encoded += name;
      encoded += ';';
    }
    text = rest;
  }
  return encoded;
}

}  // namespace tessaril
