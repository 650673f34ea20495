#include "engine/link_paths.h"

#include <algorithm>

#include "engine/paths.h"

namespace tessaril {
namespace {

constexpr std::string_view kUpStep = "../";

// The folder without its last step; one that has no separator left stays.
std::string_view Above(std::string_view folder) {
  return folder.substr(0, std::min(folder.rfind(kSeparator), folder.size()));
}

// `path` without doubled separators, "." steps and a separator at its end.
std::string Tidied(std::string_view path) {
  std::string tidied;
  tidied.reserve(path.size());
  for (std::size_t begin = 0; begin < path.size();) {
    const std::size_t end = std::min(path.find(kSeparator, begin), path.size());
    const std::string_view step = path.substr(begin, end - begin);
    if (!step.empty() && step != ".") {
      if (!tidied.empty() || path.front() == kSeparator) tidied += kSeparator;
      tidied += step;
    }
    begin = end + 1;
  }
  return tidied;
}

}  // namespace

std::string ResolveLink(std::string_view link, std::string_view page_path) {
  std::string_view folder = Above(page_path);
  for (std::size_t step = link.find(kUpStep); step != std::string_view::npos; step = link.find(kUpStep)) {
    link.remove_prefix(step + kUpStep.size());
    folder = Above(folder);
  }
  std::string path;
  path.reserve(folder.size() + 1 + link.size());
  path += folder;
  path += kSeparator;
  path += link;
  return path;
}

std::string RegisteredPath(std::string_view link, std::string_view current_folder) {
  if (link.starts_with(kSeparator)) return Tidied(link);
  const std::string tidied = Tidied(link);
  std::string_view rest = tidied;
  std::string_view folder = current_folder;
  while (rest.starts_with(kUpStep)) {
    rest.remove_prefix(kUpStep.size());
    folder = Above(folder);
  }
  return Tidied(std::string(folder) + kSeparator + std::string(rest));
}

bool JoinByText(std::string_view link, std::string_view folder, std::string_view root, std::string& path) {
  if (!folder.starts_with(root)) return false;
  while (link.starts_with(kUpStep)) {
    if (folder.size() <= root.size()) return false;
    link.remove_prefix(kUpStep.size());
    folder = Above(folder);
  }
  char last = kSeparator;
  for (const char c : link) {
    if (last == kSeparator && (c == kSeparator || c == '.')) return false;
    last = c;
  }
  if (last == kSeparator) return false;
  if (folder.size() == 1) folder = {};  // the root
  path = folder;
  path += kSeparator;
  path += link;
  return true;
}

}  // namespace tessaril
