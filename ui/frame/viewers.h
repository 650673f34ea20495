#ifndef TESSARIL_UI_FRAME_VIEWERS_H_
#define TESSARIL_UI_FRAME_VIEWERS_H_

#include <string>

#include "ui/browser/browser_window.h"
#include "ui/frame/child_area.h"
#include "ui/main/main_window.h"
#include "ui/shared/session.h"

namespace tessaril {

/// The windows that show files. Each is made when it is first needed, and lives on in the area then.
class Viewers : public QObject {
  Q_OBJECT

 public:
  /// `page` is where the page of external links is written. What is given by reference must live as long.
  Viewers(Session& session, MainWindow& main, ChildArea& area, std::string page,
          MakeBrowserControl make_browser);

  /// Shows a file in the browser window; false when there is no browser component.
  bool ShowInBrowser(const std::string& path);

 private:
  bool LoadBrowser(std::string& started);
  std::string StartAddress() const;

  Session& session_;
  MainWindow& main_;
  ChildArea& area_;
  const std::string page_;
  const MakeBrowserControl make_browser_;
  BrowserWindow* browser_ = nullptr;
  bool browser_is_missing_ = false;
};

}  // namespace tessaril

#endif  // TESSARIL_UI_FRAME_VIEWERS_H_
