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
  /// Longer than nearly all names are, in bytes.
  static constexpr std::size_t kUsualNames = 128;

  /// For look-ups of names of up to `longest_name` bytes: no more than these need is kept of the text.
  explicit Anchors(std::size_t longest_name) : longest_name_(longest_name) {}

  std::size_t longest_name() const { return longest_name_; }

  /// Takes the next piece of the text. `last` is said once, with the last one.
  void Take(std::string_view piece, bool last);

  /// Whether `name` stands behind the "=" of an anchor with at most four bytes between: an anchor is named
  /// so, or its name begins so. `name` is no longer than the longest.
  bool Has(std::string_view name);

  /// Bytes of memory.
  std::size_t memory() const {
    return text_.capacity() + (firsts_.capacity() + starts_.capacity()) * sizeof(std::size_t);
  }

 private:
  void Collect(std::string_view text, bool last);
  std::size_t MostBehind(std::string_view text, std::size_t begin) const;
  void Enter(std::string_view text, std::size_t begin);
  void Sort();
  std::string_view NameAt(std::size_t place, std::size_t most) const {
    return std::string_view(text_).substr(place, most);
  }

  std::size_t longest_name_;
  std::string text_;                 // in lower case; what lies far behind an anchor is left out
  std::vector<std::size_t> firsts_;  // for each anchor the first place in `text_` where its name may begin,
  std::vector<std::size_t> starts_;  // and for all of them every such place, by the names
  bool sorted_ = false;
  // While pieces are taken: those that are not done with, where in them the next anchor may begin, and up to
  // where they were entered in `text_`.
  std::string pieces_;
  std::size_t next_ = 0;
  std::size_t entered_end_ = 0;
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_ANCHORS_H_
