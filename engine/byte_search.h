#ifndef TESSARIL_ENGINE_BYTE_SEARCH_H_
#define TESSARIL_ENGINE_BYTE_SEARCH_H_

#include <cstddef>
#include <cstdint>
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

  /// Of the places of `key` only those have to be found where a blank stands behind it with `next` behind
  /// that, or where a line end or an entity may be involved; others may be passed over. For the first word of
  /// a phrase, which tends to be a common one.
  static ByteSearch ForFirstWord(std::string_view key, char next);

  /// The first place of the key in `text` at or after `from` (from 0), or kNone. An empty key is nowhere.
  std::size_t Find(std::string_view text, std::size_t from = 0) const;

 private:
  void ChooseRareBytes();
  std::size_t FindPlain(std::string_view text, std::size_t from) const;
  std::size_t FindWide(std::string_view text, std::size_t from) const;
  bool KeyStandsAt(const char* place, const char* text_end) const;
  bool RestStandsAt(const char* place, std::size_t from) const;

  bool first_word_ = false;
  char next_ = '\0';
  std::string key_;  // in lower case when folded
  LetterCase letter_case_;
  std::size_t first_ = 0;   // places of the two bytes in the key that are looked for
  std::size_t second_ = 0;  // (the same place for a key of one byte)
  // The first eight bytes of the key as one number, for a text whose case bits are set where the key has
  // letters to be folded, and which of these bytes there are.
  std::uint64_t head_ = 0;
  std::uint64_t head_case_ = 0;
  std::uint64_t head_mask_ = 0;
};

/// The first place in `text`, at or after `from`, of one of two bytes; ByteSearch::kNone when there is none.
std::size_t FindEither(char a, char b, std::string_view text, std::size_t from);

/// The first place in `text` of a byte above 127 or of `mark`, which is below; ByteSearch::kNone when there
/// is neither.
std::size_t FindHighByteOr(char mark, std::string_view text);

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_BYTE_SEARCH_H_
