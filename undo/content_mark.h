#ifndef TESSARIL_UNDO_CONTENT_MARK_H_
#define TESSARIL_UNDO_CONTENT_MARK_H_

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "engine/files.h"

struct XXH3_state_s;

namespace tessaril {

/// What tells one content of a file from another: its size and a 128-bit hash of its bytes (XXH3).
struct ContentMark {
  std::uint64_t size = 0;  // bytes
  std::uint64_t high = 0;
  std::uint64_t low = 0;
  bool operator==(const ContentMark&) const = default;
};

/// The size in decimal digits, ":" and 32 hexadecimal digits.
std::string MarkText(const ContentMark& mark);
std::optional<ContentMark> MarkFromText(std::string_view text);

/// The check of a line of a journal: 16 hexadecimal digits, the XXH3 hash of what stands before it.
std::string LineCheck(std::string_view line);

/// Makes the mark of a content that comes in pieces.
class ContentMarker {
 public:
  ContentMarker();  // may throw std::bad_alloc
  void Add(std::string_view piece);
  ContentMark Mark() const;

 private:
  struct Free {
    void operator()(XXH3_state_s* state) const;
  };
  std::unique_ptr<XXH3_state_s, Free> state_;
  std::uint64_t size_ = 0;
};

ContentMark MarkOf(std::span<const std::string_view> pieces);

/// Gives the content of a file to `use` piece by piece, whatever its size, and its stamp; `memory` is used
/// for that.
Status ReadContent(Files& files, const std::string& path, FileStamp& stamp, ByteBuffer& memory,
                   const std::function<void(std::string_view piece)>& use);

/// The mark of what a file holds, and its stamp.
Status MarkFile(Files& files, const std::string& path, ByteBuffer& memory, FileStamp& stamp,
                ContentMark& mark);

}  // namespace tessaril

#endif  // TESSARIL_UNDO_CONTENT_MARK_H_
