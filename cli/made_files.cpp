#include <iostream>
#include <string_view>

#include "cli/completion.h"
#include "cli/help.h"

// Writes one of the files that are made from the tables of `tsl` to standard output, for the build.
int main(int argc, char** argv) {
  const std::string_view name = argc == 2 ? argv[1] : "";
  if (name == "tsl.1") {
    std::cout << tessaril::ManPage();
  } else if (name == "tsl.bash") {
    std::cout << tessaril::BashCompletion();
  } else {
    return 2;
  }
  return std::cout.flush().good() ? 0 : 1;
}
