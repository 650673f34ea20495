#ifndef TESSARIL_UI_WEBENGINE_WEB_ENGINE_CONTROL_H_
#define TESSARIL_UI_WEBENGINE_WEB_ENGINE_CONTROL_H_

#include <QWebEngineLoadingInfo>
#include <QWebEngineProfile>
#include <QWebEngineView>

#include "ui/browser/browser_control.h"
#include "ui/webengine/page.h"

namespace tessaril {

/// The browser component, made of Qt WebEngine.
class WebEngineControl : public BrowserControl {
 public:
  WebEngineControl(BrowserEvents& events, const QUrl& home);

  QWidget* Widget() override { return &view_; }
  void Navigate(const QUrl& address) override;
  void GoBack() override { page_.triggerAction(QWebEnginePage::Back); }
  void GoForward() override { page_.triggerAction(QWebEnginePage::Forward); }
  void GoHome() override { Navigate(home_); }
  void GoSearch() override;
  void Refresh() override;
  void Stop() override { page_.triggerAction(QWebEnginePage::Stop); }
  QString LocationName() const override { return page_.Name(); }
  QString LocationURL() const override { return page_.url().toString(QUrl::FullyEncoded); }
  bool Busy() const override { return page_.isLoading(); }
  void MakePdf(const QPageLayout& layout, std::function<void(const QByteArray& pdf)> done) override;

 private:
  void Connect();
  void LoadingChanged(const QWebEngineLoadingInfo& loading);
  void RendererEnded();

  BrowserEvents& events_;
  const QUrl home_;
  QUrl wanted_;  // the last address that was navigated to
  QWebEngineProfile profile_;
  Page page_;
  QWebEngineView view_;
};

}  // namespace tessaril

#endif  // TESSARIL_UI_WEBENGINE_WEB_ENGINE_CONTROL_H_
