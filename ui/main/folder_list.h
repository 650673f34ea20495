#ifndef TESSARIL_UI_MAIN_FOLDER_LIST_H_
#define TESSARIL_UI_MAIN_FOLDER_LIST_H_

#include <QIcon>
#include <QListWidget>
#include <string>

#include "engine/files.h"

namespace tessaril {

/// The folder list `dirList`: the folders on the way from the root to the open one, and its subfolders. An
/// entry is highlighted by the arrow keys, opened by a click or Enter, and by leaving the list when the owner
/// says so. Paths are absolute, without a separator at their end.
class FolderList : public QListWidget {
  Q_OBJECT

 public:
  FolderList(Files& files, QWidget* parent);

  /// Opens a folder and highlights it; false, with nothing changed, when it cannot be listed.
  bool Open(const std::string& folder);

  /// Opens the highlighted entry; one that cannot be listed is highlighted no longer.
  void OpenHighlighted();

  const std::string& OpenFolder() const { return open_; }

  /// The highlighted folder; the open one when none is.
  std::string Highlighted() const;

 signals:
  /// A folder has been opened, or opened anew.
  void Changed();

  /// The keyboard's focus went elsewhere in the window.
  void Left();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent*) override {}  // the first press has opened the entry

 private:
  void AddEntry(const std::string& path, const std::string& name, int depth);

  Files& files_;
  const QIcon icon_;  // one for all: the toolkit keeps what it has drawn of each
  std::string open_;
  int open_row_ = 0;
};

}  // namespace tessaril

#endif  // TESSARIL_UI_MAIN_FOLDER_LIST_H_
