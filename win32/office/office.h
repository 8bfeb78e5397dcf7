// Connects to Office applications: to the running one, or one that is started.
//
// Tested by tests/win32/office/office_test.cpp.
#pragma once

#include <memory>

#include "ports/message_loop.h"
#include "ports/office.h"

namespace tintline {

class OfficeSession;

class SystemOffice final : public Office {
 public:
  // The loop, which must live longer, runs while a busy host is waited for: every member of
  // an application's objects is a point of re-entry. All on the thread with the windows.
  explicit SystemOffice(MessageLoop& loop) : loop_(loop) {}

  OfficeApplication connect(std::wstring_view programId) override;

 private:
  MessageLoop& loop_;
  std::weak_ptr<OfficeSession> session_;  // as long as any object of a host is held
};

}  // namespace tintline
