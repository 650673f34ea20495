#include "ui/webengine/downloads.h"

#include <QFileInfo>
#include <QWebEngineDownloadRequest>

namespace tessaril {
namespace {

void Offer(QWebEngineDownloadRequest& file, BrowserEvents& events) {
  const QString path = events.AskWhereToSave(file.suggestedFileName());
  if (path.isEmpty()) return file.cancel();
  const QFileInfo target(path);
  file.setDownloadDirectory(target.path());
  file.setDownloadFileName(target.fileName());
  QObject::connect(&file, &QWebEngineDownloadRequest::stateChanged, &file, [&file, &events, path] {
    if (file.state() == QWebEngineDownloadRequest::DownloadCompleted)
      events.StatusTextChanged("Saved: " + path);
    if (file.state() == QWebEngineDownloadRequest::DownloadInterrupted) {
      events.SavingFailed(path, file.interruptReasonString());
    }
  });
  events.StatusTextChanged("Saving: " + path);
  file.accept();
}

}  // namespace

void AskForDownloads(QWebEngineProfile& profile, BrowserEvents& events) {
  QObject::connect(&profile, &QWebEngineProfile::downloadRequested, &profile,
                   [&events](QWebEngineDownloadRequest* file) { Offer(*file, events); });
}

}  // namespace tessaril
