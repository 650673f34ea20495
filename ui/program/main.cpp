#include <QApplication>
#include <iostream>

#include "engine/start_places.h"
#include "engine/version.h"
#include "settings/user_folder.h"
#include "ui/browser/browser_plugin.h"
#include "ui/frame/end_signals.h"
#include "ui/frame/start_up.h"
#include "ui/shared/program_icon.h"

namespace {

constexpr int kExitFailure = 2;

}  // namespace

int main(int argc, char** argv) {
  std::string program_folder;
  if (const tessaril::Status status = tessaril::FindProgramFolder(program_folder); !status.ok()) {
    std::cerr << "tessaril: " << status.reason() << "\n";
    return kExitFailure;
  }
  tessaril::PrepareForBrowser(program_folder);
  QApplication application(argc, argv);  // takes out what is the toolkit's own
  QApplication::setApplicationName("tessaril");
  QApplication::setApplicationVersion(tessaril::Version());
  QApplication::setDesktopFileName("tessaril");
  QApplication::setWindowIcon(tessaril::ProgramIcon());
  QApplication::setQuitOnLastWindowClosed(false);
  tessaril::StartUp start_up(program_folder, tessaril::UserFolder(),
                             tessaril::BrowserFromPlugin(program_folder));
  if (!start_up.Run({argv + 1, argv + argc})) return kExitFailure;
  const auto leave = [&start_up] { start_up.Frame().LeaveUnattended(); };
  tessaril::OnEndSignal(leave);
  QObject::connect(&application, &QGuiApplication::commitDataRequest, leave);
  start_up.Frame().show();
  return QApplication::exec();
}
