#ifndef TESSARIL_ENGINE_FILE_FILTER_H_
#define TESSARIL_ENGINE_FILE_FILTER_H_

#include <string>
#include <string_view>
#include <vector>

namespace tessaril {

/// Which file names a filter text lists: patterns parted by ";", in each "*" for any run of characters and
/// "?" for any one, letter case without meaning. Blanks around a pattern do not count, an empty pattern lists
/// nothing, "*.*" lists every name.
class FileFilter {
 public:
  explicit FileFilter(std::string_view text);
  bool Lists(std::string_view name) const;

 private:
  std::vector<std::string> patterns_;  // in lower case
};

/// Whether a filter text says by its first five characters that it lists pages or texts; for any other the
/// run asks first. Letter case counts.
bool LooksLikeHtmlFilter(std::string_view text);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_FILE_FILTER_H_
