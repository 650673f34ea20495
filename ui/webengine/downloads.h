#ifndef TESSARIL_UI_WEBENGINE_DOWNLOADS_H_
#define TESSARIL_UI_WEBENGINE_DOWNLOADS_H_

#include <QWebEngineProfile>

#include "ui/browser/browser_control.h"

namespace tessaril {

/// From now on each file that a page of the profile offers is saved where the user says, or not at all.
void AskForDownloads(QWebEngineProfile& profile, BrowserEvents& events);

}  // namespace tessaril

#endif  // TESSARIL_UI_WEBENGINE_DOWNLOADS_H_
