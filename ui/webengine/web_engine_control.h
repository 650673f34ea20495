#ifndef TESSARIL_UI_WEBENGINE_WEB_ENGINE_CONTROL_H_
#define TESSARIL_UI_WEBENGINE_WEB_ENGINE_CONTROL_H_

#include <QElapsedTimer>
#include <QTimer>
#include <QWebEngineLoadingInfo>
#include <QWebEngineProfile>
#include <QWebEngineView>

#include "ui/browser/browser_control.h"
#include "ui/webengine/downloads.h"
#include "ui/webengine/page.h"

namespace tessaril {

/// The browser component, made of Qt WebEngine.
class WebEngineControl : public BrowserControl {
 public:
  WebEngineControl(BrowserEvents& events, const QUrl& home);

  /// Waits a few seconds for a document that is being made; the events are told nothing more.
  ~WebEngineControl() override;

  QWidget* Widget() override { return &view_; }
  void Navigate(const QUrl& address) override;
  void GoBack() override;
  void GoForward() override;
  void GoHome() override { Navigate(home_); }
  void GoSearch() override;
  void Refresh() override;
  void Stop() override;
  QString LocationName() const override { return page_.Name(); }
  QString LocationURL() const override { return page_.url().toString(QUrl::FullyEncoded); }
  bool Busy() const override;
  void MakePdf(const QPageLayout& layout, std::function<void(const QByteArray& pdf)> done) override;

 private:
  void Connect();
  void Ask(QWebEnginePage::WebAction action);
  void Watch(std::function<void()> again);
  void LookWhetherAlive(const std::function<void()>& again);
  void LoadingChanged(const QWebEngineLoadingInfo& loading);
  void RendererEnded();
  void Draw(const QPageLayout& layout, const std::function<void(const QByteArray& pdf)>& done);

  BrowserEvents& events_;
  const QUrl home_;
  QUrl wanted_;                    // the last address that was navigated to
  QElapsedTimer asked_;            // since a page was asked for whose load has not begun; else invalid
  QTimer looks_;                   // whether the page's process answers
  QElapsedTimer silent_;           // since it was first asked
  std::function<void()> again_;    // what is to be done again when it has to be ended
  bool renderer_is_gone_ = false;  // until the next page begins to load
  int drawing_ = 0;                // documents that are being made
  QWebEngineProfile profile_;
  Downloads downloads_;
  Page page_;
  QWebEngineView view_;
};

}  // namespace tessaril

#endif  // TESSARIL_UI_WEBENGINE_WEB_ENGINE_CONTROL_H_
