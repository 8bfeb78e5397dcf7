// What a failed call to an Office application says, as an OfficeError.
//
// Tested by tests/win32/office/office_test.cpp.
#pragma once

#include <windows.h>
#include <oaidl.h>

#include <string>
#include <string_view>

#include "ports/office.h"

namespace tintline {

// Whether the host did not take the call because it is busy: it may be asked again.
bool isBusy(HRESULT code);

// The error information that a member may leave behind.
class ExceptionInfo {
 public:
  ExceptionInfo() = default;
  ~ExceptionInfo() { reset(); }
  ExceptionInfo(const ExceptionInfo&) = delete;
  ExceptionInfo& operator=(const ExceptionInfo&) = delete;

  // For IDispatch::Invoke; what was held before is let go.
  EXCEPINFO* put() {
    reset();
    return &info_;
  }

  // The code behind what Invoke returned: the member's own one where it left one.
  HRESULT codeOf(HRESULT result);

  // The member's words without blanks and line ends around them, or "".
  std::wstring description() const;

 private:
  void reset();

  EXCEPINFO info_{};
};

// The failure of a member. Without a description the system's text of the code stands.
OfficeError memberError(std::wstring_view member, HRESULT code, std::wstring description = {});

// The failure to connect to an application.
OfficeError connectError(HRESULT code);

}  // namespace tintline
