#include "ui/frame/start_up.h"

#include <iostream>
#include <utility>
#include <vector>

#include "engine/command_line.h"
#include "engine/paths.h"
#include "engine/start_places.h"
#include "settings/user_folder.h"
#include "ui/shared/message_boxes.h"

namespace tessaril {

StartUp::StartUp(const std::string& program_folder, const std::string& user_folder,
                 MakeBrowserControl make_browser)
    : settings_file_(program_folder, user_folder),
      page_(settings_file_.folder()),
      frame_(session_, settings_file_, page_, std::move(make_browser)) {
  session_.ProgramFolder = program_folder;
  session_.undo = UndoStore(UndoFolder(user_folder));
}

bool StartUp::Run(const std::vector<std::string>& arguments) {
  session_.CommandLine = CommandLineOf(arguments, session_.files);
  const Settings settings = settings_file_.Load();
  session_.LastDir = settings.LastDir;
  session_.PrinterFontSize = settings.PrinterFontSize;
  session_.PrinterFontName = settings.PrinterFontName;
  EnterFirstFolder();
  frame_.Open(settings);
  std::vector<std::string> notices;
  const Status status = session_.entities.Load(session_.files, session_.ProgramFolder, notices);
  for (const std::string& notice : notices) std::cerr << "tessaril: " << notice << "\n";
  if (status.ok()) return true;
  session_.CommandLine.clear();  // is not to be opened behind the message
  Tell(&frame_, status.reason());
  return false;
}

// The folder last used; where that is none, the one that the program was started in takes its place.
void StartUp::EnterFirstFolder() {
  std::string start;
  if (!MakeAbsolute(".", start).ok() || !session_.files.EnterFolder(start).ok()) {
    (void)session_.files.EnterFolder("/");
  }
  const bool is_path = session_.LastDir.starts_with(kSeparator);
  if (is_path && session_.files.EnterFolder(AbsolutePath("/", session_.LastDir)).ok()) return;
  session_.LastDir = JoinPath(session_.files.CurrentFolder(), "");
}

}  // namespace tessaril
