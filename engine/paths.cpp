#include "engine/paths.h"

#include "engine/page_encoding.h"

namespace tessaril {

std::string JoinPath(std::string_view folder, std::string_view name) {
  std::string path(folder);
  if (path.empty() || path.back() != kSeparator) path += kSeparator;
  path += name;
  return path;
}

std::string_view FolderOf(std::string_view path) {
  const std::size_t separator = path.rfind(kSeparator);
  if (separator == std::string_view::npos) return {};
  return path.substr(0, separator == 0 ? 1 : separator);
}

std::string_view NameOf(std::string_view path) {
  return path.substr(path.rfind(kSeparator) + 1);
}

std::string AbsolutePath(std::string_view folder, std::string_view path) {
  std::string whole(path);
  if (!path.starts_with(kSeparator)) whole = std::string(folder) + kSeparator + whole;
  std::string result;
  for (std::size_t begin = 0; begin <= whole.size();) {
    const std::size_t end = std::min(whole.find(kSeparator, begin), whole.size());
    const std::string_view step = std::string_view(whole).substr(begin, end - begin);
    if (step == "..") {
      result.resize(result.empty() ? 0 : result.rfind(kSeparator));
    } else if (!step.empty() && step != ".") {
      result += kSeparator;
      result += step;
    }
    begin = end + 1;
  }
  return result.empty() ? std::string(1, kSeparator) : result;
}

std::string ShortenedPath(std::string_view path) {
  constexpr std::size_t kShownWhole = 50;
  constexpr std::size_t kShownEnd = 47;
  if (CountCharacters(path) < kShownWhole) return std::string(path);
  return "...  " + std::string(LastCharacters(path, kShownEnd));
}

}  // namespace tessaril
