// One object of an Office application: its members are called by name through IDispatch.
//
// Tested by tests/win32/office/office_test.cpp.
#pragma once

#include <windows.h>
#include <oaidl.h>

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "ports/office.h"
#include "win32/com_ptr.h"
#include "win32/office/office_session.h"
#include "win32/office/variant.h"

namespace tintline {

// The ids of the members of one kind of objects. Asking for an id is a call across processes,
// and an analysis meets hundreds of components and code modules. What a member gives is always
// of the same kind, for all members that the program asks for: so the objects that came the
// same way from an application share one table, and a name is asked for once.
class MemberIds {
 public:
  // The id of that member of `object`, which is of this kind; failures are not kept.
  HRESULT find(IDispatch& object, std::wstring_view member, DISPID& id);

  // The table of what that member gives.
  std::shared_ptr<MemberIds> of(std::wstring_view member);

 private:
  std::map<std::wstring, DISPID, std::less<>> ids_;
  std::map<std::wstring, std::shared_ptr<MemberIds>, std::less<>> given_;
};

class DispatchObject final : public OfficeObject,
                             public std::enable_shared_from_this<DispatchObject> {
 public:
  // `ids`: those of its kind; left out for an object that no other one gave.
  DispatchObject(std::shared_ptr<OfficeSession> session, ComPtr<IDispatch> object,
                 std::shared_ptr<MemberIds> ids = std::make_shared<MemberIds>())
      : session_(std::move(session)), object_(std::move(object)), ids_(std::move(ids)) {}

  OfficeValue get(std::wstring_view member, std::span<OfficeValue> arguments) override;
  void put(std::wstring_view member, OfficeValue value) override;
  OfficeValue call(std::wstring_view member, std::span<OfficeValue> arguments) override;

  IDispatch* dispatch() const { return object_.get(); }

 private:
  void invoke(std::wstring_view member, WORD flags, DISPPARAMS& parameters, VARIANT* result);
  OfficeValue valueOf(std::wstring_view member, Variant& variant) const;

  std::shared_ptr<OfficeSession> session_;  // stands before the object: goes after it
  ComPtr<IDispatch> object_;
  std::shared_ptr<MemberIds> ids_;
};

}  // namespace tintline
