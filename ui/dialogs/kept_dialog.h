#ifndef TESSARIL_UI_DIALOGS_KEPT_DIALOG_H_
#define TESSARIL_UI_DIALOGS_KEPT_DIALOG_H_

#include <QDialog>

namespace tessaril {

/// A modal dialog of a fixed size that lives as long as its owner: it is hidden, not destroyed, when it is
/// answered, and opened again where the user left it.
class KeptDialog : public QDialog {
  Q_OBJECT

 public:
  using QDialog::QDialog;

 protected:
  /// Shows the dialog and waits. True when it was accepted, false when it was rejected or the program ends.
  bool Show();
};

}  // namespace tessaril

#endif  // TESSARIL_UI_DIALOGS_KEPT_DIALOG_H_
