#include "engine/find_chain.h"

#include "engine/ascii.h"

namespace tessaril {
namespace {

// The first place of `token`, which is in lower case, behind the start of the token at `start`, if it is near
// enough to that one's end; else none.
std::size_t FindBehind(std::string_view token, std::string_view text, std::size_t start, std::size_t size) {
  const std::size_t farthest = start + size + Chain::kMostBetween;
  for (std::size_t place = start + 1; place <= farthest && place + token.size() <= text.size(); ++place) {
    if (EqualsLower(text.substr(place, token.size()), token)) return place;
  }
  return ByteSearch::kNone;
}

}  // namespace

Chain::Chain(std::string_view a, std::string_view b, std::string_view c)
    : a_(a, LetterCase::kFolded), a_size_(a.size()), b_(ToLower(b)), c_(ToLower(c)) {}

std::optional<Chain::Place> FindChain(const Chain& chain, std::string_view text, std::size_t from) {
  for (;;) {
    const std::size_t a = chain.a_.Find(text, from);
    if (a == ByteSearch::kNone) return std::nullopt;
    from = a + 1;
    const std::size_t b = FindBehind(chain.b_, text, a, chain.a_size_);
    if (b == ByteSearch::kNone) continue;
    from = b + 1;
    const std::size_t c = FindBehind(chain.c_, text, b, chain.b_.size());
    if (c != ByteSearch::kNone) return Chain::Place{a, c};
  }
}

}  // namespace tessaril
