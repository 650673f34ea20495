#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QStyleOptionButton>
#include <QStyleOptionComboBox>
#include <QToolButton>
#include <QtTest>
#include <filesystem>

#include "tests/ui/support/driver.h"
#include "tests/ui/support/recorded_browser.h"
#include "ui/shared/place.h"

// What can be seen of the windows in all their states, with small and large letters.

namespace tessaril {
namespace {

template <class... Kinds>
bool IsAny(const QObject* object) {
  return (... || (qobject_cast<const Kinds*>(object) != nullptr));
}

bool IsToBeNamed(const QWidget* control) {
  return IsAny<QComboBox, QLineEdit, QListWidget, QPlainTextEdit, QSlider>(control);
}

bool IsControl(const QWidget* control) {
  return IsToBeNamed(control) || IsAny<QLabel, QAbstractButton>(control);
}

// The controls that are shown in a window, those of which others are made excepted.
std::vector<QWidget*> ShownControls(const QWidget& window) {
  std::vector<QWidget*> shown;
  for (QWidget* const control : window.findChildren<QWidget*>()) {
    if (!IsControl(control) || !control->isVisible() || control->window() != &window) continue;
    if (!IsControl(control->parentWidget())) shown.push_back(control);
  }
  return shown;
}

QString CaptionOf(const QWidget& control) {
  if (IsAny<QToolButton>(&control)) return {};  // these show pictures
  const auto* const list = qobject_cast<const QComboBox*>(&control);
  return list != nullptr ? list->currentText() : control.property("text").toString();
}

// Where a control shows its caption.
QRect CaptionPlace(const QWidget& control) {
  if (const auto* const label = qobject_cast<const QLabel*>(&control)) return label->contentsRect();
  if (IsAny<QComboBox>(&control)) {
    QStyleOptionComboBox option;
    option.initFrom(&control);
    option.editable = qobject_cast<const QComboBox*>(&control)->isEditable();
    return control.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField);
  }
  QStyleOptionButton option;
  option.initFrom(&control);
  return control.style()->subElementRect(IsAny<QCheckBox>(&control)      ? QStyle::SE_CheckBoxContents
                                         : IsAny<QRadioButton>(&control) ? QStyle::SE_RadioButtonContents
                                                                         : QStyle::SE_PushButtonContents,
                                         &option, &control);
}

// A place may have room for several lines. Of the last line only what is drawn counts.
void ExpectCaptionFits(const QWidget& control) {
  const QString caption = CaptionOf(control);
  if (caption.isEmpty() || !IsAny<QLabel, QAbstractButton, QComboBox>(&control)) return;
  const QFontMetrics metrics = control.fontMetrics();
  const QRect place = CaptionPlace(control);
  const QRect needed =
      metrics.boundingRect({0, 0, place.width(), 0}, Qt::TextWordWrap | Qt::TextShowMnemonic, caption);
  const int below = metrics.descent() - std::max(0, metrics.tightBoundingRect(caption).bottom());
  EXPECT_LE(needed.width(), place.width()) << caption.toStdString();
  EXPECT_LE(needed.height() - below, place.height()) << caption.toStdString();
}

// What a control covers of its window; of a label that is its caption.
QRect Covered(const QWidget& control) {
  QRect covered = control.rect();
  if (const auto* const label = qobject_cast<const QLabel*>(&control)) {
    const int flags = static_cast<int>(label->alignment()) | (label->wordWrap() ? Qt::TextWordWrap : 0);
    covered = label->fontMetrics().boundingRect(label->contentsRect(), flags, label->text());
  }
  return covered.translated(control.mapTo(control.window(), QPoint()));
}

// By their design option buttons overlap, and other buttons overlap by their borders.
bool MayOverlap(const QWidget* one, const QWidget* other, QSize overlap) {
  const int borders = Pixels(12) + 1;
  return (IsAny<QRadioButton>(one) && IsAny<QRadioButton>(other)) ||
         (IsAny<QAbstractButton>(one) && IsAny<QAbstractButton>(other) &&
          std::min(overlap.width(), overlap.height()) <= borders);
}

void ExpectNamed(const QWidget& window, QWidget* control) {
  if (IsAny<QLabel>(control)) return;
  EXPECT_NE(QAccessible::queryAccessibleInterface(control)->text(QAccessible::Name), "");
  if (!IsToBeNamed(control) || !control->accessibleName().isEmpty()) return;
  const QList<QLabel*> labels = window.findChildren<QLabel*>();
  EXPECT_TRUE(std::any_of(labels.begin(), labels.end(),
                          [control](const QLabel* label) { return label->buddy() == control; }));
}

void ExpectGoodLooks(const QWidget& window) {
  SCOPED_TRACE(window.objectName().toStdString());
  const std::vector<QWidget*> controls = ShownControls(window);
  EXPECT_GE(controls.size(), 2u);
  for (auto one = controls.begin(); one != controls.end(); ++one) {
    SCOPED_TRACE((*one)->objectName().toStdString());
    ExpectCaptionFits(**one);
    ExpectNamed(window, *one);
    EXPECT_TRUE(window.rect().contains(Covered(**one)));
    for (auto other = controls.begin(); other != one; ++other) {
      const QRect overlap = Covered(**one) & Covered(**other);
      EXPECT_TRUE(overlap.isEmpty() || MayOverlap(*one, *other, overlap.size()))
          << (*other)->objectName().toStdString();
    }
  }
}

// A user at a copy of the sample site, which runs may change.
struct Visitor {
  explicit Visitor(bool with_browser = false) {
    std::filesystem::copy(EXAMPLE_SITE, scratch / "site", std::filesystem::copy_options::recursive);
    driver =
        std::make_unique<Driver>(scratch / "site", "", with_browser ? browser.Maker() : MakeBrowserControl());
  }
  ScratchFolder scratch;
  RecordedBrowser browser;
  std::unique_ptr<Driver> driver;
};

// Runs a function; `look` gets each window that asks, the frame behind it, and the frame when it has ended.
void LookDuringRun(Driver& driver, int function, const std::function<void(QWidget&)>& look) {
  driver.Choose(function);
  QWidget& frame = driver.start_up->Frame();
  driver.on_dialog = [&](QWidget& dialog) {
    look(dialog);
    look(frame);
    if (dialog.objectName() == "frmReplace" && driver.IsShown("btnPalette")) {
      QTimer::singleShot(0, &dialog, [&look] {
        look(*QApplication::activeModalWidget());
        QApplication::activeModalWidget()->close();
      });
      QTest::mouseClick(driver.Find("btnPalette"), Qt::LeftButton);
    }
    driver.answers.assign(1, dialog.objectName() != "frmReplace" ? "ok" : function == 0 ? "keep" : "stop");
  };
  driver.Press("cmdSearch");
  driver.on_dialog = nullptr;
  look(frame);
  if (driver.Caption("cmdSearch") == "To &Main") driver.Press("cmdSearch");
}

// The windows in their states, one after another.
void LookAround(const std::function<void(QWidget&)>& look) {
  Visitor visitor;
  Driver& driver = *visitor.driver;
  for (const int function : {0, 1, 2, 3, 4, 6, 5}) {
    SCOPED_TRACE(function);
    driver.on_dialog = look;
    driver.Choose(function);
    look(driver.start_up->Frame());
  }
  for (const int function : {0, 1, 3, 4, 6, 2}) {
    SCOPED_TRACE(function);
    driver.Choose(function);
    if (function == 3) driver.Type("SearchTekst", "opening hours");
    if (function == 4) driver.Type("ReplaceText", "times of day");
    LookDuringRun(driver, function, look);
  }
  look(driver.start_up->Frame());
  driver.on_dialog = look;
  driver.answers = {"ok"};
  driver.Find<QAction>("menuSiteRules")->trigger();
  driver.Choose(0);
  look(driver.start_up->Frame());
}

// The same in the editor, with its find dialog.
void LookIntoEditor(const std::function<void(QWidget&)>& look) {
  Visitor visitor;
  Driver& driver = *visitor.driver;
  driver.start_up->Frame().findChild<QAction*>("menuStartInEditor")->trigger();
  driver.Choose(3);
  driver.Press("cmdSearch");
  driver.Press("cmdSearch");
  driver.ClickItem("filList", "index.htm", true);
  driver.on_dialog = [&](QWidget& dialog) {
    look(dialog);
    if (dialog.objectName() == "frmFind") dialog.findChild<QLineEdit*>("Text1")->setText("Museum");
  };
  driver.start_up->Frame().findChild<QAction*>("menuEditFind")->trigger();
  look(driver.start_up->Frame());
}

// The same in the browser window.
void LookIntoBrowser(const std::function<void(QWidget&)>& look) {
  Visitor visitor(true);
  visitor.driver->Choose(2);
  visitor.driver->Press("cmdSearch");
  visitor.browser.Complete(QString(200, 'w'), "file:///a.htm");
  visitor.browser.events->StatusTextChanged(QString(200, 'w'));
  visitor.browser.events->ProgressChanged(-1, 100);
  look(visitor.driver->start_up->Frame());
  visitor.driver->start_up->Frame().findChild<QAction*>("menu1About")->trigger();
  look(*visitor.driver->Find("frmAbout"));
}

TEST(Looks, AreGoodWithSmallAndLargeLetters) {
  const QFont usual = QApplication::font();
  for (const int size : {0, 14}) {
    SCOPED_TRACE(size);
    QFont font = usual;
    if (size > 0) font.setPointSize(size);
    QApplication::setFont(font);
    LookAround(ExpectGoodLooks);
    LookIntoBrowser(ExpectGoodLooks);
    LookIntoEditor(ExpectGoodLooks);
  }
  QApplication::setFont(usual);
}

// The controls that Tab reaches, from one until that has the focus again.
std::vector<std::string> TabWalk(QWidget* first) {
  std::vector<std::string> names;
  first->window()->activateWindow();
  first->setFocus();
  if (!QTest::qWaitFor([first] { return QApplication::focusWidget() == first; })) return names;
  do {
    names.push_back(QApplication::focusWidget()->objectName().toStdString());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  } while (QApplication::focusWidget() != first && names.size() < 50);
  return names;
}

TEST(Looks, TabWalksInReadingOrder) {
  using Names = std::vector<std::string>;
  Visitor visitor;
  Driver& driver = *visitor.driver;
  const struct {
    int function;
    Names names;
  } rows[] = {
      {0, {"ShowEach", "CGI", "CGIname", "UCfilename", "MarkedOnly", "cmdSearch", "cmdExit"}},
      {4,
       {"ShowEach", "ULcase", "SearchTekst", "ReplaceText", "chkTags", "MarkedOnly", "cmdSearch", "cmdExit"}},
      {6, {"MarkedOnly", "cmdSearch", "cmdExit"}},
  };
  for (const auto& row : rows) {
    driver.Choose(row.function);
    Names names = {"drvList", "dirList", "cboSearchSpec", "filList",
                   "Option1_" + std::to_string(row.function)};
    names.insert(names.end(), row.names.begin(), row.names.end());
    EXPECT_EQ(TabWalk(driver.Find("drvList")), names);
  }
  LookDuringRun(driver, 6, [&](QWidget& window) {
    if (window.objectName() != "frmReplace") return;
    EXPECT_EQ(TabWalk(window.findChild<QWidget*>("SearchText")),
              (Names{"SearchText", "ReplaceText", "btnKeep", "btnReplace", "btnPalette", "btnStop"}));
  });
  Visitor reader(true);
  reader.driver->Choose(2);
  reader.driver->Press("cmdSearch");
  EXPECT_EQ(TabWalk(reader.driver->Find("Reset")),
            (Names{"Reset", "Command1", "PrintWB", "cboAddress", "brwWebBrowser"}));
  LookIntoEditor([](QWidget& window) {
    if (window.objectName() != "frmFind") return;
    EXPECT_EQ(TabWalk(window.findChild<QWidget*>("Text1")),
              (Names{"Text1", "chkTags", "CaseDep", "Command1", "Command2"}));
  });
  driver.on_dialog = [](QWidget& window) {
    EXPECT_EQ(
        TabWalk(window.findChild<QWidget*>("optToday")),
        (Names{"optToday", "txtIndex", "txtIgnoreFiles", "txtIgnoreLinks", "txtStart", "txtAllowMissing",
               "txtAllowUnlinked", "chkLowercase", "chkEntities", "cmdOk", "cmdCancel"}));
  };
  driver.Find<QAction>("menuSiteRules")->trigger();
  driver.on_dialog = nullptr;
  driver.Press("cmdSeeResults");
  EXPECT_EQ(TabWalk(driver.Find("cmdSaveAs")), (Names{"cmdSaveAs", "cmdSearch", "cmdExit", "UdTxt"}));
}

}  // namespace
}  // namespace tessaril
