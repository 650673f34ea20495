#ifndef TESSARIL_UI_FRAME_CHILD_AREA_H_
#define TESSARIL_UI_FRAME_CHILD_AREA_H_

#include <QMdiArea>
#include <QMdiSubWindow>

namespace tessaril {

/// The room inside the frame for the windows of the program. They have no title bar and no frame of their
/// own, and one is shown at a time: the others are hidden first.
class ChildArea : public QMdiArea {
  Q_OBJECT

 public:
  ChildArea();

  /// Takes a window in, and over, which is not shown yet.
  void Add(QWidget* child);

  /// Shows a window that was added: over the whole area, or in its upper left corner in a size in pixels.
  void ShowMaximized(QWidget& child);
  void ShowNormal(QWidget& child, QSize size);

  /// The window that is shown; null when there is none.
  QWidget* Shown() const;

 signals:
  /// Another window is shown now, or the shown one has another title.
  void Switched();

 private:
  QMdiSubWindow& HideOthers(const QWidget& child);
  void Activate(QMdiSubWindow& window);
};

}  // namespace tessaril

#endif  // TESSARIL_UI_FRAME_CHILD_AREA_H_
