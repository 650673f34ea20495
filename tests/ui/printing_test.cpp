#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QAction>
#include <QFontDialog>
#include <QLineEdit>
#include <QPrintDialog>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QSpinBox>
#include <QtTest>
#include <csignal>

#include "tests/ui/support/driver.h"
#include "ui/shared/byte_text_box.h"

namespace tessaril {
namespace {

// What a program for PDF files says of one.
QString Ask(const QString& program, QStringList arguments) {
  QProcess process;
  process.start(program, arguments);
  EXPECT_TRUE(process.waitForFinished()) << program.toStdString();
  EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
  return QString::fromUtf8(process.readAllStandardOutput());
}

// The lines on paper, with single blanks and without empty ones; a page begins with its number in brackets.
QStringList LinesOf(const std::string& pdf) {
  const QString text = Ask("pdftotext", {"-layout", QString::fromStdString(pdf), "-"});
  QStringList lines;
  int page = 0;
  for (const QString& sheet : text.split('\f', Qt::SkipEmptyParts)) {
    lines += QString("[%1]").arg(++page);
    for (const QString& line : sheet.split('\n')) {
      if (!line.trimmed().isEmpty()) lines += line.simplified();
    }
  }
  return lines;
}

// A program that has searched a page for "hit", and a user who prints into a file.
class Printing : public testing::Test {
 protected:
  void Search(const std::string& page, const std::string& settings = {}) {
    scratch.Write("site/a.htm", page);
    driver.emplace(scratch / "site", settings);
    driver->Choose(3);
    driver->Press("ShowEach");
    driver->Type("SearchTekst", "hit");
    driver->said.clear();
    driver->on_dialog = [this](QWidget& dialog) {
      if (auto* const print = qobject_cast<QPrintDialog*>(&dialog)) AnswerPrintDialog(*print);
    };
    driver->Press("cmdSearch");
  }

  void AnswerPrintDialog(QPrintDialog& dialog) {
    if (cancels) return dialog.reject();
    EXPECT_FALSE(dialog.testOption(QPrintDialog::PrintCollateCopies));
    EXPECT_TRUE(dialog.findChild<QWidget*>("gbPrintRange")->isHidden());
    dialog.findChild<QLineEdit*>("filename")->setText(QString::fromStdString(pdf));
    dialog.findChild<QSpinBox*>("copies")->setValue(copies);
    for (QPushButton* const button : dialog.findChildren<QPushButton*>()) {
      if (button->text() == "&Print") button->click();
    }
  }

  ScratchFolder scratch;
  std::string pdf = scratch / "out.pdf";
  int copies = 1;
  bool cancels = false;
  std::optional<Driver> driver;
};

TEST_F(Printing, PutsTheEditedReportOnPaper) {
  Search("first \xE9 hit\nsecond \xC3\xA9 hit\n");
  QTest::keyClicks(driver->Find("UdTxt"), "Mine: ");
  driver->Press("cmdUdskriv");
  EXPECT_EQ(driver->said, std::vector<std::string>());
  const QString date = QLocale::system().toString(QDate::currentDate(), QLocale::ShortFormat);
  const QStringList lines = LinesOf(pdf);
  ASSERT_GT(lines.size(), 12);
  EXPECT_EQ(lines[1], date + " - Tessaril Report Page 1");
  EXPECT_EQ(lines[2], QString(lines[2].size(), QChar(0x2014)));
  EXPECT_TRUE(lines[3].startsWith("Mine: In \"")) << lines[3].toStdString();
  const auto first = lines.indexOf(QString("...first ") + QChar(0xE9) + " hit");
  EXPECT_GT(first, 3);
  EXPECT_EQ(lines[first + 1], QString("second ") + QChar(0xE9) + " hit");
  const QString info = Ask("pdfinfo", {QString::fromStdString(pdf)});
  EXPECT_TRUE(info.contains(QRegularExpression("Pages: +1\n")));
  EXPECT_TRUE(info.contains(QRegularExpression("Page size: +59[45][.0-9]* x 84[12][.0-9]* pts")))
      << info.toStdString();
  // 20 mm from the left and 15 mm from the top, in points.
  const QString places = Ask("pdftotext", {"-bbox", QString::fromStdString(pdf), "-"});
  const QRegularExpressionMatch header =
      QRegularExpression("<word xMin=\"([0-9.]+)\" yMin=\"([0-9.]+)\"").match(places);
  EXPECT_NEAR(header.captured(1).toDouble(), 56.7, 0.1);
  EXPECT_NEAR(header.captured(2).toDouble(), 42.525, 1);
}

TEST_F(Printing, PrintsEachCopyFromPageOne) {
  std::string page;
  for (int i = 0; i < 100; ++i) page += std::to_string(i) + "\r\n";
  Search(page + "hit\r\n" + page);
  driver->Find<ByteTextBox>("UdTxt")->SetBytes(page);
  copies = 2;
  driver->Press("cmdUdskriv");
  const QStringList lines = LinesOf(pdf);
  for (const int sheet : {1, 2, 3, 4}) {
    const auto at = lines.indexOf(QString("[%1]").arg(sheet));
    ASSERT_GE(at, 0) << sheet;
    EXPECT_TRUE(lines[at + 1].endsWith(sheet % 2 == 1 ? "Page 1" : "Page 2"));
  }
  EXPECT_EQ(lines.filter("[5]").size(), 0);
  EXPECT_EQ(lines.count("99"), 2);
}

// The box shows it shortened.
TEST_F(Printing, PrintsALongReportWhole) {
  std::string page;
  for (int i = 0; i < 600; ++i) page += "hit" + std::to_string(i) + std::string(100, '\n');
  Search(page);
  EXPECT_TRUE(driver->Report().ends_with("*** Report Abbreviated ***"));
  driver->Press("cmdUdskriv");
  const QStringList lines = LinesOf(pdf);
  for (const char* const last : {"hit0", "hit300", "hit599"}) {
    EXPECT_EQ(lines.filter(QRegularExpression(QString(last) + "$")).size(), 1) << last;
  }
}

TEST_F(Printing, LeavesTheOldFileWhenItFails) {
  std::string page = "hit";
  for (int i = 0; i < 20000; ++i) page += ' ' + std::to_string(i * 7919 % 10007);
  Search("hit");
  driver->Find<ByteTextBox>("UdTxt")->SetBytes(page);
  const std::string before = "an old file";
  scratch.Write("out.pdf", before);
  driver->answers = {"yes"};  // it may be overwritten
  rlimit limit{};
  getrlimit(RLIMIT_FSIZE, &limit);
  const rlimit small{60000, limit.rlim_max};
  std::signal(SIGXFSZ, SIG_IGN);
  setrlimit(RLIMIT_FSIZE, &small);
  driver->Press("cmdUdskriv");
  setrlimit(RLIMIT_FSIZE, &limit);
  EXPECT_EQ(driver->LastSaid(), "Error: File too large");
  EXPECT_EQ(scratch.Read("out.pdf"), before);
  EXPECT_EQ(scratch.Names(), (std::vector<std::string>{"out.pdf", "site"}));
  EXPECT_EQ(driver->Report(), page);

  driver->said.clear();
  cancels = true;
  driver->Press("cmdUdskriv");
  EXPECT_EQ(driver->said, std::vector<std::string>());
  driver->Find<ByteTextBox>("UdTxt")->SetBytes("");
  driver->Press("cmdUdskriv");
  EXPECT_EQ(driver->said, std::vector<std::string>{"No text to print!"});
}

TEST_F(Printing, UsesTheFontThatWasChosen) {
  const std::string settings =
      "[LastDir]\r\n   LastDir = /\r\n[Font]\r\n   Size = 0\r\n   Name = No Such Font\r\n[CGI]\r\n   CGI = "
      "x\r\n"
      "[BrowserFirst]\r\n   BrowserFirst = 0\r\n[UPPERcaseFilenames]\r\n   UPPERcaseFilenames = 0\r\n\r\n";
  Search("hit", settings);
  driver->Press("cmdUdskriv");
  EXPECT_TRUE(Ask("pdffonts", {QString::fromStdString(pdf)}).contains("DejaVuSans "));
  const auto height = [this] {
    const QString places = Ask("pdftotext", {"-bbox", QString::fromStdString(pdf), "-"});
    const QRegularExpressionMatch word =
        QRegularExpression("yMin=\"([0-9.]+)\" xMax=\"[0-9.]+\" yMax=\"([0-9.]+)\"").match(places);
    return word.captured(2).toDouble() - word.captured(1).toDouble();
  };
  const double size_10 = height();
  const std::string before = driver->program.Read("TSL32.ini");
  bool accepts = false;
  const auto print_dialog = driver->on_dialog;
  driver->on_dialog = [&](QWidget& dialog) {
    auto* const font = qobject_cast<QFontDialog*>(&dialog);
    if (font == nullptr) return print_dialog(dialog);
    font->setCurrentFont(QFont("DejaVu Serif", 20));
    accepts ? font->accept() : font->reject();
  };
  auto* const menu0PrinterFont = driver->start_up->Frame().findChild<QAction*>("menu0PrinterFont");
  menu0PrinterFont->trigger();
  EXPECT_EQ(driver->program.Read("TSL32.ini"), before);
  accepts = true;
  menu0PrinterFont->trigger();
  EXPECT_NE(driver->program.Read("TSL32.ini").find("Size = 20\r\n   Name = DejaVu Serif\r\n"),
            std::string::npos);
  driver->answers = {"yes"};
  driver->Press("cmdUdskriv");
  EXPECT_TRUE(Ask("pdffonts", {QString::fromStdString(pdf)}).contains("DejaVuSerif "));
  EXPECT_NEAR(height() / size_10, 2, 0.05);
}

}  // namespace
}  // namespace tessaril
