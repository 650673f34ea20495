#ifndef TESSARIL_TESTS_UI_SUPPORT_DRIVER_H_
#define TESSARIL_TESTS_UI_SUPPORT_DRIVER_H_

#include <QTimer>
#include <QWidget>
#include <deque>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/support/scratch_folder.h"
#include "ui/frame/start_up.h"

namespace tessaril {

/// A user at the program's windows, which run from a scratch folder that holds the entity data and the
/// settings.
class Driver {
 public:
  /// Starts the program on a folder or file; `settings` is the content of its settings file, none when empty.
  /// Without `make_browser` there is no browser component.
  explicit Driver(const std::string& command_line, const std::string& settings = {},
                  MakeBrowserControl make_browser = {});
  ~Driver();

  ScratchFolder program;
  std::unique_ptr<StartUp> start_up;

  template <typename T = QWidget>
  T* Find(const char* name) {
    T* const found = start_up->Frame().findChild<T*>(name);
    if (found == nullptr) throw std::runtime_error(std::string("no ") + name);
    return found;
  }
  QString Caption(const char* name) { return Find(name)->property("text").toString(); }
  bool IsShown(const char* name) { return Find(name)->isVisible(); }

  void Press(const char* name);  // with the mouse
  void Choose(int function);     // likewise
  void ClickItem(const char* list, const QString& text, bool twice = false);
  void Type(const char* name, const QString& text);
  static void TypeInto(QWidget& field, const QString& text);
  std::string Report();  // bytes of the results box
  void Activate();       // a closed box may have left no window active

  /// What the user does in the dialogs and boxes that open, in their order: "ok", "cancel", "yes", "no",
  /// "keep", "replace", "stop", "search" press that button. When it is empty: Keep, Cancel or No, else OK. In
  /// the colour picker the first safe colour is taken.
  std::deque<std::string> answers;
  std::function<void(QWidget&)> on_dialog;  // before each answer
  /// What was said and answered: a box's text; for a proposal the two fields. Then the answer.
  std::vector<std::string> said;
  std::vector<std::string> answered;
  std::string LastSaid() const;

 private:
  void LookForDialog();
  void Answer(QWidget& dialog);

  QObject polls_;
  QWidget* answering_ = nullptr;
};

}  // namespace tessaril

#endif  // TESSARIL_TESTS_UI_SUPPORT_DRIVER_H_
