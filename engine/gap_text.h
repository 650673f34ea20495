#ifndef TESSARIL_ENGINE_GAP_TEXT_H_
#define TESSARIL_ENGINE_GAP_TEXT_H_

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "engine/byte_buffer.h"

namespace tessaril {

/// The bytes of a file while they are searched and changed. The text lies in its buffer as two runs with a
/// gap between them; an edit moves the gap to its place, so that edits which go through the text from front
/// to back cost time in proportion to the text, however many they are. Positions are bytes, counted from 0.
class GapText {
 public:
  /// Takes the content of `buffer` as the text and works in its memory. The buffer must outlive the text and
  /// is not used otherwise meanwhile.
  explicit GapText(ByteBuffer& buffer);

  std::size_t size() const { return gap_start_ + (buffer_.capacity() - gap_end_); }

  /// The byte at `pos`, which must be below size().
  char operator[](std::size_t pos) const { return buffer_.data()[pos < gap_start_ ? pos : pos + gap_size()]; }

  /// All from `pos` (at most size()) to the end, in one piece. Valid until the next edit or call of Tail.
  std::string_view Tail(std::size_t pos);

  /// Appends the bytes from `begin` up to, not including, `end` to `out`; both are cut to the text.
  void AppendSlice(std::size_t begin, std::size_t end, std::string& out) const;

  /// Puts `text` in the place of the bytes from `begin` up to, not including, `end` (begin <= end <= size()).
  /// `text` must not lie in this text. Throws std::bad_alloc, the text is then unchanged.
  void Replace(std::size_t begin, std::size_t end, std::string_view text);

  /// The whole text as two pieces, either of which may be empty.
  std::array<std::string_view, 2> Pieces() const;

 private:
  std::size_t gap_size() const { return gap_end_ - gap_start_; }
  void MoveGap(std::size_t pos);
  void MakeGap(std::size_t needed);

  ByteBuffer& buffer_;
  std::size_t gap_start_;
  std::size_t gap_end_;
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_GAP_TEXT_H_
