#include "ui/shared/cut_label.h"

#include "ui/shared/stand_ins.h"
#include "ui/shared/texts.h"

namespace tessaril {

CutLabel::CutLabel(Qt::TextElideMode left_out, QWidget* parent, const QString& tooltip)
    : QLabel(parent), left_out_(left_out), own_tooltip_(tooltip) {
  setTextFormat(Qt::PlainText);
  setToolTip(tooltip);
}

void CutLabel::SetText(const QString& text) {
  text_ = Harmless(text);
  Cut();
}

void CutLabel::resizeEvent(QResizeEvent* event) {
  QLabel::resizeEvent(event);
  Cut();
}

void CutLabel::Cut() {
  setText(fontMetrics().elidedText(text_, left_out_, contentsRect().width()));
  setAccessibleName(text_);
  if (!own_tooltip_.isEmpty()) return;
  const bool whole = text() == text_;
  setToolTip(whole ? QString() : AsMarkup(text_));
}

}  // namespace tessaril
