#ifndef TESSARIL_UI_BROWSER_BROWSER_CONTROL_H_
#define TESSARIL_UI_BROWSER_BROWSER_CONTROL_H_

#include <QByteArray>
#include <QPageLayout>
#include <QString>
#include <QUrl>
#include <QWidget>
#include <functional>
#include <memory>
#include <string>

// The door to a browser component: what the browser window asks of it, and what it tells the window. A plugin
// stands behind it, or a double in the tests. All calls are made in the user-interface thread.

namespace tessaril {

/// What a browser component tells the window that shows it.
class BrowserEvents {
 public:
  virtual ~BrowserEvents() = default;

  virtual void StatusTextChanged(const QString& text) = 0;

  /// So much of `max` is loaded; -1 when all is. A `max` of 0 says nothing.
  virtual void ProgressChanged(int progress, int max) = 0;

  /// A page begins to load; and has been loaded, or is not going to be, for whatever reason.
  virtual void DownloadBegun() = 0;
  virtual void DownloadCompleted() = 0;

  virtual void TitleChanged(const QString& title) = 0;

  /// A file that is no page is offered under a name without a folder. Gives the path to save it under; empty
  /// when it is not wanted.
  virtual QString AskWhereToSave(const QString& name) = 0;

  /// Such a file could not be saved.
  virtual void SavingFailed(const QString& path, const QString& reason) = 0;
};

/// A browser component in a widget of its own.
class BrowserControl {
 public:
  virtual ~BrowserControl() = default;

  /// The widget that shows the page. It belongs to the component, and may have any parent meanwhile.
  virtual QWidget* Widget() = 0;

  virtual void Navigate(const QUrl& address) = 0;
  virtual void GoBack() = 0;
  virtual void GoForward() = 0;
  virtual void GoHome() = 0;
  virtual void GoSearch() = 0;
  virtual void Refresh() = 0;
  virtual void Stop() = 0;

  /// The shown page's title; its address when it has none.
  virtual QString LocationName() const = 0;

  /// The shown page's address, encoded; empty when nothing has been shown yet.
  virtual QString LocationURL() const = 0;

  virtual bool Busy() const = 0;

  /// Makes a PDF document of the shown page and calls `done` with it later: with nothing when that fails.
  virtual void MakePdf(const QPageLayout& layout, std::function<void(const QByteArray& pdf)> done) = 0;
};

/// Makes a component that tells `events`, which must live as long. Null, and `reason` says why, when there is
/// none or it cannot start.
using MakeBrowserControl =
    std::function<std::unique_ptr<BrowserControl>(BrowserEvents& events, std::string& reason)>;

}  // namespace tessaril

#endif  // TESSARIL_UI_BROWSER_BROWSER_CONTROL_H_
