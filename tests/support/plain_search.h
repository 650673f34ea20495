#ifndef TESSARIL_TESTS_SUPPORT_PLAIN_SEARCH_H_
#define TESSARIL_TESTS_SUPPORT_PLAIN_SEARCH_H_

#include <functional>
#include <optional>
#include <string>

namespace tessaril {

/// The rules of text search and replace read plainly, on one string, with positions from 1, no thought of
/// speed: what the engine is held against. 8-bit pages only.
struct PlainSearch {
  std::string S, R;
  bool ULcase = false;
  bool replacing = false;
  /// Gives the answer to a proposal and may edit it; nothing: confirmation is off.
  std::function<int(const std::string& context, std::string& proposed)> ask;

  std::string text;    // the page, before and after
  std::string report;  // the entries of the file
  void Run(const std::string& path);
};

/// The phrase rule: how many characters of `candidate`, the text from a key on, the phrase covers.
std::optional<std::size_t> PlainPhrase(const std::string& S, const std::string& text_from_key,
                                       const std::string& line_end);

}  // namespace tessaril

#endif  // TESSARIL_TESTS_SUPPORT_PLAIN_SEARCH_H_
