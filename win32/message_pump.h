// The one place where messages are fetched and handed on, whether the program waits
// for the user, shows a modal window, or looks up from its work.
//
// Tested by tests/win32/forms/form_window_test.cpp.
#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <vector>

#include "ports/message_loop.h"

namespace tintline {

// A window that the pump serves.
class PumpedWindow {
 public:
  virtual ~PumpedWindow() = default;

  // A message before it is handed on: true when the window used it up (an
  // accelerator, a key that moves the focus).
  virtual bool translate(MSG& message) = 0;

  // Shows what changed since the last time.
  virtual void flush() = 0;
};

class MessagePump final : public MessageLoop {
 public:
  // Handles what waits. The queue is looked at once in a few milliseconds and
  // changes are shown some thirty times a second, however often this is called:
  // a run of thousands of lines yields behind each of them.
  void yield() override;

  // Handles messages until the program is to end; returns its exit code.
  int run();

  // Handles messages until `done` or the program's end.
  void runUntil(const std::function<bool()>& done);

  // Shows all changes now, or only when the last time was long enough ago.
  void flush();
  void flushWhenDue();

  // The window is served from now on, or no longer.
  void attach(PumpedWindow& window);
  void detach(PumpedWindow& window);

 private:
  bool handleWaiting();  // false when WM_QUIT came
  void handOn(MSG& message);

  std::vector<PumpedWindow*> windows_;
  std::uint64_t lastLook_ = 0, lastFlush_ = 0;  // GetTickCount64
  int exitCode_ = 0;
};

}  // namespace tintline
