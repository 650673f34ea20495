#include "ui/dialogs/cut_label.h"

#include "ui/shared/texts.h"

namespace tessaril {

CutLabel::CutLabel(Qt::TextElideMode left_out, QWidget* parent) : QLabel(parent), left_out_(left_out) {
  setTextFormat(Qt::PlainText);
}

void CutLabel::SetText(const QString& text) {
  text_ = text;
  Cut();
}

void CutLabel::resizeEvent(QResizeEvent* event) {
  QLabel::resizeEvent(event);
  Cut();
}

void CutLabel::Cut() {
  setText(fontMetrics().elidedText(text_, left_out_, contentsRect().width()));
  setAccessibleName(text_);
  const bool whole = text() == text_;
  setToolTip(whole ? QString() : AsMarkup(text_));
}

}  // namespace tessaril
