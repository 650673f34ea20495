#include "cli/interrupt.h"

#include <csignal>
#include <initializer_list>

namespace tessaril {
namespace {

volatile std::sig_atomic_t g_interrupted = 0;

void Note(int) {
  g_interrupted = 1;
}

}  // namespace

void NoteInterrupts() {
  struct sigaction note {};
  note.sa_handler = Note;  // no SA_RESTART: waiting for a key ends, too
  sigemptyset(&note.sa_mask);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) {
    struct sigaction before {};
    sigaction(signal, nullptr, &before);
    if (before.sa_handler != SIG_IGN) sigaction(signal, &note, nullptr);
  }
  struct sigaction ignore {};
  ignore.sa_handler = SIG_IGN;
  sigemptyset(&ignore.sa_mask);
  for (const int signal : {SIGPIPE, SIGXFSZ}) sigaction(signal, &ignore, nullptr);
}

void Interrupt() {
  g_interrupted = 1;
}

bool Interrupted() {
  return g_interrupted != 0;
}

}  // namespace tessaril
