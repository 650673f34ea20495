#ifndef TESSARIL_UI_SHARED_CUT_LABEL_H_
#define TESSARIL_UI_SHARED_CUT_LABEL_H_

#include <QLabel>

namespace tessaril {

/// A label of one line for any text, which is shown as it is, with signs for what cannot be seen. Of a text
/// that is too wide a piece is left out and the tooltip holds the whole, unless the label was given a tooltip
/// of its own.
class CutLabel : public QLabel {
  Q_OBJECT

 public:
  CutLabel(Qt::TextElideMode left_out, QWidget* parent, const QString& tooltip = {});

  void SetText(const QString& text);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void Cut();

  const Qt::TextElideMode left_out_;
  const QString own_tooltip_;
  QString text_;
};

}  // namespace tessaril

#endif  // TESSARIL_UI_SHARED_CUT_LABEL_H_
