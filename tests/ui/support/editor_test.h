#ifndef TESSARIL_TESTS_UI_SUPPORT_EDITOR_TEST_H_
#define TESSARIL_TESTS_UI_SUPPORT_EDITOR_TEST_H_

#include <gtest/gtest.h>

#include <QAction>
#include <QFileDialog>
#include <QRadioButton>
#include <QtTest>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/ui/support/driver.h"
#include "tests/ui/support/recorded_browser.h"
#include "ui/editor/edit_box.h"
#include "ui/main/file_list.h"

namespace tessaril {

using Words = std::vector<std::string>;

inline constexpr char kLeaveUnsaved[] = "Leave the editor WITHOUT saving the changes?";

// A program that shows files in the editor first, on a small site.
class EditorTest : public testing::Test {
 protected:
  EditorTest() {
    site.Write("a.htm", "<P>one\r\ntwo</P>\r\n");
    site.Write("b.htm", "<P>other</P>");
    driver.emplace(site.path(), "", browser.Maker());
    Item("menuStartInEditor").trigger();
  }

  QAction& Item(const char* name) { return *driver->Find<QAction>(name); }
  EditBox& Box() { return *driver->Find<EditBox>("EditTekst"); }
  // Marks a file, which may be new, and shows it.
  void Open(const char* name) {
    driver->Find<FileList>("filList")->Refresh();
    const bool twice = !driver->Find<QRadioButton>("Option1_5")->isChecked();
    driver->ClickItem("filList", QString::fromUtf8(name), twice);
  }
  void EditHtml() {
    QTest::mouseClick(driver->Find("frmBrowser")->findChild<QWidget*>("Command1"), Qt::LeftButton);
    driver->Activate();
  }
  void TypeAtStart(const QString& text) {
    Box().Move({0, 0});
    Driver::TypeInto(Box(), text);
  }
  std::string Shown(const char* label) { return driver->Caption(label).toStdString(); }
  std::string ShownWindow() {
    for (const char* const name : {"MainWindow", "frmEditor", "frmBrowser"}) {
      const auto* const window = driver->start_up->Frame().findChild<QWidget*>(name);
      if (window != nullptr && window->isVisible()) return name;
    }
    return "none";
  }
  bool Exists(const std::string& name) { return std::filesystem::exists(site / name); }
  Words Said() { return std::exchange(driver->said, {}); }
  std::string Address(const std::string& name) { return "file://" + (site / name); }

  // Saves under the name that `choose` enters.
  void SaveAs(const std::function<void(QFileDialog&)>& choose) {
    driver->on_dialog = [&](QWidget& dialog) {
      if (auto* const save = qobject_cast<QFileDialog*>(&dialog)) choose(*save);
    };
    driver->Press("GemSom");
    driver->on_dialog = nullptr;
  }

  ScratchFolder site;
  RecordedBrowser browser;
  std::optional<Driver> driver;
};

}  // namespace tessaril

#endif  // TESSARIL_TESTS_UI_SUPPORT_EDITOR_TEST_H_
