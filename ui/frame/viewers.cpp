#include "ui/frame/viewers.h"

#include <iostream>
#include <utility>

namespace tessaril {

Viewers::Viewers(Session& session, MainWindow& main, ChildArea& area, std::string page,
                 MakeBrowserControl make_browser)
    : session_(session),
      main_(main),
      area_(area),
      page_(std::move(page)),
      make_browser_(std::move(make_browser)) {}

bool Viewers::ShowInBrowser(const std::string& path) {
  std::string started;
  if (!LoadBrowser(started)) return false;
  if (path != started) browser_->Show(path);
  area_.ShowMaximized(*browser_);
  browser_->FocusPage();
  return true;
}

// The window is made, shown and given its first page, which is in `started` then, when it is first needed,
// whatever page is wanted.
bool Viewers::LoadBrowser(std::string& started) {
  if (browser_ != nullptr) return true;
  if (browser_is_missing_) return false;
  std::string reason;
  std::unique_ptr<BrowserWindow> browser = BrowserWindow::Create(session_, make_browser_, reason);
  browser_is_missing_ = browser == nullptr;
  if (browser_is_missing_) {
    std::cerr << "tessaril: no browser: " << reason << "\n";
    return false;
  }
  browser_ = browser.release();
  area_.Add(browser_);
  connect(browser_, &BrowserWindow::ToMain, &main_, &MainWindow::ReturnFromViewer);
  area_.ShowMaximized(*browser_);
  started = StartAddress();
  if (!started.empty()) browser_->Start(started);
  return true;
}

// What the browser window shows first: nothing, when there is no such file.
std::string Viewers::StartAddress() const {
  const std::string path = main_.IsToShowFile() ? main_.FileToShow() : page_;
  FileStamp stamp;
  return session_.files.Examine(path, stamp).ok() ? path : std::string();
}

}  // namespace tessaril
