#ifndef TESSARIL_UI_MAIN_DRIVE_LIST_H_
#define TESSARIL_UI_MAIN_DRIVE_LIST_H_

#include <QComboBox>
#include <string>

namespace tessaril {

/// The drive list `drvList`: the root of the file system and the volumes that the user has mounted, by their
/// mount paths.
class DriveList : public QComboBox {
  Q_OBJECT

 public:
  explicit DriveList(QWidget* parent);

  /// Shows the drive that holds a folder: of those whose path it lies below, the one with the longest.
  void ShowDriveOf(const std::string& folder);

  /// Reads the mounted volumes again first.
  void showPopup() override;

 signals:
  /// The user has picked another one.
  void Picked(const std::string& path);

 private:
  void Fill();

  std::string folder_;
  int shown_ = 0;
};

}  // namespace tessaril

#endif  // TESSARIL_UI_MAIN_DRIVE_LIST_H_
