#ifndef TESSARIL_UI_WEBENGINE_START_CONDITIONS_H_
#define TESSARIL_UI_WEBENGINE_START_CONDITIONS_H_

#include <string>

namespace tessaril {

/// Looks whether the component can start, and prepares that; to be called before anything of it is used.
/// Where something is missing the component itself would end the whole program. `reason` says what is missing
/// when the answer is false.
bool CanStart(std::string& reason);

}  // namespace tessaril

#endif  // TESSARIL_UI_WEBENGINE_START_CONDITIONS_H_
