// Failures of the system as one kind of exception.
//
// Tested by tests/win32/system/ports_test.cpp.
#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>

namespace tintline {

class Win32Error : public std::runtime_error {
 public:
  explicit Win32Error(HRESULT code);

  HRESULT code() const { return code_; }

  // The system's text in its language and the number: "Zugriff verweigert (0x80070005)".
  std::wstring text() const;

 private:
  HRESULT code_;
};

// Throws Win32Error when the result says failure.
void throwIfFailed(HRESULT result);

// Throws what GetLastError says; called directly behind the function that failed.
[[noreturn]] void throwLastError();

}  // namespace tintline
