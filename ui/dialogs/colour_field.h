#ifndef TESSARIL_UI_DIALOGS_COLOUR_FIELD_H_
#define TESSARIL_UI_DIALOGS_COLOUR_FIELD_H_

#include <QAbstractButton>

#include "engine/safe_colours.h"

namespace tessaril {

/// A field of one colour that is chosen by a click, Space or Enter. The colour is the same in every theme;
/// the mark of the focus can be seen on any colour.
class ColourField : public QAbstractButton {
  Q_OBJECT

 public:
  explicit ColourField(QWidget* parent = nullptr);

  /// Black at first.
  void SetColour(const Colour& colour);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  QColor colour_ = Qt::black;
};

}  // namespace tessaril

#endif  // TESSARIL_UI_DIALOGS_COLOUR_FIELD_H_
