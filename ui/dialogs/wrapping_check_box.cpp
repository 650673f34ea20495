#include "ui/dialogs/wrapping_check_box.h"

#include <QStyleOptionButton>

namespace tessaril {

void WrappingCheckBox::initStyleOption(QStyleOptionButton* option) const {
  QCheckBox::initStyleOption(option);
  const int width = style()->subElementRect(QStyle::SE_CheckBoxContents, option, this).width();
  QString& caption = option->text;
  qsizetype line = 0;  // where the line begins that may be too long
  for (qsizetype blank = caption.indexOf(' '); blank >= 0; blank = caption.indexOf(' ', blank + 1)) {
    qsizetype next = caption.indexOf(' ', blank + 1);
    if (next < 0) next = caption.size();
    if (option->fontMetrics.horizontalAdvance(caption.mid(line, next - line)) <= width) continue;
    caption[blank] = '\n';
    line = blank + 1;
  }
}

}  // namespace tessaril
