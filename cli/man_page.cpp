#include <iostream>

#include "cli/help.h"

int main() {
  std::cout << tessaril::ManPage();
  return std::cout.good() ? 0 : 1;
}
