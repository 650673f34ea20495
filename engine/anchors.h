#ifndef TESSARIL_ENGINE_ANCHORS_H_
#define TESSARIL_ENGINE_ANCHORS_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tessaril {

/// The anchors of one text: "<A" tags whose first attribute is NAME. The text is searched once for all of
/// them; whether it has a certain one is then a look-up (the first of which sorts them). Letters of both
/// cases are taken as the same.
class Anchors {
 public:
  /// Remembers as much of `text` as names of up to `longest_name` bytes need, none longer than the text.
  explicit Anchors(std::string_view text, std::size_t longest_name = std::string_view::npos);

  /// Whether `name`, in lower case, stands behind the "=" of an anchor with at most four bytes between: an
  /// anchor is named so, or its name begins so. `name` is no longer than the longest that is remembered.
  bool Has(std::string_view name);

  /// Bytes of memory.
  std::size_t memory() const {
    return text_.capacity() + (firsts_.capacity() + starts_.capacity()) * sizeof(std::size_t);
  }

 private:
  std::size_t MostBehind(std::string_view text, std::size_t begin) const;
  void Enter(std::string_view text, std::size_t begin);
  void Sort();
  std::string_view NameAt(std::size_t place, std::size_t most) const {
    return std::string_view(text_).substr(place, most);
  }

  std::size_t longest_name_;
  std::string text_;                 // in lower case; what lies far behind an anchor is left out
  std::size_t entered_end_ = 0;      // where in the whole text ends what was taken of it
  std::vector<std::size_t> firsts_;  // for each anchor the first place in `text_` where its name may begin,
  std::vector<std::size_t> starts_;  // and for all of them every such place, by the names
  bool sorted_ = false;
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_ANCHORS_H_
