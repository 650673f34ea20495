#include "ui/browser/address_bar.h"

#include <QLineEdit>

#include "ui/shared/controls.h"

namespace tessaril {
namespace {

constexpr int kHeight = 384;  // twips
constexpr Place kLabelPlace{72, 60, 804, 264};
constexpr Place kBoxPlace{900, 36, 0, 312};  // its width goes with the window's
constexpr int kNarrower = 1200;              // twips that the box is narrower than the window

}  // namespace

AddressBar::AddressBar(QWidget* parent)
    : QWidget(parent),
      lblAddress(MakeLabel(this, "lblAddress", kLabelPlace, "Address:")),
      cboAddress(new QComboBox(this)) {
  setObjectName("picAddress");
  Put(*cboAddress, "cboAddress", kBoxPlace);
  Tie(*lblAddress, *cboAddress);
  cboAddress->setToolTip("URL of displayed/wanted file");
  cboAddress->setEditable(true);
  cboAddress->setInsertPolicy(QComboBox::NoInsert);
  cboAddress->setCompleter(nullptr);
  // The toolkit would take a typed text that is in the list for a choice from it.
  QLineEdit* const line = cboAddress->lineEdit();
  disconnect(line, &QLineEdit::editingFinished, cboAddress, nullptr);
  disconnect(line, &QLineEdit::returnPressed, cboAddress, nullptr);
  connect(line, &QLineEdit::returnPressed, this, &AddressBar::Wanted);
  connect(line, &QLineEdit::returnPressed, this, &AddressBar::Entered);
  connect(cboAddress, &QComboBox::activated, this, &AddressBar::Wanted);
  resize(width(), Pixels(kHeight));
}

QString AddressBar::Text() const {
  return cboAddress->currentText();
}

void AddressBar::Show(const QString& address) {
  cboAddress->setEditText(address);
  cboAddress->lineEdit()->setCursorPosition(0);  // of a long one the beginning is seen
}

void AddressBar::Remember(const QString& address) {
  if (cboAddress->findText(address, Qt::MatchExactly | Qt::MatchCaseSensitive) >= 0) return;
  const QString shown = Text();
  cboAddress->addItem(address);  // the first of all is shown at once
  Show(shown);
}

void AddressBar::BeginTyping() {
  cboAddress->setFocus(Qt::ShortcutFocusReason);
  cboAddress->lineEdit()->selectAll();
}

void AddressBar::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  cboAddress->resize(width() - Pixels(kNarrower), cboAddress->height());
}

}  // namespace tessaril
