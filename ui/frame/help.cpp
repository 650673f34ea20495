#include "ui/frame/help.h"

#include <QDesktopServices>
#include <QFile>
#include <QUrl>
#include <functional>
#include <iterator>

#include "engine/paths.h"
#include "ui/frame/outside_programs.h"
#include "ui/shared/message_boxes.h"

namespace tessaril {
namespace {

constexpr char kViewers[][16] = {"xchm", "kchmviewer", "okular"};

// In the first viewer from that one on that there is; one that fails at once is passed over.
void OpenInViewer(std::size_t first, QWidget* parent, const QString& file,
                  const std::function<void()>& otherwise) {
  for (std::size_t i = first; i < std::size(kViewers); ++i) {
    const auto go_on = [=] { OpenInViewer(i + 1, parent, file, otherwise); };
    if (StartProgram(kViewers[i], {file}, parent, go_on)) return;
  }
  otherwise();
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
  const auto show_page = [=] {
    if (QFile::exists(page) && OpenByDesktop(parent, page, tell_that_nothing_shows_it)) return;
    if (!QFile::exists(book)) return Tell(parent, "Can't find " + help_file);
    tell_that_nothing_shows_it();
  };
  if (!QFile::exists(book)) return show_page();
  OpenInViewer(0, parent, book, show_page);
}

}  // namespace tessaril
