#ifndef TESSARIL_UI_FRAME_HELP_H_
#define TESSARIL_UI_FRAME_HELP_H_

#include <QWidget>
#include <string>

namespace tessaril {

/// Shows the help of the program's folder, "TSLhelp.chm", in the first viewer for such files that there is;
/// without one the same pages, "help/index.html", in whatever the desktop opens pages with. Nothing is waited
/// for. When none of them starts, that is told, over `parent`.
void ShowHelp(QWidget* parent, const std::string& program_folder);

}  // namespace tessaril

#endif  // TESSARIL_UI_FRAME_HELP_H_
