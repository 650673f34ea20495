#ifndef TESSARIL_TESTS_SUPPORT_SYSTEM_FAULTS_H_
#define TESSARIL_TESTS_SUPPORT_SYSTEM_FAULTS_H_

#include <functional>
#include <string_view>

namespace tessaril {

/// While it lives, every system call about files that the program's own code makes is put to `decide` first,
/// by its name and its number from 1. The linker leads the calls here (see CMakeLists.txt); those of the
/// standard library, with which the tests look at the disk, and those made within `decide` are not touched.
class SystemFaults {
 public:
  static constexpr int kNone = 0;
  static constexpr int kShort = -1;  // a read or write does half of what it is asked for; others fare well
  /// Gives kNone, kShort, or the value of errno that the call fails with, undone.
  using Decide = std::function<int(std::string_view call, int number)>;

  explicit SystemFaults(Decide decide);
  ~SystemFaults();
  SystemFaults(const SystemFaults&) = delete;
  SystemFaults& operator=(const SystemFaults&) = delete;
};

}  // namespace tessaril

#endif  // TESSARIL_TESTS_SUPPORT_SYSTEM_FAULTS_H_
