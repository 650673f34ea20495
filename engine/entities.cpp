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

// What is to be told about one data file, up to as many lines as somebody would read.
class Entities::Notices {
 public:
  Notices(const std::string& path, std::vector<std::string>& notices) : path_(path), notices_(notices) {}

  void AddSkipped(std::size_t line, const char* reason) {
    if (++skipped_ <= kMostSkipped) Add(line, std::string(reason) + "; the line is skipped");
  }
  void Add(std::size_t line, const std::string& text) {
    notices_.push_back(path_ + ":" + std::to_string(line) + ": " + text);
  }
  void Add(const std::string& text) { notices_.push_back(path_ + ": " + text); }
  void Finish() {
    if (skipped_ > kMostSkipped) Add(std::to_string(skipped_ - kMostSkipped) + " more lines are skipped");
  }

 private:
  static constexpr std::size_t kMostSkipped = 10;

  const std::string& path_;
  std::vector<std::string>& notices_;
  std::size_t skipped_ = 0;
};

std::array<std::string, 2> Entities::DataFiles(const std::string& folder) {
  return {JoinPath(folder, "alphatg1.dat"), JoinPath(folder, "alphatg2.dat")};
}

Status Entities::Load(Files& files, const std::string& folder, std::vector<std::string>& all_notices) {
  Entities loaded;
  ByteBuffer bytes;
  FileStamp stamp;
  const auto read = [&](const std::string& path, auto read_content) -> Status {
    if (Status status = files.Read(path, bytes, stamp); !status.ok()) {
      return Status::Failure(status.reason() + "\r\nCan't find file " + path);
    }
    std::string_view content = bytes.view();
    if (content.starts_with(kByteOrderMark)) content.remove_prefix(kByteOrderMark.size());
    Notices notices(path, all_notices);
    (loaded.*read_content)(content, notices);
    notices.Finish();
    return {};
  };
  const auto [table, doubtful] = DataFiles(folder);
  if (Status status = read(table, &Entities::ReadTable); !status.ok()) return status;
  if (Status status = read(doubtful, &Entities::ReadDoubtful); !status.ok()) return status;
  *this = std::move(loaded);
  return {};
}

void Entities::ReadTable(std::string_view content, Notices& notices) {
  ForEachLine(content, [&](std::string_view line, std::size_t number) {
    const std::size_t comma = line.find(',');
    if (comma == std::string_view::npos) {
      notices.AddSkipped(number, "no comma");
      return true;
    }
    const std::string_view name = line.substr(0, comma);
    const std::optional<char> character = CharacterOf(line.substr(comma + 1));
    if (!character) {
      notices.AddSkipped(number, "not one character of a code from 0 to 255");
      return true;
    }
    if (!IsAscii(name) || name.find('&') != std::string_view::npos) {
      notices.AddSkipped(number, "a name that is a finding itself");
      return true;
    }
    if (EntityTable.size() == kMostRows) {
      notices.Add(number, "more than 131 rows; the rest is ignored");
      return false;
    }
    if (name.empty()) {
      notices.Add(number, "no name; names are looked up no further");
      if (!EntityTable.empty()) return false;
    }
    EntityTable.push_back({std::string(name), *character});
    return true;
  });
  if (EntityTable.empty()) notices.Add("no names of characters");
  for (const Row& row : EntityTable) {
    if (RowZeroHasName()) names_.insert(row.name);
    EntityChars += row.character;
  }
  EntityChars.erase(0, 1);
}

void Entities::ReadDoubtful(std::string_view content, Notices& notices) {
  std::size_t count = 0;
  ForEachLine(content, [&](std::string_view line, std::size_t number) {
    const bool full = count == kMostDoubtful;
    if (line.empty() || full) {
      notices.Add(number,
                  line.empty() ? "no name; the list ends here" : "more than 201 rows; the rest is ignored");
      return false;
    }
    DoubtfulNames.emplace(line);
    ++count;
    return true;
  });
}

std::string_view Entities::NameForCharacter(char c) const {
  const std::size_t row = EntityChars.find(c);
  return row == std::string::npos ? std::string_view() : EntityTable[row + 1].name;
}

std::string_view Entities::NameForCodePoint(char32_t code) const {
  const std::optional<char> eight_bit = EightBitCode(code);
  return eight_bit ? NameForCharacter(*eight_bit) : std::string_view();
}

std::string_view Entities::NameForNumeric(char c) const {
  if (!RowZeroHasName()) return {};
  if (EntityTable[0].character == c) return EntityTable[0].name;
  return NameForCharacter(c);
}

std::string Entities::EncodeEntities(std::string_view text) const {
  std::string encoded;
  while (!text.empty()) {
    std::string_view rest = text;
    const std::string_view name = NameForCodePoint(TakeCharacter(rest));
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
