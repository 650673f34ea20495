#include "ui/editor/unsaved_page.h"

#include <unistd.h>

#include <filesystem>

#include "engine/paths.h"
#include "ui/shared/save_file.h"

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
  return kind != std::filesystem::file_type::not_found && !IsOwn(path);
}

Status UnsavedPage::Write(const std::string& path, std::string_view text) {
  if (Status status = SaveFile(files_, path, text); !status.ok()) return status;
  return files_.Examine(path, own_[path]);
}

void UnsavedPage::Delete(const std::string& path) {
  if (IsOwn(path)) unlink(path.c_str());
  own_.erase(path);
}

void UnsavedPage::DeleteAll() {
  while (!own_.empty()) Delete(std::string(own_.begin()->first));
}

}  // namespace tessaril
