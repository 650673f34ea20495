#ifndef TESSARIL_TESTS_UI_SUPPORT_HEARTBEAT_H_
#define TESSARIL_TESTS_UI_SUPPORT_HEARTBEAT_H_

#include <QElapsedTimer>
#include <QObject>
#include <string>

namespace tessaril {

/// Measures for how long the windows do not answer: the time between two turns of the event loop, whichever
/// loop it is. Time in which other programs had the processor does not count.
class Heartbeat {
 public:
  Heartbeat();

  /// What is done now, for the case that it takes long.
  void Note(const std::string& doing);

  /// The longest silence since the last call, in milliseconds, and what was done then.
  double TakeLongest();
  const std::string& longest_doing() const { return longest_doing_; }

 private:
  void Beat();
  void Look();

  QObject timers_;
  QElapsedTimer since_;
  double waited_ = 0;  // for the processor, until `since_`
  double longest_ = 0;
  std::string doing_;
  std::string longest_doing_;
};

}  // namespace tessaril

#endif  // TESSARIL_TESTS_UI_SUPPORT_HEARTBEAT_H_
