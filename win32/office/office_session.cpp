// See office_session.h. Tested by tests/win32/office/office_test.cpp.
#include "win32/office/office_session.h"

#include <objbase.h>

#include "win32/office/office_error.h"

namespace tintline {
namespace {

constexpr DWORD kPatience = 5'000, kPause = 100;  // milliseconds

// How COM is to treat the calls of this thread that a host rejects. Not every rejection
// comes by here, a host may also answer with such a code: askPatiently sees those.
class BusyFilter final : public IMessageFilter {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    const bool known = id == IID_IUnknown || id == IID_IMessageFilter;
    *object = known ? this : nullptr;
    if (!known) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  DWORD STDMETHODCALLTYPE HandleInComingCall(DWORD, HTASK, DWORD, LPINTERFACEINFO) override {
    return SERVERCALL_ISHANDLED;
  }
  // `waited`: since the call began. The pause must be 100 or more, less means "at once".
  DWORD STDMETHODCALLTYPE RetryRejectedCall(HTASK, DWORD waited, DWORD) override {
    return waited < kPatience ? kPause : static_cast<DWORD>(-1);
  }
  DWORD STDMETHODCALLTYPE MessagePending(HTASK, DWORD, DWORD) override {
    return PENDINGMSG_WAITDEFPROCESS;
  }

 private:
  ULONG references_ = 1;
};

}  // namespace

OfficeSession::OfficeSession(MessageLoop& loop) : loop_(loop) {
  const HRESULT result = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  if (FAILED(result)) throw connectError(result);
  const auto filter = ComPtr<IMessageFilter>::adopt(new BusyFilter);
  CoRegisterMessageFilter(filter.get(), previousFilter_.put());
}

OfficeSession::~OfficeSession() {
  ComPtr<IMessageFilter> ours;
  CoRegisterMessageFilter(previousFilter_.get(), ours.put());
  ours.reset();
  previousFilter_.reset();
  CoUninitialize();
}

HRESULT OfficeSession::askPatiently(const std::function<HRESULT()>& attempt) {
  const ULONGLONG end = GetTickCount64() + kPatience;
  for (;;) {
    const HRESULT result = attempt();
    if (!isBusy(result) || GetTickCount64() >= end) return result;
    pause();
  }
}

void OfficeSession::pause() {
  const ULONGLONG end = GetTickCount64() + kPause;
  for (ULONGLONG now = GetTickCount64(); now < end; now = GetTickCount64()) {
    MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(end - now), QS_ALLINPUT);
    loop_.yield();
  }
}

}  // namespace tintline
