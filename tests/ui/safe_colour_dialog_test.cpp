#include "ui/dialogs/safe_colour_dialog.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFontMetrics>
#include <QTest>
#include <QTimer>
#include <functional>

namespace tessaril {
namespace {

class SafeColourDialogTest : public testing::Test {
 protected:
  template <class Widget = QWidget>
  Widget* Find(const char* name) {
    return dialog.findChild<Widget*>(name);
  }

  QString Text(const char* label) { return Find<QLabel>(label)->text(); }

  std::optional<QString> Choose(const std::function<void()>& act) {
    QTimer::singleShot(0, &dialog, [&] {
      act();
      EXPECT_TRUE(dialog.isHidden());
      if (dialog.isVisible()) dialog.reject();
    });
    return dialog.Choose({"12", "34", "5"});
  }

  void SetSliders(int red, int green, int blue) {
    Find<QSlider>("sldR")->setValue(red);
    Find<QSlider>("sldG")->setValue(green);
    Find<QSlider>("sldB")->setValue(blue);
  }

  void ExpectSliders(int red, int green, int blue) {
    EXPECT_EQ(Find<QSlider>("sldR")->value(), red);
    EXPECT_EQ(Find<QSlider>("sldG")->value(), green);
    EXPECT_EQ(Find<QSlider>("sldB")->value(), blue);
  }

  void PressTick() { QTest::keyClick(Find("ChkSafeCol"), Qt::Key_Space); }

  SafeColourDialog dialog;
};

TEST_F(SafeColourDialogTest, GivesTheDigitsBesideTheFieldThatIsChosen) {
  const struct {
    const char* field;
    const char* label;
    const char* digits;
  } rows[] = {{"LblOther", "lblOthCol", "000000"},
              {"lblOldCol", "lblColourOld", "12345"},
              {"lblSafeCol_0", "lblColourHex_0", "336633"},
              {"lblSafeCol_3", "lblColourHex_3", "003333"},
              {"lblSafeCol_7", "lblColourHex_7", "003300"}};
  for (const auto& row : rows) {
    const std::function<void()> ways[] = {
        [&] { QTest::mouseClick(Find(row.field), Qt::LeftButton); },
        [&] { QTest::keyClick(Find(row.field), Qt::Key_Space); },
        [&] { QTest::keyClick(Find(row.field), Qt::Key_Return); },
    };
    for (const auto& way : ways) {
      dialog.setProperty("Tag", "");
      EXPECT_EQ(Choose(way), QString(row.digits)) << row.field;
      EXPECT_EQ(Text(row.label), row.digits);
      EXPECT_EQ(dialog.property("Tag"), row.digits);
    }
  }
}

TEST_F(SafeColourDialogTest, ReachesEveryControlByTab) {
  Choose([&] {
    QStringList names;
    for (int i = 0; i < 14; ++i) {
      names += dialog.focusWidget()->objectName();
      QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(names.join(" "),
              "lblSafeCol_0 lblSafeCol_1 lblSafeCol_2 lblSafeCol_3 lblSafeCol_4 lblSafeCol_5 lblSafeCol_6 "
              "lblSafeCol_7 LblOther sldR sldG sldB ChkSafeCol lblOldCol");
    dialog.reject();
  });
}

TEST_F(SafeColourDialogTest, KeepsAllWhenClosedWithoutAChoice) {
  Choose([&] { QTest::mouseClick(Find("lblSafeCol_0"), Qt::LeftButton); });
  EXPECT_EQ(Choose([&] {
              SetSliders(1, 0, 5);
              QTest::keyClick(dialog.focusWidget(), Qt::Key_Escape);
            }),
            std::nullopt);
  EXPECT_EQ(Choose([&] { dialog.close(); }), std::nullopt);
  EXPECT_EQ(dialog.Tag(), "336633");
  ExpectSliders(1, 0, 5);
  EXPECT_EQ(Text("lblOthCol"), "3300FF");
}

TEST_F(SafeColourDialogTest, CarriesTheSlidersFromModeToMode) {
  SetSliders(1, 3, 5);
  PressTick();
  ExpectSliders(51, 153, 255);
  SetSliders(25, 26, 255);
  PressTick();
  ExpectSliders(0, 1, 5);
  EXPECT_EQ(Find<QSlider>("sldB")->maximum(), 5);
}

TEST_F(SafeColourDialogTest, MixesTheOtherColourWhenASliderMovesButNotByTheMode) {
  EXPECT_EQ(Text("lblR"), "R: 0% = h00");
  PressTick();
  SetSliders(25, 26, 255);
  EXPECT_EQ(Text("lblOthCol"), "191AFF");
  EXPECT_EQ(Text("lblR"), "R: 10% h19");
  PressTick();
  EXPECT_EQ(Text("lblOthCol"), "191AFF");
  QTest::keyClick(Find("sldG"), Qt::Key_Right);
  EXPECT_EQ(Text("lblOthCol"), "0066FF");
  EXPECT_EQ(Text("lblB"), "B: 100% hFF");
  const QColor mixed = Find("LblOther")->grab().toImage().pixelColor(8, 8);
  EXPECT_EQ(mixed.name(), "#0066ff");
}

TEST_F(SafeColourDialogTest, CountsADragThatLeavesTheSliderWhereItIs) {
  PressTick();
  SetSliders(25, 0, 0);
  PressTick();
  ASSERT_EQ(Text("lblOthCol"), "190000");
  QSlider* slider = Find<QSlider>("sldR");
  const QPointF place(1, 1);
  QMouseEvent passed(QEvent::MouseMove, place, place, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
  QApplication::sendEvent(slider, &passed);
  EXPECT_EQ(Text("lblOthCol"), "190000");
  QMouseEvent dragged(QEvent::MouseMove, place, place, Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(slider, &dragged);
  EXPECT_EQ(Text("lblOthCol"), "000000");
}

TEST(SafeColourDialog, ClipsNoCaptionInAnyFont) {
  const QFont usual = QApplication::font();
  for (const int points : {7, 9, 14, 22}) {
    QFont font = usual;
    font.setPointSize(points);
    QApplication::setFont(font);
    SafeColourDialog dialog;
    dialog.findChild<QSlider*>("sldG")->setValue(points == 9 ? 0 : 5);
    for (const QLabel* label : dialog.findChildren<QLabel*>()) {
      const QRect place = label->contentsRect();
      const int flags = label->wordWrap() ? Qt::TextWordWrap : 0;
      const QRect text = label->fontMetrics().boundingRect(place, flags, label->text());
      EXPECT_LE(text.width(), place.width()) << points << qPrintable(label->objectName());
      EXPECT_LE(text.height(), place.height()) << points << qPrintable(label->objectName());
      EXPECT_TRUE(dialog.rect().contains(label->geometry())) << qPrintable(label->objectName());
    }
  }
  QApplication::setFont(usual);
}

}  // namespace
}  // namespace tessaril
