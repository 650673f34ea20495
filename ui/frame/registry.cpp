#include "ui/frame/registry.h"

#include <QFile>

namespace tessaril {

QString SysInfoToolOf(const Registry& registry) {
  QString tool;
  if (registry.GetKeyValue(Registry::kLocalMachine, "SOFTWARE\\Microsoft\\Shared Tools\\MSINFO", "PATH",
                           tool)) {
    return tool;
  }
  QString folder;
  if (!registry.GetKeyValue(Registry::kLocalMachine, "SOFTWARE\\Microsoft\\Shared Tools Location", "MSINFO",
                            folder)) {
    return {};
  }
  tool = folder + "\\MSINFO32.EXE";
  return QFile::exists(tool) ? tool : QString();
}

}  // namespace tessaril
