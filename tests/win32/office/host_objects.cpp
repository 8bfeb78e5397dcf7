// See host_objects.h. Tested by tests/win32/office/office_test.cpp.
#include "tests/win32/office/host_objects.h"

#include <algorithm>
#include <utility>

namespace tintline::test {
namespace {

// A call that is wrong in itself.
struct CallError {
  HRESULT code;
};

bool isLeftOut(const VARIANT& value) {
  return value.vt == VT_ERROR && value.scode == DISP_E_PARAMNOTFOUND;
}

// A value in the log.
std::wstring shown(VARIANT& value) {
  if (isLeftOut(value)) return L"";
  if (value.vt == VT_BOOL) return value.boolVal != VARIANT_FALSE ? L"True" : L"False";
  Variant text;
  if (FAILED(VariantChangeType(&text, &value, 0, VT_BSTR))) return L"?";
  return text.bstrVal;
}

std::vector<VARIANT*> inOrder(const DISPPARAMS& parameters) {
  std::vector<VARIANT*> arguments;
  for (UINT i = parameters.cArgs; i-- > 0;) arguments.push_back(&parameters.rgvarg[i]);
  while (!arguments.empty() && isLeftOut(*arguments.back())) arguments.pop_back();
  return arguments;
}

BSTR copyOf(std::wstring_view text) {
  return SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
}

}  // namespace

bool Host::isVisible() {
  const auto put = properties.find(L"Application.Visible");
  return put == properties.end() ? visible : shown(put->second) == L"True";
}

std::wstring Call::text(std::size_t index) const {
  if (arguments[index]->vt != VT_BSTR) throw CallError{DISP_E_TYPEMISMATCH};
  return {arguments[index]->bstrVal, SysStringLen(arguments[index]->bstrVal)};
}

long Call::number(std::size_t index) const {
  Variant number;
  if (FAILED(VariantChangeType(&number, arguments[index], 0, VT_I4)))
    throw CallError{DISP_E_TYPEMISMATCH};
  return number.lVal;
}

void Call::set(long value) const {
  result->vt = VT_I4;
  result->lVal = value;
}

void Call::set(bool value) const {
  result->vt = VT_BOOL;
  result->boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
}

void Call::set(std::wstring_view value) const {
  result->vt = VT_BSTR;
  result->bstrVal = copyOf(value);
}

void Call::set(const ComPtr<IDispatch>& object) const {
  object->AddRef();
  result->vt = VT_DISPATCH;
  result->pdispVal = object.get();
}

HostObject::HostObject(Host& host, std::wstring path, std::wstring name,
                       std::vector<Member> members)
    : host_(host), path_(std::move(path)), name_(std::move(name)), members_(std::move(members)) {
  ++host_.objects;
}

HRESULT HostObject::QueryInterface(REFIID id, void** object) {
  const bool known = id == IID_IUnknown || id == IID_IDispatch;
  *object = known ? this : nullptr;
  if (!known) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

ULONG HostObject::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

HRESULT HostObject::GetTypeInfoCount(UINT* count) {
  *count = 0;
  return S_OK;
}

HRESULT HostObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  if (const HRESULT rejected = host_.folder.beginCall(name_, {}); FAILED(rejected)) return rejected;
  std::fill(ids, ids + count, DISPID_UNKNOWN);
  const auto member = std::ranges::find(members_, std::wstring_view(names[0]), &Member::name);
  if (member == members_.end()) return DISP_E_UNKNOWNNAME;
  ids[0] =
      member->name == L"Item" ? DISPID_VALUE : static_cast<DISPID>(member - members_.begin()) + 1;
  return count == 1 ? S_OK : DISP_E_UNKNOWNNAME;  // no argument has a name
}

HRESULT HostObject::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                           VARIANT* result, EXCEPINFO* exception, UINT*) {
  const auto member =
      id == DISPID_VALUE ? std::ranges::find(members_, std::wstring_view(L"Item"), &Member::name)
      : id > 0 && static_cast<std::size_t>(id) <= members_.size() ? members_.begin() + (id - 1)
                                                                  : members_.end();
  if (member == members_.end()) return DISP_E_MEMBERNOTFOUND;
  const auto self = ComPtr<HostObject>::share(this);
  Variant unused;
  try {
    const HRESULT rejected = host_.folder.beginCall(name_, member->name);
    if (FAILED(rejected)) return rejected;
    return run(*member, flags, *parameters, result != nullptr ? result : &unused);
  } catch (const CallError& error) {
    return error.code;
  } catch (const HostError& error) {
    if (exception != nullptr) {
      *exception = {};
      exception->scode = MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, error.number);
      exception->bstrSource = copyOf(host_.programId);
      exception->bstrDescription = copyOf(error.description);
    }
    return DISP_E_EXCEPTION;
  }
}

HRESULT HostObject::run(const Member& member, WORD flags, const DISPPARAMS& parameters,
                        VARIANT* result) {
  const WORD reads = member.kind == MemberKind::Method ? DISPATCH_METHOD : DISPATCH_PROPERTYGET;
  if ((flags & reads) != 0) return get(member, parameters, result);
  if ((flags & DISPATCH_PROPERTYPUT) != 0 && member.kind == MemberKind::Stored)
    return put(member, parameters);
  return DISP_E_MEMBERNOTFOUND;
}

HRESULT HostObject::put(const Member& member, const DISPPARAMS& parameters) {
  if (parameters.cArgs != 1 || parameters.cNamedArgs != 1 ||
      parameters.rgdispidNamedArgs[0] != DISPID_PROPERTYPUT)
    return DISP_E_BADPARAMCOUNT;
  VARIANT& value = parameters.rgvarg[0];
  host_.folder.log(pathOf(member) + L" = " + shown(value));
  return VariantCopy(&host_.properties[pathOf(member)], &value);
}

HRESULT HostObject::get(const Member& member, const DISPPARAMS& parameters, VARIANT* result) {
  Call call{inOrder(parameters), result};
  if (member.kind == MemberKind::Method && member.name != L"Item") {
    std::wstring line = pathOf(member) + L'(';
    for (VARIANT* value : call.arguments)
      line += (value == call.arguments.front() ? L"" : L", ") + shown(*value);
    host_.folder.log(line + L')');
  }
  const std::size_t count = call.arguments.size();
  if (member.most == 0 && count > 0 && member.kind == MemberKind::Property) {
    // An index behind a property without one is meant for the object that it gives.
    Variant collection;
    member.run({{}, &collection});
    if (collection.vt != VT_DISPATCH) return DISP_E_BADPARAMCOUNT;
    DISPPARAMS index = parameters;
    return collection.pdispVal->Invoke(DISPID_VALUE, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                                       &index, result, nullptr, nullptr);
  }
  if (count < member.least) return DISP_E_PARAMNOTOPTIONAL;
  if (count > member.most) return DISP_E_BADPARAMCOUNT;
  if (const auto stored = host_.properties.find(pathOf(member)); stored != host_.properties.end())
    return VariantCopy(result, &stored->second);
  member.run(call);
  return S_OK;
}

}  // namespace tintline::test
