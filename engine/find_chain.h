#ifndef TESSARIL_ENGINE_FIND_CHAIN_H_
#define TESSARIL_ENGINE_FIND_CHAIN_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "engine/byte_search.h"

namespace tessaril {

/// Three tokens of which each follows closely on the one before it, such as an attribute's name, "="
/// and "#". Letters of both cases are taken as the same.
class Chain {
 public:
  /// Bytes that may stand between the end of a token and the start of the next.
  static constexpr std::size_t kMostBetween = 4;

  /// None of the tokens is empty.
  Chain(std::string_view a, std::string_view b, std::string_view c);

  /// Where a chain stands: its first byte, and the first byte of its last token.
  struct Place {
    std::size_t begin;
    std::size_t last;
  };

 private:
  friend std::optional<Place> FindChain(const Chain& chain, std::string_view text, std::size_t from);

  ByteSearch a_;
  std::size_t a_size_;
  std::string b_;  // in lower case
  std::string c_;
};

/// The first chain that begins at or after `from`. A token counts where it stands first behind the start of
/// the token before it; where one is missing or too far off, the next try begins behind the start of the last
/// token that was found. To go on behind a chain whose continuation did not please, start behind its `last`.
std::optional<Chain::Place> FindChain(const Chain& chain, std::string_view text, std::size_t from);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_FIND_CHAIN_H_
