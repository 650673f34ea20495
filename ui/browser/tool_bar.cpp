#include "ui/browser/tool_bar.h"

#include <QPainter>
#include <QStyle>

#include "ui/shared/place.h"

namespace tessaril {
namespace {

constexpr Place kPlace{0, 0, 3000, 420};

// A house; the platform's own picture for this is a folder.
QIcon HomeIcon(int size) {
  QPixmap picture(size, size);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(size / 16.0, size / 16.0);
  painter.setPen(QPen(QColor(0x33, 0x33, 0x33), 1, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(QColor(0xFF, 0xFF, 0xCC));
  painter.drawRect(QRectF(3.5, 7.5, 9, 7));
  painter.setBrush(QColor(0xCC, 0x66, 0x33));
  painter.drawPolygon(QPolygonF({{1.5, 8}, {8, 1.5}, {14.5, 8}}));
  painter.drawRect(QRectF(6.5, 10.5, 3, 4));
  return picture;
}

}  // namespace

ToolBar::ToolBar(QWidget* parent) : QToolBar(parent) {
  Put(*this, "tbToolBar", kPlace);
  const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
  setIconSize({size, size});
  Add(Tool::kBack, "Back", style()->standardIcon(QStyle::SP_ArrowBack));
  Add(Tool::kForward, "Forward", style()->standardIcon(QStyle::SP_ArrowForward));
  Add(Tool::kStop, "Stop", style()->standardIcon(QStyle::SP_BrowserStop));
  Add(Tool::kRefresh, "Refresh", style()->standardIcon(QStyle::SP_BrowserReload));
  Add(Tool::kHome, "Home", HomeIcon(size));
  Add(Tool::kSearch, "Search", style()->standardIcon(QStyle::SP_FileDialogContentsView));
}

void ToolBar::Add(Tool tool, const char* key, const QIcon& icon) {
  QAction* const action = addAction(icon, key);
  widgetForAction(action)->setObjectName(objectName() + "_" + key);
  connect(action, &QAction::triggered, this, [this, tool] { emit Pressed(tool); });
}

}  // namespace tessaril
