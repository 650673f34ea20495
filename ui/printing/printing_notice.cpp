#include "ui/printing/printing_notice.h"

#include <QApplication>

#include "ui/shared/place.h"

namespace tessaril {
namespace {

constexpr QSize kSize{4500, 900};  // twips
constexpr qint64 kPause = 100;     // milliseconds from one repaint to the next

}  // namespace

PrintingNotice::PrintingNotice(QWidget& window) : lblPrinting_(&window) {
  lblPrinting_.setObjectName("lblPrinting");
  lblPrinting_.setAlignment(Qt::AlignCenter);
  lblPrinting_.setAutoFillBackground(true);
  lblPrinting_.setFrameStyle(QFrame::Box | QFrame::Raised);
  QRect place(0, 0, Pixels(kSize.width()), Pixels(kSize.height()));
  place.moveCenter(window.rect().center());
  lblPrinting_.setGeometry(place);
  lblPrinting_.show();
  QApplication::setOverrideCursor(Qt::WaitCursor);
  ShowPage(1);
}

PrintingNotice::~PrintingNotice() {
  QApplication::restoreOverrideCursor();
}

void PrintingNotice::ShowPage(int page) {
  if (since_repaint_.isValid() && since_repaint_.elapsed() < kPause) return;
  lblPrinting_.setText("Printing page " + QString::number(page) + " ...");
  // Keys and the mouse wait. A wish of the system to end the program is taken up at once, so that the
  // settings are saved, and comes true when the printing is done.
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
  since_repaint_.start();
}

}  // namespace tessaril
