#include "cli/run_command.h"

int main(int argc, char** argv) {
  return tessaril::RunCommand(argc, argv);
}
