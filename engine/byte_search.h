#ifndef TESSARIL_ENGINE_BYTE_SEARCH_H_
#define TESSARIL_ENGINE_BYTE_SEARCH_H_

#include <cstddef>
#include <string>
#include <string_view>

namespace tessaril {

enum class LetterCase { kExact, kFolded };

/// Finds a key in texts: byte for byte, or with A to Z and a to z taken as the same. It looks for the two
/// rarest bytes of the key, 32 places at a time where the processor can, and compares the rest only where
/// both stand. Cheap enough to build anew for each file.
class ByteSearch {
 public:
  static constexpr std::size_t kNone = std::string_view::npos;

  ByteSearch(std::string_view key, LetterCase letter_case);

  /// The first place of the key in `text` at or after `from` (from 0), or kNone. An empty key is nowhere.
  std::size_t Find(std::string_view text, std::size_t from = 0) const;

  const std::string& key() const { return key_; }

 private:
  std::size_t FindPlain(std::string_view text, std::size_t from) const;
  std::size_t FindWide(std::string_view text, std::size_t from) const;
  bool KeyStandsAt(const char* place) const;

  std::string key_;  // in lower case when folded
  LetterCase letter_case_;
  std::size_t first_ = 0;   // places of the two bytes in the key that are looked for
  std::size_t second_ = 0;  // (the same place for a key of one byte)
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_BYTE_SEARCH_H_
