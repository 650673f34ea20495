#include "ui/main/folder_list.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QStyle>
#include <QStyledItemDelegate>
#include <algorithm>
#include <vector>

#include "engine/folder_names.h"
#include "engine/paths.h"
#include "ui/shared/place.h"
#include "ui/shared/texts.h"

namespace tessaril {
namespace {

constexpr int kPathRole = Qt::UserRole;       // bytes
constexpr int kDepthRole = Qt::UserRole + 1;  // folders above

// Draws what stands deeper further in.
class IndentingDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    QStyleOptionViewItem indented = option;
    indented.rect.setLeft(option.rect.left() + Indent(index));
    QStyledItemDelegate::paint(painter, indented, index);
  }

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    return QStyledItemDelegate::sizeHint(option, index) + QSize(Indent(index), 0);
  }

 private:
  static int Indent(const QModelIndex& index) {
    constexpr int kStep = 105;  // twips
    constexpr int kMostSteps = 12;
    return Pixels(kStep * std::min(index.data(kDepthRole).toInt(), kMostSteps));
  }
};

}  // namespace

FolderList::FolderList(Files& files, QWidget* parent)
    : QListWidget(parent), files_(files), icon_(style()->standardIcon(QStyle::SP_DirIcon)) {
  const int icon = Pixels(210);
  setIconSize({icon, icon});
  setItemDelegate(new IndentingDelegate(this));
  setHorizontalScrollMode(ScrollPerPixel);
  connect(this, &QListWidget::itemClicked, this, &FolderList::OpenHighlighted);
}

bool FolderList::Open(const std::string& folder) {
  std::vector<FolderEntry> entries;
  FileStamp stamp;
  if (!files_.ListFolder(folder, entries, stamp).ok()) return false;
  open_ = folder;
  clear();
  int depth = 0;
  AddEntry("/", "/", depth++);
  for (std::size_t begin = 1; begin < folder.size();) {
    const std::size_t end = std::min(folder.find(kSeparator, begin), folder.size());
    AddEntry(folder.substr(0, end), folder.substr(begin, end - begin), depth++);
    begin = end + 1;
  }
  QListWidgetItem* const opened = item(count() - 1);
  QFont font = opened->font();
  font.setBold(true);
  opened->setFont(font);
  for (const std::string& name : TakeFolderNames(entries)) AddEntry(JoinPath(folder, name), name, depth);
  open_row_ = depth - 1;
  setCurrentRow(open_row_);
  emit Changed();
  return true;
}

void FolderList::OpenHighlighted() {
  if (!Open(Highlighted())) setCurrentRow(open_row_);
}

std::string FolderList::Highlighted() const {
  const QListWidgetItem* const entry = currentItem();
  return entry == nullptr ? open_ : entry->data(kPathRole).toByteArray().toStdString();
}

void FolderList::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return OpenHighlighted();
  QListWidget::keyPressEvent(event);
}

void FolderList::focusOutEvent(QFocusEvent* event) {
  QListWidget::focusOutEvent(event);
  switch (event->reason()) {
    case Qt::ActiveWindowFocusReason:
    case Qt::MenuBarFocusReason:
    case Qt::PopupFocusReason:
      return;
    default:
      emit Left();
  }
}

// The path goes along as it is, since a name need not be a text.
void FolderList::AddEntry(const std::string& path, const std::string& name, int depth) {
  auto* const entry = new QListWidgetItem(icon_, Shown(name));
  entry->setData(kPathRole, QByteArray::fromStdString(path));
  entry->setData(kDepthRole, depth);
  addItem(entry);  // complete, or the list would hear of each change
}

}  // namespace tessaril
