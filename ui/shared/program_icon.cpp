#include "ui/shared/program_icon.h"

namespace tessaril {

QIcon ProgramIcon() {
  QIcon icon;
  for (const int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
    icon.addFile(QString(":/icons/tessaril-%1.png").arg(size), {size, size});
  }
  return icon;
}

}  // namespace tessaril
