// Times the same run in the window and by tsl, in turn, and looks how long the window was left alone.
// Usage: window_run ROUNDS TSL PROGRAM_FOLDER TREE FUNCTION [TEXT]
// PROGRAM_FOLDER holds the entity data and gets settings; FUNCTION is an index of the function buttons.

#include <spawn.h>
#include <sys/wait.h>

#include <QApplication>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "engine/functions.h"
#include "ui/browser/browser_plugin.h"
#include "ui/frame/start_up.h"

extern char** environ;

namespace {

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

double TimeOf(const std::vector<std::string>& words) {
  std::vector<char*> arguments;
  for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  QElapsedTimer timer;
  timer.start();
  pid_t child = 0;
  int status = 0;
  if (posix_spawn(&child, arguments[0], nullptr, nullptr, arguments.data(), environ) != 0) std::exit(2);
  waitpid(child, &status, 0);
  return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

// Answers whatever opens: No, or OK.
void CloseBoxes() {
  auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
  if (box == nullptr) return;
  QAbstractButton* const no = box->button(QMessageBox::No);
  (no != nullptr ? no : box->button(QMessageBox::Ok))->click();
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  if (argc < 6) return 2;
  const int rounds = std::stoi(argv[1]);
  const int function = std::stoi(argv[5]);
  const std::string text = argc > 6 ? argv[6] : "";
  tessaril::StartUp start_up(argv[3], argv[3], tessaril::BrowserFromPlugin(argv[3]));
  if (!start_up.Run() || !start_up.Frame().Main().OpenFolder(argv[4])) return 2;
  tessaril::FrameWindow& frame = start_up.Frame();
  frame.show();
  QTimer boxes;
  QObject::connect(&boxes, &QTimer::timeout, CloseBoxes);
  boxes.start(5);
  frame.findChild<QRadioButton*>(QString("Option1_%1").arg(function))->click();
  frame.findChild<QCheckBox*>("ShowEach")->setChecked(false);
  frame.findChild<QLineEdit*>("SearchTekst")->setText(QString::fromStdString(text));
  auto* const search = frame.findChild<QPushButton*>("cmdSearch");

  double longest = 0;
  QElapsedTimer since_input;
  QTimer input;
  QObject::connect(&input, &QTimer::timeout, [&] {
    longest = std::max(longest, static_cast<double>(since_input.nsecsElapsed()) / 1e6);
    since_input.start();
  });
  std::vector<std::string> words = {argv[2], std::string(RowOf(tessaril::Function(function)).command)};
  if (!text.empty()) words.push_back(text);
  words.insert(words.end(), {argv[4], "--report", "/dev/null"});
  std::vector<double> window;
  std::vector<double> tsl;
  std::vector<double> ratios;
  for (int i = 0; i <= rounds; ++i) {
    QElapsedTimer timer;
    since_input.start();
    input.start(0);
    timer.start();
    search->click();
    const double in_window = static_cast<double>(timer.nsecsElapsed()) / 1e6;
    input.stop();
    search->click();
    const double by_tsl = TimeOf(words);
    if (i == 0) continue;  // warms up
    window.push_back(in_window);
    tsl.push_back(by_tsl);
    ratios.push_back(in_window / by_tsl);
  }
  std::printf(
      "  window %7.1f ms, tsl %7.1f ms, ratio %.2f (%.2f to %.2f), longest without input %.0f ms  %s %s\n",
      Median(window), Median(tsl), Median(ratios), *std::min_element(ratios.begin(), ratios.end()),
      *std::max_element(ratios.begin(), ratios.end()), longest, words[1].c_str(), text.c_str());
  std::fflush(stdout);
  std::_Exit(0);
}
