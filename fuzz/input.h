#ifndef TESSARIL_FUZZ_INPUT_H_
#define TESSARIL_FUZZ_INPUT_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

// What every target needs: the input taken apart, and a loud end when something does not hold.

namespace tessaril {

/// The bytes of one input, taken from the front: single bytes that choose, then texts. Of a used up input
/// every byte is 0 and every text empty.
class Input {
 public:
  static constexpr char kFieldEnd = '\x1E';  // behind each text but the last

  Input(const std::uint8_t* data, std::size_t size)
      : rest_(reinterpret_cast<const char*>(data), size) {}  // bytes are bytes
  explicit Input(std::string_view bytes) : rest_(bytes) {}

  bool empty() const { return rest_.empty(); }

  unsigned char Byte() {
    if (rest_.empty()) return 0;
    const char byte = rest_.front();
    rest_.remove_prefix(1);
    return static_cast<unsigned char>(byte);
  }
  /// 0 up to, not including, `bound`, which is at most 256.
  std::size_t Below(std::size_t bound) { return Byte() % bound; }
  bool Flag() { return Byte() % 2 == 1; }

  /// A text up to its end, which is taken, too.
  std::string Field(char end = kFieldEnd) {
    const std::size_t size = std::min(rest_.find(end), rest_.size());
    const std::string field(rest_.substr(0, size));
    rest_.remove_prefix(std::min(size + 1, rest_.size()));
    return field;
  }
  std::string Rest() {
    const std::string rest(rest_);
    rest_ = {};
    return rest;
  }

 private:
  std::string_view rest_;
};

/// Control characters, "\" and bytes above 126 as "\xHH".
inline std::string Readable(std::string_view bytes) {
  std::string text;
  for (const char c : bytes) {
    char escaped[8];
    std::snprintf(escaped, sizeof escaped, "\\x%02X", static_cast<unsigned>(static_cast<unsigned char>(c)));
    if (c < ' ' || c > '~' || c == '\\') {
      text += escaped;
    } else {
      text += c;
    }
  }
  return text;
}

/// Ends the program, as a fault of the program under test.
[[noreturn]] inline void Fail(std::string_view what) {
  std::fprintf(stderr, "DOES NOT HOLD: %.*s\n", static_cast<int>(what.size()), what.data());
  std::abort();
}

inline void Require(bool holds, std::string_view what) {
  if (!holds) Fail(what);
}

inline void RequireEqual(std::string_view is, std::string_view expected, std::string_view what) {
  if (is != expected)
    Fail(std::string(what) + "\n  is:       " + Readable(is) + "\n  expected: " + Readable(expected));
}

}  // namespace tessaril

#endif  // TESSARIL_FUZZ_INPUT_H_
