#include <gtest/gtest.h>

#include <QCheckBox>
#include <QtTest>
#include <atomic>
#include <cstdlib>
#include <new>
#include <optional>

#include "tests/ui/support/driver.h"
#include "ui/main/file_list.h"

// Memory ends for large strings, while the toolkit still finds some for its windows, and the reading of pages
// for its buffers. That is how it goes with reports: they are what grows. "new" is replaced, so this is a
// test program of its own.

namespace {

std::atomic<std::size_t> most_at_once{static_cast<std::size_t>(-1)};
std::atomic<int> refused{0};

}  // namespace

void* operator new(std::size_t size) {
  if (size >= most_at_once) {
    ++refused;
    throw std::bad_alloc();
  }
  void* const memory = std::malloc(size == 0 ? 1 : size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}
void* operator new[](std::size_t size) {
  void* const memory = std::malloc(size == 0 ? 1 : size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete[](void* memory) noexcept {
  std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}

namespace tessaril {
namespace {

constexpr char kTooLong[] = "Output text too long.\nAbandoning search...";

// As long as it lives, so much memory and no more is to be had at once.
class MemoryLimit {
 public:
  explicit MemoryLimit(std::size_t most) {
    refused = 0;
    most_at_once = most;
  }
  ~MemoryLimit() { End(); }
  MemoryLimit(const MemoryLimit&) = delete;
  MemoryLimit& operator=(const MemoryLimit&) = delete;
  static void End() { most_at_once = static_cast<std::size_t>(-1); }
};

// Calls `begins` when a widget is shown.
class WhenShown : public QObject {
 public:
  WhenShown(QWidget& widget, std::function<void()> begins) : begins_(std::move(begins)) {
    widget.installEventFilter(this);
  }
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Show) begins_();
    return false;
  }

 private:
  const std::function<void()> begins_;
};

class ShortOfMemory : public testing::Test {
 protected:
  // The window is as before any run, and runs.
  void ExpectUsable(Driver& driver) {
    EXPECT_EQ(driver.Caption("cmdExit"), "E&xit");
    EXPECT_EQ(driver.Caption("cmdSearch"), "To &Main");
    ASSERT_TRUE(driver.IsShown("cmdSearch"));
    driver.Press("cmdSearch");
    ASSERT_TRUE(driver.IsShown("Picture1"));
    EXPECT_EQ(driver.Caption("cmdSearch"), "&Search");
    scratch.Write("site/only.htm", "a last word of which there is something to report");
    driver.Find<FileList>("filList")->Refresh();
    driver.ClickItem("filList", "only.htm");
    driver.Choose(3);
    driver.Type("SearchTekst", "last word");
    driver.Press("cmdSearch");
    EXPECT_NE(driver.Report().find("a last word"), std::string::npos) << driver.Report();
  }

  ScratchFolder scratch;
};

TEST_F(ShortOfMemory, AbandonsTheWalk) {
  std::string page;
  for (int i = 0; i < 2000; ++i) page += std::string(100, '-') + "hit";
  for (const char* const name : {"1.htm", "2.htm", "3.htm", "4.htm"})
    scratch.Write("site/" + std::string(name), page);
  for (const int function : {3, 4}) {
    for (const char* const name : {"3.htm", "4.htm"}) scratch.Write("site/" + std::string(name), page);
    Driver driver(scratch / "site");
    driver.Choose(function);
    driver.Press("ShowEach");
    driver.Type("SearchTekst", "hit");
    if (function == 4) driver.Type("ReplaceText", "new");
    driver.said.clear();
    {
      const MemoryLimit limit(600000);
      driver.Press("cmdSearch");
      EXPECT_GT(refused, 0);
    }
    const auto told = std::count(driver.said.begin(), driver.said.end(), kTooLong);
    EXPECT_EQ(told, 1) << testing::PrintToString(driver.said);
    EXPECT_NE(driver.LastSaid().find("Cannot allocate memory"), std::string::npos) << driver.LastSaid();
    EXPECT_TRUE(driver.Report().ends_with("*** Report Abbreviated ***"));
    EXPECT_EQ(scratch.Read("site/4.htm"), page);  // was not reached
    ExpectUsable(driver);
    std::filesystem::remove(scratch / "site/only.htm");
  }
}

// By today's rules the end of the report may be long though nothing before it is.
TEST_F(ShortOfMemory, GivesUpAFinishedReport) {
  scratch.Write("site/tessaril.toml", "start = [\"index.htm\"]\n");
  scratch.Write("site/index.htm", "<P>a page</P>");
  for (int i = 0; i < 2000; ++i)
    scratch.Write("site/" + std::to_string(i) + std::string(100, 'x') + ".htm", "");
  Driver driver(scratch / "site");
  driver.Choose(0);
  std::optional<WhenShown> arms;
  arms.emplace(*driver.Find("cmdUdskriv"), [] { most_at_once = 100000; });
  driver.on_dialog = [](QWidget&) { MemoryLimit::End(); };
  driver.said.clear();
  refused = 0;
  driver.Press("cmdSearch");
  arms.reset();
  MemoryLimit::End();
  EXPECT_GT(refused, 0);
  EXPECT_EQ(driver.said, std::vector<std::string>{kTooLong});
  driver.on_dialog = nullptr;
  ExpectUsable(driver);
}

}  // namespace
}  // namespace tessaril
