#include "ui/dialogs/kept_dialog.h"

namespace tessaril {

KeptDialog::KeptDialog(QWidget* parent) : QDialog(parent) {
  setModal(true);
}

bool KeptDialog::Show() {
  setResult(Rejected);
  if (place_) move(*place_);
  const bool accepted = exec() == Accepted;
  place_ = pos();
  hide();  // still open when the program's event loop was ended
  return accepted;
}

}  // namespace tessaril
