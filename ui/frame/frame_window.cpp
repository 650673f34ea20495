#include "ui/frame/frame_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMenuBar>
#include <QScreen>
#include <QShortcut>
#include <QToolTip>
#include <iostream>
#include <utility>

#include "ui/frame/help.h"
#include "ui/frame/system_info.h"
#include "ui/printing/print_text.h"
#include "ui/printing/printer_font.h"
#include "ui/shared/byte_text_box.h"
#include "ui/shared/controls.h"
#include "ui/shared/message_boxes.h"
#include "ui/shared/place.h"
#include "ui/shared/texts.h"

namespace tessaril {
namespace {

constexpr QSize kLeastSize{7290, 6105};          // twips
constexpr QSize kFirstSize{900 * 15, 640 * 15};  // twips
constexpr char kStartsInBrowser[] = "Sho&w file - Start in Browser";
constexpr char kStartsInEditor[] = "Sho&w file - Start in Editor";
constexpr char kOnlyInEditor[] = "Sho&w file in Editor, only";

QSize PixelSize(QSize twips) {
  return {Pixels(twips.width()), Pixels(twips.height())};
}

// The button of a window with an access key; null when there is none that can be pressed.
QPushButton* ButtonFor(const QWidget& window, const QKeySequence& access_key) {
  for (QPushButton* const button : window.findChildren<QPushButton*>()) {
    if (button->isVisible() && button->isEnabled() && QKeySequence::mnemonic(button->text()) == access_key) {
      return button;
    }
  }
  return nullptr;
}

bool LeavesTextByTab(const QObject* object, const QKeyEvent& event) {
  const bool is_tab = event.key() == Qt::Key_Tab || event.key() == Qt::Key_Backtab;
  return is_tab && event.modifiers().testFlag(Qt::ControlModifier) &&
         qobject_cast<const ByteTextBox*>(object) != nullptr;
}

}  // namespace

FrameWindow::FrameWindow(Session& session, const SettingsFile& settings_file, TemporaryPage& page,
                         MakeBrowserControl make_browser)
    : session_(session), settings_file_(settings_file), page_(page), make_browser_(std::move(make_browser)) {
  setObjectName("MDIForm1");
  ShowCaption();
  setCentralWidget(&area_);
  connect(&area_, &ChildArea::Switched, this, &FrameWindow::ShowCaption);
  connect(&area_, &ChildArea::Switched, this, &FrameWindow::ShowMenus);
  MakeMenus();
  setMinimumSize(PixelSize(kLeastSize));
  const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
  const QSize room = screen.size() * 9 / 10;  // the rest is for the title bar
  QRect place({}, PixelSize(kFirstSize).boundedTo(room).expandedTo(minimumSize()));
  place.moveCenter(screen.center());
  setGeometry(place);
  qApp->installEventFilter(this);
}

FrameWindow::~FrameWindow() {
  takeCentralWidget();  // a member, not for the base class to delete
}

void FrameWindow::Open(const Settings& settings) {
  main_ = new MainWindow(session_, *this);
  area_.Add(main_);
  Program& program = *this;
  viewers_ = std::make_unique<Viewers>(session_, program, *main_, area_, page_.path(), make_browser_);
  connect(viewers_.get(), &Viewers::EditorMade, this, &FrameWindow::AddMenusOf);
  connect(viewers_.get(), &Viewers::PrinterFontWanted, this, &FrameWindow::ChooseFont);
  connect(viewers_.get(), &Viewers::ExitWanted, this, &FrameWindow::Exit);
  connect(viewers_.get(), &Viewers::HelpWanted, this, &FrameWindow::Help);
  connect(viewers_.get(), &Viewers::AboutBoxWanted, this, &FrameWindow::ShowAboutBox);
  connect(main_, &MainWindow::SiteShown, this, &FrameWindow::ShowSiteItems);
  connect(main_, &MainWindow::RunEnded, this, [this] {
    if (leaving_) Finish();
  });
  main_->SetShowFileCaption(kStartsInBrowser);
  main_->ReturnToOptions();
  main_->SetCgiName(QString::fromStdString(settings.CGIname));
  if (!settings.BrowserFirst) SetFirstViewer(Viewer::kEditor);
  if (settings.UCfilename) main_->SetUpperCasePermitted(true);
}

void FrameWindow::MakeMenus() {
  menus_ = {MakeMiscMenu(), MakeSiteMenu(), MakeHelpMenu()};
  connect(new QShortcut(Qt::Key_F10, this), &QShortcut::activated, this,
          [this] { menuBar()->setActiveAction(ShownMenus().first()->menuAction()); });
}

QMenu* FrameWindow::MakeMiscMenu() {
  QMenu* const menuMisc = menuBar()->addMenu("&Misc.");
  menuMisc->setObjectName("menuMisc");
  connect(AddItem(*menuMisc, "menu0PrinterFont", "&Printer Font"), &QAction::triggered, this,
          &FrameWindow::ChooseFont);
  menu0Monospaced = AddItem(*menuMisc, "menu0Monospaced", "&Monospaced Results Font");
  menu0Monospaced->setCheckable(true);
  connect(menu0Monospaced, &QAction::toggled, this, [this](bool on) { main_->UseMonospacedFont(on); });
  menuMisc->addSeparator()->setObjectName("menuSpace0");
  QMenu* const menuShowFile = menuMisc->addMenu("\"&Show file\" starts in");
  menuShowFile->setObjectName("menuShowFile");
  menuStartInBrowser = AddItem(*menuShowFile, "menuStartInBrowser", "&Browser");
  menuStartInEditor = AddItem(*menuShowFile, "menuStartInEditor", "&Editor");
  for (QAction* const item : {menuStartInBrowser, menuStartInEditor}) item->setCheckable(true);
  menuStartInBrowser->setChecked(true);
  connect(menuStartInBrowser, &QAction::triggered, this, [this] { ChooseViewer(Viewer::kBrowser); });
  connect(menuStartInEditor, &QAction::triggered, this, [this] { ChooseViewer(Viewer::kEditor); });
  menuMisc->addSeparator()->setObjectName("menuSpace1");
  connect(AddItem(*menuMisc, "menuExit", "&Exit"), &QAction::triggered, this, &FrameWindow::Exit);
  return menuMisc;
}

QMenu* FrameWindow::MakeSiteMenu() {
  QMenu* const menuSite = menuBar()->addMenu("&Site");
  menuSite->setObjectName("menuSite");
  menuSiteRules = AddItem(*menuSite, "menuSiteRules", "&Rules of this site...");
  menuNoRules = AddItem(*menuSite, "menuNoRules", "&No rules (classic)");
  menuSite->addSeparator()->setObjectName("menuSpace2");
  menuUndo = AddItem(*menuSite, "menuUndo", "&Undo last run...");
  connect(menuUndo, &QAction::triggered, this, [this] { main_->UndoLastRun(); });
  connect(menuSite, &QMenu::aboutToShow, this, &FrameWindow::ShowSiteItems);
  connect(menuSiteRules, &QAction::triggered, this, [this] { main_->ChangeSiteRules(); });
  connect(menuNoRules, &QAction::triggered, this, [this] { main_->RemoveSiteRules(); });
  return menuSite;
}

// A run keeps to the rules that it began with, and is not undone while it goes on.
void FrameWindow::ShowSiteItems() {
  menuSiteRules->setEnabled(!main_->IsRunning());
  menuNoRules->setEnabled(!main_->IsRunning() && main_->HasSiteFile());
  menuUndo->setEnabled(!main_->IsRunning());
}

QMenu* FrameWindow::MakeHelpMenu() {
  QMenu* const menu0Help = menuBar()->addMenu("&Help");
  menu0Help->setObjectName("menu0Help");
  QAction* const menuHelp = AddItem(*menu0Help, "menuHelp", "&Help");
  menuHelp->setShortcut(Qt::Key_F1);
  menuHelp->setAutoRepeat(false);  // or a key held down starts many viewers
  connect(menuHelp, &QAction::triggered, this, &FrameWindow::Help);
  connect(AddItem(*menu0Help, "menu1About", "&About"), &QAction::triggered, this, &FrameWindow::ShowAboutBox);
  return menu0Help;
}

void FrameWindow::ChooseFont() {
  if (ChoosePrinterFont(this, session_)) SaveSettings();
}

void FrameWindow::Help() {
  ShowHelp(this, session_.ProgramFolder);
}

// There is one at most.
void FrameWindow::ShowAboutBox() {
  if (about_ == nullptr) {
    about_ = new AboutBox(this);
    connect(about_, &AboutBox::SystemInfoWanted, about_, [this] { StartSysInfo(about_); });
    connect(about_, &AboutBox::HelpWanted, this, &FrameWindow::Help);
  }
  about_->showNormal();
  about_->raise();
  about_->activateWindow();
}

void FrameWindow::AddMenusOf(const QWidget* child, const QList<QMenu*>& menus) {
  for (QMenu* const menu : menus) menuBar()->addMenu(menu);
  child_menus_[child] = menus;
  ShowMenus();
}

const QList<QMenu*>& FrameWindow::ShownMenus() const {
  const auto of_child = child_menus_.find(area_.Shown());
  return of_child == child_menus_.end() ? menus_ : of_child->second;
}

// What is hidden has no shortcuts either.
void FrameWindow::ShowMenus() {
  const QList<QMenu*>& shown = ShownMenus();
  for (QAction* const menu : menuBar()->actions()) menu->setVisible(shown.contains(menu->menu()));
}

void FrameWindow::ChooseViewer(Viewer viewer) {
  SetFirstViewer(viewer);
  SaveSettings();
}

Viewer FrameWindow::FirstViewer() const {
  return menuStartInBrowser->isChecked() ? Viewer::kBrowser : Viewer::kEditor;
}

void FrameWindow::SetFirstViewer(Viewer viewer) {
  const bool browser = viewer == Viewer::kBrowser && !browser_is_missing_;
  menuStartInBrowser->setChecked(browser);
  menuStartInEditor->setChecked(!browser);
  main_->SetShowFileCaption(browser               ? kStartsInBrowser
                            : browser_is_missing_ ? kOnlyInEditor
                                                  : kStartsInEditor);
}

// The browser's is the page's title, the others have none.
void FrameWindow::ShowCaption() {
  const QWidget* const shown = area_.Shown();
  const QString title = shown == nullptr ? QString() : shown->windowTitle();
  setWindowTitle(title.isEmpty() ? "Tessaril" : "Tessaril - [" + title + "]");
}

void FrameWindow::NoteMissingBrowser() {
  browser_is_missing_ = true;
  SetFirstViewer(Viewer::kEditor);
  menuStartInBrowser->setEnabled(false);
  SaveSettings();
}

void FrameWindow::SaveSettings() {
  Settings settings;
  settings.LastDir = session_.LastDir;
  settings.PrinterFontSize = session_.PrinterFontSize;
  settings.PrinterFontName = session_.PrinterFontName;
  settings.CGIname = main_->CgiName().toStdString();
  settings.BrowserFirst = menuStartInBrowser->isChecked();
  settings.UCfilename = main_->UpperCasePermitted();
  const Status status = settings_file_.Save(settings);
  if (status.ok() || save_failure_told_) return;
  save_failure_told_ = true;
  TellFailure("Settings not saved: " + status.reason());
}

void FrameWindow::TellFailure(const std::string& text) {
  if (!unattended_) return Tell(this, text);
  std::cerr << "tessaril: " << text << "\n";
}

Status FrameWindow::WriteTemporaryPage(std::string_view page, std::string& path) {
  path = page_.path();
  return page_.Write(page);
}

void FrameWindow::Print(const std::string& text, const std::string& title) {
  const Status status = PrintText(this, session_, text, title);
  if (!status.ok()) TellFailure("Error: " + status.reason());
}

void FrameWindow::MaximizeMain() {
  area_.ShowMaximized(*main_);
}

void FrameWindow::ShowMainNormal(QSize size) {
  area_.ShowNormal(*main_, size);
}

void FrameWindow::Exit() {
  if (AskOkCancel(this, "Leave Tessaril?")) Leave();
}

void FrameWindow::Leave() {
  if (!main_->IsRunning()) return Finish();
  leaving_ = true;
  main_->StopRun();
}

void FrameWindow::LeaveUnattended() {
  unattended_ = true;
  if (finished_) return QCoreApplication::exit(0);
  Leave();
}

// The settings are saved last of all that may show a message.
void FrameWindow::Finish() {
  if (finished_) return;
  finished_ = true;
  SaveSettings();
  page_.Delete();
  viewers_->CleanUp();
  QCoreApplication::exit(0);
}

void FrameWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  Leave();
}

// The user may come back from another program that changed the site file. And the toolkit puts an older
// caption back when the window is minimized.
void FrameWindow::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  const bool comes_back = event->type() == QEvent::ActivationChange && isActiveWindow();
  if (comes_back && main_ != nullptr && !main_->IsRunning()) main_->ShowRules();
  if (event->type() != QEvent::WindowStateChange) return;
  QMetaObject::invokeMethod(this, &FrameWindow::ShowCaption, Qt::QueuedConnection);
}

// An access key that a button of the shown window has goes to that button, not to the menu of the same key.
bool FrameWindow::eventFilter(QObject* object, QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride) {
    if (ButtonBeforeMenu(static_cast<QKeyEvent&>(*event)) == nullptr) return false;
    event->accept();
    return true;
  }
  if (event->type() == QEvent::KeyPress) {
    // The area would take this for its own, to change windows.
    if (LeavesTextByTab(object, static_cast<QKeyEvent&>(*event))) return object->event(event);
    QPushButton* const button = ButtonBeforeMenu(static_cast<QKeyEvent&>(*event));
    if (button == nullptr) return QMainWindow::eventFilter(object, event);
    button->setFocus(Qt::ShortcutFocusReason);
    button->click();
    return true;
  }
  if (event->type() == QEvent::ToolTip) return ShowToolTip(object, static_cast<QHelpEvent&>(*event));
  return QMainWindow::eventFilter(object, event);
}

// The toolkit wraps no tooltip that is plain text, and some are wider than a small screen.
bool FrameWindow::ShowToolTip(QObject* object, const QHelpEvent& event) {
  constexpr qsizetype kOneLine = 60;  // characters
  auto* const control = qobject_cast<QWidget*>(object);
  const QString text = control == nullptr ? QString() : control->toolTip();
  if (text.size() <= kOneLine || text.startsWith('<')) return false;
  QToolTip::showText(event.globalPos(), AsMarkup(text), control);
  return true;
}

QPushButton* FrameWindow::ButtonBeforeMenu(const QKeyEvent& event) const {
  if (event.modifiers() != Qt::AltModifier || area_.Shown() == nullptr || !isActiveWindow()) return nullptr;
  const QKeySequence key(event.keyCombination());
  for (const QAction* const menu : menuBar()->actions()) {
    if (QKeySequence::mnemonic(menu->text()) == key) return ButtonFor(*area_.Shown(), key);
  }
  return nullptr;
}

}  // namespace tessaril
