#ifndef TESSARIL_UI_BROWSER_ADDRESS_BAR_H_
#define TESSARIL_UI_BROWSER_ADDRESS_BAR_H_

#include <QComboBox>
#include <QLabel>
#include <QWidget>

namespace tessaril {

/// The bar `picAddress` with the address box `cboAddress`, whose list is the history of addresses. It gives
/// itself its height.
class AddressBar : public QWidget {
  Q_OBJECT

 public:
  explicit AddressBar(QWidget* parent);

  QString Text() const;

  /// Puts an address into the box, and nothing else.
  void Show(const QString& address);

  /// Adds an address to the end of the list, unless it is there.
  void Remember(const QString& address);

  /// The focus to the box, with all its text selected.
  void BeginTyping();

 signals:
  /// The user wants to see the address in the box, which was chosen from the list or entered.
  void Wanted();

  /// It was entered; comes after the other.
  void Entered();

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  QLabel* lblAddress;
  QComboBox* cboAddress;
};

}  // namespace tessaril

#endif  // TESSARIL_UI_BROWSER_ADDRESS_BAR_H_
