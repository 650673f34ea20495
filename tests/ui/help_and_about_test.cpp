#include <gtest/gtest.h>

#include <QLabel>
#include <QtTest>
#include <filesystem>
#include <map>

#include "tests/support/program.h"
#include "tests/ui/support/driver.h"
#include "tests/ui/support/recorded_browser.h"
#include "ui/dialogs/about_box.h"
#include "ui/frame/registry.h"
#include "ui/shared/place.h"

// Help, about box and system information, with other programs that only note how they were started.

namespace tessaril {
namespace {

namespace fs = std::filesystem;

class HelpAndAbout : public testing::Test {
 protected:
  HelpAndAbout() {
    site.Write("a.htm", "x");
    qputenv("PATH", QByteArray::fromStdString(programs.path()));
  }
  ~HelpAndAbout() override { qputenv("PATH", path_); }

  void Install(const std::string& program) {
    programs.Write(program, "#!/bin/sh\nfor word in " + program + " \"$@\"; do echo \"<$word>\"; done >'" +
                                programs / "new" + "'\nexec /bin/mv '" + programs / "new" + "' '" +
                                programs / "started" + "'\n");
    fs::permissions(programs / program, fs::perms::owner_all);
  }

  void InstallOnly(const std::vector<std::string>& names) {
    fs::remove_all(programs.path());
    fs::create_directory(programs.path());
    for (const std::string& name : names) Install(name);
  }

  // How a program was started since the last call: each word in "<>", on a line of its own.
  std::string Started() {
    const std::string note = programs / "started";
    if (!QTest::qWaitFor([&note] { return fs::exists(note); })) return "nothing";
    const std::string words = programs.Read("started");
    fs::remove(note);
    return words;
  }

  ScratchFolder site;
  ScratchFolder programs;

 private:
  const QByteArray path_ = qgetenv("PATH");
};

TEST_F(HelpAndAbout, StartsTheFirstViewerOfTheHelp) {
  Driver driver(site.path());
  FrameWindow& frame = driver.start_up->Frame();
  const std::string book = driver.program / "TSLhelp.chm";
  const std::string page = driver.program / "help/index.html";
  const auto press_f1 = [&] {
    driver.Activate();
    QTest::keyClick(&frame, Qt::Key_F1);
  };
  InstallOnly({"xchm", "xdg-open"});
  press_f1();
  EXPECT_EQ(driver.LastSaid(), "Can't find " + book);
  driver.program.Write("TSLhelp.chm", "");
  driver.program.Write("help/index.html", "");
  const struct {
    std::vector<std::string> installed;
    std::string started;
  } rows[] = {
      {{"okular", "kchmviewer", "xchm", "xdg-open"}, "<xchm>\n<" + book + ">\n"},
      {{"okular", "kchmviewer", "xdg-open"}, "<kchmviewer>\n<" + book + ">\n"},
      {{"okular", "xdg-open"}, "<okular>\n<" + book + ">\n"},
      {{"xdg-open"}, "<xdg-open>\n<" + page + ">\n"},
  };
  for (const auto& row : rows) {
    InstallOnly(row.installed);
    press_f1();
    EXPECT_EQ(Started(), row.started);
  }
  InstallOnly({"okular", "xdg-open"});
  for (const char* const broken : {"xchm", "kchmviewer"}) {
    programs.Write(broken, "#!/bin/sh\ncase $0 in */xchm) kill -SEGV $$ ;; esac\nexit 1\n");
    fs::permissions(programs / broken, fs::perms::owner_all);
  }
  press_f1();
  EXPECT_EQ(Started(), "<okular>\n<" + book + ">\n");
  InstallOnly({"xdg-open"});
  fs::remove(book);  // its pages do as well
  press_f1();
  EXPECT_EQ(Started(), "<xdg-open>\n<" + page + ">\n");
  EXPECT_EQ(driver.said.size(), 1u);
  driver.program.Write("TSLhelp.chm", "");
  const std::string cannot =
      "Can't show " + book + "\nbecause no program that shows such files (xchm, for example) is installed!";
  programs.Write("xdg-open", "#!/bin/sh\nexit 3\n");
  fs::permissions(programs / "xdg-open", fs::perms::owner_all);
  press_f1();
  EXPECT_TRUE(QTest::qWaitFor([&] { return driver.LastSaid() == cannot; }));
  driver.said.clear();
  InstallOnly({});
  press_f1();
  EXPECT_EQ(driver.LastSaid(), cannot);
}

TEST_F(HelpAndAbout, AreThereInAllThreeWindows) {
  Install("xchm");
  RecordedBrowser browser;
  Driver driver(site.path(), "", browser.Maker());
  driver.program.Write("TSLhelp.chm", "");
  FrameWindow& frame = driver.start_up->Frame();
  const auto use = [&](const char* about) {
    QTest::keyClick(&frame, Qt::Key_F1);
    EXPECT_NE(Started(), "nothing") << about;
    frame.findChild<QAction*>(about)->trigger();
    EXPECT_TRUE(frame.findChild<AboutBox*>()->isVisible());
    delete frame.findChild<AboutBox*>();
    driver.Activate();
  };
  use("menu1About");
  driver.ClickItem("filList", "a.htm", true);
  ASSERT_TRUE(driver.IsShown("brwWebBrowser"));
  use("menu1About");
  driver.Press("Command1");
  ASSERT_TRUE(driver.IsShown("EditTekst"));
  use("menuEAbout");
  for (const char* const help : {"menuHelp", "menuE0Help"}) {
    EXPECT_FALSE(frame.findChild<QAction*>(help)->autoRepeat());  // a viewer for each repetition
  }
}

TEST_F(HelpAndAbout, ShowsOneBoxThatDestroysItself) {
  Driver driver(site.path());
  FrameWindow& frame = driver.start_up->Frame();
  const auto choose = [&] {
    frame.findChild<QAction*>("menu1About")->trigger();
    return frame.findChild<AboutBox*>("frmAbout");
  };
  AboutBox* const box = choose();
  EXPECT_FALSE(box->isModal());
  EXPECT_EQ(box->windowTitle(), "About Tessaril");
  const auto text = [box](const char* control) {
    return box->findChild<QWidget*>(control)->property("text").toString().toStdString();
  };
  EXPECT_EQ(text("lblTitle"), "Tessaril");
  EXPECT_EQ("tsl " + text("lblVersion").substr(text("lblVersion").find(' ') + 1) + "\n",
            RunTsl({"--version"}).out);
  EXPECT_TRUE(text("lblVersion").starts_with("Version "));
  EXPECT_EQ(text("lblDescription"),
            "The webmasters' best friend!\n\nHelps you ...\n"
            "- repairing internal/external dead links and bad &xxxx; type tags.\n"
            "- finding and replacing/editing a string in all your HTML files.\n"
            "- making minor HTML adjustments - in one file or in all files.");
  EXPECT_EQ(text("cmdOK"), "&OK");
  EXPECT_EQ(text("cmdSysInfo"), "&System Info...");
  EXPECT_FALSE(box->findChild<QLabel*>("picIcon")->pixmap().isNull());
  box->resize(10, 10);
  EXPECT_EQ(box->size(), QSize(Pixels(5808), Pixels(3924)));
  EXPECT_EQ(choose(), box);
  EXPECT_EQ(frame.findChildren<AboutBox*>().size(), 1);
  for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return}) {
    const QPointer<AboutBox> open = choose();
    QTest::keyClick(open, key);
    EXPECT_TRUE(QTest::qWaitFor([&open] { return open == nullptr; }));
  }
}

TEST_F(HelpAndAbout, StartsTheFirstSystemInformationTool) {
  Driver driver(site.path());
  FrameWindow& frame = driver.start_up->Frame();
  frame.findChild<QAction*>("menu1About")->trigger();
  const struct {
    std::vector<std::string> installed;
    std::string started;
  } rows[] = {
      {{"gnome-control-center", "kinfocenter", "hardinfo", "hardinfo2"}, "<hardinfo2>\n"},
      {{"gnome-control-center", "kinfocenter", "hardinfo"}, "<hardinfo>\n"},
      {{"gnome-control-center", "kinfocenter"}, "<kinfocenter>\n"},
      {{"gnome-control-center"}, "<gnome-control-center>\n<info-overview>\n"},
  };
  for (const auto& row : rows) {
    InstallOnly(row.installed);
    driver.Press("cmdSysInfo");
    EXPECT_EQ(Started(), row.started);
  }
  programs.Write("hardinfo2", "#!/nowhere/at/all\n");  // cannot be started: the next is
  fs::permissions(programs / "hardinfo2", fs::perms::owner_all);
  driver.Press("cmdSysInfo");
  EXPECT_EQ(Started(), "<gnome-control-center>\n<info-overview>\n");
  EXPECT_TRUE(driver.said.empty());
  InstallOnly({});
  driver.Press("cmdSysInfo");
  EXPECT_EQ(driver.LastSaid(), "System Information Is Unavailable At This Time");
}

struct StandInRegistry : Registry {
  bool GetKeyValue(std::uint32_t KeyRoot, const QString& KeyName, const QString& SubKeyRef,
                   QString& KeyVal) const override {
    const auto found = values.find({KeyName, SubKeyRef});
    const bool is_there = KeyRoot == 0x80000002 && found != values.end();
    KeyVal = is_there ? found->second : QString();
    return is_there;
  }
  std::map<std::pair<QString, QString>, QString> values;
};

TEST(SystemInformation, IsNamedByARegistry) {
  ScratchFolder folder;
  folder.Write("tools\\MSINFO32.EXE", "");
  StandInRegistry registry;
  EXPECT_EQ(SysInfoToolOf(registry), "");
  QString& place = registry.values[{"SOFTWARE\\Microsoft\\Shared Tools Location", "MSINFO"}];
  place = QString::fromStdString(folder / "none");
  EXPECT_EQ(SysInfoToolOf(registry), "");
  place = QString::fromStdString(folder / "tools");
  EXPECT_EQ(SysInfoToolOf(registry), place + "\\MSINFO32.EXE");
  registry.values[{"SOFTWARE\\Microsoft\\Shared Tools\\MSINFO", "PATH"}] = "c:\\info.exe";
  EXPECT_EQ(SysInfoToolOf(registry), "c:\\info.exe");
}

}  // namespace
}  // namespace tessaril
