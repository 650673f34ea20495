#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QListWidget>
#include <QtTest>
#include <filesystem>
#include <fstream>
#include <iostream>

#include "tests/support/long_form.h"
#include "tests/ui/support/driver.h"
#include "tests/ui/support/heartbeat.h"
#include "ui/main/file_list.h"
#include "ui/shared/byte_text_box.h"

// Much of everything: the windows answer meanwhile, or soon.

namespace tessaril {
namespace {

#ifdef TESSARIL_SANITIZED
constexpr double kSoon = 4000;  // milliseconds
#else
constexpr double kSoon = 1000;
#endif

TEST(Limits, ShowsAReportOfManyHits) {
  const int hits = IsLongForm() ? 1000000 : 100000;
  constexpr int kPages = 100;
  ScratchFolder scratch;
  std::string page;
  for (int i = 0; i < hits / kPages; ++i)
    page += "a hit in line " + std::to_string(i) + "\n" + std::string(100, '-');
  for (int i = 0; i < kPages; ++i) scratch.Write(std::to_string(i) + ".htm", page);
  Driver driver(scratch.path());
  driver.Choose(3);
  driver.Press("ShowEach");
  driver.Type("SearchTekst", "hit");
  driver.said.clear();
  QElapsedTimer timer;
  timer.start();
  Heartbeat heartbeat;
  driver.Press("cmdSearch");
  const double silence = heartbeat.TakeLongest();
  EXPECT_LT(silence, kSoon);
  std::cout << hits << " hits: " << timer.elapsed() << " ms, longest silence " << silence << " ms\n";
  EXPECT_EQ(driver.said.size(), 2u);  // in the walk and at its end, that the report is too long
  EXPECT_TRUE(driver.Report().ends_with("*** Report Abbreviated ***"));
  EXPECT_EQ(driver.Caption("lblCount"), std::to_string(kPages).c_str());
  driver.Press("cmdSearch");
  driver.Press("cmdSeeResults");
  EXPECT_TRUE(driver.Report().ends_with("*** Report Abbreviated ***"));
}

TEST(Limits, ListsManyFiles) {
  const int files = IsLongForm() ? 200000 : 100000;
  ScratchFolder scratch;
  scratch.Write("many/first.htm", "a hit");
  for (int i = 0; i < files; ++i) std::ofstream(scratch / "many/file" + std::to_string(i) + ".htm");
  Driver driver(scratch.path());
  auto* const list = driver.Find<FileList>("filList");
  const double most = kSoon * files / 100000;
  const auto use = [&](const char* what, const auto& act) {
    Heartbeat heartbeat;
    act();
    QTest::qWait(20);
    const double silence = heartbeat.TakeLongest();
    EXPECT_LT(silence, most) << what;
    std::cout << files << " files, " << what << ": " << silence << " ms\n";
  };
  use("open", [&] { driver.ClickItem("dirList", "many"); });
  EXPECT_EQ(list->count(), files + 1);
  EXPECT_EQ(list->item(0)->text(), "file0.htm");
  use("select", [&] { list->Select("first.htm"); });
  EXPECT_EQ(list->Selected(), "first.htm");
  use("refresh", [&] { list->Refresh(); });
  EXPECT_EQ(list->Selected(), "first.htm");
  use("other filter", [&] { list->SetPattern("*9.htm;first*"); });
  EXPECT_EQ(list->count(), files / 10 + 1);
  use("scroll", [&] { list->scrollToBottom(); });
  use("leave", [&] { driver.start_up->Frame().Main().OpenFolder(scratch.path()); });
  EXPECT_EQ(list->count(), 0);
}

}  // namespace
}  // namespace tessaril
