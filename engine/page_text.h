#ifndef TESSARIL_ENGINE_PAGE_TEXT_H_
#define TESSARIL_ENGINE_PAGE_TEXT_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "engine/gap_text.h"
#include "engine/page_encoding.h"

namespace tessaril {

/// The text of one page while a worker has it in hand: its bytes, what they mean and how its lines end.
/// Encoding and line end are those of the page as it was read, and stay so whatever is edited; they are
/// looked for only when somebody asks, at the latest before the first edit, because most pages of a run hold
/// nothing of interest.
class PageText {
 public:
  /// `buffer` holds the page as read and must outlive this object.
  explicit PageText(ByteBuffer& buffer) : text_(buffer) {}

  /// A page of which it is known already what its bytes mean and how its lines end.
  PageText(ByteBuffer& buffer, PageEncoding encoding, std::string_view line_end)
      : text_(buffer), encoding_(encoding), line_end_(line_end) {}

  std::size_t size() const { return text_.size(); }
  std::string_view Tail(std::size_t pos) { return text_.Tail(pos); }
  void AppendSlice(std::size_t begin, std::size_t end, std::string& out) const {
    text_.AppendSlice(begin, end, out);
  }
  std::array<std::string_view, 2> Pieces() const { return text_.Pieces(); }

  PageEncoding Encoding();

  /// CR LF when the page holds one such pair anywhere, else LF.
  std::string_view LineEnd();

  /// The nearest place at or before (at or after) `pos` that does not lie inside a character. In an 8-bit
  /// page that is `pos` itself.
  std::size_t CharacterAtOrBefore(std::size_t pos);
  std::size_t CharacterAtOrAfter(std::size_t pos);

  struct Span {
    std::size_t begin;
    std::size_t end;
  };
  /// The bytes from `begin` up to, not including, `end`, cut to the text and then widened to whole
  /// characters.
  Span WholeCharacters(std::size_t begin, std::size_t end);

  /// Puts `text` in the place of the bytes from `begin` up to, not including, `end`.
  void Replace(std::size_t begin, std::size_t end, std::string_view text);

 private:
  std::optional<Span> SequenceAround(std::size_t pos);

  GapText text_;
  std::optional<PageEncoding> encoding_;
  std::optional<std::string_view> line_end_;
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_PAGE_TEXT_H_
