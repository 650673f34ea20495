#include <gtest/gtest.h>

#include <QApplication>
#include <QListWidget>
#include <QProcess>
#include <QRadioButton>
#include <QtTest>
#include <filesystem>

#include "tests/ui/support/driver.h"
#include "ui/shared/place.h"

// What only a window manager and a real mouse show. tools/on_screen gives them.

namespace tessaril {
namespace {

constexpr int kPatience = 20000;  // milliseconds

template <class Condition>
testing::AssertionResult Becomes(Condition condition) {
  return QTest::qWaitFor(condition, kPatience) ? testing::AssertionSuccess() : testing::AssertionFailure();
}

// Runs xdotool, while the windows live on, and gives what it says.
QString Do(const QString& words) {
  QProcess xdotool;
  xdotool.start("xdotool", words.split(' '));
  EXPECT_TRUE(Becomes([&] { return xdotool.state() == QProcess::NotRunning; })) << words.toStdString();
  return QString::fromUtf8(xdotool.readAllStandardOutput()).trimmed();
}

// What a user does may be lost while the window manager is busy; then it is done again.
template <class Condition>
testing::AssertionResult DoUntil(const QString& words, Condition condition) {
  for (int i = 0; i < 5; ++i) {
    Do(words);
    if (QTest::qWaitFor(condition, kPatience / 5)) return testing::AssertionSuccess();
  }
  return testing::AssertionFailure() << words.toStdString();
}

QString MoveTo(QPoint place) {
  return QString("mousemove %1 %2").arg(place.x()).arg(place.y());
}

TEST(RealWindow, IsResizedByTheUser) {
  Driver driver(EXAMPLE_SITE);
  FrameWindow& frame = driver.start_up->Frame();
  const auto double_click_title = [&] {
    return MoveTo(frame.geometry().topLeft() + QPoint(frame.width() / 2, -8)) +
           " click --repeat 2 --delay 50 1";
  };
  const QSize size = frame.size();
  EXPECT_TRUE(
      DoUntil(double_click_title(), [&] { return frame.isMaximized() && frame.width() > size.width(); }));
  EXPECT_TRUE(DoUntil(double_click_title(), [&] { return !frame.isMaximized() && frame.size() == size; }));

  const QString id = QString::number(frame.winId());
  EXPECT_TRUE(DoUntil("windowminimize " + id, [&] { return frame.isMinimized(); }));
  EXPECT_TRUE(
      DoUntil("windowactivate " + id, [&] { return !frame.isMinimized() && frame.isActiveWindow(); }));
  EXPECT_EQ(frame.size(), size);

  const QSize least(Pixels(7290), Pixels(6105));
  const auto drag_corner_in = [&] {
    Do("keydown alt " + MoveTo(frame.geometry().bottomRight() - QPoint(20, 20)) + " mousedown 3");
    for (int i = 0; i < 8; ++i) Do("mousemove_relative -- -80 -80");
    Do("mouseup 3 keyup alt");
    return frame.size() == least;
  };
  EXPECT_TRUE(Becomes(drag_corner_in));
  for (int i = 0; i < 3; ++i) drag_corner_in();
  EXPECT_EQ(frame.size(), least);
}

TEST(RealWindow, TakesDoubleClicksAndAccessKeys) {
  Driver driver(EXAMPLE_SITE);
  driver.Choose(3);
  driver.Press("cmdSearch");
  ASSERT_TRUE(driver.IsShown("Picture2"));
  ASSERT_TRUE(DoUntil("key alt+m", [&] { return driver.IsShown("Picture1"); }));
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);

  auto* const files = driver.Find<QListWidget>("filList");
  const QPoint place = files->visualItemRect(files->item(0)).center();
  EXPECT_TRUE(DoUntil(MoveTo(files->viewport()->mapToGlobal(place)) + " click --repeat 2 --delay 50 1",
                      [&] { return driver.Find<QRadioButton>("Option1_5")->isChecked(); }));
  EXPECT_TRUE(Becomes([&] { return driver.said.size() == 1; }));
}

TEST(RealWindow, EndsWellWhenItIsClosedOrTerminated) {
  const struct {
    bool close;
    bool can_save;  // where not, nobody is waited for to read that
    bool browses;   // shows a page
  } rows[] = {{true, true, false},
              {false, true, false},
              {false, false, false},
              {true, true, true},
              {false, true, true}};
  for (const auto& [close, can_save, browses] : rows) {
    SCOPED_TRACE(testing::Message() << close << can_save << browses);
    ScratchFolder scratch;
    const std::filesystem::path plugin =
        std::filesystem::path(TESSARIL_PROGRAM).replace_filename("libtessaril_browser.so");
    if (browses && !std::filesystem::exists(plugin)) continue;
    for (const std::filesystem::path file :
         {TESSARIL_PROGRAM, ENTITY_DATA "/alphatg1.dat", ENTITY_DATA "/alphatg2.dat"}) {
      std::filesystem::copy(file, scratch.path());
    }
    if (browses) std::filesystem::copy(plugin, scratch.path());
    if (!can_save) std::filesystem::create_directory(scratch / "TSL32.ini");
    QProcess program;
    if (browses) {  // the graphics driver leaks a little, and is gone when that could be told by its name
      QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
      environment.insert("ASAN_OPTIONS", environment.value("ASAN_OPTIONS") + ":detect_leaks=0");
      program.setProcessEnvironment(environment);
    }
    program.start(QString::fromStdString(scratch / "tessaril"), {EXAMPLE_SITE});
    const QString search =
        QString("search --onlyvisible --all --pid %1 --name Tessaril").arg(program.processId());
    ASSERT_TRUE(Becomes([&] { return !Do(search).isEmpty(); }));
    if (browses) {
      EXPECT_TRUE(DoUntil("windowactivate --sync " + Do(search) + " key Tab Home Return",
                          [&] { return !Do(search + ".*Museum").isEmpty(); }));
    }
    const auto has_ended = [&] { return program.state() == QProcess::NotRunning; };
    if (close) {
      EXPECT_TRUE(DoUntil("windowactivate --sync " + Do(search) + " key alt+F4", has_ended));
    } else {
      program.terminate();
      EXPECT_TRUE(Becomes(has_ended));
    }
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_TRUE(std::filesystem::exists(scratch / "TSL32.ini"));
  }
}

}  // namespace
}  // namespace tessaril
