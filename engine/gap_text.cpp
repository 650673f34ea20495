#include "engine/gap_text.h"

#include <algorithm>
#include <cstring>

namespace tessaril {

GapText::GapText(ByteBuffer& buffer)
    : buffer_(buffer), gap_start_(buffer.size()), gap_end_(buffer.capacity()) {}

std::string_view GapText::Tail(std::size_t pos) {
  const bool behind_gap = gap_end_ < buffer_.capacity();
  if (!behind_gap) return {buffer_.data() + pos, gap_start_ - pos};
  if (pos < gap_start_) MoveGap(pos);
  return {buffer_.data() + pos + gap_size(), size() - pos};
}

void GapText::AppendSlice(std::size_t begin, std::size_t end, std::string& out) const {
  end = std::min(end, size());
  if (begin >= end) return;
  const std::size_t front_end = std::min(end, gap_start_);
  if (begin < front_end) out.append(buffer_.data() + begin, front_end - begin);
  const std::size_t back_begin = std::max(begin, gap_start_);
  if (back_begin < end) out.append(buffer_.data() + back_begin + gap_size(), end - back_begin);
}

void GapText::Replace(std::size_t begin, std::size_t end, std::string_view text) {
  if (text.size() > end - begin) MakeGap(text.size() - (end - begin));
  MoveGap(begin);
  gap_end_ += end - begin;
  if (!text.empty()) std::memcpy(buffer_.data() + gap_start_, text.data(), text.size());
  gap_start_ += text.size();
}

std::array<std::string_view, 2> GapText::Pieces() const {
  return {std::string_view(buffer_.data(), gap_start_),
          std::string_view(buffer_.data() + gap_end_, buffer_.capacity() - gap_end_)};
}

void GapText::MoveGap(std::size_t pos) {
  char* const data = buffer_.data();
  if (pos < gap_start_) {
    const std::size_t count = gap_start_ - pos;
    std::memmove(data + gap_end_ - count, data + pos, count);
    gap_start_ -= count;
    gap_end_ -= count;
  } else if (pos > gap_start_) {
    const std::size_t count = pos - gap_start_;
    std::memmove(data + gap_start_, data + gap_end_, count);
    gap_start_ += count;
    gap_end_ += count;
  }
}

// An eighth of the text as spare room keeps the cost of all growing in proportion to the text, and a file of
// a gigabyte, with both buffers alive for a moment, below three times its size.
void GapText::MakeGap(std::size_t needed) {
  if (needed <= gap_size()) return;
  const std::size_t length = size();
  const std::size_t back = buffer_.capacity() - gap_end_;
  ByteBuffer grown;
  grown.Reserve(length + needed + std::max<std::size_t>(length / 8, 4096));
  if (gap_start_ > 0) std::memcpy(grown.data(), buffer_.data(), gap_start_);
  if (back > 0) std::memcpy(grown.data() + grown.capacity() - back, buffer_.data() + gap_end_, back);
  buffer_ = std::move(grown);
  gap_end_ = buffer_.capacity() - back;
}

}  // namespace tessaril
