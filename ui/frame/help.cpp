#include "ui/frame/help.h"

#include <QDesktopServices>
#include <QFile>
#include <QUrl>

#include "engine/paths.h"
#include "ui/frame/outside_programs.h"

namespace tessaril {
namespace {

constexpr char kViewers[][16] = {"xchm", "kchmviewer", "okular"};

bool OpenInViewer(const QString& file) {
  for (const char* const viewer : kViewers) {
    if (StartProgram(viewer, {file})) return true;
  }
  return false;
}

bool OpenByDesktop(const QString& file) {
  return StartProgram("xdg-open", {file}) || QDesktopServices::openUrl(QUrl::fromLocalFile(file));
}

}  // namespace

Status ShowHelp(const std::string& program_folder) {
  const std::string help_file = JoinPath(program_folder, "TSLhelp.chm");
  const QString book = QFile::decodeName(help_file.c_str());
  const QString page = QFile::decodeName(JoinPath(program_folder, "help/index.html").c_str());
  if (QFile::exists(book) && OpenInViewer(book)) return {};
  if (QFile::exists(page) && OpenByDesktop(page)) return {};
  if (!QFile::exists(book)) return Status::Failure("Can't find " + help_file);
  return Status::Failure("Can't show " + help_file +
                         "\r\nbecause no program that shows such files (xchm, for example) is installed!");
}

}  // namespace tessaril
