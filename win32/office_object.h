// One object of an Office application: its members are called by name through IDispatch.
//
// Tested by tests/win32/office/office_test.cpp.
#pragma once

#include <windows.h>
#include <oaidl.h>

#include <map>
#include <memory>
#include <string>
#include <utility>

#include "ports/office.h"
#include "win32/com_ptr.h"
#include "win32/office_session.h"
#include "win32/variant.h"

namespace tintline {

class DispatchObject final : public OfficeObject,
                             public std::enable_shared_from_this<DispatchObject> {
 public:
  DispatchObject(std::shared_ptr<OfficeSession> session, ComPtr<IDispatch> object)
      : session_(std::move(session)), object_(std::move(object)) {}

  OfficeValue get(std::wstring_view member, std::span<OfficeValue> arguments) override;
  void put(std::wstring_view member, OfficeValue value) override;
  OfficeValue call(std::wstring_view member, std::span<OfficeValue> arguments) override;

  IDispatch* dispatch() const { return object_.get(); }

 private:
  HRESULT findId(std::wstring_view member, DISPID& id);
  void invoke(std::wstring_view member, WORD flags, DISPPARAMS& parameters, VARIANT* result);
  OfficeValue valueOf(std::wstring_view member, Variant& variant) const;

  std::shared_ptr<OfficeSession> session_;  // stands before the object: goes after it
  ComPtr<IDispatch> object_;
  std::map<std::wstring, DISPID, std::less<>> ids_;  // of the members that were called
};

}  // namespace tintline
