#ifndef TESSARIL_UI_FRAME_SYSTEM_INFO_H_
#define TESSARIL_UI_FRAME_SYSTEM_INFO_H_

#include <QWidget>

namespace tessaril {

/// Starts the platform's system information tool and does not wait for it; tells when there is none that
/// starts. `parent` is the window that asks.
void StartSysInfo(QWidget* parent);

}  // namespace tessaril

#endif  // TESSARIL_UI_FRAME_SYSTEM_INFO_H_
