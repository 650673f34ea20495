#include "tests/ui/support/monkey.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPrintDialog>
#include <filesystem>
#include <map>
#include <optional>

#include "tests/support/long_form.h"

// Random clicks and keys in all windows, on a copy of the sample site.

namespace tessaril {
namespace {

namespace fs = std::filesystem;

constexpr double kMostSilence = 1000;  // milliseconds

// What the program gets from the system: programs that only end, a home, no print system, and a folder that
// it was started in. None of these is the user's.
class Surroundings {
 public:
  Surroundings() {
    const struct {
      const char* program;
      int status;
    } rows[] = {{"xchm", 0}, {"xdg-open", 3}, {"hardinfo2", 0}};
    for (const auto& row : rows) {
      programs_.Write(row.program, "#!/bin/sh\nexit " + std::to_string(row.status) + "\n");
      fs::permissions(programs_ / row.program, fs::perms::owner_all);
    }
    Set("PATH", programs_.path());
    Set("HOME", home_.path());
    Set("XDG_CONFIG_HOME", home_ / "config");
    Set("CUPS_SERVER", home_ / "no-print-system");
    fs::current_path(home_.path());
  }
  ~Surroundings() {
    fs::current_path(started_in_);
    for (const auto& [name, value] : before_) qputenv(name.c_str(), value);
  }

 private:
  void Set(const char* name, const std::string& value) {
    before_[name] = qgetenv(name);
    qputenv(name, QByteArray::fromStdString(value));
  }

  const fs::path started_in_ = fs::current_path();
  ScratchFolder programs_;
  ScratchFolder home_;
  std::map<std::string, QByteArray> before_;
};

struct State {
  ino_t number = 0;
  off_t size = 0;
  timespec time{};
  bool operator==(const State& other) const {
    return number == other.number && size == other.size && time.tv_sec == other.time.tv_sec &&
           time.tv_nsec == other.time.tv_nsec;
  }
};
using States = std::map<std::string, State>;  // by path

States StatesBelow(const std::string& folder) {
  States states;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    struct stat found {};
    if (entry.is_directory() || lstat(entry.path().c_str(), &found) != 0) continue;
    states[entry.path()] = {found.st_ino, found.st_size, found.st_mtim};
  }
  return states;
}

// Looks after each step whether what changed on the disk is what the user was asked for by the windows that
// were open.
class Guard {
 public:
  Guard(Monkey& monkey, std::string site, std::string program)
      : monkey_(monkey), site_(std::move(site)), program_(std::move(program)), states_(StatesBelow(site_)) {}

  void Look() {
    if (testing::Test::HasFailure()) return;
    States now = StatesBelow(site_);
    for (const auto& [path, state] : now) {
      const auto before = states_.find(path);
      if (before == states_.end() || before->second != state) Judge(path);
    }
    for (const auto& [path, state] : states_) {
      if (!now.contains(path)) Judge(path);
    }
    states_ = std::move(now);
    Learn();
  }

  int changes() const { return changes_; }

  // When the program has ended.
  void LookForLeftovers() {
    for (const auto& [path, state] : StatesBelow(site_)) {
      const std::string name = fs::path(path).filename();
      EXPECT_FALSE(name.starts_with(".tessaril-") || name == "~temp.htm") << path;
    }
    const std::set<std::string> known = {"alphatg1.dat", "alphatg2.dat", "TSL32.ini", "TSLhelp.chm", "user"};
    for (const auto& entry : fs::directory_iterator(program_)) {
      EXPECT_TRUE(known.contains(entry.path().filename())) << entry.path();
    }
  }

 private:
  void Judge(const std::string& path) {
    ++changes_;
    const bool is_first = changed_.insert(path).second;
    if (any_ || allowed_.contains(path) || printed_.contains(path) || path.ends_with("/~temp.htm") ||
        path.ends_with("/tessaril.toml"))
      return;
    // A file that is renamed is named in a question.
    const QString name = QString::fromStdString(fs::path(path).filename()).toLower();
    if (question_.contains(name)) return;
    // One that an undo restores need not be named when there are many.
    if (question_.startsWith("undo this run?") && !is_first) return;
    ADD_FAILURE() << path << " changed unasked" << monkey_.LastDone();
  }

  // What the windows that are open now ask for. Below a message box is what it is about.
  void Learn() {
    const auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr) allowed_.clear();
    question_ = box == nullptr ? QString() : box->text().toLower();
    any_ = !monkey_.Frame().findChild<QCheckBox*>("ShowEach")->isChecked();
    for (QWidget* const window : QApplication::topLevelWidgets()) {
      if (!window->isVisible()) continue;
      if (auto* const files = qobject_cast<QFileDialog*>(window)) {
        for (const QString& file : files->selectedFiles()) allowed_.insert(file.toStdString());
      }
      if (qobject_cast<QPrintDialog*>(window) != nullptr) {
        const QString file = window->findChild<QLineEdit*>("filename")->text();
        printed_.insert(QDir::home().absoluteFilePath(file).toStdString());
      }
      if (window->objectName() == "frmReplace") {
        allowed_.insert(window->findChild<QWidget*>("FileName")->accessibleName().toStdString());
      }
    }
    for (const char* const editor : {"frmEditor", "frmBrowser"}) {
      QWidget* const shown = monkey_.Child(editor);
      QWidget* const file = monkey_.Child("Filname");
      if (shown != nullptr && file != nullptr && shown->isVisible()) {
        allowed_.insert(file->accessibleName().toStdString());
      }
    }
  }

  Monkey& monkey_;
  const std::string site_;
  const std::string program_;
  States states_;
  std::set<std::string> changed_;  // since the beginning
  std::set<std::string> allowed_;
  std::set<std::string> printed_;  // or to be printed; a document comes when it is complete
  QString question_;               // that is asked now
  bool any_ = false;               // pages may change unasked: the user switched the questions off
  int changes_ = 0;
};

class Monkeys : public testing::Test {
 protected:
  void Play(unsigned seed, int steps) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    ScratchFolder scratch;
    fs::copy(EXAMPLE_SITE, scratch / "site", fs::copy_options::recursive);
    fs::copy(EXAMPLE_SITE, scratch / "beside", fs::copy_options::recursive);
    const States beside = StatesBelow(scratch / "beside");
    ScratchFolder program;
    for (const char* const name : {"alphatg1.dat", "alphatg2.dat"}) {
      fs::copy_file(std::string(ENTITY_DATA) + "/" + name, program / name);
    }
    program.Write("TSLhelp.chm", "");
    Monkey monkey(seed, program, scratch / "site");
    Guard guard(monkey, scratch / "site", program.path());
    monkey.before_step = [&] { guard.Look(); };
    monkey.Run(steps);
    const double silence = monkey.heartbeat().TakeLongest();
    EXPECT_LT(silence, kMostSilence) << monkey.heartbeat().longest_doing();
    guard.LookForLeftovers();
    EXPECT_EQ(StatesBelow(scratch / "beside"), beside);
    EXPECT_EQ(scratch.Names(), (std::vector<std::string>{"beside", "site"}));
    changes += guard.changes();
    longest = std::max(longest, silence);
    seen.insert(monkey.seen().begin(), monkey.seen().end());
  }

  Surroundings surroundings;
  std::set<std::string> seen;
  int changes = 0;
  double longest = 0;
};

TEST_F(Monkeys, FindNothingThatBreaks) {
  const unsigned seeds = IsLongForm() ? 10 : 2;
  for (unsigned seed = 1; seed <= seeds && !HasFailure(); ++seed) Play(seed, IsLongForm() ? 1000 : 300);
  std::vector<std::string> windows = {"MDIForm1", "Picture1", "Picture2", "frmReplace", "QMessageBox"};
  if (IsLongForm()) {
    windows.insert(windows.end(),
                   {"frmEditor", "frmBrowser", "frmAbout", "frmSite", "frmFind", "frmSafeColour",
                    "QFileDialog", "QPrintDialog", "QFontDialog", "menuMisc"});
  }
  for (const std::string& window : windows) EXPECT_TRUE(seen.contains(window)) << window << " was never open";
  EXPECT_GT(changes, 0);
  RecordProperty("changes", changes);
  RecordProperty("longest_silence_ms", std::to_string(longest));
  if (IsLongForm()) std::cout << changes << " changes, longest silence " << longest << " ms\n";
}

}  // namespace
}  // namespace tessaril
