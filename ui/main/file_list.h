#ifndef TESSARIL_UI_MAIN_FILE_LIST_H_
#define TESSARIL_UI_MAIN_FILE_LIST_H_

#include <QListWidget>
#include <QTimer>
#include <string>

#include "engine/files.h"

namespace tessaril {

/// The file list `filList`: the files of a folder that a pattern lists, one of which may be selected. Arrows
/// select; Space counts as a click, Enter as a double click. Names are the file system's bytes.
class FileList : public QListWidget {
  Q_OBJECT

 public:
  FileList(Files& files, QWidget* parent);

  /// Shows another folder, with nothing selected, or the same anew.
  void SetFolder(const std::string& folder);

  /// The filter text; the selected file stays selected if it is still listed.
  void SetPattern(const std::string& pattern);

  /// Reads the folder again, keeping the selection by its name.
  void Refresh() { List(Selected()); }

  /// Selects a file by its name. It is listed as long as it is selected, also when its name begins with a
  /// dot.
  void Select(const std::string& name);

  /// Name of the selected file; empty when none is.
  std::string Selected() const;
  void ClearSelection();

 signals:
  void Clicked();
  void DoubleClicked();

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void List(const std::string& selected);
  void LeaveOutUnselected();

  Files& files_;
  std::string folder_;
  std::string pattern_;
  QListWidgetItem* hidden_ = nullptr;  // whose name begins with a dot: is listed only because it is selected
  QTimer leaves_out_;
};

}  // namespace tessaril

#endif  // TESSARIL_UI_MAIN_FILE_LIST_H_
