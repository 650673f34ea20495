#include "ui/frame/outside_programs.h"

#include <QProcess>
#include <QStandardPaths>

namespace tessaril {

bool StartProgram(const QString& program, const QStringList& arguments) {
  const QString file = QStandardPaths::findExecutable(program);
  return !file.isEmpty() && QProcess::startDetached(file, arguments);
}

}  // namespace tessaril
