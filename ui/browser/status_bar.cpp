#include "ui/browser/status_bar.h"

#include "ui/shared/place.h"

namespace tessaril {
namespace {

constexpr const char* kToolTips[] = {"MS Internet Explorer progress indicator", "Status text", "Page title"};
constexpr int kProgressWidth = 1300;  // twips; a third of the rest is the page title's

}  // namespace

StatusBar::StatusBar(QWidget* parent) : QWidget(parent) {
  setObjectName("StatusBar1");
  for (std::size_t i = 0; i < panels_.size(); ++i) {
    panels_[i] = new CutLabel(Qt::ElideRight, this, kToolTips[i]);
    panels_[i]->setObjectName("StatusBar1_" + QString::number(i + 1));
    panels_[i]->setFrameStyle(QFrame::Panel | QFrame::Sunken);
  }
}

void StatusBar::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  const int progress = Pixels(kProgressWidth);
  const int title = (width() - progress) / 3;
  const int status = width() - progress - title;
  panels_[kProgress]->setGeometry(0, 0, progress, height());
  panels_[kStatusText]->setGeometry(progress, 0, status, height());
  panels_[kPageTitle]->setGeometry(progress + status, 0, title, height());
}

}  // namespace tessaril
