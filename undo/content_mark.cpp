#include "undo/content_mark.h"

#include <xxhash.h>

#include <array>
#include <charconv>
#include <cstdio>
#include <limits>
#include <new>

namespace tessaril {
namespace {

bool ReadNumber(std::string_view text, int base, std::uint64_t& number) {
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number, base);
  return error == std::errc() && stop == end;
}

}  // namespace

void ContentMarker::Free::operator()(XXH3_state_s* state) const {
  XXH3_freeState(state);
}

ContentMarker::ContentMarker() : state_(XXH3_createState()) {
  if (state_ == nullptr) throw std::bad_alloc();
  XXH3_128bits_reset(state_.get());
}

void ContentMarker::Add(std::string_view piece) {
  XXH3_128bits_update(state_.get(), piece.data(), piece.size());
  size_ += piece.size();
}

ContentMark ContentMarker::Mark() const {
  const XXH128_hash_t hash = XXH3_128bits_digest(state_.get());
  return {size_, hash.high64, hash.low64};
}

std::string MarkText(const ContentMark& mark) {
  std::array<char, 64> text;
  std::snprintf(text.data(), text.size(), "%llu:%016llx%016llx", static_cast<unsigned long long>(mark.size),
                static_cast<unsigned long long>(mark.high), static_cast<unsigned long long>(mark.low));
  return text.data();
}

std::optional<ContentMark> MarkFromText(std::string_view text) {
  constexpr std::size_t kDigits = 16;
  const std::size_t colon = text.find(':');
  if (colon == std::string_view::npos || text.size() != colon + 1 + 2 * kDigits) return std::nullopt;
  ContentMark mark;
  const bool valid = ReadNumber(text.substr(0, colon), 10, mark.size) &&
                     ReadNumber(text.substr(colon + 1, kDigits), 16, mark.high) &&
                     ReadNumber(text.substr(colon + 1 + kDigits), 16, mark.low);
  return valid ? std::optional(mark) : std::nullopt;
}

std::string LineCheck(std::string_view line) {
  std::array<char, 32> text;
  std::snprintf(text.data(), text.size(), "%016llx",
                static_cast<unsigned long long>(XXH3_64bits(line.data(), line.size())));
  return text.data();
}

ContentMark MarkOf(std::span<const std::string_view> pieces) {
  ContentMarker marker;
  for (const std::string_view piece : pieces) marker.Add(piece);
  return marker.Mark();
}

Status ReadContent(Files& files, const std::string& path, FileStamp& stamp, ByteBuffer& memory,
                   const std::function<void(std::string_view piece)>& use) {
  if (Status status = files.Examine(path, stamp); !status.ok()) return status;
  constexpr std::uint64_t kMostInPieces = std::numeric_limits<std::int32_t>::max();  // of the door
  if (stamp.size <= kMostInPieces) {
    return files.ReadPieces(path, stamp, memory, [&use](std::string_view piece, bool) { use(piece); });
  }
  Status status = files.Read(path, memory, stamp);
  if (status.ok()) use(memory.view());
  return status;
}

Status MarkFile(Files& files, const std::string& path, ByteBuffer& memory, FileStamp& stamp,
                ContentMark& mark) {
  ContentMarker marker;
  Status status =
      ReadContent(files, path, stamp, memory, [&marker](std::string_view piece) { marker.Add(piece); });
  mark = marker.Mark();
  return status;
}

}  // namespace tessaril
