#include "ui/frame/end_signals.h"

#include <fcntl.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QSocketNotifier>
#include <cerrno>
#include <csignal>
#include <utility>

namespace tessaril {
namespace {

int write_end = -1;

void NoteSignal(int) {
  const int error = errno;
  const char byte = 0;
  if (write(write_end, &byte, 1) < 0) errno = error;
  errno = error;
}

}  // namespace

void OnEndSignal(std::function<void()> leave) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) return;
  write_end = ends[1];
  auto* const notifier = new QSocketNotifier(ends[0], QSocketNotifier::Read, qApp);
  QObject::connect(notifier, &QSocketNotifier::activated, notifier,
                   [end = ends[0], leave = std::move(leave)] {
                     char bytes[16];
                     if (read(end, bytes, sizeof bytes) > 0) leave();
                   });
  struct sigaction action {};
  action.sa_handler = NoteSignal;
  action.sa_flags = SA_RESTART;
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) sigaction(signal, &action, nullptr);
}

}  // namespace tessaril
