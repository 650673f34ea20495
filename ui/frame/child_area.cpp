#include "ui/frame/child_area.h"

namespace tessaril {

ChildArea::ChildArea() {
  setOption(DontMaximizeSubWindowOnActivation);
}

void ChildArea::Add(QWidget* child) {
  addSubWindow(child, Qt::SubWindow | Qt::FramelessWindowHint)->hide();
  connect(child, &QWidget::windowTitleChanged, this, &ChildArea::Switched);
}

void ChildArea::ShowMaximized(QWidget& child) {
  QMdiSubWindow& window = HideOthers(child);
  window.showMaximized();
  Activate(window);
}

void ChildArea::ShowNormal(QWidget& child, QSize size) {
  QMdiSubWindow& window = HideOthers(child);
  window.showNormal();
  window.setGeometry(QRect({}, size));
  Activate(window);
}

QWidget* ChildArea::Shown() const {
  for (const QMdiSubWindow* const window : subWindowList()) {
    if (window->isVisibleTo(this)) return window->widget();
  }
  return nullptr;
}

QMdiSubWindow& ChildArea::HideOthers(const QWidget& child) {
  QMdiSubWindow* found = nullptr;
  for (QMdiSubWindow* const window : subWindowList()) {
    if (window->widget() == &child) {
      found = window;
    } else {
      window->hide();
    }
  }
  return *found;
}

void ChildArea::Activate(QMdiSubWindow& window) {
  setActiveSubWindow(&window);
  emit Switched();
}

}  // namespace tessaril
