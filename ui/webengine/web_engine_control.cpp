#include "ui/webengine/web_engine_control.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QWebEngineHistory>
#include <QWebEngineScript>
#include <fstream>
#include <iterator>
#include <utility>

namespace tessaril {
namespace {

constexpr char kSearchPage[] = "https://duckduckgo.com/";

// Milliseconds within which a page that was asked for begins to load, if there is anything to load.
constexpr qint64 kMostUntilBegun = 1000;

// How often a page's process is asked for a sign of life, and for how long; milliseconds.
constexpr int kBetweenLooks = 500;
constexpr qint64 kMostSilence = 8000;

// Milliseconds that the end of the program waits for a document.
constexpr int kMostUntilDrawn = 5000;

constexpr char kRendererIsGone[] =
    "The process that showed the page has ended. \"Refresh\" shows the page again.";

// The toolkit opens no file whose name is no text.
QByteArray WholeFile(const QUrl& address) {
  const QByteArray path = QByteArray::fromPercentEncoding(address.path(QUrl::FullyEncoded).toLatin1());
  std::ifstream file(path.toStdString(), std::ios::binary);
  return QByteArray::fromStdString({std::istreambuf_iterator<char>(file), {}});
}

}  // namespace

WebEngineControl::WebEngineControl(BrowserEvents& events, const QUrl& home)
    : events_(events), home_(home), downloads_(profile_, events), page_(&profile_) {
  view_.setPage(&page_);
  looks_.setInterval(kBetweenLooks);
  Connect();
}

// The component ends the program when it goes while it makes a document.
WebEngineControl::~WebEngineControl() {
  QObject::disconnect(&page_, nullptr, &view_, nullptr);
  QObject::disconnect(&profile_, nullptr, &downloads_, nullptr);
  looks_.stop();
  const QDeadlineTimer deadline(kMostUntilDrawn);
  while (drawing_ > 0 && !renderer_is_gone_ && !deadline.hasExpired()) {
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents, 50);
  }
}

void WebEngineControl::Connect() {
  const QObject* const receiver = &view_;  // which goes first of all
  QObject::connect(&page_, &QWebEnginePage::loadingChanged, receiver,
                   [this](const QWebEngineLoadingInfo& loading) { LoadingChanged(loading); });
  QObject::connect(&page_, &QWebEnginePage::loadProgress, receiver, [this](int percent) {
    if (percent > 0) looks_.stop();
    events_.ProgressChanged(percent, 100);
  });
  QObject::connect(&page_, &QWebEnginePage::titleChanged, receiver,
                   [this] { events_.TitleChanged(LocationName()); });
  QObject::connect(&page_, &QWebEnginePage::linkHovered, receiver,
                   [this](const QString& address) { events_.StatusTextChanged(address); });
  // Another place in the same page, without a load.
  QObject::connect(&page_, &QWebEnginePage::urlChanged, receiver, [this] {
    if (page_.isLoading()) return;
    asked_.invalidate();
    events_.DownloadCompleted();
  });
  QObject::connect(&page_, &QWebEnginePage::renderProcessTerminated, receiver, [this] { RendererEnded(); });
}

void WebEngineControl::LoadingChanged(const QWebEngineLoadingInfo& loading) {
  asked_.invalidate();
  const QString address = loading.url().toString(QUrl::FullyEncoded);
  switch (loading.status()) {
    case QWebEngineLoadingInfo::LoadStartedStatus:
      renderer_is_gone_ = false;
      events_.StatusTextChanged("Opening " + address);
      return events_.DownloadBegun();
    case QWebEngineLoadingInfo::LoadSucceededStatus:
      events_.StatusTextChanged("Done");
      events_.ProgressChanged(-1, 100);
      break;
    case QWebEngineLoadingInfo::LoadStoppedStatus:
      events_.StatusTextChanged("Stopped");
      break;
    case QWebEngineLoadingInfo::LoadFailedStatus:
      if (!renderer_is_gone_)
        events_.StatusTextChanged("Not opened: " + address + ": " + loading.errorString());
      break;
  }
  events_.DownloadCompleted();
}

void WebEngineControl::RendererEnded() {
  renderer_is_gone_ = true;
  events_.StatusTextChanged(kRendererIsGone);
  events_.DownloadCompleted();
  if (again_) QTimer::singleShot(0, &view_, std::exchange(again_, {}));
}

// All pages of the disk share a process. One whose script never ends would keep it from whatever the user
// asks for next.
void WebEngineControl::Watch(std::function<void()> again) {
  page_.BeginAnew();
  again_ = {};
  silent_.start();
  looks_.disconnect();
  QObject::connect(&looks_, &QTimer::timeout, &view_,
                   [this, again = std::move(again)] { LookWhetherAlive(again); });
  looks_.start();
}

void WebEngineControl::LookWhetherAlive(const std::function<void()>& again) {
  if (QApplication::activeModalWidget() != nullptr) silent_.start();  // the page may wait for the user
  if (silent_.elapsed() > kMostSilence) {
    looks_.stop();
    again_ = again;
    return page_.EndProcess();
  }
  page_.runJavaScript("0", QWebEngineScript::ApplicationWorld, [this](const QVariant& answer) {
    if (answer.isValid()) looks_.stop();
  });
}

void WebEngineControl::Navigate(const QUrl& address) {
  wanted_ = address;
  asked_.start();
  page_.load(address);
  Watch([this, address] { page_.load(address); });
}

void WebEngineControl::GoBack() {
  if (page_.history()->canGoBack()) Ask(QWebEnginePage::Back);
}

void WebEngineControl::GoForward() {
  if (page_.history()->canGoForward()) Ask(QWebEnginePage::Forward);
}

void WebEngineControl::GoSearch() {
  Navigate(QUrl(kSearchPage));
}

void WebEngineControl::Refresh() {
  if (page_.url().isEmpty()) return Navigate(wanted_);
  Ask(QWebEnginePage::Reload);
}

void WebEngineControl::Stop() {
  asked_.invalidate();
  page_.triggerAction(QWebEnginePage::Stop);
  Watch({});
}

void WebEngineControl::Ask(QWebEnginePage::WebAction action) {
  asked_.start();
  page_.triggerAction(action);
  Watch([this, action] { page_.triggerAction(action); });
}

// The component begins a little after it was asked.
bool WebEngineControl::Busy() const {
  return page_.isLoading() || (asked_.isValid() && !asked_.hasExpired(kMostUntilBegun));
}

void WebEngineControl::MakePdf(const QPageLayout& layout, std::function<void(const QByteArray& pdf)> done) {
  if (renderer_is_gone_) return done({});
  ++drawing_;
  Draw(layout, [this, done = std::move(done)](const QByteArray& pdf) {
    --drawing_;
    done(pdf);
  });
}

// Of a PDF file the component would print the viewer; the file itself is the document.
void WebEngineControl::Draw(const QPageLayout& layout,
                            const std::function<void(const QByteArray& pdf)>& done) {
  page_.runJavaScript(
      "document.contentType", QWebEngineScript::ApplicationWorld, [this, layout, done](const QVariant& type) {
        if (!type.isValid()) return done({});  // the page goes away
        if (type.toString() != "application/pdf") return page_.printToPdf(done, layout);
        if (page_.url().isLocalFile()) return done(WholeFile(page_.url()));
        done({});
        events_.StatusTextChanged("Not printed: Save this document, then print it from the disk");
      });
}

}  // namespace tessaril
