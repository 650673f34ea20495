#ifndef TESSARIL_TESTS_SUPPORT_LONG_FORM_H_
#define TESSARIL_TESTS_SUPPORT_LONG_FORM_H_

#include <cstdlib>

namespace tessaril {

/// Whether the long form of the tests is asked for, which may take minutes.
inline bool IsLongForm() {
  const char* const minutes = std::getenv("TESSARIL_LONG");
  return minutes != nullptr && *minutes != '\0';
}

}  // namespace tessaril

#endif  // TESSARIL_TESTS_SUPPORT_LONG_FORM_H_
