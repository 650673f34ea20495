#include "site/toml_text.h"

#define TOML_ENABLE_FORMATTERS 0
#include <toml++/toml.h>

#include <algorithm>
#include <array>
#include <cstdio>

#include "engine/characters.h"

namespace tessaril {
namespace {

// Where the characters of a line begin: behind the mark that may stand in front of all.
std::size_t LineContent(std::string_view text, std::size_t line_begin) {
  return line_begin == 0 && text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : line_begin;
}

// From the parser's lines and columns to offsets. Places are mostly asked for in their order, and a line may
// be long, so that each is looked for from the last one on.
class Offsets {
 public:
  explicit Offsets(std::string_view text) : text_(text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
      if (text[i] == '\n') lines_.push_back(i + 1);
    }
  }

  // A place behind the end is the end.
  std::size_t Of(const toml::source_position& position) const {
    if (position.line > lines_.size()) return text_.size();
    if (position.line != last_.line || position.column < last_.column) {
      last_ = {position.line, 1};
      last_offset_ = LineContent(text_, lines_[position.line - 1]);
    }
    for (; last_.column < position.column && last_offset_ < text_.size(); ++last_.column) {
      last_offset_ += SequenceLength(text_.substr(last_offset_));
    }
    return last_offset_;
  }

 private:
  std::string_view text_;
  std::vector<std::size_t> lines_{0};
  mutable toml::source_position last_{};
  mutable std::size_t last_offset_ = 0;
};

TomlValue ValueOf(const toml::node& node, const Offsets& offsets) {
  TomlValue value;
  value.begin = offsets.Of(node.source().begin);
  if (const auto* const text = node.as_string()) {
    value.kind = TomlValue::Kind::kText;
    value.text = text->get();
  } else if (const auto* const flag = node.as_boolean()) {
    value.kind = TomlValue::Kind::kFlag;
    value.flag = flag->get();
  } else if (const auto* const list = node.as_array(); list != nullptr && !list->is_array_of_tables()) {
    value.kind = TomlValue::Kind::kList;
    for (const toml::node& element : *list) value.elements.push_back(ValueOf(element, offsets));
  }
  value.end = offsets.Of(node.source().end);
  return value;
}

Status CheckUtf8(std::string_view text, std::size_t& fault) {
  for (std::size_t i = AsciiPrefix(text); i < text.size();) {
    const std::size_t length = SequenceLength(text.substr(i));
    if (length == 0) {
      fault = i;
      return Status::Failure(TomlPlace(text, i) + "not UTF-8; the file must be saved as UTF-8");
    }
    i += length;
  }
  return {};
}

}  // namespace

Status ReadToml(std::string_view text, std::vector<TomlEntry>& entries, std::size_t& fault) {
  if (Status status = CheckUtf8(text, fault); !status.ok()) return status;
  const Offsets offsets(text);
  toml::table table;
  try {
    table = toml::parse(text);
  } catch (const toml::parse_error& error) {
    fault = offsets.Of(error.source().begin);
    return Status::Failure(TomlPlace(text, fault) + std::string(error.description()));
  }
  entries.clear();
  for (const auto& [key, node] : table) {
    entries.push_back({std::string(key.str()), offsets.Of(key.source().begin), ValueOf(node, offsets)});
  }
  std::ranges::sort(entries, {}, &TomlEntry::begin);
  return {};
}

std::string TomlPlace(std::string_view text, std::size_t offset) {
  const std::string_view before = text.substr(0, offset);
  const std::size_t line_end = before.rfind('\n');
  const std::size_t begin = LineContent(text, line_end == std::string_view::npos ? 0 : line_end + 1);
  const auto is_first_byte = [](char c) { return !IsContinuation(c); };
  const auto line = std::ranges::count(before, '\n') + 1;
  const auto column = std::ranges::count_if(before.substr(std::min(begin, offset)), is_first_byte) + 1;
  return "line " + std::to_string(line) + ", column " + std::to_string(column) + ": ";
}

std::string TomlQuoted(std::string_view text) {
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') {
      quoted += {'\\', c};
    } else if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) {
      std::array<char, 8> escape;
      std::snprintf(escape.data(), escape.size(), "\\u%04X", static_cast<unsigned>(c));
      quoted += escape.data();
    } else {
      quoted += c;
    }
  }
  return quoted + "\"";
}

}  // namespace tessaril
