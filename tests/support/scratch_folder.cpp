#include "tests/support/scratch_folder.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace tessaril {

namespace fs = std::filesystem;

ScratchFolder::ScratchFolder() {
  std::string name = (fs::temp_directory_path() / "tessaril-XXXXXX").string();
  path_ = mkdtemp(name.data());
  fs::permissions(path_, fs::perms::all);  // tests act as another user, too
}

ScratchFolder::~ScratchFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

void ScratchFolder::Write(const std::string& name, const std::string& content) const {
  fs::create_directories(fs::path(*this / name).parent_path());
  std::ofstream(*this / name, std::ios::binary) << content;
}

std::string ScratchFolder::Read(const std::string& name) const {
  std::ostringstream content;
  content << std::ifstream(*this / name, std::ios::binary).rdbuf();
  return content.str();
}

std::vector<std::string> ScratchFolder::Names() const {
  std::vector<std::string> names;
  for (const fs::directory_entry& entry : fs::directory_iterator(path_))
    names.push_back(entry.path().filename());
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace tessaril
