#include "tests/ui/support/monkey.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPointer>
#include <QScrollBar>
#include <QtTest>
#include <filesystem>

#include "ui/main/folder_list.h"

namespace tessaril {
namespace {

constexpr int kMostTries = 60;      // to close what is open: so many windows never lie on top of one another
constexpr int kLongestRun = 30000;  // milliseconds

// Those of the toolkit's dialog that change no folder, nor what is in it.
bool IsHarmlessInFileDialog(const QWidget& control) {
  const QString name = control.objectName();
  return name == "fileNameEdit" || name == "fileTypeCombo" ||
         qobject_cast<const QDialogButtonBox*>(control.parentWidget()) != nullptr ||
         (control.parentWidget() != nullptr && control.parentWidget()->objectName() == "listView");
}

bool IsFileDialog(const QWidget& window) {
  return qobject_cast<const QFileDialog*>(&window) != nullptr;
}

std::vector<QWidget*> ControlsOf(const QWidget& window) {
  std::vector<QWidget*> controls;
  for (QWidget* const control : window.findChildren<QWidget*>()) {
    if (!control->isVisible() || !control->isEnabled() || control->window() != &window) continue;
    if (IsFileDialog(window) && !IsHarmlessInFileDialog(*control)) continue;
    controls.push_back(control);
  }
  return controls;
}

QString NameOf(const QObject& object) {
  return object.objectName().isEmpty() ? QString(object.metaObject()->className()) : object.objectName();
}

}  // namespace

Monkey::Monkey(unsigned seed, const ScratchFolder& program, const std::string& site)
    : program_(program.path()), site_(site), random_(seed) {}

void Monkey::Run(int steps) {
  left_ = steps;
  while (left_ > 0) Live();
}

// From the start of the program to its end.
void Monkey::Live() {
  start_up_ = std::make_unique<StartUp>(program_, program_ + "/user", browser_.Maker());
  if (!start_up_->Run({site_})) throw std::runtime_error("start-up");
  Frame().show();
  homing_ = 0;
  at_home_ = false;
  lives_ = true;
  QTimer::singleShot(10, &timers_, [this] { Step(); });
  QCoreApplication::exec();
  lives_ = false;
  if (before_step) before_step();
  Note("the end");
  browser_.events = nullptr;
  start_up_.reset();
  QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(); });
  QCoreApplication::exec();
}

void Monkey::Note(const std::string& doing) {
  heartbeat_.Note(doing);
  constexpr std::size_t kKept = 25;
  done_.push_back(doing);
  if (done_.size() > kKept) done_.pop_front();
}

std::string Monkey::LastDone() const {
  std::string all;
  for (const std::string& doing : done_) all += "\n  " + doing;
  return all;
}

// A timer of its own each time, as a step may open a dialog that has an event loop of its own.
void Monkey::Step() {
  if (!lives_) return;
  QTimer::singleShot(0, &timers_, [this] { Step(); });
  StayInside();
  if (before_step) before_step();
  See();
  constexpr int kBetweenHomings = 150;
  if (left_ % kBetweenHomings == 0 && !at_home_) return GoHome();
  at_home_ = false;
  homing_ = 0;
  run_ends_.setRemainingTime(kLongestRun);
  --left_;
  if (QWidget* const window = Target()) {
    if (QApplication::activeWindow() == nullptr) window->activateWindow();
    Act(*window);
  }
}

QWidget* Monkey::Target() {
  if (QWidget* const popup = QApplication::activePopupWidget()) return popup;
  if (QWidget* const modal = QApplication::activeModalWidget()) return modal;
  QWidget* const about = Child("frmAbout");
  const bool takes_about = about != nullptr && about->isVisible() && InPercent(50);
  return takes_about ? about : &Frame();
}

// All that is open must be answerable. Then, at the end, the program is left.
void Monkey::GoHome() {
  if (++homing_ > kMostTries) {
    ADD_FAILURE() << "cannot be closed: " << NameOf(*Target()).toStdString() << LastDone();
    std::_Exit(1);  // it would last for ever
  }
  QWidget* const popup = QApplication::activePopupWidget();
  QWidget* const modal = QApplication::activeModalWidget();
  if (popup != nullptr || modal != nullptr) {
    QWidget& open = popup != nullptr ? *popup : *modal;
    Note("close " + NameOf(open).toStdString());
    auto* const stop = open.findChild<QWidget*>("btnStop");
    return stop != nullptr ? Mouse(*stop, stop->rect().center(), Qt::LeftButton, false)
                           : Key(open, Qt::Key_Escape, {}, {});
  }
  if (Frame().Main().IsRunning()) {  // over a few pages
    --homing_;
    if (run_ends_.hasExpired()) ADD_FAILURE() << "does not end" << LastDone(), std::_Exit(1);
    return;
  }
  at_home_ = true;
  if (left_ > 0) return;
  Note("leave");
  Frame().close();
}

// The open folder is the only one that a run goes into.
void Monkey::StayInside() {
  const auto is_inside = [this](const std::string& folder) {
    return (folder + "/").starts_with(site_ + "/");
  };
  const auto* const folders = Frame().findChild<FolderList*>("dirList");
  if (!is_inside(folders->OpenFolder()) && !Frame().Main().IsRunning()) Frame().Main().OpenFolder(site_);
  for (QWidget* const window : QApplication::topLevelWidgets()) {
    auto* const dialog = qobject_cast<QFileDialog*>(window);
    if (dialog == nullptr || !dialog->isVisible()) continue;
    if (!is_inside(dialog->directory().absolutePath().toStdString())) {
      dialog->setDirectory(QString::fromStdString(site_));
    }
  }
}

void Monkey::See() {
  for (const QWidget* const window : QApplication::topLevelWidgets()) {
    if (window->isVisible()) seen_.insert(NameOf(*window).toStdString());
  }
  for (const char* const child : {"Picture1", "Picture2", "frmEditor", "frmBrowser"}) {
    if (const QWidget* const shown = Child(child); shown != nullptr && shown->isVisible())
      seen_.insert(child);
  }
}

void Monkey::Act(QWidget& window) {
  if (auto* const menu = qobject_cast<QMenu*>(&window); menu != nullptr && InPercent(70)) {
    return ClickAction(*menu);
  }
  const bool is_frame = &window == &Frame();
  const int kind = Below(100);
  if (!is_frame && kind < 30) return PressButton(window);
  if (is_frame && kind < 22) return Open();
  if (is_frame && kind < 26) return HearTheBrowser();
  if (kind < 60) return Click(window);
  kind < 85 ? PressKey(window) : TypeText(window);
}

void Monkey::Click(QWidget& window) {
  const std::vector<QWidget*> controls = ControlsOf(window);
  ClickInto(controls.empty() ? window : *OneOf(controls));
}

void Monkey::ClickInto(QWidget& control) {
  if (qobject_cast<QMenuBar*>(&control) != nullptr) return ClickAction(control);
  const bool is_anywhere = InPercent(50) && !control.size().isEmpty();
  const QPoint place =
      is_anywhere ? QPoint(Below(control.width()), Below(control.height())) : control.rect().center();
  const int kind = Below(20);
  if (kind == 0 && !IsFileDialog(*control.window())) {
    Note("context menu of " + NameOf(control).toStdString());
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, control.mapToGlobal(place));
    QApplication::sendEvent(&control, &event);
    return;
  }
  Note((kind < 3 ? "double click " : "click ") + NameOf(control).toStdString());
  Mouse(control, place, kind == 3 ? Qt::MiddleButton : Qt::LeftButton, kind < 3);
}

void Monkey::ClickAction(QWidget& menu) {
  const QList<QAction*> actions = menu.actions();
  if (actions.isEmpty()) return;
  QAction* const action = actions[Below(static_cast<int>(actions.size()))];
  const auto* const bar = qobject_cast<QMenuBar*>(&menu);
  const QRect place =
      bar != nullptr ? bar->actionGeometry(action) : static_cast<QMenu&>(menu).actionGeometry(action);
  Note("menu " + action->text().toStdString());
  Mouse(menu, place.center(), Qt::LeftButton, false);
}

void Monkey::PressButton(QWidget& window) {
  std::vector<QWidget*> buttons;
  for (QWidget* const control : ControlsOf(window)) {
    if (qobject_cast<QAbstractButton*>(control) != nullptr) buttons.push_back(control);
  }
  if (buttons.empty()) return Click(window);
  auto* const palette = window.findChild<QWidget*>("btnPalette");
  const bool takes_palette = palette != nullptr && palette->isVisible() && InPercent(50);
  QWidget& button = takes_palette ? *palette : *OneOf(buttons);
  Note("press " + NameOf(button).toStdString() + " " + button.property("text").toString().toStdString() +
       " of " + NameOf(window).toStdString());
  Mouse(button, button.rect().center(), Qt::LeftButton, false);
}

void Monkey::PressKey(QWidget& window) {
  static const std::vector<int> kKeys = {
      Qt::Key_Tab,  Qt::Key_Backtab, Qt::Key_Return, Qt::Key_Escape, Qt::Key_Space,     Qt::Key_Up,
      Qt::Key_Down, Qt::Key_Left,    Qt::Key_Right,  Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_Home,
      Qt::Key_End,  Qt::Key_PageUp,  Qt::Key_F1,     Qt::Key_F3,     Qt::Key_F5,        Qt::Key_F10,
      Qt::Key_A,    Qt::Key_E,       Qt::Key_X,      Qt::Key_Z};
  static const std::vector<int> kLetters = {Qt::Key_A, Qt::Key_B, Qt::Key_C, Qt::Key_E, Qt::Key_F, Qt::Key_H,
                                            Qt::Key_I, Qt::Key_K, Qt::Key_L, Qt::Key_M, Qt::Key_N, Qt::Key_O,
                                            Qt::Key_P, Qt::Key_R, Qt::Key_S, Qt::Key_T, Qt::Key_U, Qt::Key_V,
                                            Qt::Key_X, Qt::Key_Y, Qt::Key_Z};
  const int kind = Below(4);
  const int key = kind < 2 ? OneOf(kKeys) : OneOf(kLetters);
  const Qt::KeyboardModifiers modifiers = kind < 2    ? Qt::NoModifier
                                          : kind == 2 ? Qt::AltModifier
                                                      : Qt::ControlModifier;
  QWidget* control = window.focusWidget() != nullptr ? window.focusWidget() : &window;
  if (IsFileDialog(window)) control = window.findChild<QWidget*>("fileNameEdit");
  const QString text = kind < 2 && key < 128 ? QString(QChar(key)).toLower() : QString();
  Note("key " + QKeySequence(QKeyCombination(modifiers, static_cast<Qt::Key>(key))).toString().toStdString() +
       " in " + NameOf(*control).toStdString());
  Key(*control, key, modifiers, text);
}

void Monkey::TypeText(QWidget& window) {
  static const std::vector<std::string> kTexts = {"opening hours",
                                                  "e",
                                                  "the",
                                                  "<P>",
                                                  "\xC3\xA9\xE2\x82\xAC",
                                                  "&eacute;",
                                                  "#336699",
                                                  "\t",
                                                  "index.htm",
                                                  "new",
                                                  "out.pdf",
                                                  "a b.htm",
                                                  "*.*",
                                                  "*.htm*",
                                                  "12",
                                                  " ",
                                                  "http://127.0.0.1:9/",
                                                  "visit",
                                                  "\xF0\x9F\x98\x80",
                                                  std::string(300, 'x')};
  QWidget* const control = window.focusWidget();
  if (qobject_cast<QLineEdit*>(control) == nullptr && qobject_cast<QPlainTextEdit*>(control) == nullptr) {
    return Click(window);
  }
  const std::string& text = OneOf(kTexts);
  Note("type " + text + " into " + NameOf(*control).toStdString());
  if (auto* const line = qobject_cast<QLineEdit*>(control); line != nullptr && InPercent(70))
    line->selectAll();
  for (const QChar c : QString::fromStdString(text)) {
    QKeyEvent key(QEvent::KeyPress, Qt::Key_unknown, {}, QString(c));
    QApplication::sendEvent(control, &key);
  }
}

// What many clicks would be needed for.
void Monkey::Open() {
  static const std::vector<const char*> kItems = {
      "menu0PrinterFont",  "menu0Monospaced", "menuStartInBrowser", "menuStartInEditor", "menuExit",
      "menuSiteRules",     "menuNoRules",     "menuHelp",           "menuUndo",          "menu1About",
      "menuEPrinterFont",  "menuMonospaced",  "menuNewDoc",         "menuEExit",         "menuEditFind",
      "menuEditFindAgain", "menuEAbout"};
  static const std::vector<const char*> kButtons = {
      "cmdSearch", "cmdSearch",     "cmdSearch",    "cmdSearch", "cmdUdskriv", "cmdSaveAs",
      "cmdExit",   "cmdSeeResults", "cmdErrorList", "Gem",       "GemSom",     "MainScreen",
      "Command1",  "Command2",      "Command3",     "Reset",     "PrintWB"};
  if (InPercent(25)) {
    QWidget* const function = Child(("Option1_" + std::to_string(Below(7))).c_str());
    Note("choose " + NameOf(*function).toStdString());
    if (!function->isVisible()) return;
    Mouse(*function, function->rect().center(), Qt::LeftButton, false);
    QWidget* const search = lives_ && InPercent(50) ? Child("cmdSearch") : nullptr;
    if (search == nullptr || !search->isVisible()) return;
    Note("search");
    Mouse(*search, search->rect().center(), Qt::LeftButton, false);
  } else if (InPercent(40)) {
    auto* const item = Frame().findChild<QAction*>(OneOf(kItems));
    if (item == nullptr || !item->isEnabled()) return;
    Note("item " + NameOf(*item).toStdString());
    item->trigger();
  } else {
    QWidget* const button = Child(OneOf(kButtons));
    if (button == nullptr || !button->isVisible() || !button->isEnabled()) return;
    Note("press " + NameOf(*button).toStdString());
    Mouse(*button, button->rect().center(), Qt::LeftButton, false);
  }
}

// What comes from outside: the browser component, the user's desktop, the system.
void Monkey::HearTheBrowser() {
  const int kind = Below(12);
  Note("from outside: " + std::to_string(kind));
  if (kind == 0) return Frame().resize(200 + Below(1500), 200 + Below(1000));
  if (kind == 1) return Frame().showMinimized();
  if (kind == 2) return Frame().showNormal();
  if (kind == 3 && InPercent(20)) return Frame().LeaveUnattended();
  if (browser_.events == nullptr) return;
  browser_.busy = InPercent(30);
  browser_.pdf = InPercent(50) ? "%PDF, as it were" : "";
  if (kind == 4) return browser_.events->DownloadBegun();
  if (kind == 5) return browser_.events->StatusTextChanged(QString(Below(300), 'w'));
  if (kind == 6) return browser_.events->ProgressChanged(Below(100), 100);
  if (kind == 7) return browser_.events->SavingFailed("/x.zip", "No space");
  if (kind == 8) return (void)browser_.events->AskWhereToSave("x.zip");
  browser_.Complete("<b>Title", QString::fromStdString("file://" + site_ + "/index.htm"));
}

// What is pressed may be gone when it would be released.
void Monkey::Mouse(QWidget& control, QPoint place, Qt::MouseButton button, bool twice) {
  const QPointer<QWidget> alive = &control;
  const auto send = [&](QEvent::Type type, Qt::MouseButtons held) {
    if (alive == nullptr) return;
    QMouseEvent event(type, place, alive->mapToGlobal(place), button, held, {});
    QApplication::sendEvent(alive, &event);
  };
  send(QEvent::MouseButtonPress, button);
  send(QEvent::MouseButtonRelease, {});
  if (!twice) return;
  send(QEvent::MouseButtonDblClick, button);
  send(QEvent::MouseButtonRelease, {});
}

void Monkey::Key(QWidget& control, int key, Qt::KeyboardModifiers modifiers, const QString& text) {
  const QPointer<QWidget> alive = &control;
  QTest::sendKeyEvent(QTest::Press, alive, static_cast<Qt::Key>(key), text, modifiers);
  if (alive != nullptr)
    QTest::sendKeyEvent(QTest::Release, alive, static_cast<Qt::Key>(key), text, modifiers);
}

}  // namespace tessaril
