#ifndef TESSARIL_UI_FRAME_OUTSIDE_PROGRAMS_H_
#define TESSARIL_UI_FRAME_OUTSIDE_PROGRAMS_H_

#include <QObject>
#include <QStringList>
#include <functional>

namespace tessaril {

/// Starts a program, by its path or by a name that is looked for in the PATH, and does not wait for it. False
/// when there is none or it does not start.
bool StartProgram(const QString& program, const QStringList& arguments);

/// The same for a program that says by its exit status whether it did what was asked: if it ends with another
/// than 0 within some seconds, `on_failure` is called then, as long as `owner` is there.
bool StartProgram(const QString& program, const QStringList& arguments, const QObject* owner,
                  const std::function<void()>& on_failure);

}  // namespace tessaril

#endif  // TESSARIL_UI_FRAME_OUTSIDE_PROGRAMS_H_
