#include "tests/ui/support/heartbeat.h"

#include <QTimer>
#include <fstream>

namespace tessaril {
namespace {

// Milliseconds for which this thread could have run and did not; 0 where the system does not tell.
double WaitedForProcessor() {
  double ran = 0;
  double waited = 0;
  std::ifstream("/proc/thread-self/schedstat") >> ran >> waited;
  return waited / 1e6;
}

}  // namespace

Heartbeat::Heartbeat() {
  since_.start();
  waited_ = WaitedForProcessor();
  Beat();
}

void Heartbeat::Note(const std::string& doing) {
  Look();
  doing_ = doing;
}

double Heartbeat::TakeLongest() {
  Look();
  return std::exchange(longest_, 0);
}

// A timer of its own each time, as one that repeats would rest while a loop within it runs.
void Heartbeat::Beat() {
  QTimer::singleShot(1, &timers_, [this] { Beat(); });
  Look();
}

void Heartbeat::Look() {
  const double waited = WaitedForProcessor();
  const double silence = static_cast<double>(since_.nsecsElapsed()) / 1e6 - (waited - waited_);
  since_.start();
  waited_ = waited;
  if (silence <= longest_) return;
  longest_ = silence;
  longest_doing_ = doing_;
}

}  // namespace tessaril
