#ifndef TESSARIL_UI_EDITOR_EDITED_FILE_H_
#define TESSARIL_UI_EDITOR_EDITED_FILE_H_

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "engine/files.h"
#include "engine/page_encoding.h"

namespace tessaril {

/// The text of a file as the editor takes it up.
struct LoadedText {
  std::string bytes;
  PageEncoding encoding = PageEncoding::kEightBit;
  std::string_view line_end = "\n";  // the page's own
  std::uint64_t size = 0;            // bytes of the whole file
  bool is_cut = false;               // it was too long, and `bytes` are only its beginning
};

/// The file that the editor's text belongs to: what was read of it, and whether it may be written back.
class EditedFile {
 public:
  /// A file of more bytes is cut to kShown bytes; up to three more where these would halve a character or a
  /// CR LF.
  static constexpr std::size_t kLimit = 65536;
  static constexpr std::size_t kShown = 56000;

  explicit EditedFile(Files& files) : files_(files) {}

  /// Where the text is written; empty before a file was loaded.
  const std::string& path() const { return path_; }

  /// Reads a file. On failure the file is still the one that it was.
  Status Load(const std::string& path, LoadedText& text);

  /// From now on the text belongs to a file that is not to be there yet.
  void BeginNew(const std::string& path);

  /// Whether the file holds more than what was read of it.
  bool IsCut() const { return is_cut_; }

  /// Whether there is a file at the path, and not as it was when it was read or written last.
  bool HasChanged() const;

  /// Whether `path` is another name of the file, or the same.
  bool IsAt(const std::string& path) const;

  /// Makes `text` all of the file at `path` by `save`; it is the file from then on, or everything is as it
  /// was.
  using SaveContent = std::function<Status(const std::string& path, std::string_view text)>;
  Status Save(const std::string& path, std::string_view text, const SaveContent& save);

 private:
  Files& files_;
  std::string path_;
  std::optional<FileStamp> stamp_;  // nothing when it was neither read nor written
  bool is_cut_ = false;
};

}  // namespace tessaril

#endif  // TESSARIL_UI_EDITOR_EDITED_FILE_H_
