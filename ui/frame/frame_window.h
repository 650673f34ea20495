#ifndef TESSARIL_UI_FRAME_FRAME_WINDOW_H_
#define TESSARIL_UI_FRAME_FRAME_WINDOW_H_

#include <QAction>
#include <QList>
#include <QMainWindow>
#include <QMenu>
#include <QPointer>
#include <map>
#include <memory>

#include "settings/settings_file.h"
#include "settings/temporary_page.h"
#include "ui/dialogs/about_box.h"
#include "ui/frame/child_area.h"
#include "ui/frame/viewers.h"
#include "ui/main/main_window.h"
#include "ui/main/program.h"
#include "ui/shared/session.h"

namespace tessaril {

/// The program's top-level window `MDIForm1`: the menus and the windows inside, of which one is shown at a
/// time. It holds the settings that have no other place and ends the program.
class FrameWindow : public QMainWindow, private Program {
  Q_OBJECT

 public:
  /// Makes the frame without a window in it. What is given by reference must live as long. `make_browser` is
  /// called when the browser window is first needed.
  FrameWindow(Session& session, const SettingsFile& settings_file, TemporaryPage& page,
              MakeBrowserControl make_browser);
  ~FrameWindow() override;

  /// Makes the main window and applies the settings that live in its controls and in the menu. The current
  /// folder is opened in it.
  void Open(const Settings& settings);

  MainWindow& Main() { return *main_; }

  /// Leaves without a question: stops a run first, writes the settings, deletes the temporary page, ends the
  /// program.
  void Leave() override;

  /// The same when nobody may be there any more to read a message: it goes to standard error. When the
  /// program is still there at a second call, it ends at once.
  void LeaveUnattended();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  void SaveSettings() override;
  Viewer FirstViewer() const override;
  void SetFirstViewer(Viewer viewer) override;
  bool ShowInBrowser(const std::string& path) override { return viewers_->ShowInBrowser(path); }
  void NoteMissingBrowser() override;
  void ShowInEditor(const std::string& path) override { viewers_->ShowInEditor(path); }
  void ReturnToEditor() override { viewers_->ReturnToEditor(); }
  Status WriteTemporaryPage(std::string_view page, std::string& path) override;
  void Print(const std::string& text, const std::string& title) override;
  QSize FrameSize() const override { return size(); }
  void MaximizeMain() override;
  void ShowMainNormal(QSize size) override;

  void MakeMenus();
  QMenu* MakeMiscMenu();
  QMenu* MakeSiteMenu();
  QMenu* MakeHelpMenu();
  void ShowSiteItems();
  void ChooseViewer(Viewer viewer);
  void AddMenusOf(const QWidget* child, const QList<QMenu*>& menus);
  const QList<QMenu*>& ShownMenus() const;
  void ShowMenus();
  void ChooseFont();
  void Help();
  void ShowAboutBox();
  void ShowCaption();
  void Exit();
  void Finish();
  void TellFailure(const std::string& text);
  static bool ShowToolTip(QObject* object, const QHelpEvent& event);
  QPushButton* ButtonBeforeMenu(const QKeyEvent& event) const;

  Session& session_;
  const SettingsFile& settings_file_;
  TemporaryPage& page_;
  const MakeBrowserControl make_browser_;
  ChildArea area_;
  MainWindow* main_ = nullptr;
  std::unique_ptr<Viewers> viewers_;
  QList<QMenu*> menus_;                                  // of its own
  std::map<const QWidget*, QList<QMenu*>> child_menus_;  // of windows inside that have some
  QAction* menu0Monospaced = nullptr;
  QAction* menuStartInBrowser = nullptr;
  QAction* menuStartInEditor = nullptr;
  QAction* menuSiteRules = nullptr;
  QAction* menuNoRules = nullptr;
  QAction* menuUndo = nullptr;
  QPointer<AboutBox> about_;
  bool browser_is_missing_ = false;
  bool save_failure_told_ = false;
  bool unattended_ = false;
  bool leaving_ = false;  // as soon as the run has ended
  bool finished_ = false;
};

}  // namespace tessaril

#endif  // TESSARIL_UI_FRAME_FRAME_WINDOW_H_
