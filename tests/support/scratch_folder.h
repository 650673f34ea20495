#ifndef TESSARIL_TESTS_SUPPORT_SCRATCH_FOLDER_H_
#define TESSARIL_TESTS_SUPPORT_SCRATCH_FOLDER_H_

#include <string>
#include <vector>

namespace tessaril {

/// A new folder on the disk for one test, gone with it.
class ScratchFolder {
 public:
  ScratchFolder();
  ~ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  const std::string& path() const { return path_; }
  std::string operator/(const std::string& name) const { return path_ + "/" + name; }

  /// Writes a file, with the folders above it.
  void Write(const std::string& name, const std::string& content) const;
  std::string Read(const std::string& name) const;
  /// The names in the folder, hidden ones too, sorted.
  std::vector<std::string> Names() const;

 private:
  std::string path_;
};

}  // namespace tessaril

#endif  // TESSARIL_TESTS_SUPPORT_SCRATCH_FOLDER_H_
