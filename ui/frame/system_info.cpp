#include "ui/frame/system_info.h"

#include "ui/frame/outside_programs.h"
#include "ui/shared/message_boxes.h"

#ifdef Q_OS_WIN
#include <QSettings>

#include "ui/frame/registry.h"
#endif

namespace tessaril {
namespace {

#ifdef Q_OS_WIN

class WindowsRegistry : public Registry {
 public:
  bool GetKeyValue(std::uint32_t KeyRoot, const QString& KeyName, const QString& SubKeyRef,
                   QString& KeyVal) const override {
    KeyVal.clear();
    if (KeyRoot != kLocalMachine) return false;
    const QSettings key("HKEY_LOCAL_MACHINE\\" + KeyName, QSettings::NativeFormat);
    if (!key.contains(SubKeyRef)) return false;
    KeyVal = key.value(SubKeyRef).toString().section(QChar(0), 0, 0);
    return true;
  }
};

bool StartTool() {
  const QString tool = SysInfoToolOf(WindowsRegistry());
  return !tool.isEmpty() && StartProgram(tool, {});
}

#else

// The tools of the usual desktops, the most telling first.
bool StartTool() {
  const struct {
    const char* program;
    QStringList arguments;
  } tools[] = {
      {"hardinfo2", {}},
      {"hardinfo", {}},
      {"kinfocenter", {}},
      {"gnome-control-center", {"info-overview"}},
  };
  for (const auto& [program, arguments] : tools) {
    if (StartProgram(program, arguments)) return true;
  }
  return false;
}

#endif

}  // namespace

void StartSysInfo(QWidget* parent) {
  if (!StartTool()) Tell(parent, "System Information Is Unavailable At This Time");
}

}  // namespace tessaril
