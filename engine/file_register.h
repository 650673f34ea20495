#ifndef TESSARIL_ENGINE_FILE_REGISTER_H_
#define TESSARIL_ENGINE_FILE_REGISTER_H_

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace tessaril {

/// The register of the files that a run checked or saw linked: a text of entries, each a line end, a marker
/// ("U" for checked, "R" for linked), a blank and the file's path. A path is looked up as a plain piece of
/// that text, so that it is also found at the start of a longer name or inside another path; only its first
/// place counts. What is looked up is remembered and indexed, so that the cost of a look-up does not grow
/// with the register.
class FileRegister {
 public:
  FileRegister() = default;
  FileRegister(FileRegister&&) = default;
  FileRegister& operator=(FileRegister&&) = default;

  const std::string& text() const { return text_; }

  /// Enters a checked page as "U", unless its path is contained already.
  void AddChecked(const std::string& path);

  /// Marks a linked file "R". A path that is contained already gets no entry of its own: where it is found at
  /// the start of an entry's path, that entry is marked, else nothing changes.
  void MarkLinked(const std::string& path);

 private:
  // The entries whose files lie in one folder: the names, and where each entry's path begins in the text.
  using Names = std::map<std::string, std::size_t, std::less<>>;
  struct Folder {
    std::size_t size = 0;         // bytes of the folder's path
    std::size_t first_entry = 0;  // where its first entry's path begins in the text
    Names names;
  };

  void Append(char marker, const std::string& path);
  Folder& FolderAt(std::string_view path, std::size_t entry);
  std::size_t Find(const std::string& path) const;
  std::size_t FindIndexed(const std::string& path) const;

  std::string text_;
  std::unordered_map<std::string, std::unique_ptr<Folder>> folders_;
  // Every end of a folder's path that begins with a separator, and the folders that end so.
  std::map<std::string, std::vector<const Folder*>, std::less<>> folder_ends_;
  std::unordered_set<std::string> linked_;  // what was marked; its place never changes
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_FILE_REGISTER_H_
