#include "engine/page_text.h"

#include <algorithm>

#include "engine/ascii.h"
#include "engine/characters.h"

namespace tessaril {

PageEncoding PageText::Encoding() {
  if (!encoding_) encoding_ = DetectEncoding(text_.Tail(0));
  return *encoding_;
}

std::string_view PageText::LineEnd() {
  if (!line_end_) line_end_ = text_.Tail(0).find(CrLf) != std::string_view::npos ? CrLf : "\n";
  return *line_end_;
}

std::size_t PageText::CharacterAtOrBefore(std::size_t pos) {
  const std::optional<Span> sequence = SequenceAround(pos);
  return sequence ? sequence->begin : pos;
}

std::size_t PageText::CharacterAtOrAfter(std::size_t pos) {
  const std::optional<Span> sequence = SequenceAround(pos);
  return sequence ? sequence->end : pos;
}

PageText::Span PageText::WholeCharacters(std::size_t begin, std::size_t end) {
  return {CharacterAtOrBefore(std::min(begin, size())), CharacterAtOrAfter(std::min(end, size()))};
}

void PageText::Replace(std::size_t begin, std::size_t end, std::string_view text) {
  Encoding();
  LineEnd();
  text_.Replace(begin, end, text);
}

// The sequence that begins before `pos` and ends behind it. A byte that continues no sequence (an edit may
// have brought it) is a character by itself.
std::optional<PageText::Span> PageText::SequenceAround(std::size_t pos) {
  const auto is_continuation = [this](std::size_t at) { return IsContinuation(text_[at]); };
  if (pos >= size() || !is_continuation(pos) || Encoding() != PageEncoding::kUtf8) return std::nullopt;
  std::size_t begin = pos;
  while (begin > 0 && pos - begin < 3 && is_continuation(begin)) --begin;
  std::string bytes;
  text_.AppendSlice(begin, begin + 4, bytes);
  const std::size_t length = SequenceLength(bytes);
  if (begin + length <= pos) return std::nullopt;
  return Span{begin, begin + length};
}

}  // namespace tessaril
