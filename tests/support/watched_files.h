#ifndef TESSARIL_TESTS_SUPPORT_WATCHED_FILES_H_
#define TESSARIL_TESTS_SUPPORT_WATCHED_FILES_H_

#include <filesystem>
#include <fstream>
#include <functional>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "engine/files.h"

namespace tessaril {

/// What a file on the disk holds; nothing where it cannot be read.
inline std::string ContentOf(const std::string& path) {
  std::ostringstream content;
  std::error_code loop;
  if (std::filesystem::is_regular_file(path, loop)) content << std::ifstream(path, std::ios::binary).rdbuf();
  return content.str();
}

/// A door to the disk with a watch at it: before a call `before` may do anything, or let the call fail,
/// undone. After a call that changes something it is looked whether the disk holds what the answer says.
class WatchedFiles : public Files {
 public:
  explicit WatchedFiles(Files& inner) : inner_(inner) {}

  std::function<Status(std::string_view call, const std::string& path)> before;
  bool alone = true;                    // nobody else changes the files
  std::set<std::string> read;           // paths of the pages that were read
  std::set<std::string> written;        // and of those that were replaced
  std::vector<std::string> violations;  // what a call left that it may not leave

  Status ListFolder(const std::string& folder, std::vector<FolderEntry>& entries, FileStamp& stamp) override {
    entries.clear();
    Status status = Before("ListFolder", folder);
    return status.ok() ? inner_.ListFolder(folder, entries, stamp) : status;
  }
  bool FolderIsUnchanged(const std::string& folder, const FileStamp& stamp) override {
    return inner_.FolderIsUnchanged(folder, stamp);
  }
  Status EnterFolder(const std::string& folder) override {
    Status status = Before("EnterFolder", folder);
    return status.ok() ? inner_.EnterFolder(folder) : status;
  }
  const std::string& CurrentFolder() const override { return inner_.CurrentFolder(); }
  Status Read(const std::string& path, ByteBuffer& bytes, FileStamp& stamp) override {
    bytes.SetSize(0);
    Status status = Before("Read", path);
    if (status.ok()) status = inner_.Read(path, bytes, stamp);
    if (status.ok()) read.insert(path);
    return status;
  }
  Status ReadStart(const std::string& path, std::size_t most, ByteBuffer& bytes, FileStamp& stamp) override {
    bytes.SetSize(0);
    Status status = Before("ReadStart", path);
    return status.ok() ? inner_.ReadStart(path, most, bytes, stamp) : status;
  }
  Status Examine(const std::string& path, FileStamp& stamp) override {
    Status status = Before("Examine", path);
    return status.ok() ? inner_.Examine(path, stamp) : status;
  }
  Status ReadPieces(const std::string& path, FileStamp& stamp, ByteBuffer& memory,
                    const UsePiece& use) override {
    Status status = Before("ReadPieces", path);
    return status.ok() ? inner_.ReadPieces(path, stamp, memory, use) : status;
  }
  Status Rename(const std::string& folder, const std::string& from, const std::string& to) override {
    Status status = Before("Rename", folder);
    const std::string content = ContentOf(folder + "/" + from);
    if (status.ok()) status = inner_.Rename(folder, from, to);
    const std::string& name = status.ok() ? to : from;
    if (alone && ContentOf(folder + "/" + name) != content) violations.push_back("Rename lost " + from);
    return status;
  }
  Status ReplaceContent(const std::string& path, FileStamp& stamp,
                        std::span<const std::string_view> pieces) override {
    Status status = Before("ReplaceContent", path);
    const std::string old_content = ContentOf(path);
    if (status.ok()) status = inner_.ReplaceContent(path, stamp, pieces);
    if (status.ok()) written.insert(path);
    std::string right;
    for (const std::string_view piece : pieces) right += piece;
    if (!status.ok()) right = old_content;
    if (alone && ContentOf(KeptAt(path, status.reason())) != right)
      violations.push_back(path + " is neither old nor new: " + status.reason());
    return status;
  }
  Status FlushFolder() override {
    const Status flushed = inner_.FlushFolder();
    Status status = Before("FlushFolder", inner_.CurrentFolder());
    return status.ok() ? flushed : status;
  }

  /// Where the old content of a page is, after a failure with this reason.
  static std::string KeptAt(const std::string& path, const std::string& reason) {
    constexpr std::string_view kKept = "its old content is in ";
    const std::size_t at = reason.find(kKept);
    if (at == std::string::npos) return path;
    const std::string name = reason.substr(at + kKept.size());
    return std::filesystem::canonical(path).parent_path() / name.substr(0, name.find(';'));
  }

 private:
  Status Before(std::string_view call, const std::string& path) {
    return before ? before(call, path) : Status();
  }

  Files& inner_;
};

}  // namespace tessaril

#endif  // TESSARIL_TESTS_SUPPORT_WATCHED_FILES_H_
