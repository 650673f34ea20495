#include "ui/main/drive_list.h"

#include <QAbstractItemView>
#include <QFileInfo>
#include <QStorageInfo>
#include <algorithm>
#include <string_view>
#include <vector>

#include "engine/paths.h"
#include "ui/shared/texts.h"

namespace tessaril {
namespace {

// Places where the system mounts what is its own.
constexpr std::string_view kSystemPlaces[] = {"/boot", "/dev",  "/efi", "/etc", "/nix", "/proc",
                                              "/run",  "/snap", "/sys", "/tmp", "/usr", "/var"};
constexpr std::string_view kTypesWithoutDevice[] = {"nfs", "nfs4", "cifs", "smb3", "fuse.sshfs", "zfs"};

bool LiesIn(std::string_view path, std::string_view folder) {
  return folder == "/" ||
         (path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == kSeparator));
}

bool IsOfTheSystem(std::string_view path) {
  if (LiesIn(path, "/run/media")) return false;
  return std::any_of(std::begin(kSystemPlaces), std::end(kSystemPlaces),
                     [path](std::string_view place) { return LiesIn(path, place); });
}

bool IsReal(const QStorageInfo& volume) {
  const QByteArray type = volume.fileSystemType();
  const bool has_none = std::find(std::begin(kTypesWithoutDevice), std::end(kTypesWithoutDevice),
                                  std::string_view(type.constData())) != std::end(kTypesWithoutDevice);
  return volume.isValid() && volume.isReady() && (has_none || volume.device().startsWith("/dev/")) &&
         QFileInfo(volume.rootPath()).isDir();
}

std::vector<std::string> MountedDrives() {
  std::vector<std::string> paths{"/"};
  for (const QStorageInfo& volume : QStorageInfo::mountedVolumes()) {
    const std::string path = QFile::encodeName(volume.rootPath()).toStdString();
    if (path != "/" && IsReal(volume) && !IsOfTheSystem(path)) paths.push_back(path);
  }
  std::sort(paths.begin(), paths.end());
  paths.erase(std::unique(paths.begin(), paths.end()), paths.end());
  return paths;
}

}  // namespace

DriveList::DriveList(QWidget* parent) : QComboBox(parent) {
  Fill();
  connect(this, &QComboBox::activated, this, [this](int index) {
    if (index == shown_) return;
    shown_ = index;
    emit Picked(itemData(index).toByteArray().toStdString());
  });
}

void DriveList::ShowDriveOf(const std::string& folder) {
  folder_ = folder;
  int best = 0;
  qsizetype longest = 0;
  for (int i = 0; i < count(); ++i) {
    const QByteArray path = itemData(i).toByteArray();
    if (path.size() > longest && LiesIn(folder, path.toStdString())) {
      best = i;
      longest = path.size();
    }
  }
  shown_ = best;
  setCurrentIndex(best);
}

void DriveList::showPopup() {
  Fill();
  ShowDriveOf(folder_);
  view()->setMinimumWidth(view()->sizeHintForColumn(0) + 2 * view()->frameWidth());
  QComboBox::showPopup();
}

void DriveList::Fill() {
  clear();
  for (const std::string& path : MountedDrives()) addItem(Shown(path), QByteArray::fromStdString(path));
}

}  // namespace tessaril
