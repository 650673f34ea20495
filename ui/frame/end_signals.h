#ifndef TESSARIL_UI_FRAME_END_SIGNALS_H_
#define TESSARIL_UI_FRAME_END_SIGNALS_H_

#include <functional>

namespace tessaril {

/// From now on SIGTERM, SIGINT and SIGHUP call `leave` from the event loop instead of killing the program.
void OnEndSignal(std::function<void()> leave);

}  // namespace tessaril

#endif  // TESSARIL_UI_FRAME_END_SIGNALS_H_
