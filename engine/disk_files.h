#ifndef TESSARIL_ENGINE_DISK_FILES_H_
#define TESSARIL_ENGINE_DISK_FILES_H_

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "engine/file_handle.h"
#include "engine/files.h"

namespace tessaril {

/// The door to the disk. It keeps the current folder open, because nearly all files that a run touches lie
/// there.
class DiskFiles : public Files {
 public:
  DiskFiles() = default;
  ~DiskFiles() override { (void)FlushFolder(); }
  DiskFiles(const DiskFiles&) = delete;
  DiskFiles& operator=(const DiskFiles&) = delete;

  Status ListFolder(const std::string& folder, std::vector<FolderEntry>& entries, FileStamp& stamp) override;
  bool FolderIsUnchanged(const std::string& folder, const FileStamp& stamp) override;
  Status EnterFolder(const std::string& folder) override;
  const std::string& CurrentFolder() const override { return current_folder_; }
  Status Read(const std::string& path, ByteBuffer& bytes, FileStamp& stamp) override;
  Status ReadStart(const std::string& path, std::size_t most, ByteBuffer& bytes, FileStamp& stamp) override;
  Status Examine(const std::string& path, FileStamp& stamp) override;
  Status ReadPieces(const std::string& path, FileStamp& stamp, ByteBuffer& memory,
                    const UsePiece& use) override;
  Status Rename(const std::string& folder, const std::string& from, const std::string& to) override;
  Status ReplaceContent(const std::string& path, FileStamp& stamp,
                        std::span<const std::string_view> pieces) override;
  Status FlushFolder() final;

 private:
  // An open folder to look a name up in: the current one, or one opened for the moment.
  struct OpenFolder {
    int descriptor = -1;
    FileHandle own;
  };
  // What the folder is opened for: to open a file in it, or to change and flush it as well.
  enum class Purpose { kRead, kChange };
  Status FolderFor(std::string_view folder, Purpose purpose, OpenFolder& open_folder);
  // An open folder and a path relative to it that stand for `path`, which then is short enough for the
  // system.
  struct Place {
    OpenFolder folder;
    std::string path;
  };
  Status PlaceOf(const std::string& path, Place& place);
  Status OpenLinked(const std::string& path, FileHandle& file, FileStamp& stamp);
  bool IsStillCurrent() const;
  void NoteFlush(const OpenFolder& folder, Status flushed);
  void RemoveLeftovers(std::string_view path, const OpenFolder& folder);

  std::string current_folder_;
  FileHandle current_;
  bool current_is_flushed_ = true;
  Status flush_failure_;  // of another folder, to be told by the next FlushFolder
  // Names of temporary files that were listed, by their folders.
  std::map<std::string, std::vector<std::string>, std::less<>> leftovers_;
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_DISK_FILES_H_
