#include "tests/support/program.h"

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <stdexcept>

namespace tessaril {
namespace {

// Opened before a test changes what the new process may do: another user may have no way to the build folder.
int OpenProgram() {
  return open(TSL_PROGRAM, O_PATH | O_CLOEXEC);
}

// What runs keep to be undone goes to a folder of the tests, which any user may write.
void UseUserFolder() {
  setenv("XDG_DATA_HOME", UserData().path().c_str(), 1);
}

[[noreturn]] void Become(int program, const Words& arguments) {
  std::vector<char*> words{const_cast<char*>(TSL_PROGRAM)};
  for (const std::string& argument : arguments) words.push_back(const_cast<char*>(argument.c_str()));
  words.push_back(nullptr);
  fexecve(program, words.data(), environ);
  _exit(127);
}

int Wait(pid_t child) {
  int state = 0;
  waitpid(child, &state, 0);
  return WIFEXITED(state) ? WEXITSTATUS(state) : -WTERMSIG(state);
}

bool ReadSome(int from, std::string& into) {
  std::array<char, 65536> block;
  const ssize_t got = read(from, block.data(), block.size());
  if (got > 0) into.append(block.data(), static_cast<std::size_t>(got));
  return got > 0;
}

}  // namespace

const ScratchFolder& UserData() {
  static const ScratchFolder folder;
  static const int opened = chmod(folder.path().c_str(), 0777);
  return opened == 0 ? folder : throw std::runtime_error(folder.path());
}

ProgramEnd RunTsl(const Words& arguments, const std::function<void()>& prepare) {
  int out[2];
  int err[2];
  if (pipe(out) != 0 || pipe(err) != 0) return {-1, "", "no pipe"};
  const pid_t child = fork();
  if (child == 0) {
    dup2(open("/dev/null", O_RDONLY), STDIN_FILENO);
    dup2(out[1], STDOUT_FILENO);
    dup2(err[1], STDERR_FILENO);
    for (const int end : {out[0], out[1], err[0], err[1]}) close(end);
    const int program = OpenProgram();
    UseUserFolder();
    if (prepare) prepare();
    Become(program, arguments);
  }
  close(out[1]);
  close(err[1]);
  ProgramEnd end{};
  std::array<pollfd, 2> ends{{{out[0], POLLIN, 0}, {err[0], POLLIN, 0}}};
  while (ends[0].fd >= 0 || ends[1].fd >= 0) {
    poll(ends.data(), ends.size(), -1);
    if (ends[0].revents != 0 && !ReadSome(out[0], end.out)) ends[0].fd = -1;
    if (ends[1].revents != 0 && !ReadSome(err[0], end.err)) ends[1].fd = -1;
  }
  close(out[0]);
  close(err[0]);
  end.status = Wait(child);
  return end;
}

ProgramEnd RunTslOnTerminal(const Words& arguments, const Words& keys) {
  int terminal = -1;
  const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
  if (child == 0) {
    UseUserFolder();
    Become(OpenProgram(), arguments);
  }
  ProgramEnd end{};
  std::size_t pressed = 0;
  std::size_t prompted = 0;
  while (ReadSome(terminal, end.out)) {
    const bool prompt = end.out.ends_with("]uit: ") || end.out.ends_with("]ancel: ");
    if (!prompt || end.out.size() == prompted) continue;
    prompted = end.out.size();
    if (pressed == keys.size()) {
      kill(child, SIGKILL);  // it asks more than the test answers
      continue;
    }
    const std::string& key = keys[pressed++];
    if (write(terminal, key.data(), key.size()) != static_cast<ssize_t>(key.size())) break;
  }
  end.status = Wait(child);
  close(terminal);
  return end;
}

}  // namespace tessaril
