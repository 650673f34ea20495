#include "ui/shared/controls.h"

#include <QStyleOptionButton>

#include "ui/shared/button.h"

namespace tessaril {
namespace {

// Takes a click anywhere in its place, not on its caption only. A caption that is too long ends in dots.
class CheckBox : public QCheckBox {
 public:
  using QCheckBox::QCheckBox;

 protected:
  bool hitButton(const QPoint& place) const override { return rect().contains(place); }

  void initStyleOption(QStyleOptionButton* option) const override {
    QCheckBox::initStyleOption(option);
    const int width = style()->subElementRect(QStyle::SE_CheckBoxContents, option, this).width();
    option->text = fontMetrics().elidedText(text(), Qt::ElideRight, width, Qt::TextShowMnemonic);
  }
};

}  // namespace

QLabel* MakeLabel(QWidget* parent, const char* name, const Place& place, const char* text) {
  auto* const label = new QLabel(text, parent);
  label->setTextFormat(Qt::PlainText);
  Put(*label, name, place);
  return label;
}

QCheckBox* MakeCheckBox(QWidget* parent, const char* name, const Place& place, const char* caption,
                        const char* tooltip) {
  auto* const box = new CheckBox(caption, parent);
  box->setToolTip(tooltip);
  Put(*box, name, place);
  return box;
}

QPushButton* MakeButton(QWidget* parent, const char* name, const Place& place, const char* caption,
                        const char* tooltip) {
  auto* const button = new Button(caption, parent);
  button->setToolTip(tooltip);
  button->setAutoDefault(true);
  Put(*button, name, place);
  return button;
}

void SetRole(QPushButton& button, const char* caption, const char* tooltip) {
  button.setText(caption);
  button.setToolTip(tooltip);
}

QAction* AddItem(QMenu& menu, const char* name, const char* caption) {
  QAction* const item = menu.addAction(caption);
  item->setObjectName(name);
  return item;
}

void Tie(QLabel& label, QWidget& control) {
  label.setBuddy(&control);
  QString name = label.text();
  control.setAccessibleName(name.remove('&').remove(':'));
}

}  // namespace tessaril
