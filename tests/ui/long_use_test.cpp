#include <gtest/gtest.h>
#include <malloc.h>
#include <unistd.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QListWidget>
#include <QMessageBox>
#include <QtTest>
#include <filesystem>
#include <fstream>
#include <iostream>

#include "tests/support/long_form.h"
#include "tests/ui/support/driver.h"
#include "tests/ui/support/recorded_browser.h"
#include "ui/main/file_list.h"

// A program that is not left for a long time.

namespace tessaril {
namespace {

namespace fs = std::filesystem;

// In bytes, without what only waits to be used again.
double MemoryInUse() {
  malloc_trim(0);
  double pages = 0;
  std::ifstream("/proc/self/statm") >> pages >> pages;
  return pages * static_cast<double>(sysconf(_SC_PAGESIZE));
}

class LongUse : public testing::Test {
 protected:
  LongUse() {
    RestoreSite(true);
    driver.emplace(scratch / "site", "", browser.Maker());
    driver->Find<QAction>("menuStartInEditor")->trigger();
    driver->on_dialog = [this](QWidget& dialog) {
      if (dialog.objectName() == "frmReplace") {
        ++proposals;
        if (driver->IsShown("btnPalette")) {
          QTest::mouseClick(driver->Find("btnPalette"), Qt::LeftButton);
        }
        driver->answers = {proposals % 2 == 0 || !driver->IsShown("btnReplace") ? "keep" : "replace"};
      } else if (const auto* const box = qobject_cast<QMessageBox*>(&dialog)) {
        driver->answers = {box->button(QMessageBox::Ok) != nullptr ? "ok" : "no"};
      }
    };
  }

  void RestoreSite(bool with_rules) {
    fs::remove_all(scratch / "site");
    fs::copy(EXAMPLE_SITE, scratch / "site", fs::copy_options::recursive);
    if (with_rules) scratch.Write("site/tessaril.toml", "start = [\"index.htm\"]\n");
  }

  // One run of a function, with the questions it asks, and what a user does between runs.
  void Use(int round) {
    constexpr int kFunctions[] = {0, 1, 3, 4, 6, 2};
    if (round % 6 == 0) RestoreSite(round % 12 == 0);
    const int function = kFunctions[round % 6];
    driver->Choose(function);
    if (function == 3) driver->Type("SearchTekst", "opening hours");
    if (function == 4) driver->Type("ReplaceText", "times of day");
    driver->Press("cmdSearch");
    if (function == 2) {
      browser.Complete("Links", "file:///links.htm");
      driver->Press("Reset");
    } else {
      EXPECT_NE(driver->Report(), "") << driver->LastSaid();
      driver->Press("cmdSearch");
    }
    if (round % 3 == 1) SeeResults();
    if (round % 5 == 1) EditPage();
    if (round % 7 == 1) driver->Find<QAction>("menuSiteRules")->trigger();  // and Cancel
    if (round % 4 == 1) Undo();
    driver->said.clear();
    driver->answered.clear();
    driver->answers.clear();
    browser.asked.clear();
  }

  void SeeResults() {
    driver->Press("cmdSeeResults");
    driver->Press("cmdSearch");
  }

  void Undo() {
    driver->answers = {"ok", "ok"};
    driver->Find<QAction>("menuUndo")->trigger();
    undone += driver->said.back().ends_with(" restored.");
  }

  void EditPage() {
    driver->Find<FileList>("filList")->Refresh();
    driver->ClickItem("filList", "index.htm", true);
    Driver::TypeInto(*driver->Find("EditTekst"), "more");
    driver->Press("MainScreen");  // and leaves it unsaved
    if (driver->Find<QCheckBox>("MarkedOnly")->isChecked()) driver->Press("MarkedOnly");
  }

  // The parts that the toolkit was given to keep.
  qsizetype Parts() { return driver->start_up->Frame().findChildren<QObject*>().size(); }

  ScratchFolder scratch;
  RecordedBrowser browser;
  std::optional<Driver> driver;
  int proposals = 0;
  int undone = 0;
};

TEST_F(LongUse, NeedsNoMoreMemoryInTheEnd) {
  constexpr int kFirst = 12;  // all functions by either rules
  const int rounds = IsLongForm() ? 1000 : 60;
  double memory = 0;
  qsizetype parts = 0;
  for (int round = 0; round < rounds && !HasFailure(); ++round) {
    Use(round);
    if (round + 1 != kFirst) continue;
    memory = MemoryInUse();
    parts = Parts();
  }
  EXPECT_GT(proposals, rounds);
  EXPECT_GT(undone, 0);
  EXPECT_EQ(Parts(), parts);
  const double in_the_end = MemoryInUse();
#ifndef TESSARIL_SANITIZED  // keeps what is freed for a while, and looks for leaks itself at the end
  EXPECT_LT(in_the_end, memory * 1.1);
#endif
  std::cout << rounds << " runs, " << proposals << " proposals: " << memory / 1e6 << " MB, in the end "
            << in_the_end / 1e6 << " MB\n";
}

}  // namespace
}  // namespace tessaril
