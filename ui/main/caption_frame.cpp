#include "ui/main/caption_frame.h"

#include <QStyleOption>
#include <QStylePainter>

namespace tessaril {

void CaptionFrame::paintEvent(QPaintEvent*) {
  constexpr int kIndent = 7;  // pixels
  constexpr int kGap = 2;
  constexpr float kStrength = 0.3F;  // of the line, as part of the caption's colour, which no theme hides
  const int height = fontMetrics().height();
  const int flags = Qt::AlignLeft | Qt::AlignTop | Qt::TextShowMnemonic;
  const QRect caption = fontMetrics().boundingRect({kIndent + kGap, 0, width(), height}, flags, title());
  QStylePainter painter(this);
  QColor line = palette().color(QPalette::WindowText);
  line.setAlphaF(kStrength);
  painter.setPen(line);
  painter.setClipRegion(QRegion(rect()) - caption.adjusted(-kGap, 0, kGap, 0));
  painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, height / 2 + 0.5, -0.5, -0.5), kGap, kGap);
  painter.setClipping(false);
  painter.drawItemText({caption.left(), 0, width(), height}, flags, palette(), isEnabled(), title(),
                       QPalette::WindowText);
}

}  // namespace tessaril
