#include "ui/webengine/downloads.h"

#include <QFile>
#include <QFileInfo>

namespace tessaril {

Downloads::Downloads(QWebEngineProfile& profile, BrowserEvents& events) : events_(events) {
  connect(&profile, &QWebEngineProfile::downloadRequested, this,
          [this](QWebEngineDownloadRequest* file) { Offer(*file); });
}

// The component leaves what it has so far under a name of its own.
Downloads::~Downloads() {
  for (const auto& [id, saving] : saved_) {
    if (saving.file == nullptr || saving.file->isFinished()) continue;
    saving.file->disconnect(this);
    saving.file->cancel();
    QFile::remove(saving.path + ".download");
  }
}

// A file whose server broke off is offered again, several times; the user has said where it goes.
void Downloads::Offer(QWebEngineDownloadRequest& file) {
  const auto known = saved_.find(file.id());
  const QString path =
      known != saved_.end() ? known->second.path : events_.AskWhereToSave(file.suggestedFileName());
  if (path.isEmpty()) return file.cancel();
  saved_[file.id()] = {&file, path};
  const QFileInfo target(path);
  file.setDownloadDirectory(target.path());
  file.setDownloadFileName(target.fileName());
  connect(&file, &QWebEngineDownloadRequest::stateChanged, this, [this, &file] { Follow(file); });
  events_.StatusTextChanged("Saving: " + path);
  file.accept();
}

void Downloads::Follow(const QWebEngineDownloadRequest& file) {
  const QString& path = saved_[file.id()].path;
  if (file.state() == QWebEngineDownloadRequest::DownloadCompleted) {
    events_.StatusTextChanged("Saved: " + path);
  } else if (file.state() == QWebEngineDownloadRequest::DownloadInterrupted) {
    events_.SavingFailed(path, file.interruptReasonString());
  }
}

}  // namespace tessaril
