// See message_pump.h.
#include "win32/message_pump.h"

#include <algorithm>

namespace tintline {
namespace {

constexpr std::uint64_t kLookEvery = 4;    // milliseconds
constexpr std::uint64_t kFlushEvery = 33;  // milliseconds

}  // namespace

void MessagePump::yield() {
  const std::uint64_t now = GetTickCount64();
  if (now - lastLook_ < kLookEvery) return;
  lastLook_ = now;
  flushWhenDue();
  if (!handleWaiting()) PostQuitMessage(exitCode_);  // for the loop outside
}

int MessagePump::run() {
  runUntil([] { return false; });
  return exitCode_;
}

void MessagePump::runUntil(const std::function<bool()>& done) {
  while (!done()) {
    if (!handleWaiting()) {
      PostQuitMessage(exitCode_);  // for the loop outside, if there is one
      return;
    }
    if (done()) return;
    flush();
    MsgWaitForMultipleObjectsEx(0, nullptr, INFINITE, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
  }
}

bool MessagePump::handleWaiting() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) {
      exitCode_ = static_cast<int>(message.wParam);
      return false;
    }
    handOn(message);
  }
  return true;
}

void MessagePump::handOn(MSG& message) {
  for (std::size_t i = windows_.size(); i-- > 0;)
    if (i < windows_.size() && windows_[i]->translate(message)) return;
  TranslateMessage(&message);
  DispatchMessageW(&message);
}

void MessagePump::flush() {
  lastFlush_ = GetTickCount64();
  for (std::size_t i = 0; i < windows_.size(); ++i) windows_[i]->flush();
}

void MessagePump::flushWhenDue() {
  if (GetTickCount64() - lastFlush_ >= kFlushEvery) flush();
}

void MessagePump::attach(PumpedWindow& window) { windows_.push_back(&window); }

void MessagePump::detach(PumpedWindow& window) { std::erase(windows_, &window); }

}  // namespace tintline
