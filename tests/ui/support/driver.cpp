#include "tests/ui/support/driver.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QtTest>
#include <filesystem>
#include <utility>

#include "ui/browser/browser_plugin.h"
#include "ui/shared/byte_text_box.h"

namespace tessaril {

Driver::Driver(const std::string& command_line, const std::string& settings,
               MakeBrowserControl make_browser) {
  for (const char* const name : {"alphatg1.dat", "alphatg2.dat"}) {
    std::filesystem::copy_file(std::string(ENTITY_DATA) + "/" + name, program / name);
  }
  if (!settings.empty()) program.Write("TSL32.ini", settings);
  LookForDialog();
  start_up = std::make_unique<StartUp>(program.path(), program / "user",
                                       make_browser ? make_browser : BrowserFromPlugin(program.path()));
  if (!start_up->Run({command_line})) throw std::runtime_error("start-up");
  start_up->Frame().show();
  const QTimer& timer = *Find<QTimer>("Timer1");
  if (!QTest::qWaitFor([&timer] { return !timer.isActive(); })) throw std::runtime_error("not started");
  Activate();
}

// A loop of its own takes up the wish to leave that the windows may have uttered.
Driver::~Driver() {
  start_up.reset();
  QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(); });  // quit() would ask other windows
  QCoreApplication::exec();
}

// To the toolkit a window is active, too, while a hidden dialog of its own is.
void Driver::Activate() {
  FrameWindow& frame = start_up->Frame();
  frame.activateWindow();
  if (!QTest::qWaitFor([&frame] { return QApplication::activeWindow() == &frame; })) {
    throw std::runtime_error("not active");
  }
}

void Driver::Press(const char* name) {
  QTest::mouseClick(Find(name), Qt::LeftButton);
  if (start_up->Frame().isVisible()) Activate();
}

void Driver::Choose(int function) {
  QTest::mousePress(Find(("Option1_" + std::to_string(function)).c_str()), Qt::LeftButton);
  Activate();
}

void Driver::ClickItem(const char* list, const QString& text, bool twice) {
  auto* const box = Find<QListWidget>(list);
  for (int i = 0; i < box->count(); ++i) {
    if (box->item(i)->text().trimmed() != text) continue;
    const QPoint place = box->visualItemRect(box->item(i)).center();
    QTest::mouseClick(box->viewport(), Qt::LeftButton, {}, place);
    if (twice) QTest::mouseDClick(box->viewport(), Qt::LeftButton, {}, place);
    Activate();
    return;
  }
  throw std::runtime_error("no entry " + text.toStdString());
}

void Driver::Type(const char* name, const QString& text) {
  Press(name);
  auto* const field = Find<QLineEdit>(name);
  field->selectAll();
  QTest::keyClick(field, Qt::Key_Delete);
  TypeInto(*field, text);
}

void Driver::TypeInto(QWidget& field, const QString& text) {
  for (const QChar c : text) {
    const bool is_enter = c == '\n';
    QKeyEvent key(QEvent::KeyPress, is_enter ? Qt::Key_Return : Qt::Key_unknown, {}, QString(c));
    QApplication::sendEvent(&field, &key);
  }
}

std::string Driver::LastSaid() const {
  return said.empty() ? "(nothing)" : said.back();
}

std::string Driver::Report() {
  return Find<ByteTextBox>("UdTxt")->Bytes();
}

// A timer of its own each time, as one that repeats would rest while a dialog in a dialog is open.
void Driver::LookForDialog() {
  QTimer::singleShot(1, &polls_, [this] { LookForDialog(); });
  QWidget* const dialog = QApplication::activeModalWidget();
  if (dialog == nullptr || dialog == answering_) return;
  QWidget* const below = std::exchange(answering_, dialog);
  if (on_dialog) on_dialog(*dialog);
  if (dialog->isVisible()) Answer(*dialog);
  answering_ = below;
}

void Driver::Answer(QWidget& dialog) {
  std::string answer;
  if (!answers.empty()) {
    answer = answers.front();
    answers.pop_front();
  }
  auto* const box = qobject_cast<QMessageBox*>(&dialog);
  QAbstractButton* button = nullptr;
  if (box != nullptr) {
    said.push_back(box->text().toStdString());
    if (answer.empty())
      answer = box->button(QMessageBox::Cancel) ? "cancel" : box->button(QMessageBox::No) ? "no" : "ok";
    button = box->button(answer == "ok"       ? QMessageBox::Ok
                         : answer == "cancel" ? QMessageBox::Cancel
                         : answer == "yes"    ? QMessageBox::Yes
                                              : QMessageBox::No);
  } else if (dialog.objectName() == "frmReplace") {
    if (answer.empty()) answer = "keep";
    button = dialog.findChild<QAbstractButton*>(answer == "keep"      ? "btnKeep"
                                                : answer == "replace" ? "btnReplace"
                                                                      : "btnStop");
    said.push_back(dialog.findChild<ByteTextBox*>("SearchText")->Bytes() + "|" +
                   dialog.findChild<ByteTextBox*>("ReplaceText")->Bytes());
  } else if (dialog.objectName() == "frmFind") {
    button = dialog.findChild<QAbstractButton*>(answer == "cancel" ? "Command2" : "Command1");
  } else if (dialog.objectName() == "frmSite") {
    button = dialog.findChild<QAbstractButton*>(answer == "ok" ? "cmdOk" : "cmdCancel");
  } else if (QWidget* const colour = dialog.findChild<QWidget*>("lblSafeCol_0")) {
    return QTest::mouseClick(colour, Qt::LeftButton);
  }
  if (button == nullptr || !button->isVisible()) {
    ADD_FAILURE() << "no button for " << answer;
    return static_cast<QDialog&>(dialog).reject();
  }
  answered.push_back(answer);
  QTest::mouseClick(button, Qt::LeftButton);
}

}  // namespace tessaril
