#include "engine/byte_search.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

#include "engine/ascii.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace tessaril {
namespace {

// How common a byte is in pages, 0 for the rarest. Letters by their order of frequency in English text and
// in tags; what the order leaves open does not matter, a bad choice costs time only.
constexpr std::array<std::uint8_t, 256> MakeRanks() {
  std::array<std::uint8_t, 256> ranks{};
  constexpr std::string_view rare_to_common =
      "ZQXJKVWYUGFBHPMRNDOLTSCIAE"
      "zqjxkv98765432w0y1bgf_%&;,#'pmu!?:*hcd.()\"=->/</lnrsoiate\n\r ";
  std::uint8_t rank = 10;
  for (const char c : rare_to_common) {
    ranks[static_cast<unsigned char>(c)] = rank;
    rank = static_cast<std::uint8_t>(rank + 2);
  }
  return ranks;
}
constexpr std::array<std::uint8_t, 256> kRanks = MakeRanks();

constexpr std::uint8_t kCommon = kRanks[static_cast<unsigned char>('d')];

// The bit that parts the two cases of a letter, 0 for every other byte.
char CaseBit(char c, LetterCase letter_case) {
  return letter_case == LetterCase::kFolded && IsAsciiLetter(c) ? '\x20' : '\0';
}

#if defined(__x86_64__)
bool HasWideCompare() {
  static const bool has = __builtin_cpu_supports("avx2") != 0;
  return has;
}
#endif

}  // namespace

ByteSearch::ByteSearch(std::string_view key, LetterCase letter_case)
    : key_(letter_case == LetterCase::kFolded ? ToLower(key) : std::string(key)), letter_case_(letter_case) {
  const std::size_t in_head = std::min(key_.size(), sizeof head_);
  std::array<char, sizeof head_> case_bits{};
  for (std::size_t i = 0; i < in_head; ++i) case_bits[i] = CaseBit(key_[i], letter_case);
  std::memcpy(&head_, key_.data(), in_head);
  std::memcpy(&head_case_, case_bits.data(), sizeof head_case_);
  std::memset(&head_mask_, 0xFF, in_head);
  ChooseRareBytes();
}

ByteSearch ByteSearch::ForFirstWord(std::string_view key, char next) {
  ByteSearch search(key, LetterCase::kExact);
  search.first_word_ = true;
  search.next_ = next;
  return search;
}

void ByteSearch::ChooseRareBytes() {
  if (key_.size() < 2) return;
  const auto rank = [this](std::size_t i) { return kRanks[static_cast<unsigned char>(key_[i])]; };
  second_ = 1;
  if (rank(second_) < rank(first_)) std::swap(first_, second_);
  for (std::size_t i = 2; i < key_.size(); ++i) {
    if (rank(i) < rank(first_)) {
      second_ = first_;
      first_ = i;
    } else if (rank(i) < rank(second_)) {
      second_ = i;
    }
  }
}

std::size_t ByteSearch::Find(std::string_view text, std::size_t from) const {
  if (key_.empty() || from > text.size() || text.size() - from < key_.size()) return kNone;
#if defined(__x86_64__)
  if (HasWideCompare()) return FindWide(text, from);
#endif
  return FindPlain(text, from);
}

inline bool ByteSearch::KeyStandsAt(const char* place, const char* text_end) const {
  if (text_end - place < static_cast<std::ptrdiff_t>(sizeof head_)) return RestStandsAt(place, 0);
  std::uint64_t text_head;
  std::memcpy(&text_head, place, sizeof text_head);
  if (((text_head | head_case_) & head_mask_) != head_) return false;
  return key_.size() <= sizeof head_ || RestStandsAt(place, sizeof head_);
}

bool ByteSearch::RestStandsAt(const char* place, std::size_t from) const {
  if (letter_case_ == LetterCase::kExact) {
    return std::memcmp(place + from, key_.data() + from, key_.size() - from) == 0;
  }
  for (std::size_t i = from; i < key_.size(); ++i) {
    if (ToLower(place[i]) != key_[i]) return false;
  }
  return true;
}

std::size_t ByteSearch::FindPlain(std::string_view text, std::size_t from) const {
  const std::size_t last = text.size() - key_.size();
  const char sought = key_[first_];
  const bool two_cases = CaseBit(sought, letter_case_) != 0;
  for (std::size_t place = from; place <= last; ++place) {
    if (!two_cases) {
      const void* const hit = std::memchr(text.data() + place + first_, sought, last - place + 1);
      if (hit == nullptr) return kNone;
      place = static_cast<std::size_t>(static_cast<const char*>(hit) - text.data()) - first_;
    } else if (ToLower(text[place + first_]) != sought) {
      continue;
    }
    if (KeyStandsAt(text.data() + place, text.data() + text.size())) return place;
  }
  return kNone;
}

#if defined(__x86_64__)

__attribute__((target("avx2"))) static inline __m256i Load(const char* place) {
  return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(place));
}

// Bits for the bytes up to "'", among which are the blank, all line ends and "&".
__attribute__((target("avx2"))) static inline __m256i UpToQuote(__m256i bytes) {
  const __m256i quote = _mm256_set1_epi8('\'');
  return _mm256_cmpeq_epi8(_mm256_max_epu8(bytes, quote), quote);
}

// Bits for the places where behind the key, which ends at `behind`, a blank and `next` follow or a break may.
__attribute__((target("avx2"))) static inline __m256i Follows(const char* behind, __m256i blank,
                                                              __m256i next) {
  const __m256i first = Load(behind);
  const __m256i second = Load(behind + 1);
  const __m256i goes_on = _mm256_or_si256(_mm256_cmpeq_epi8(second, next), UpToQuote(second));
  const __m256i wrong_word = _mm256_andnot_si256(goes_on, _mm256_cmpeq_epi8(first, blank));
  return _mm256_andnot_si256(wrong_word, UpToQuote(first));
}

// Where both rare bytes stand at their places, a bit is set; the letters' case bit is set in text and key
// alike before they are compared, which for letters leaves exactly the two cases of the letter.
__attribute__((target("avx2"))) std::size_t ByteSearch::FindWide(std::string_view text,
                                                                 std::size_t from) const {
  constexpr std::size_t kWidth = 32;
  const bool first_word = first_word_;
  const bool common_word = first_word && kRanks[static_cast<unsigned char>(key_[second_])] >= kCommon;
  const std::size_t behind_key = first_word ? 2 : 0;  // bytes looked at there
  const std::size_t last = text.size() - key_.size();
  const char first_bit = CaseBit(key_[first_], letter_case_);
  const char second_bit = CaseBit(key_[second_], letter_case_);
  const __m256i first_mask = _mm256_set1_epi8(first_bit);
  const __m256i second_mask = _mm256_set1_epi8(second_bit);
  const __m256i first_byte = _mm256_set1_epi8(static_cast<char>(key_[first_] | first_bit));
  const __m256i second_byte = _mm256_set1_epi8(static_cast<char>(key_[second_] | second_bit));
  const __m256i blank = _mm256_set1_epi8(' ');
  const __m256i next = _mm256_set1_epi8(next_);
  const char* const text_end = text.data() + text.size();
  std::size_t place = from;
  for (; place + kWidth + behind_key <= last + 1; place += kWidth) {
    const char* const base = text.data() + place;
    const __m256i firsts = _mm256_cmpeq_epi8(_mm256_or_si256(Load(base + first_), first_mask), first_byte);
    const __m256i seconds =
        _mm256_cmpeq_epi8(_mm256_or_si256(Load(base + second_), second_mask), second_byte);
    __m256i both = _mm256_and_si256(firsts, seconds);
    if (common_word) both = _mm256_and_si256(both, Follows(base + key_.size(), blank, next));
    auto bits = static_cast<std::uint32_t>(_mm256_movemask_epi8(both));
    if (first_word && !common_word && bits != 0) {
      bits &= static_cast<std::uint32_t>(_mm256_movemask_epi8(Follows(base + key_.size(), blank, next)));
    }
    for (; bits != 0; bits &= bits - 1) {
      const auto offset = static_cast<std::size_t>(std::countr_zero(bits));
      if (KeyStandsAt(base + offset, text_end)) return place + offset;
    }
  }
  return place <= last ? FindPlain(text, place) : kNone;
}

#endif

std::size_t FindEither(char a, char b, std::string_view text, std::size_t from) {
  std::size_t place = from;
#if defined(__x86_64__)
  constexpr std::size_t kWidth = 16;
  const __m128i first = _mm_set1_epi8(a);
  const __m128i second = _mm_set1_epi8(b);
  for (; place + kWidth <= text.size(); place += kWidth) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + place));
    const int bits =
        _mm_movemask_epi8(_mm_or_si128(_mm_cmpeq_epi8(bytes, first), _mm_cmpeq_epi8(bytes, second)));
    if (bits != 0) return place + static_cast<std::size_t>(std::countr_zero(static_cast<unsigned>(bits)));
  }
#endif
  for (; place < text.size(); ++place) {
    if (text[place] == a || text[place] == b) return place;
  }
  return ByteSearch::kNone;
}

std::size_t FindHighByteOr(char mark, std::string_view text) {
  std::size_t place = 0;
#if defined(__x86_64__)
  constexpr std::size_t kWidth = 16;
  const __m128i marks = _mm_set1_epi8(mark);
  for (; place + kWidth <= text.size(); place += kWidth) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + place));
    const int bits = _mm_movemask_epi8(_mm_or_si128(bytes, _mm_cmpeq_epi8(bytes, marks)));
    if (bits != 0) return place + static_cast<std::size_t>(std::countr_zero(static_cast<unsigned>(bits)));
  }
#endif
  for (; place < text.size(); ++place) {
    if (text[place] == mark || static_cast<unsigned char>(text[place]) > 127) return place;
  }
  return ByteSearch::kNone;
}

}  // namespace tessaril
