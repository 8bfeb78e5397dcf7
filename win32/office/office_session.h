// What connections to Office applications stand on: COM on this thread, and patience with
// a host that is busy. Each object of a host holds it, so COM does not end before the last
// of them.
//
// Tested by tests/win32/office/office_test.cpp.
#pragma once

#include <windows.h>
#include <objidl.h>

#include <functional>

#include "ports/message_loop.h"
#include "win32/com_ptr.h"

namespace tintline {

class OfficeSession {
 public:
  // The loop is let run while a busy host is waited for. Throws OfficeError.
  explicit OfficeSession(MessageLoop& loop);
  ~OfficeSession();
  OfficeSession(const OfficeSession&) = delete;
  OfficeSession& operator=(const OfficeSession&) = delete;

  // Repeats the attempt, with a pause in between, while it fails because the host is busy,
  // for some seconds at most; the last result. Every pause is a point of re-entry.
  HRESULT askPatiently(const std::function<HRESULT()>& attempt);

 private:
  void pause();

  MessageLoop& loop_;
  ComPtr<IMessageFilter> previousFilter_;
};

}  // namespace tintline
