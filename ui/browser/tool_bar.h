#ifndef TESSARIL_UI_BROWSER_TOOL_BAR_H_
#define TESSARIL_UI_BROWSER_TOOL_BAR_H_

#include <QIcon>
#include <QToolBar>

namespace tessaril {

enum class Tool { kBack, kForward, kStop, kRefresh, kHome, kSearch };

/// The toolbar `tbToolBar` of the browser window. Its buttons are named `tbToolBar_Back` and so on by their
/// keys, which are their tooltips, too.
class ToolBar : public QToolBar {
  Q_OBJECT

 public:
  explicit ToolBar(QWidget* parent);

 signals:
  void Pressed(tessaril::Tool tool);

 private:
  void Add(Tool tool, const char* key, const QIcon& icon);
};

}  // namespace tessaril

#endif  // TESSARIL_UI_BROWSER_TOOL_BAR_H_
