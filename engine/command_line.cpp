#include "engine/command_line.h"

#include <algorithm>

#include "engine/ascii.h"
#include "engine/paths.h"
#include "engine/start_places.h"

namespace tessaril {
namespace {

struct Row {
  std::string_view extension;
  FileClass shown_by;
};

constexpr Row kRows[] = {
    {"htm", FileClass::kPage},    {"html", FileClass::kPage},   {"shtm", FileClass::kPage},
    {"shtml", FileClass::kPage},  {"htms", FileClass::kPage},   {"htmls", FileClass::kPage},
    {"txt", FileClass::kEditor},  {"hhc", FileClass::kEditor},  {"hhk", FileClass::kEditor},
    {"hhp", FileClass::kEditor},  {"h", FileClass::kEditor},    {"dmp", FileClass::kEditor},
    {"gif", FileClass::kBrowser}, {"jpg", FileClass::kBrowser}, {"jpeg", FileClass::kBrowser},
    {"png", FileClass::kBrowser}, {"pdf", FileClass::kBrowser},
};

}  // namespace

std::string CommandLineOf(const std::vector<std::string>& arguments, Files& files) {
  std::string joined;
  for (const std::string& argument : arguments) joined += (&argument == &arguments[0] ? "" : " ") + argument;
  const std::string trimmed(Trimmed(joined));
  if (arguments.size() != 1 || trimmed.empty() || trimmed == joined) return trimmed;
  return FindNamed(joined, files).kind == NamedPath::Kind::kNothing ? trimmed : joined;
}

NamedPath FindNamed(const std::string& command_line, Files& files) {
  std::string path;
  if (!MakeAbsolute(command_line, path).ok()) return {NamedPath::Kind::kNothing, {}};
  FileStamp stamp;
  if (!command_line.ends_with(kSeparator) && files.Examine(path, stamp).ok()) {
    return {NamedPath::Kind::kFile, path};
  }
  std::vector<FolderEntry> entries;
  if (files.ListFolder(path, entries, stamp).ok()) return {NamedPath::Kind::kFolder, path};
  return {NamedPath::Kind::kNothing, {}};
}

FileClass ClassOf(std::string_view name) {
  const std::string extension = ToLower(name.substr(name.rfind('.') + 1));  // npos + 1 is 0
  const auto* const row = std::ranges::find(kRows, extension, &Row::extension);
  return row == std::end(kRows) ? FileClass::kNeither : row->shown_by;
}

}  // namespace tessaril
