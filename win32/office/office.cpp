// See office.h. Tested by tests/win32/office/office_test.cpp.
#include "win32/office/office.h"

#include <windows.h>
#include <oleauto.h>

#include <string>
#include <utility>

#include "win32/office/office_error.h"
#include "win32/office/office_object.h"
#include "win32/office/office_session.h"

namespace tintline {
namespace {

void check(HRESULT result) {
  if (FAILED(result)) throw connectError(result);
}

// The application in the table of running ones, or an empty pointer. One that is there but
// stays busy is a failure: starting another one beside it is not what the user wants.
ComPtr<IDispatch> findRunning(OfficeSession& session, const CLSID& id) {
  ComPtr<IDispatch> application;
  const HRESULT result = session.askPatiently([&] {
    ComPtr<IUnknown> object;
    const HRESULT found = GetActiveObject(id, nullptr, object.put());
    if (FAILED(found)) return found;
    return object->QueryInterface(IID_IDispatch, application.putVoid());
  });
  if (isBusy(result)) throw connectError(result);
  return application;
}

ComPtr<IDispatch> start(OfficeSession& session, const CLSID& id) {
  ComPtr<IDispatch> application;
  check(session.askPatiently([&] {
    return CoCreateInstance(id, nullptr, CLSCTX_LOCAL_SERVER, IID_IDispatch, application.putVoid());
  }));
  return application;
}

}  // namespace

OfficeApplication SystemOffice::connect(std::wstring_view programId) {
  auto session = session_.lock();
  if (session == nullptr) session_ = session = std::make_shared<OfficeSession>(loop_);

  CLSID id{};
  check(CLSIDFromProgID(std::wstring(programId).c_str(), &id));
  ComPtr<IDispatch> application = findRunning(*session, id);
  const bool created = !application;
  if (created) application = start(*session, id);
  return {std::make_shared<DispatchObject>(std::move(session), std::move(application)), created};
}

}  // namespace tintline
