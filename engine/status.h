#ifndef TESSARIL_ENGINE_STATUS_H_
#define TESSARIL_ENGINE_STATUS_H_

#include <string>
#include <system_error>
#include <utility>

namespace tessaril {

/// How a step that may fail ended: fine, or the reason in words for the user ("No space left on device").
/// The reason does not name the file; whoever tells it does.
class [[nodiscard]] Status {
 public:
  Status() = default;

  static Status Failure(std::string reason) {
    Status status;
    status.reason_ = reason.empty() ? "Unknown error" : std::move(reason);
    return status;
  }

  /// The failure of a system call, in the system's own words; `error` is a value of errno.
  static Status System(int error) { return Failure(std::generic_category().message(error)); }

  bool ok() const { return reason_.empty(); }
  const std::string& reason() const { return reason_; }

 private:
  std::string reason_;
};

}  // namespace tessaril

#endif  // TESSARIL_ENGINE_STATUS_H_
