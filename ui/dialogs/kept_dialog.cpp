#include "ui/dialogs/kept_dialog.h"

namespace tessaril {

bool KeptDialog::Show() {
  const bool accepted = exec() == Accepted;
  setAttribute(Qt::WA_Moved);  // or it would be centred again; a move() would count the frame in or out
  hide();                      // still open when the program's event loop was ended
  return accepted;
}

}  // namespace tessaril
