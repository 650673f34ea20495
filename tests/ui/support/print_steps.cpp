#include "tests/ui/support/print_steps.h"

#include <gtest/gtest.h>

#include <QProcess>
#include <QPushButton>
#include <QSpinBox>

namespace tessaril {

void PressPrint(QPrintDialog& dialog, int copies) {
  for (const char* const control : {"gbPrintRange", "collate", "reverse"}) {
    EXPECT_TRUE(dialog.findChild<QWidget*>(control)->isHidden()) << control;
  }
  dialog.findChild<QSpinBox*>("copies")->setValue(copies);
  for (QPushButton* const button : dialog.findChildren<QPushButton*>()) {
    if (button->text() == "&Print") button->click();
  }
}

QString Ask(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.start(program, arguments);
  EXPECT_TRUE(process.waitForFinished()) << program.toStdString();
  EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
  return QString::fromUtf8(process.readAllStandardOutput());
}

}  // namespace tessaril
