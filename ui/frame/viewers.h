#ifndef TESSARIL_UI_FRAME_VIEWERS_H_
#define TESSARIL_UI_FRAME_VIEWERS_H_

#include <QList>
#include <QMenu>
#include <string>

#include "ui/browser/browser_window.h"
#include "ui/editor/editor_window.h"
#include "ui/editor/unsaved_page.h"
#include "ui/frame/child_area.h"
#include "ui/main/main_window.h"
#include "ui/main/program.h"
#include "ui/shared/session.h"

namespace tessaril {

/// The windows that show files, the browser's and the editor's, and every way between them and the main
/// window. Each is made when it is first needed, and lives on in the area then. docs/windows.md has the ways
/// in a table.
class Viewers : public QObject {
  Q_OBJECT

 public:
  /// `page` is where the page of external links is written. What is given by reference must live as long.
  Viewers(Session& session, Program& program, MainWindow& main, ChildArea& area, std::string page,
          MakeBrowserControl make_browser);

  /// Shows a file in the browser window; false when there is no browser component.
  bool ShowInBrowser(const std::string& path);

  /// Shows a file in the editor window; tells when it cannot be read.
  void ShowInEditor(const std::string& path);

  /// Shows the editor window with what it holds.
  void ReturnToEditor();

  /// Leaves nothing on the disk that is of this run of the program only.
  void CleanUp() { unsaved_page_.DeleteAll(); }

 signals:
  /// The editor has been made. Its menus are to be shown with it.
  void EditorMade(const QWidget* editor, const QList<QMenu*>& menus);

  void PrinterFontWanted();
  void ExitWanted();
  void HelpWanted();
  void AboutBoxWanted();

 private:
  bool MakeBrowser();
  std::string StartBrowser();
  std::string StartAddress() const;
  void LoadEditor();
  void ShowEditor();

  // The ways, from the editor and from the browser.
  void EditorToMain();
  void EditorToResults();
  void EditorToBrowser();
  void BrowserToEditor();

  bool WriteUnsavedPage();
  void EndUnsavedPage();
  void ShowUnsaved(bool unsaved);
  std::string FileToEdit() const;

  Session& session_;
  Program& program_;
  MainWindow& main_;
  ChildArea& area_;
  const std::string page_;
  const MakeBrowserControl make_browser_;
  UnsavedPage unsaved_page_;
  BrowserWindow* browser_ = nullptr;
  bool browser_is_missing_ = false;
  bool browser_is_started_ = false;
  EditorWindow* editor_ = nullptr;
  bool unsaved_is_shown_ =
      false;  // the browser shows the editor's unsaved text, or did so before it was saved
};

}  // namespace tessaril

#endif  // TESSARIL_UI_FRAME_VIEWERS_H_
