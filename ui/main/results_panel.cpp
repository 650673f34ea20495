#include "ui/main/results_panel.h"

#include "ui/shared/colours.h"
#include "ui/shared/controls.h"
#include "ui/shared/fonts.h"

namespace tessaril {

ResultsPanel::ResultsPanel(QWidget* parent) : QWidget(parent) {
  Put(*this, "Picture2", {0, 0, 7524, 5232});
  MakeLabel(this, "Label2", {72, 144, 1020, 264}, "Results:");
  QLabel* const lblfound = MakeLabel(this, "lblfound", {1188, 144, 1404, 264}, "&Files searched:");
  lblCount = MakeLabel(this, "lblCount", {2592, 144, 1008, 264}, "0");
  UdTxt = new ByteTextBox(this);
  Put(*UdTxt, "UdTxt", {72, 396, 6816, 4440});
  UdTxt->setLineWrapMode(QPlainTextEdit::WidgetWidth);
  UdTxt->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  UdTxt->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  UdTxt->setAccessibleName("Results");
  UdTxt->setFont(SansSerifFont());
  lblfound->setBuddy(UdTxt);
  cmdSaveAs = MakeButton(this, "cmdSaveAs", {2000, 72, 984, 300}, "Save&As", "Save As (suggest .txt) file");
  MakeEditable();
}

void ResultsPanel::MakeEditable() {
  UdTxt->setReadOnly(false);
  SetBackground(*UdTxt, QColor(192, 255, 255));
}

void ResultsPanel::MakeReadOnly() {
  if (UdTxt->isReadOnly()) return;  // is asked for after each page of a long report, and colours cost
  UdTxt->setReadOnly(true);
  SetBackground(*UdTxt, QColor(255, 255, 192));
}

void ResultsPanel::FitInto(QSize frame) {
  setGeometry(0, 0, frame.width() - Pixels(180), frame.height() - Pixels(750));
  UdTxt->setGeometry(Pixels(72), Pixels(432), frame.width() - Pixels(360), frame.height() - Pixels(1230));
}

void ResultsPanel::UseMonospacedFont(bool monospaced) {
  UdTxt->setFont(FontOfText(monospaced, UdTxt->font()));
}

}  // namespace tessaril
