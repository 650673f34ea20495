#include <QApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <iostream>

#include "engine/start_places.h"
#include "ui/browser/browser_plugin.h"
#include "ui/frame/end_signals.h"
#include "ui/frame/start_up.h"

namespace {

constexpr int kExitFailure = 2;

// Where the settings go when the program's own folder cannot be written.
std::string UserFolder() {
  QString folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
  if (!QDir::isAbsolutePath(folder)) folder = QDir::homePath() + "/.local/share/tessaril";
  return QFile::encodeName(folder).toStdString();
}

// A folder as argument is opened.
void OpenArgument(tessaril::StartUp& start_up, const char* argument) {
  std::string folder;
  if (tessaril::MakeAbsolute(argument, folder).ok() && start_up.OpenFolder(folder)) return;
  std::cerr << "tessaril: " << argument << ": cannot be opened as a folder\n";
}

}  // namespace

int main(int argc, char** argv) {
  std::string program_folder;
  if (const tessaril::Status status = tessaril::FindProgramFolder(program_folder); !status.ok()) {
    std::cerr << "tessaril: " << status.reason() << "\n";
    return kExitFailure;
  }
  tessaril::PrepareForBrowser(program_folder);
  QApplication application(argc, argv);
  QApplication::setApplicationName("tessaril");
  QApplication::setQuitOnLastWindowClosed(false);
  tessaril::StartUp start_up(program_folder, UserFolder(), tessaril::BrowserFromPlugin(program_folder));
  if (!start_up.Run()) return kExitFailure;
  const auto leave = [&start_up] { start_up.Frame().LeaveUnattended(); };
  tessaril::OnEndSignal(leave);
  QObject::connect(&application, &QGuiApplication::commitDataRequest, leave);
  if (argc > 1) OpenArgument(start_up, argv[1]);
  start_up.Frame().show();
  return QApplication::exec();
}
