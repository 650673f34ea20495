#ifndef TESSARIL_TESTS_SUPPORT_PROGRAM_H_
#define TESSARIL_TESTS_SUPPORT_PROGRAM_H_

#include <functional>
#include <string>
#include <vector>

#include "tests/support/scratch_folder.h"

namespace tessaril {

/// What a run of `tsl` left.
struct ProgramEnd {
  int status;  // exit status, or minus the signal that ended it
  std::string out;
  std::string err;
};

using Words = std::vector<std::string>;

/// What `tsl` finds as the folder of the user's data, for the whole test program.
const ScratchFolder& UserData();

/// Runs `tsl` with these arguments and nothing to read. `prepare` is called in the new process first.
ProgramEnd RunTsl(const Words& arguments, const std::function<void()>& prepare = {});

/// Runs `tsl` on a terminal and presses `keys` one by one (an entry may hold several, pressed at once), each
/// when the program waits for one. What the terminal shows is in `out`.
ProgramEnd RunTslOnTerminal(const Words& arguments, const Words& keys);

}  // namespace tessaril

#endif  // TESSARIL_TESTS_SUPPORT_PROGRAM_H_
