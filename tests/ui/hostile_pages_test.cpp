#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QTextEdit>
#include <QtTest>
#include <filesystem>

#include "tests/ui/support/driver.h"
#include "tests/ui/support/recorded_browser.h"
#include "ui/main/file_list.h"
#include "ui/shared/byte_text_box.h"
#include "ui/shared/message_boxes.h"

// Pages and names of files that would be markup, or would change what is seen around them.

namespace tessaril {
namespace {

constexpr char kMarkup[] = "<b>&amp;<img src=x>";
constexpr char kRightToLeft[] = "\xE2\x80\xAE";
constexpr char kIsolate[] = "\xE2\x81\xA6";

// Characters that are not seen themselves, but act on others.
bool Acts(QChar c) {
  const char16_t code = c.unicode();
  return (code < 0x20 && c != '\t') || (0x7F <= code && code < 0xA0) || (0x2028 <= code && code <= 0x202E) ||
         (0x2066 <= code && code <= 0x2069);
}

void ExpectHarmless(const QString& text, bool has_lines, const char* where) {
  for (const QChar c : text) {
    if (has_lines && c == '\n') continue;
    EXPECT_FALSE(Acts(c)) << where << " with " << int{c.unicode()} << ": " << text.toStdString();
  }
}

void ExpectPlain(const QLabel& label) {
  const bool is_plain = label.textFormat() == Qt::PlainText ||
                        (label.textFormat() == Qt::AutoText && !Qt::mightBeRichText(label.text()));
  EXPECT_TRUE(is_plain) << label.text().toStdString();
}

// What is shown in a window now.
void ExpectHarmless(QWidget& window) {
  SCOPED_TRACE(window.objectName().toStdString());
  ExpectHarmless(window.windowTitle(), false, "a title");
  for (QWidget* const control : window.findChildren<QWidget*>()) {
    const QString tip = control->toolTip();
    ExpectHarmless(tip, true, "a tooltip");
    EXPECT_FALSE(Qt::mightBeRichText(tip) && tip.contains("<b>")) << tip.toStdString();
    ExpectHarmless(control->accessibleName(), true, "an accessible name");
    if (!control->isVisible()) continue;
    if (const auto* const label = qobject_cast<QLabel*>(control)) {
      ExpectPlain(*label);
      ExpectHarmless(label->text(), true, "a label");
    } else if (const auto* const button = qobject_cast<QAbstractButton*>(control)) {
      ExpectHarmless(button->text(), true, "a button");
    } else if (const auto* const box = qobject_cast<QComboBox*>(control)) {
      for (int i = 0; i < box->count(); ++i) ExpectHarmless(box->itemText(i), false, "an entry");
      ExpectHarmless(box->currentText(), false, "a choice");
    } else if (const auto* const list = qobject_cast<QListWidget*>(control)) {
      for (int i = 0; i < list->count(); ++i) ExpectHarmless(list->item(i)->text(), false, "an item");
    } else if (const auto* const text = qobject_cast<ByteTextBox*>(control)) {
      ExpectHarmless(text->toPlainText(), true, "a text box");
    }
    EXPECT_EQ(qobject_cast<QTextEdit*>(control), nullptr);  // would take markup
  }
}

class HostilePages : public testing::Test {
 protected:
  HostilePages() {
    const std::string evil = std::string(kMarkup) + "\x1B[31m\x7F" + kRightToLeft + "gpj" + kIsolate;
    for (const std::string& name :
         {evil + ".htm", std::string("a\nb.htm"), std::string("UPPER") + kMarkup + ".htm",
          evil + "/inner.htm", std::string("x\r") + kRightToLeft + "/inner.htm"}) {
      std::string path = name;
      if (!path.ends_with("/inner.htm")) std::replace(path.begin(), path.end(), '/', '_');
      site.Write(path, PageOf(evil));
    }
    driver.emplace(site.path(), "", browser.Maker());
    driver->on_dialog = [this](QWidget& dialog) {
      ExpectHarmless(dialog);
      if (++looks % 10 == 0) ExpectHarmless(driver->start_up->Frame());
      if (dialog.objectName() == "frmSite") driver->answers = {"ok"};
    };
  }

  static std::string PageOf(const std::string& evil) {
    return "<TITLE>" + evil + "</TITLE><BODY BGCOLOR=\"#123456\"><A HREF=\"" + evil + "\">" + evil +
           "</A> <A HREF=\"UPPER" + kMarkup +
           ".htm\">x</A> <A HREF='http://x/\"><script>document.title=1</script>" + "\x1B$B'>" + evil +
           "</A> & \xE2\x80\xAE needle " + evil + " &#8238; &notaname;" + evil;
  }

  ScratchFolder site;
  RecordedBrowser browser;
  std::optional<Driver> driver;
  int looks = 0;
};

TEST_F(HostilePages, AreShownAsTheyStandEverywhere) {
  FrameWindow& frame = driver->start_up->Frame();
  for (const bool with_rules : {false, true}) {
    for (const int function : {0, 1, 3, 4, 6, 2}) {
      SCOPED_TRACE(function);
      driver->Choose(function);
      if (function == 3 || function == 4) driver->Type("SearchTekst", "needle");
      if (function == 4) driver->Type("ReplaceText", "pin");
      ExpectHarmless(frame);
      driver->Press("cmdSearch");
      ExpectHarmless(frame);
      if (function == 2) {
        browser.Complete(QString::fromUtf8(kMarkup) + QChar(0x202E) + "\n",
                         QString::fromStdString("file://" + site.path()));
        browser.events->StatusTextChanged(QString(QChar(0x202E)) + "http://x");
        ExpectHarmless(frame);
      }
      driver->Press(function == 2 ? "Reset" : "cmdSearch");
    }
    if (!with_rules) driver->Find<QAction>("menuSiteRules")->trigger();
  }
  EXPECT_GT(looks, 50);
}

TEST_F(HostilePages, AreHarmlessInEditorAndFolders) {
  FrameWindow& frame = driver->start_up->Frame();
  auto* const files = driver->Find<FileList>("filList");
  for (const char* const item : {"menuStartInEditor", "menuStartInBrowser"}) {
    driver->Find<QAction>(item)->trigger();
    for (int row = 0; row < files->count(); ++row) {
      const std::string name = site / files->item(row)->data(Qt::UserRole).toByteArray().toStdString();
      const bool twice = !driver->Find<QAbstractButton>("Option1_5")->property("checked").toBool();
      driver->ClickItem("filList", files->item(row)->text().trimmed(), twice);
      ExpectHarmless(frame);
      if (driver->IsShown("EditTekst")) {
        EXPECT_EQ(driver->Find<ByteTextBox>("EditTekst")->Bytes(),
                  site.Read(std::filesystem::path(name).filename()));
        driver->Press("Command2");
      }
      EXPECT_EQ(
          browser.Asked(),
          std::vector<std::string>{
              QString("file://" + QByteArray::fromStdString(name).toPercentEncoding("/")).toStdString()});
      ExpectHarmless(frame);
      driver->Press("Command1");  // the page that the address stands for
      EXPECT_EQ(driver->Find("Filname")->isVisible(), true);
      ExpectHarmless(frame);
      driver->Press("MainScreen");
    }
  }
  auto* const folders = driver->Find<QListWidget>("dirList");
  driver->ClickItem("dirList", folders->item(folders->count() - 1)->text().trimmed());
  EXPECT_EQ(files->count(), 1);
  ExpectHarmless(frame);
  std::filesystem::remove_all(site.path());
  driver->ClickItem("dirList", folders->item(folders->count() - 2)->text().trimmed());
  EXPECT_EQ(looks, 0);
}

TEST_F(HostilePages, AreShownAsTheyStandBeforeAnUndo) {
  driver->Choose(4);
  driver->Type("SearchTekst", "needle");
  driver->Type("ReplaceText", QString(kMarkup) + QChar(0x202E));
  driver->answers = {"ok", "replace", "replace", "replace", "replace", "replace"};
  driver->Press("cmdSearch");
  driver->Press("cmdSearch");
  looks = 0;
  driver->answers = {"ok", "ok"};
  driver->Find<QAction>("menuUndo")->trigger();
  EXPECT_EQ(looks, 2);
  EXPECT_EQ(driver->said.back(), "5 files restored.");
}

// The page of external links says no more than where the links lead.
TEST_F(HostilePages, BecomeNoMarkupInThePageOfLinks) {
  driver->Choose(2);
  driver->Press("cmdSearch");
  const std::string page = driver->program.Read("~TSLtemp.htm");
  EXPECT_NE(page.find("&lt;script&gt;"), std::string::npos);
  for (const char* const markup : {"<b>", "<img", "<script", "<TITLE"}) {
    EXPECT_EQ(page.find(markup), std::string::npos) << markup;
  }
}

TEST_F(HostilePages, MakeNoBoxLargerThanTheScreen) {
  driver->on_dialog = [this](QWidget& dialog) {
    ++looks;
    const QSize room = dialog.screen()->availableSize();
    EXPECT_LE(dialog.height(), room.height());
    EXPECT_LE(dialog.width(), room.width());
    const auto& box = static_cast<QMessageBox&>(dialog);
    EXPECT_TRUE(box.text().endsWith("..."));
    EXPECT_GT(box.detailedText().size(), box.text().size());
  };
  std::string lines = "first";
  for (int i = 0; i < 500; ++i) lines += "\r\nline " + std::to_string(i);
  for (const std::string& text :
       {lines, std::string(100000, 'x'), std::string(5000, ' ') + std::string(5000, 'x')}) {
    Tell(&driver->start_up->Frame(), text);
  }
  EXPECT_EQ(looks, 3);
}

}  // namespace
}  // namespace tessaril
