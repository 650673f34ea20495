#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QAction>
#include <QFontDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPrintDialog>
#include <QRegularExpression>
#include <QtTest>
#include <filesystem>

#include "tests/support/file_size_limit.h"
#include "tests/ui/support/driver.h"
#include "tests/ui/support/print_steps.h"
#include "ui/shared/byte_text_box.h"

namespace tessaril {
namespace {

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

// Where each word of the first page stands, in points.
QList<QRectF> WordsOf(const std::string& pdf) {
  const QString places = Ask("pdftotext", {"-l", "1", "-bbox", QString::fromStdString(pdf), "-"});
  const QRegularExpression word("<word xMin=\"(.+)\" yMin=\"(.+)\" xMax=\"(.+)\" yMax=\"(.+)\">");
  QList<QRectF> words;
  for (auto it = word.globalMatch(places); it.hasNext();) {
    const QRegularExpressionMatch match = it.next();
    const auto number = [&match](int i) { return match.captured(i).toDouble(); };
    words.append(QRectF(QPointF(number(1), number(2)), QPointF(number(3), number(4))));
  }
  return words;
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
    driver->answers = answers;
    driver->on_dialog = [this](QWidget& dialog) {
      if (auto* const print = qobject_cast<QPrintDialog*>(&dialog)) return AnswerPrintDialog(*print);
      if (!ends_at_question || !dialog.property("text").toString().contains("overwrite")) return;
      was_asked = true;
      driver->start_up->Frame().LeaveUnattended();
      dialog.hide();
    };
    driver->Press("cmdSearch");
  }

  void AnswerPrintDialog(QPrintDialog& dialog) {
    if (cancels) return dialog.reject();
    shown_at_dialog = driver->Report();
    if (before_print) before_print();
    dialog.findChild<QLineEdit*>("filename")->setText(QString::fromStdString(pdf));
    PressPrint(dialog, copies);
    if (dialog.isVisible()) dialog.reject();
  }

  ScratchFolder scratch;
  std::string pdf = scratch / "out.pdf";
  int copies = 1;
  bool cancels = false;
  bool ends_at_question = false;  // the program, when it asks whether to overwrite
  bool was_asked = false;
  std::deque<std::string> answers;     // while it searches
  std::function<void()> before_print;  // when the dialog is open
  std::string shown_at_dialog;         // in the results box
  std::optional<Driver> driver;
};

TEST_F(Printing, PutsTheEditedReportOnPaper) {
  Search("first \xE9 hit\nsecond \xC3\xA9 hit\n");
  QTest::keyClicks(driver->Find("UdTxt"), "Mine: ");
  copies = 2;
  driver->Press("cmdUdskriv");
  EXPECT_EQ(driver->said, std::vector<std::string>());
  const QString date = QLocale::system().toString(QDate::currentDate(), QLocale::ShortFormat);
  const QStringList lines = LinesOf(pdf);
  ASSERT_GT(lines.size(), 12);
  EXPECT_EQ(lines[1], date + " - Tessaril Report Page 1");
  EXPECT_TRUE(QRegularExpression("^\\x{2014}{20,}$").match(lines[2]).hasMatch());
  EXPECT_TRUE(lines[3].startsWith("Mine: In \"")) << lines[3].toStdString();
  const auto first = lines.indexOf(QString("...first ") + QChar(0xE9) + " hit");
  EXPECT_GT(first, 3);
  EXPECT_EQ(lines[first + 1], QString("second ") + QChar(0xE9) + " hit");
  const auto second = lines.indexOf("[2]");
  ASSERT_GT(second, first);
  EXPECT_EQ(lines.mid(second + 1), lines.mid(1, second - 1));  // page 1 again
  const QString info = Ask("pdfinfo", {QString::fromStdString(pdf)});
  EXPECT_TRUE(info.contains(QRegularExpression("Pages: +2\n")));
  EXPECT_TRUE(info.contains(QRegularExpression("Page size: +59[45][.0-9]* x 84[12][.0-9]* pts")))
      << info.toStdString();
}

// In points: 20 mm are 56.7, 15 mm 42.5, an A4 page is 595 by 842.
TEST_F(Printing, KeepsToTheMargins) {
  Search("hit");
  std::string text;
  for (int i = 0; i < 3000; ++i) text += std::to_string(i * 7919 % 10007) + (i % 100 == 99 ? "\r\n" : " ");
  driver->Find<ByteTextBox>("UdTxt")->SetBytes(text);
  driver->Press("cmdUdskriv");
  QRectF all;
  const QList<QRectF> words = WordsOf(pdf);
  for (const QRectF& word : words) all |= word;
  ASSERT_GT(words.size(), 500);
  EXPECT_NEAR(all.left(), 56.7, 0.1);
  EXPECT_NEAR(all.top(), 42.5, 1);
  EXPECT_LT(all.right(), 595 - 42.5 + 1);
  EXPECT_GT(all.right(), 595 - 42.5 - 10);
  EXPECT_LT(all.bottom(), 842 - 42.5 + 1);
  EXPECT_GT(all.bottom(), 842 - 42.5 - 2 * words[0].height());
  const double dash = words[0].height();  // the rule misses at most a dash, which is narrower than that
  const auto rule =
      std::find_if(words.begin(), words.end(), [](const QRectF& word) { return word.width() > 400; });
  ASSERT_NE(rule, words.end());
  EXPECT_GT(rule->right(), 595 - 42.5 - dash);
}

// The box shows it shortened, when it has been asked whether to print.
TEST_F(Printing, PrintsALongReportWhole) {
  std::string page;
  for (int i = 0; i < 600; ++i) page += "hit" + std::to_string(i) + "\n" + std::string(100, '-') + "\n";
  answers = {"yes"};
  Search(page);
  EXPECT_EQ(shown_at_dialog.find("*** Report Abbreviated ***"), std::string::npos);
  EXPECT_TRUE(driver->Report().ends_with("*** Report Abbreviated ***"));
  for (const char* const title : {" - Tessaril Search results Page 1", " - Tessaril Report Page 1"}) {
    const QStringList lines = LinesOf(pdf);
    EXPECT_TRUE(lines.value(1).endsWith(title)) << lines.value(1).toStdString();
    for (const char* const hit : {"hit0", "hit300", "hit599"}) {
      EXPECT_EQ(lines.filter(QRegularExpression(QString(hit) + "$")).size(), 1) << hit;
    }
    driver->answers = {"yes"};  // the file may be overwritten
    driver->Press("cmdUdskriv");
  }
}

// The wish of the system to end the program comes in the middle: from the print button, or in a search, where
// the printing fails as well.
TEST_F(Printing, SaysThatItPrintsAndEndsAfterwards) {
  for (const bool in_search : {false, true}) {
    std::filesystem::remove(pdf);
    std::string page = "hit";
    for (int i = 0; in_search && i < 400; ++i) page += std::string(150, '-') + "hit";
    QStringList notices;
    std::function<void()> look = [&] {
      const auto* const notice = driver->start_up->Frame().findChild<QLabel*>("lblPrinting");
      if (notice == nullptr || !notice->isVisible()) return;
      if (notices.isEmpty()) driver->start_up->Frame().LeaveUnattended();
      notices += notice->text();
      QTimer::singleShot(0, &driver->start_up->Frame(), look);
    };
    std::optional<FileSizeLimit> limit;
    before_print = [&] {
      if (in_search) limit.emplace(4000);
      QTimer::singleShot(0, &driver->start_up->Frame(), look);
    };
    answers = {"yes"};
    Search(page);
    if (!in_search) driver->Press("cmdUdskriv");
    EXPECT_EQ(notices.value(0), "Printing page 1 ...");
    EXPECT_EQ(driver->said.size(), in_search ? 1u : 0u) << driver->LastSaid();  // the question only
    EXPECT_EQ(std::filesystem::exists(pdf), !in_search);
    EXPECT_NE(driver->program.Read("TSL32.ini").find("LastDir = " + scratch / "site\r\n"), std::string::npos);
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
  {
    const FileSizeLimit limit(60000);
    driver->Press("cmdUdskriv");
  }
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

// The program is told to end while it asks that: after a search, or in one.
TEST_F(Printing, OverwritesNothingUnaskedWhenTheProgramEnds) {
  scratch.Write("out.pdf", "an old file");
  ends_at_question = true;
  for (const int hits : {1, 600}) {
    std::string page;
    for (int i = 0; i < hits; ++i) page += "hit" + std::string(100, '\n');
    answers = {"yes"};
    was_asked = false;
    Search(page);
    if (hits == 1) driver->Press("cmdUdskriv");
    EXPECT_TRUE(was_asked);
    EXPECT_EQ(scratch.Read("out.pdf"), "an old file");
  }
}

TEST_F(Printing, RefusesWhatIsNoFile) {
  std::filesystem::create_symlink("nowhere", scratch / "link");
  mkfifo((scratch / "pipe").c_str(), 0666);
  Search("hit");
  const struct {
    const char* name;
    const char* reason;
  } rows[] = {{"site", "Is a directory"},
              {"pipe", "Not a regular file"},
              {"link", "No such file or directory"},
              {"none/out.pdf", "No such file or directory"}};
  for (const auto& row : rows) {
    pdf = scratch / row.name;
    driver->Press("cmdUdskriv");
    EXPECT_EQ(driver->LastSaid(), pdf + ": " + row.reason);
  }
  EXPECT_EQ(scratch.Names(), (std::vector<std::string>{"link", "pipe", "site"}));
}

std::string FontSettings(const std::string& font) {
  return "[LastDir]\r\n   LastDir = /\r\n[Font]\r\n" + font +
         "[CGI]\r\n   CGI = x\r\n[BrowserFirst]\r\n   BrowserFirst = 0\r\n"
         "[UPPERcaseFilenames]\r\n   UPPERcaseFilenames = 0\r\n\r\n";
}

TEST_F(Printing, UsesTheFontThatWasChosen) {
  Search("hit", FontSettings("   Size = 0\r\n   Name = No Such Font\r\n"));
  const auto print_dialog = driver->on_dialog;
  bool accepts = false;
  driver->on_dialog = [&](QWidget& dialog) {
    auto* const font = qobject_cast<QFontDialog*>(&dialog);
    if (font == nullptr) return print_dialog(dialog);
    font->setCurrentFont(QFont("DejaVu Serif", 20));
    accepts ? font->accept() : font->reject();
  };
  auto* const menu0PrinterFont = driver->start_up->Frame().findChild<QAction*>("menu0PrinterFont");
  const std::string before = driver->program.Read("TSL32.ini");
  menu0PrinterFont->trigger();
  EXPECT_EQ(driver->program.Read("TSL32.ini"), before);
  driver->Press("cmdUdskriv");
  EXPECT_TRUE(Ask("pdffonts", {QString::fromStdString(pdf)}).contains("DejaVuSans "));
  const double size_10 = WordsOf(pdf)[0].height();
  accepts = true;
  menu0PrinterFont->trigger();
  EXPECT_NE(driver->program.Read("TSL32.ini").find("Size = 20\r\n   Name = DejaVu Serif\r\n"),
            std::string::npos);
  driver->answers = {"yes"};
  driver->Press("cmdUdskriv");
  EXPECT_TRUE(Ask("pdffonts", {QString::fromStdString(pdf)}).contains("DejaVuSerif "));
  EXPECT_NEAR(WordsOf(pdf)[0].height() / size_10, 2, 0.05);
}

TEST_F(Printing, ProposesTheFontInUse) {
  const struct {
    const char* kept;
    const char* proposed;
    const char* accepted;
  } rows[] = {{"   Size = 14\r\n   Name = DejaVu Serif\r\n", "DejaVu Serif 14", "   Size = 14\r\n"},
              {"   Size = 8.25\r\n   Name = DejaVu Sans\r\n", "DejaVu Sans 8", "   Size = 8.25\r\n"},
              {"   Size = -4\r\n   Name = DejaVu Sans Mono\r\n", "DejaVu Sans Mono 10", "   Size = 10\r\n"}};
  for (const auto& row : rows) {
    Search("hit", FontSettings(row.kept));
    driver->on_dialog = [&](QWidget& dialog) {
      auto* const font = qobject_cast<QFontDialog*>(&dialog);
      ASSERT_NE(font, nullptr);
      const QFont shown = font->currentFont();
      EXPECT_EQ(shown.family() + " " + QString::number(shown.pointSizeF()), row.proposed);
      EXPECT_FALSE(shown.italic());
      font->accept();
    };
    driver->start_up->Frame().findChild<QAction*>("menu0PrinterFont")->trigger();
    EXPECT_NE(driver->program.Read("TSL32.ini").find(row.accepted), std::string::npos) << row.accepted;
  }
}

}  // namespace
}  // namespace tessaril
