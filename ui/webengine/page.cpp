#include "ui/webengine/page.h"

#include <QAuthenticator>
#include <QWebEngineNewWindowRequest>
#include <QWebEngineSettings>
#include <QWebEngineView>
#include <csignal>

namespace tessaril {

Page::Page(QWebEngineProfile* profile) : QWebEnginePage(profile) {
  using Settings = QWebEngineSettings;
  const struct {
    Settings::WebAttribute attribute;
    bool on;
  } rules[] = {
      {Settings::LocalContentCanAccessFileUrls,
       true},  // its pictures, style sheets, frames; see MakeWithFilesApart
      {Settings::LocalContentCanAccessRemoteUrls, true},  // pictures of other servers in a local page
      {Settings::JavascriptCanOpenWindows, false},        // without a click
      {Settings::JavascriptCanAccessClipboard, false},
      {Settings::ScreenCaptureEnabled, false},
      {Settings::AllowGeolocationOnInsecureOrigins, false},
      {Settings::DnsPrefetchEnabled, false},
      {Settings::HyperlinkAuditingEnabled, false},
      {Settings::FullScreenSupportEnabled, false},
      {Settings::PluginsEnabled, true},  // the viewer of PDF files
      {Settings::PdfViewerEnabled, true},
  };
  for (const auto& rule : rules) settings()->setAttribute(rule.attribute, rule.on);
  connect(this, &QWebEnginePage::featurePermissionRequested, this,
          [this](const QUrl& origin, Feature feature) {
            setFeaturePermission(origin, feature, PermissionDeniedByUser);
          });
  // Without an answer the component would ask the server again and again with an empty name.
  const auto refuse = [](const QUrl&, QAuthenticator* answer) { *answer = {}; };
  connect(this, &QWebEnginePage::authenticationRequired, this, refuse);
  connect(this, &QWebEnginePage::proxyAuthenticationRequired, this, refuse);
  // Pages of servers have no way to local files, and get none here.
  connect(this, &QWebEnginePage::newWindowRequested, this, [this](QWebEngineNewWindowRequest& request) {
    const QUrl address = request.requestedUrl();
    const bool is_source = address.scheme() == "view-source" && !address.path().startsWith("file");
    if (address.scheme().startsWith("http") || is_source || url().isLocalFile()) load(address);
  });
}

// Of a page without a title the component says the last part of the address, or all but its beginning.
QString Page::Name() const {
  const QString address = url().toString(QUrl::FullyEncoded);
  const QString name = title();
  const auto plain = [](const QString& text) { return QByteArray::fromPercentEncoding(text.toUtf8()); };
  const QByteArray end = "/" + plain(name);
  const bool is_made_up =
      name.isEmpty() || plain(address).endsWith(end) || plain(address).endsWith("/" + end + "/");
  return is_made_up ? address : name;
}

void Page::EndProcess() {
  if (const qint64 id = renderProcessPid(); id > 0) kill(static_cast<pid_t>(id), SIGKILL);
}

void Page::javaScriptAlert(const QUrl& origin, const QString& text) {
  PageQuestion box(QWebEngineView::forPage(this), origin.toString(), text, PageQuestion::kTell, MayStop());
  Ask(box);
}

bool Page::javaScriptConfirm(const QUrl& origin, const QString& text) {
  PageQuestion box(QWebEngineView::forPage(this), origin.toString(), text, PageQuestion::kAsk, MayStop());
  return Ask(box);
}

bool Page::javaScriptPrompt(const QUrl& origin, const QString& text, const QString& proposed,
                            QString* answer) {
  PageQuestion box(QWebEngineView::forPage(this), origin.toString(), text, PageQuestion::kAskText, MayStop());
  box.SetAnswer(proposed);
  const bool is_answered = Ask(box);
  *answer = box.Answer();
  return is_answered;
}

// The boxes of a script without an end would leave the user no way to anything else.
bool Page::Ask(PageQuestion& question) {
  ++said_;
  const bool yes = question.exec() == QDialog::Accepted;
  if (question.IsToStop()) EndProcess();
  return yes;
}

// What pages say to their authors is not this program's to say.
void Page::javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString&, int, const QString&) {}

}  // namespace tessaril
