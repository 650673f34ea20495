#ifndef TESSARIL_UI_DIALOGS_WRAPPING_CHECK_BOX_H_
#define TESSARIL_UI_DIALOGS_WRAPPING_CHECK_BOX_H_

#include <QCheckBox>

namespace tessaril {

/// A check box whose caption goes on in a new line, at a blank, where its width ends.
class WrappingCheckBox : public QCheckBox {
  Q_OBJECT

 public:
  explicit WrappingCheckBox(QWidget* parent) : QCheckBox(parent) {}

 protected:
  void initStyleOption(QStyleOptionButton* option) const override;
};

}  // namespace tessaril

#endif  // TESSARIL_UI_DIALOGS_WRAPPING_CHECK_BOX_H_
