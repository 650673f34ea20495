// The start with a file or a folder named on the command line.

#include "engine/command_line.h"
#include "engine/paths.h"
#include "ui/main/main_window.h"
#include "ui/shared/message_boxes.h"

namespace tessaril {

// The tick of Timer1, which counts once.
void MainWindow::OpenCommandLine() {
  if (Timer1->interval() == 0) return;
  Timer1->stop();
  Timer1->setInterval(0);
  const std::string& command_line = session_.CommandLine;
  if (command_line.empty()) return;
  const auto [kind, path] = FindNamed(command_line, session_.files);
  if (kind == NamedPath::Kind::kNothing) return Tell(this, "Can't find " + command_line);
  if (kind == NamedPath::Kind::kFolder) {
    (void)OpenAndEnter(path);
    return;
  }
  const FileClass file_class = ClassOf(NameOf(path));
  if (file_class == FileClass::kNeither || !OpenAndEnter(std::string(FolderOf(path)))) {
    return Tell(this, "Can't show the file\r\n" + command_line + "\r\nselected in the run command line!");
  }
  if (file_class != FileClass::kPage) {
    program_.SetFirstViewer(file_class == FileClass::kEditor ? Viewer::kEditor : Viewer::kBrowser);
  }
  MarkFile(std::string(NameOf(path)));
}

bool MainWindow::OpenAndEnter(const std::string& folder) {
  return OpenFolder(folder) && session_.files.EnterFolder(folder).ok();
}

// As a click on it does, whatever the filter was.
void MainWindow::MarkFile(const std::string& name) {
  if (Picture1.cboSearchSpec->TakeFilterFor(name)) {
    Picture1.filList->SetPattern(Picture1.cboSearchSpec->Text());
  }
  Picture1.filList->Select(name);
  ClickFile();
}

}  // namespace tessaril
