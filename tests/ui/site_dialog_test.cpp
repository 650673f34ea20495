#include <gtest/gtest.h>

#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QtTest>
#include <filesystem>
#include <optional>
#include <utility>

#include "site/site_file.h"
#include "tests/ui/support/driver.h"

// The site file in the window: its dialog, its end, and what a run makes of it.

namespace tessaril {
namespace {

using Words = std::vector<std::string>;

constexpr char kMalformed[] = "rules = \"today\"\nindexes = []\n";

class SiteFile : public testing::Test {
 protected:
  SiteFile() { site.Write("sub/a.htm", "<a href=\"gone.htm\">\xE9</a>"); }

  void Start() { driver.emplace(site / "sub"); }
  void ChooseItem(const char* name) { driver->Find<QAction>(name)->trigger(); }
  // Opens the rules and does something there; then the dialog is answered.
  void EditRules(const std::function<void(QWidget&)>& edit, const std::deque<std::string>& answers) {
    driver->on_dialog = [&, seen = false](QWidget& dialog) mutable {
      if (dialog.objectName() == "frmSite" && !std::exchange(seen, true)) edit(dialog);
    };
    driver->answers = answers;
    ChooseItem("menuSiteRules");
    driver->on_dialog = nullptr;
  }
  static void Enter(QWidget& dialog, const char* field, const QString& text) {
    auto* const box = dialog.findChild<QPlainTextEdit*>(field);
    box->selectAll();
    QTest::keyClick(box, Qt::Key_Delete);
    Driver::TypeInto(*box, text);
  }

  ScratchFolder site;
  std::optional<Driver> driver;
};

TEST_F(SiteFile, IsOfferedToBeRemovedWhereThereIsOne) {
  const struct {
    const char* file;
    bool can_remove;
  } rows[] = {{"other/tessaril.toml", false}, {"sub/tessaril.toml", true}, {"tessaril.toml", true}};
  Start();
  QMenu& menu = *driver->Find<QMenu>("menuSite");
  for (const auto& row : rows) {
    site.Write(row.file, kMalformed);
    menu.popup({});
    EXPECT_EQ(driver->Find<QAction>("menuNoRules")->isEnabled(), row.can_remove) << row.file;
    menu.close();
    std::filesystem::remove(site / row.file);
  }
  site.Write("tessaril.toml", "");
  driver->on_dialog = [&](QWidget&) {
    menu.popup({});
    EXPECT_FALSE(menu.actions()[0]->isEnabled() || menu.actions()[1]->isEnabled());
    menu.close();
  };
  driver->Choose(0);
  driver->Press("cmdSearch");
  EXPECT_FALSE(driver->answered.empty());
}

TEST_F(SiteFile, IsMadeAndChangedByTheDialog) {
  Start();
  const auto leave = [this](QWidget& dialog) {
    EXPECT_EQ(dialog.findChild<QLabel*>("lblRoot")->accessibleName().toStdString(), site / "sub");
    EXPECT_EQ(dialog.focusWidget()->objectName(), "optToday");
    Enter(dialog, "txtStart", "x");
    QTest::keyClick(dialog.findChild<QWidget*>("txtStart"), Qt::Key_Escape);
  };
  EditRules(leave, {});
  EXPECT_EQ(FindSiteFile(site / "sub"), "");
  EditRules([](QWidget& dialog) { QTest::keyClick(dialog.focusWidget(), Qt::Key_Return); }, {});
  EXPECT_EQ(site.Read("sub/tessaril.toml"), NewSiteText({}));

  std::filesystem::remove(site / "sub/tessaril.toml");
  site.Write("tessaril.toml", "# Mine\r\nindex = [\"home.htm\"] # so\r\nlowercase_names = true\r\n");
  const auto change = [this](QWidget& dialog) {
    EXPECT_EQ(dialog.findChild<QLabel*>("lblRoot")->accessibleName().toStdString(), site.path());
    EXPECT_EQ(dialog.findChild<QPlainTextEdit*>("txtIndex")->toPlainText(), "home.htm");
    for (const char* const name : {"optClassic", "chkLowercase", "chkEntities"}) {
      QTest::mouseClick(dialog.findChild<QWidget*>(name), Qt::LeftButton);
    }
    Enter(dialog, "txtIndex",
          " home.htm\n\n\t\nd\xC3\xA9"
          "but.htm ");
    Enter(dialog, "txtIgnoreFiles", "old/**");
    Enter(dialog, "txtIgnoreLinks", "*.cgi");
    Enter(dialog, "txtStart", "start here.htm");
    Enter(dialog, "txtAllowMissing", "api/*, all");
    Enter(dialog, "txtAllowUnlinked", " ");
  };
  EditRules(change, {"ok"});
  SiteRules now;
  ASSERT_TRUE(ReadSiteRules(site.Read("tessaril.toml"), now).ok());
  const SiteRules expected{Rules::kClassic,
                           {"home.htm",
                            "d\xC3\xA9"
                            "but.htm"},
                           {"old/**"},
                           {"*.cgi"},
                           false,
                           {"start here.htm"},
                           {"api/*, all"},
                           {},
                           true};
  EXPECT_EQ(now, expected) << site.Read("tessaril.toml");
  EXPECT_TRUE(site.Read("tessaril.toml").starts_with("# Mine\r\nindex = ["));
}

TEST_F(SiteFile, KeepsTheDialogOpenForWhatItCannotWrite) {
  Start();
  const auto wrong = [](QWidget& dialog) { Enter(dialog, "txtIndex", "a.htm\nsub/b.htm"); };
  EditRules(wrong, {"ok", "ok", "cancel"});
  EXPECT_EQ(driver->said, Words{"An index file is given by its name, without folders:\nsub/b.htm"});
  EditRules([this](QWidget&) { std::filesystem::remove_all(site / "sub"); }, {"ok", "ok", "cancel"});
  EXPECT_EQ(driver->LastSaid(), "Not saved: No such file or directory");
  EXPECT_EQ(driver->answered.size(), 6u);
}

TEST_F(SiteFile, KeepsWhatWasChangedOnTheDiskWhileTheDialogWasOpen) {
  const std::string start = "start = [\"sub/a.htm\"]\n";
  const struct {
    std::string now;    // what the file holds when OK is pressed
    std::string after;  // what it holds then
  } rows[] = {
      {start + "lowercase_names = true\nindex = [\"x.htm\"]\n",
       start + "lowercase_names = true\nindex = [\"home.htm\"]\nentities = \"ascii\"\n"},
      {kMalformed, kMalformed},
  };
  Start();
  for (const auto& row : rows) {
    site.Write("tessaril.toml", "");
    const auto edit = [&](QWidget& dialog) {
      Enter(dialog, "txtIndex", "home.htm");
      QTest::mouseClick(dialog.findChild<QWidget*>("chkEntities"), Qt::LeftButton);
      site.Write("tessaril.toml", row.now);
    };
    EditRules(edit, {"ok"});
    EXPECT_EQ(site.Read("tessaril.toml"), row.after);
  }
  EXPECT_TRUE(driver->LastSaid().starts_with("Not saved: " + site / "tessaril.toml: line 2"));
}

TEST_F(SiteFile, DoesNotMatterWhereSearchOnlyOpensAFolder) {
  site.Write("sub/tessaril.toml", kMalformed);
  Start();
  auto* const folders = driver->Find<QListWidget>("dirList");
  folders->setFocus();
  QTest::keyClick(folders, Qt::Key_Up);
  driver->Press("cmdSearch");
  EXPECT_EQ(driver->said, Words());
  EXPECT_EQ(folders->currentItem()->text().toStdString(), site.path().substr(site.path().rfind('/') + 1));
  EXPECT_TRUE(folders->currentItem()->font().bold());
}

TEST_F(SiteFile, StopsEverythingWhenItIsMalformed) {
  site.Write("tessaril.toml", kMalformed);
  Start();
  ChooseItem("menuSiteRules");
  for (const int function : {0, 1, 2, 3, 4, 6}) {
    driver->Choose(function);
    driver->Press("cmdSearch");
    EXPECT_TRUE(driver->IsShown("Picture1"));
  }
  EXPECT_EQ(driver->answered, Words(7, "ok"));
  for (const std::string& said : driver->said) {
    EXPECT_TRUE(said.starts_with(site / "tessaril.toml: line 2, column 1: ")) << said;
  }
  EXPECT_EQ(site.Read("tessaril.toml"), kMalformed);
}

TEST_F(SiteFile, IsRemovedAfterAQuestion) {
  site.Write("tessaril.toml", kMalformed);
  site.Write("sub/tessaril.toml", "");
  Start();
  driver->answers = {"cancel", "ok", "ok"};
  for (int i = 0; i < 4; ++i) ChooseItem("menuNoRules");
  const std::string inner = "Delete the site file?\n" + site / "sub/tessaril.toml" +
                            "\n\nThen this one holds:\n" + site / "tessaril.toml";
  const std::string outer =
      "Delete the site file?\n" + site / "tessaril.toml" + "\n\nThe site is judged by classic rules then.";
  EXPECT_EQ(driver->said, (Words{inner, inner, outer}));
  EXPECT_EQ(FindSiteFile(site / "sub"), "");
}

TEST_F(SiteFile, IsLookedForAnewWhenTheUserComesBack) {
  Start();
  driver->Choose(0);
  QWidget other;
  other.show();
  other.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
  site.Write("tessaril.toml", "");
  EXPECT_FALSE(driver->IsShown("RulesLabel"));
  driver->Activate();
  EXPECT_TRUE(driver->IsShown("RulesLabel"));
}

TEST_F(SiteFile, SaysByWhichRulesARunJudges) {
  const char* const kClassicKeep = "Next (replacing as shown in the white field if changed)";
  const struct {
    const char* file;  // null for none
    int function;
    const char* label;  // empty when none is shown
    const char* keep;
  } rows[] = {
      {"", 0, "Judged by today's rules", "Next (keeping the page as it is)"},
      {"", 1, "Judged by today's rules", kClassicKeep},
      {"rules = \"classic\"", 0, "Judged by classic rules", kClassicKeep},
      {"", 3, "", kClassicKeep},
      {kMalformed, 1, "The site file is not valid", ""},
      {nullptr, 0, "", kClassicKeep},
      {nullptr, 1, "", kClassicKeep},
  };
  Start();
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << row.function << (row.file != nullptr ? row.file : "(none)"));
    std::filesystem::remove(site / "tessaril.toml");
    if (row.file != nullptr) site.Write("tessaril.toml", row.file);
    driver->Choose(row.function);
    if (row.function == 3) driver->Type("SearchTekst", "gone");
    EXPECT_EQ(driver->IsShown("RulesLabel") ? driver->Caption("RulesLabel") : "", row.label);
    QString keep;
    driver->on_dialog = [&](QWidget& dialog) {
      if (auto* const button = dialog.findChild<QWidget*>("btnKeep")) keep = button->toolTip();
    };
    driver->Press("cmdSearch");
    EXPECT_EQ(keep, row.keep);
    if (driver->Caption("cmdSearch") == "To &Main") driver->Press("cmdSearch");
  }
}

}  // namespace
}  // namespace tessaril
