#include <gtest/gtest.h>

#include <QComboBox>
#include <QtTest>

#include "tests/ui/support/driver.h"
#include "tests/ui/support/print_steps.h"

// What only a print system shows. tools/with_printer gives one.

namespace tessaril {
namespace {

TEST(RealPrinter, TakesJobsOrSaysWhyNot) {
  const struct {
    const char* printer;
    int copies;
    std::vector<std::string> said;
    int pages;
  } rows[] = {
      {"closed", 1, {"Error: Destination \"closed\" is not accepting jobs."}, 0},
      {"paper", 1, {}, 1},
      {"paper", 3, {}, 3},
  };
  ScratchFolder scratch;
  scratch.Write("a.htm", "hit");
  Driver driver(scratch.path());
  driver.Choose(3);
  driver.Press("ShowEach");
  driver.Type("SearchTekst", "hit");
  driver.Press("cmdSearch");
  int job = 0;
  for (const auto& row : rows) {
    driver.said.clear();
    driver.on_dialog = [&row](QWidget& dialog) {
      auto* const print = qobject_cast<QPrintDialog*>(&dialog);
      if (print == nullptr) return;
      print->findChild<QComboBox*>("printers")->setCurrentText(row.printer);
      PressPrint(*print, row.copies);
    };
    driver.Press("cmdUdskriv");
    EXPECT_EQ(driver.said, row.said);
    if (row.pages == 0) continue;
    const QString document =
        qEnvironmentVariable("PRINTED") + QString("/d%1-001").arg(++job, 5, 10, QChar('0'));
    const QString info = Ask("pdfinfo", {document});
    EXPECT_TRUE(info.contains(QRegularExpression(QString("Pages: +%1\n").arg(row.pages))))
        << info.toStdString();
    EXPECT_TRUE(info.contains("Title:           Tessaril Report\n"));
    EXPECT_TRUE(Ask("pdftotext", {"-bbox", document, "-"}).contains("<word xMin=\"56.7"));
  }
}

}  // namespace
}  // namespace tessaril
