#ifndef TESSARIL_TESTS_SUPPORT_MEMORY_FILES_H_
#define TESSARIL_TESTS_SUPPORT_MEMORY_FILES_H_

#include <map>
#include <set>
#include <string>
#include <vector>

#include "engine/files.h"

namespace tessaril {

/// A file system in memory: paths and contents, folders come of the paths. It records what was written, and
/// fails where a test wants it to.
class MemoryFiles : public Files {
 public:
  std::map<std::string, std::string> contents;
  std::set<std::string> unreadable;  // files, and folders to list
  std::set<std::string> damaged;     // files that can be opened and not be read
  std::set<std::string> unwritable;  // files; also not to be renamed
  std::vector<std::string> writes;   // paths, in order
  std::vector<std::string> visits;   // folders entered, in order

  Status ListFolder(const std::string& folder, std::vector<FolderEntry>& entries, FileStamp& stamp) override;
  bool FolderIsUnchanged(const std::string&, const FileStamp&) override { return false; }
  Status EnterFolder(const std::string& folder) override;
  const std::string& CurrentFolder() const override { return current_; }
  Status Read(const std::string& path, ByteBuffer& bytes, FileStamp& stamp) override;
  Status ReadStart(const std::string& path, std::size_t most, ByteBuffer& bytes, FileStamp& stamp) override;
  Status Examine(const std::string& path, FileStamp& stamp) override;
  Status ReadPieces(const std::string& path, FileStamp& stamp, ByteBuffer& memory,
                    const UsePiece& use) override;
  Status Rename(const std::string& folder, const std::string& from, const std::string& to) override;
  Status ReplaceContent(const std::string& path, FileStamp& stamp,
                        std::span<const std::string_view> pieces) override;
  Status FlushFolder() override { return {}; }

 private:
  std::string Plain(const std::string& path) const;

  std::string current_;
  std::map<std::string, std::uint64_t> versions_;  // how often each file was written
};

}  // namespace tessaril

#endif  // TESSARIL_TESTS_SUPPORT_MEMORY_FILES_H_
