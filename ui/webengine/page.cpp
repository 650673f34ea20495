#include "ui/webengine/page.h"

#include <QWebEngineNewWindowRequest>
#include <QWebEngineSettings>

namespace tessaril {

Page::Page(QWebEngineProfile* profile) : QWebEnginePage(profile) {
  using Settings = QWebEngineSettings;
  const struct {
    Settings::WebAttribute attribute;
    bool on;
  } rules[] = {
      {Settings::LocalContentCanAccessFileUrls, false},
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
  // Pages of servers have no way to local files, and get none here.
  connect(this, &QWebEnginePage::newWindowRequested, this, [this](QWebEngineNewWindowRequest& request) {
    const QUrl address = request.requestedUrl();
    if (address.scheme().startsWith("http") || url().isLocalFile()) load(address);
  });
}

// Of a page without a title the component says the last part of the address, or all but its beginning.
QString Page::Name() const {
  const QString address = url().toString(QUrl::FullyEncoded);
  const QString name = title();
  const bool is_made_up = name.isEmpty() || name == url().fileName() ||
                          name == url().fileName(QUrl::FullyEncoded) || address.endsWith("//" + name) ||
                          address.endsWith("//" + name + "/");
  return is_made_up ? address : name;
}

// What pages say to their authors is not this program's to say.
void Page::javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString&, int, const QString&) {}

}  // namespace tessaril
