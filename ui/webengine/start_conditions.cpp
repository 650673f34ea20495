#include "ui/webengine/start_conditions.h"

#include <sched.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QStringList>
#include <cerrno>
#include <cstring>
#include <iostream>

namespace tessaril {
namespace {

constexpr char kProcess[] = "QtWebEngineProcess";
constexpr char kResources[] = "qtwebengine_resources.pak";
constexpr char kNoSandbox[] = "QTWEBENGINE_DISABLE_SANDBOX";

// The folders in which the component looks for a file of its own, when no variable names another place.
bool IsInAny(const QStringList& folders, const char* name, bool executable, std::string& reason) {
  for (const QString& folder : folders) {
    const QFileInfo file(folder + "/" + name);
    if (file.isFile() && file.isReadable() && (!executable || file.isExecutable())) return true;
  }
  reason = folders.value(0).toStdString() + "/" + name + ": missing or not usable";
  return false;
}

bool ProcessIsThere(std::string& reason) {
  const QString named = qEnvironmentVariable("QTWEBENGINEPROCESS_PATH");
  if (!named.isEmpty()) {
    const QFileInfo file(named);
    return IsInAny({file.path()}, file.fileName().toLocal8Bit().constData(), true, reason);
  }
  return IsInAny(
      {QLibraryInfo::path(QLibraryInfo::LibraryExecutablesPath), QCoreApplication::applicationDirPath()},
      kProcess, true, reason);
}

bool ResourcesAreThere(std::string& reason) {
  const QString named = qEnvironmentVariable("QTWEBENGINE_RESOURCES_PATH");
  if (!named.isEmpty()) return IsInAny({named}, kResources, false, reason);
  const QString data = QLibraryInfo::path(QLibraryInfo::DataPath);
  return IsInAny({data + "/resources", data, QCoreApplication::applicationDirPath()}, kResources, false,
                 reason);
}

// The component's processes hand their pictures over in memory of this folder; without it the first ends all.
bool SharedMemoryIsThere(std::string& reason) {
  constexpr char kFolder[] = "/dev/shm";
  if (access(kFolder, W_OK | X_OK) == 0) return true;
  reason = std::string(kFolder) + ": " + std::strerror(errno);
  return false;
}

// The sandbox needs namespaces of its own, which some systems do not let users have. The component ends the
// program where it gets none; here a process of its own is asked to try.
bool NamespacesAreAllowed(std::string& reason) {
  const pid_t child = fork();
  if (child == 0) _exit(unshare(CLONE_NEWUSER | CLONE_NEWPID | CLONE_NEWNET) == 0 ? 0 : errno);
  int end = 0;
  while (child > 0 && waitpid(child, &end, 0) < 0 && errno == EINTR) {
  }
  const int error = child < 0 ? errno : WIFEXITED(end) ? WEXITSTATUS(end) : EPERM;
  if (error == 0) return true;
  reason = std::string("its sandbox needs namespaces of the user's own: ") + std::strerror(error);
  return false;
}

// Root cannot have the sandbox; everybody else has it.
bool PrepareSandbox(std::string& reason) {
  if (getuid() != 0 && geteuid() != 0) {
    qunsetenv(kNoSandbox);
    return NamespacesAreAllowed(reason);
  }
  if (qEnvironmentVariableIsSet(kNoSandbox)) return true;
  qputenv(kNoSandbox, "1");
  std::cerr << "tessaril: started as root: the browser shows pages without its sandbox\n";
  return true;
}

}  // namespace

bool CanStart(std::string& reason) {
  return ProcessIsThere(reason) && ResourcesAreThere(reason) && SharedMemoryIsThere(reason) &&
         PrepareSandbox(reason);
}

}  // namespace tessaril
