#include <QMessageBox>

#include "tests/ui/support/editor_test.h"

namespace tessaril {
namespace {

class WindowUndo : public EditorTest {
 protected:
  // Replaces "one" in all pages, and gives these answers to what is asked.
  void Replace(const std::deque<std::string>& answers) {
    driver->Choose(4);
    driver->Type("SearchTekst", "one");
    driver->Type("ReplaceText", "1");
    driver->answers = answers;
    driver->Press("cmdSearch");
    if (driver->Caption("cmdSearch") == "To &Main") driver->Press("cmdSearch");
    driver->Activate();
  }
  Words Undo(const std::deque<std::string>& answers) {
    Said();
    driver->answers = answers;
    Item("menuUndo").trigger();
    return Said();
  }
  void BlockStore() {
    std::filesystem::create_directories(driver->program / "user");
    driver->program.Write("user/undo", "a file");
  }
};

TEST_F(WindowUndo, RestoresWhatTheLastRunChanged) {
  EXPECT_EQ(Undo({}), Words{"There is no run to undo."});
  site.Write("c.htm", "one one");
  const std::string old_text = site.Read("a.htm");
  Replace({"replace", "replace", "replace"});
  EXPECT_EQ(site.Read("c.htm"), "1 1");
  const Words asked = Undo({"cancel"});
  ASSERT_EQ(asked.size(), 1U);
  const std::string files = "\nreplace \"one\" \"1\" " + site.path() + "\n\n2 files to be restored:\n" +
                            site / "a.htm" + "\n" + (site / "c.htm");
  EXPECT_TRUE(asked[0].starts_with("Undo this run?\n2") && asked[0].ends_with(files)) << asked[0];
  EXPECT_EQ(site.Read("c.htm"), "1 1");
  site.Write("c.htm", "mine");
  Words said = Undo({"ok", "ok"});
  ASSERT_EQ(said.size(), 2U);
  EXPECT_TRUE(said[0].ends_with("Changed since, left alone:\n" + (site / "c.htm") + ": It was changed since"))
      << said[0];
  EXPECT_EQ(said[1], "1 file restored.");
  EXPECT_EQ(site.Read("a.htm"), old_text);
  EXPECT_EQ(site.Read("c.htm"), "mine");
  said = Undo({"ok", "ok"});  // of the undo
  EXPECT_NE(said[0].find("\nundo 1\n"), std::string::npos) << said[0];
  EXPECT_NE(site.Read("a.htm"), old_text);
}

TEST_F(WindowUndo, ShowsAllFilesOnDemand) {
  for (int i = 0; i < 30; ++i) site.Write("p" + std::to_string(i) + ".htm", "one");
  Replace(std::deque<std::string>(40, "replace"));
  QString details;
  driver->on_dialog = [&](QWidget& box) { details = static_cast<QMessageBox&>(box).detailedText(); };
  EXPECT_TRUE(Undo({"cancel"})[0].ends_with("\nand 21 more"));
  EXPECT_EQ(details.count(".htm\n") + details.endsWith(".htm"), 31);
}

TEST_F(WindowUndo, RestoresWhatTheEditorSaved) {
  const std::string old_text = site.Read("a.htm");
  Open("a.htm");
  TypeAtStart("x");
  driver->Press("Gem");
  driver->Press("MainScreen");
  ASSERT_EQ(site.Read("a.htm"), "x" + old_text);
  EXPECT_NE(Undo({"ok", "ok"})[0].find("\neditor " + (site / "a.htm") + "\n"), std::string::npos);
  EXPECT_EQ(site.Read("a.htm"), old_text);
}

TEST_F(WindowUndo, AsksOnceWhetherToGoOnWithout) {
  const std::string question = "What is changed now could not be undone:\n" + driver->program.path() +
                               "/user/undo: Not a directory\nGo on without undo?";
  const std::string old_text = site.Read("a.htm");
  BlockStore();
  site.Write("c.htm", "one");
  Replace({"replace", "cancel", "ok", "ok"});
  EXPECT_EQ(std::count(driver->said.begin(), driver->said.end(), question), 1);
  EXPECT_EQ(site.Read("a.htm"), old_text);
  EXPECT_EQ(site.Read("c.htm"), "one");
  Said();
  Replace({"replace", "ok", "replace"});
  EXPECT_EQ(std::count(driver->said.begin(), driver->said.end(), question), 1);
  EXPECT_EQ(site.Read("c.htm"), "1");
  Said();
  Open("a.htm");
  TypeAtStart("x");
  for (const bool goes_on : {false, true}) {
    driver->answers = {goes_on ? "ok" : "cancel", "ok"};
    driver->Press("Gem");
    EXPECT_EQ(site.Read("a.htm").starts_with('x'), goes_on);
    EXPECT_EQ(Said()[0], question);
    driver->answers.clear();
  }
}

}  // namespace
}  // namespace tessaril
