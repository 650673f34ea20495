#include "engine/version.h"

namespace tessaril {

const char* Version() {
  return TESSARIL_VERSION;
}

}  // namespace tessaril
