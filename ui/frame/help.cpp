#include "ui/frame/help.h"

#include <QDesktopServices>
#include <QFile>
#include <QUrl>

#include "engine/paths.h"
#include "ui/frame/outside_programs.h"
#include "ui/shared/message_boxes.h"

namespace tessaril {
namespace {

constexpr char kViewers[][16] = {"xchm", "kchmviewer", "okular"};

bool OpenInViewer(const QString& file) {
  for (const char* const viewer : kViewers) {
    if (StartProgram(viewer, {file})) return true;
  }
  return false;
}

bool OpenByDesktop(QWidget* parent, const QString& file, const std::function<void()>& on_failure) {
  return StartProgram("xdg-open", {file}, parent, on_failure) ||
         QDesktopServices::openUrl(QUrl::fromLocalFile(file));
}

}  // namespace

void ShowHelp(QWidget* parent, const std::string& program_folder) {
  const std::string help_file = JoinPath(program_folder, "TSLhelp.chm");
  const QString book = QFile::decodeName(help_file.c_str());
  const QString page = QFile::decodeName(JoinPath(program_folder, "help/index.html").c_str());
  const auto tell_that_nothing_shows_it = [parent, help_file] {
    Tell(parent, "Can't show " + help_file +
                     "\r\nbecause no program that shows such files (xchm, for example) is installed!");
  };
  if (QFile::exists(book) && OpenInViewer(book)) return;
  if (QFile::exists(page) && OpenByDesktop(parent, page, tell_that_nothing_shows_it)) return;
  if (!QFile::exists(book)) return Tell(parent, "Can't find " + help_file);
  tell_that_nothing_shows_it();
}

}  // namespace tessaril
