#ifndef TESSARIL_TESTS_SUPPORT_OTHER_USER_H_
#define TESSARIL_TESTS_SUPPORT_OTHER_USER_H_

#include <unistd.h>

#include <cstdlib>

namespace tessaril {

/// While it lives the test is not the superuser, who may do everything.
class OtherUser {
 public:
  OtherUser() : changed_(geteuid() == 0 && setegid(65534) == 0 && seteuid(65534) == 0) {}
  ~OtherUser() {
    if (changed_ && (seteuid(0) != 0 || setegid(0) != 0)) std::abort();
  }
  OtherUser(const OtherUser&) = delete;
  OtherUser& operator=(const OtherUser&) = delete;

 private:
  bool changed_;
};

}  // namespace tessaril

#endif  // TESSARIL_TESTS_SUPPORT_OTHER_USER_H_
