#ifndef TESSARIL_UI_WEBENGINE_DOWNLOADS_H_
#define TESSARIL_UI_WEBENGINE_DOWNLOADS_H_

#include <QPointer>
#include <QWebEngineDownloadRequest>
#include <QWebEngineProfile>
#include <map>

#include "ui/browser/browser_control.h"

namespace tessaril {

/// As long as it lives, each file that a page of the profile offers is saved where the user says, or not at
/// all. What is not complete at its end is dropped.
class Downloads : public QObject {
  Q_OBJECT

 public:
  Downloads(QWebEngineProfile& profile, BrowserEvents& events);
  ~Downloads() override;

 private:
  struct Saving {
    QPointer<QWebEngineDownloadRequest> file;
    QString path;
  };

  void Offer(QWebEngineDownloadRequest& file);
  void Follow(const QWebEngineDownloadRequest& file);

  BrowserEvents& events_;
  std::map<quint32, Saving> saved_;  // by the component's number of the file
};

}  // namespace tessaril

#endif  // TESSARIL_UI_WEBENGINE_DOWNLOADS_H_
