#ifndef TESSARIL_UI_SHARED_PROGRAM_ICON_H_
#define TESSARIL_UI_SHARED_PROGRAM_ICON_H_

#include <QIcon>

namespace tessaril {

/// The program's icon, in all sizes in which it was drawn.
QIcon ProgramIcon();

}  // namespace tessaril

#endif  // TESSARIL_UI_SHARED_PROGRAM_ICON_H_
