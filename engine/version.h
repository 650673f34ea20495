#ifndef TESSARIL_ENGINE_VERSION_H_
#define TESSARIL_ENGINE_VERSION_H_

namespace tessaril {

/// The version of this release, "1.2.3": major, minor and revision number. The build's project version is the
/// one place where it is written.
const char* Version();

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_VERSION_H_
