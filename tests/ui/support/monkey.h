#ifndef TESSARIL_TESTS_UI_SUPPORT_MONKEY_H_
#define TESSARIL_TESTS_UI_SUPPORT_MONKEY_H_

#include <QDeadlineTimer>
#include <QObject>
#include <QWidget>
#include <deque>
#include <functional>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "tests/support/scratch_folder.h"
#include "tests/ui/support/heartbeat.h"
#include "tests/ui/support/recorded_browser.h"
#include "ui/frame/start_up.h"

namespace tessaril {

/// Somebody who clicks and types at random in all windows of the program, and starts it again when it was
/// left. It stays in the folder of the site, and out of what the toolkit's file dialogs do to files.
class Monkey {
 public:
  /// `program` holds the entity data, `site` is the path of a site.
  Monkey(unsigned seed, const ScratchFolder& program, const std::string& site);

  /// Does so many things, and then closes what is open, leaves the program and takes it down.
  void Run(int steps);

  /// Called before each thing that is done.
  std::function<void()> before_step;

  FrameWindow& Frame() { return start_up_->Frame(); }
  QWidget* Child(const char* name) { return Frame().findChild<QWidget*>(name); }

  /// What was done last, the newest at the end.
  std::string LastDone() const;

  /// The windows that were open at any time, by object name or else by class.
  const std::set<std::string>& seen() const { return seen_; }
  Heartbeat& heartbeat() { return heartbeat_; }

 private:
  int Below(int bound) { return std::uniform_int_distribution<int>(0, bound - 1)(random_); }
  bool InPercent(int percent) { return Below(100) < percent; }
  template <typename T>
  const T& OneOf(const std::vector<T>& all) {
    return all[static_cast<std::size_t>(Below(static_cast<int>(all.size())))];
  }

  void Live();
  void Step();
  void Act(QWidget& window);
  void GoHome();
  void StayInside();
  void See();
  QWidget* Target();
  void Note(const std::string& doing);

  void Click(QWidget& window);
  void ClickInto(QWidget& control);
  void ClickAction(QWidget& menu);
  void PressButton(QWidget& window);
  void PressKey(QWidget& window);
  void TypeText(QWidget& window);
  void Open();
  void HearTheBrowser();
  void Mouse(QWidget& control, QPoint place, Qt::MouseButton button, bool twice);
  void Key(QWidget& control, int key, Qt::KeyboardModifiers modifiers, const QString& text);

  const std::string program_;
  const std::string site_;
  std::mt19937 random_;
  RecordedBrowser browser_;
  std::unique_ptr<StartUp> start_up_;
  Heartbeat heartbeat_;
  int left_ = 0;    // steps to do
  int homing_ = 0;  // tries to close what is open, once that is wanted
  bool at_home_ = false;
  QDeadlineTimer run_ends_;
  bool lives_ = false;  // the program
  std::deque<std::string> done_;
  std::set<std::string> seen_;
  QObject timers_;
};

}  // namespace tessaril

#endif  // TESSARIL_TESTS_UI_SUPPORT_MONKEY_H_
