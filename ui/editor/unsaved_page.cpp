#include "ui/editor/unsaved_page.h"

#include <unistd.h>

#include <filesystem>

#include "engine/paths.h"
#include "settings/whole_file.h"

namespace tessaril {

std::string UnsavedPage::PathFor(const std::string& edited_file) const {
  const std::string folder(edited_file.empty() ? files_.CurrentFolder() : FolderOf(edited_file));
  return JoinPath(folder, "~temp.htm");
}

bool UnsavedPage::IsOwn(const std::string& path) const {
  const auto own = own_.find(path);
  FileStamp now;
  return own != own_.end() && files_.Examine(path, now).ok() && now == own->second;
}

bool UnsavedPage::IsForeign(const std::string& path) const {
  std::error_code ignored;
  const auto kind = std::filesystem::symlink_status(path, ignored).type();
  const bool is_there =
      kind != std::filesystem::file_type::not_found && kind != std::filesystem::file_type::none;
  return is_there && !IsOwn(path);
}

Status UnsavedPage::Write(const std::string& path, std::string_view text) {
  if (Status status = WriteWholeFile(path, text); !status.ok()) return status;
  return files_.Examine(path, own_[path]);
}

void UnsavedPage::Delete(const std::string& path) {
  const auto own = own_.find(path);
  FileStamp now;
  if (own == own_.end() || !files_.Examine(path, now).ok()) return;
  if (now != own->second || unlink(path.c_str()) == 0) own_.erase(own);
}

void UnsavedPage::DeleteAll() {
  const std::map<std::string, FileStamp> all = own_;
  for (const auto& [path, stamp] : all) Delete(path);
}

}  // namespace tessaril
