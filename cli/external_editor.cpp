#include "cli/external_editor.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <utility>

#include "cli/output.h"
#include "engine/characters.h"

namespace tessaril {
namespace {

const char* EditorCommand() {
  for (const char* const variable : {"VISUAL", "EDITOR"}) {
    const char* const value = std::getenv(variable);
    if (value != nullptr && *value != '\0') return value;
  }
  return "editor";
}

// Runs the editor on a file. The variable may hold arguments, so a shell takes it apart.
Status RunEditor(const std::string& file) {
  const std::string command = std::string(EditorCommand()) + " \"$1\"";
  const std::string words[] = {"sh", "-c", command, "sh", file};
  char* arguments[6] = {};
  for (std::size_t i = 0; i < std::size(words); ++i) arguments[i] = const_cast<char*>(words[i].c_str());
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  sigset_t own;
  sigemptyset(&own);
  for (const int signal : {SIGINT, SIGPIPE, SIGXFSZ}) sigaddset(&own, signal);
  posix_spawnattr_setsigdefault(&attributes, &own);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
  // Ctrl-C belongs to the editor while it runs.
  struct sigaction ignore {};
  struct sigaction before {};
  ignore.sa_handler = SIG_IGN;
  sigaction(SIGINT, &ignore, &before);
  pid_t child = 0;
  const int error = posix_spawn(&child, "/bin/sh", nullptr, &attributes, arguments, environ);
  posix_spawnattr_destroy(&attributes);
  int state = 0;
  if (error == 0) {
    while (waitpid(child, &state, 0) < 0 && errno == EINTR) {
    }
  }
  sigaction(SIGINT, &before, nullptr);
  if (error != 0) return Status::System(error);
  if (!WIFEXITED(state) || WEXITSTATUS(state) != 0) return Status::Failure("the editor failed");
  return {};
}

void DropAddedLineEnd(const std::string& before, std::string& after) {
  if (before.ends_with('\n') || !after.ends_with('\n')) return;
  after.pop_back();
  if (after.ends_with('\r') && !before.ends_with('\r')) after.pop_back();
}

}  // namespace

Status EditPiece(std::string& piece, PageEncoding encoding) {
  const std::string shown = encoding == PageEncoding::kUtf8 ? piece : EightBitToUtf8(piece);
  const char* const folder = std::getenv("TMPDIR");
  std::string name = std::string(folder == nullptr ? "/tmp" : folder) + "/tsl-XXXXXX.htm";
  FileHandle file(mkstemps(name.data(), 4));
  if (!file.is_open()) return Status::System(errno);
  Status status = WriteAll(file.get(), shown);
  if (status.ok()) status = RunEditor(name);
  std::string edited;
  if (status.ok()) status = ReadFrom(name, edited);
  unlink(name.c_str());
  if (!status.ok()) return status;
  DropAddedLineEnd(shown, edited);
  const bool as_characters = encoding == PageEncoding::kEightBit && IsUtf8(edited);
  piece = as_characters ? WrittenBytes(edited, encoding) : std::move(edited);
  return {};
}

}  // namespace tessaril
