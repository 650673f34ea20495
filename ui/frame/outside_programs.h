#ifndef TESSARIL_UI_FRAME_OUTSIDE_PROGRAMS_H_
#define TESSARIL_UI_FRAME_OUTSIDE_PROGRAMS_H_

#include <QStringList>

namespace tessaril {

/// Starts a program, by its path or by a name that is looked for in the PATH, and does not wait for it. False
/// when there is none or it does not start.
bool StartProgram(const QString& program, const QStringList& arguments);

}  // namespace tessaril

#endif  // TESSARIL_UI_FRAME_OUTSIDE_PROGRAMS_H_
