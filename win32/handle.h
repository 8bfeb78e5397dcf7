// Owns a handle of the system; one alias per kind.
//
// Tested by everything in tests/win32/.
#pragma once

#include <windows.h>

#include <utility>

namespace tintline {

template <class Handle, auto Free>
class UniqueHandle {
 public:
  UniqueHandle() = default;
  explicit UniqueHandle(Handle handle) : handle_(handle) {}
  UniqueHandle(UniqueHandle&& other) noexcept : handle_(other.release()) {}
  UniqueHandle& operator=(UniqueHandle&& other) noexcept {
    reset(other.release());
    return *this;
  }
  UniqueHandle(const UniqueHandle&) = delete;
  UniqueHandle& operator=(const UniqueHandle&) = delete;
  ~UniqueHandle() { reset(); }

  Handle get() const { return handle_; }
  explicit operator bool() const { return handle_ != Handle{}; }

  // Gives the handle away.
  Handle release() { return std::exchange(handle_, Handle{}); }
  void reset(Handle handle = Handle{}) {
    if (const Handle old = std::exchange(handle_, handle); old != Handle{}) Free(old);
  }

 private:
  Handle handle_{};
};

using UniqueWindow = UniqueHandle<HWND, DestroyWindow>;

}  // namespace tintline
