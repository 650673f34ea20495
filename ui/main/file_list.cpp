#include "ui/main/file_list.h"

#include <QApplication>
#include <QKeyEvent>
#include <utility>
#include <vector>

#include "engine/file_filter.h"
#include "engine/folder_names.h"
#include "ui/shared/texts.h"

namespace tessaril {
namespace {

constexpr int kNameRole = Qt::UserRole;  // bytes

}  // namespace

FileList::FileList(Files& files, QWidget* parent) : QListWidget(parent), files_(files) {
  connect(this, &QListWidget::itemClicked, this, &FileList::Clicked);
  connect(this, &QListWidget::itemDoubleClicked, this, &FileList::DoubleClicked);
  // Not in the middle of a double click, the second press of which would meet another file.
  leaves_out_.setSingleShot(true);
  connect(&leaves_out_, &QTimer::timeout, this, &FileList::LeaveOutUnselected);
  connect(this, &QListWidget::itemSelectionChanged, this, [this] {
    if (hidden_ != nullptr) leaves_out_.start(2 * QApplication::doubleClickInterval());
  });
}

void FileList::SetFolder(const std::string& folder) {
  if (folder != folder_) {
    hidden_ = nullptr;
    clear();
  }
  folder_ = folder;
  Refresh();
}

void FileList::SetPattern(const std::string& pattern) {
  pattern_ = pattern;
  Refresh();
}

void FileList::Select(const std::string& name) {
  const QByteArray wanted = QByteArray::fromStdString(name);
  for (int row = 0; row < count(); ++row) {
    if (item(row)->data(kNameRole).toByteArray() == wanted) return setCurrentRow(row);
  }
  List(name);
}

void FileList::List(const std::string& selected) {
  std::vector<FolderEntry> entries;
  FileStamp stamp;
  (void)files_.ListFolder(folder_, entries, stamp);  // what could be read is shown
  hidden_ = nullptr;
  clear();
  QListWidgetItem* current = nullptr;
  for (const std::string& name : TakeFileNames(entries, FileFilter(pattern_), selected)) {
    auto* const entry = new QListWidgetItem(Shown(name));
    entry->setData(kNameRole, QByteArray::fromStdString(name));  // before the list would hear of each change
    addItem(entry);
    if (name == selected) current = entry;
    if (name.starts_with('.')) hidden_ = entry;
  }
  if (current != nullptr) setCurrentItem(current);
}

void FileList::LeaveOutUnselected() {
  if (QApplication::mouseButtons() != Qt::NoButton) return leaves_out_.start();
  if (hidden_ == nullptr || hidden_->isSelected()) return;
  delete std::exchange(hidden_, nullptr);
}

std::string FileList::Selected() const {
  const QList<QListWidgetItem*> selected = selectedItems();
  return selected.isEmpty() ? "" : selected.first()->data(kNameRole).toByteArray().toStdString();
}

void FileList::ClearSelection() {
  setCurrentItem(nullptr);
  clearSelection();
}

void FileList::keyPressEvent(QKeyEvent* event) {
  const bool is_enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (!is_enter && event->key() != Qt::Key_Space) return QListWidget::keyPressEvent(event);
  if (currentItem() == nullptr) return;
  currentItem()->setSelected(true);
  is_enter ? emit DoubleClicked() : emit Clicked();
}

}  // namespace tessaril
