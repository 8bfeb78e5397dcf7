// See office_object.h. Tested by tests/win32/office/office_test.cpp.
#include "win32/office/office_object.h"

#include <type_traits>
#include <vector>

#include "win32/office/office_error.h"

namespace tintline {
namespace {

// `out`: where the host writes a number that it may change.
void fill(Variant& to, const OfficeValue& value, LONG& out) {
  std::visit(
      [&]<class T>(const T& from) {
        if constexpr (std::is_same_v<T, std::monostate>) {  // left out
          to.vt = VT_ERROR;
          to.scode = DISP_E_PARAMNOTFOUND;
        } else if constexpr (std::is_same_v<T, bool>) {
          to.vt = VT_BOOL;
          to.boolVal = from ? VARIANT_TRUE : VARIANT_FALSE;
        } else if constexpr (std::is_same_v<T, std::int32_t>) {
          to.vt = VT_I4;
          to.lVal = from;
        } else if constexpr (std::is_same_v<T, std::wstring>) {
          to.setText(from);
        } else if constexpr (std::is_same_v<T, OfficeOut>) {
          out = from.value;
          to.vt = VT_I4 | VT_BYREF;
          to.plVal = &out;
        } else if constexpr (std::is_same_v<T, OfficeObjectPtr>) {
          to.setObject(from == nullptr ? nullptr : dynamic_cast<DispatchObject&>(*from).dispatch());
        }
      },
      value);
}

// Arguments as IDispatch wants them: the last one first.
class Arguments {
 public:
  explicit Arguments(std::span<OfficeValue> values)
      : values_(values), variants_(values.size()), outs_(values.size()) {
    for (std::size_t i = 0; i < values.size(); ++i)
      fill(variants_[values.size() - 1 - i], values[i], outs_[i]);
  }

  DISPPARAMS parameters() {
    return {variants_.data(), nullptr, static_cast<UINT>(variants_.size()), 0};
  }

  // Takes over what the host wrote.
  void writeBack() {
    for (std::size_t i = 0; i < values_.size(); ++i)
      if (auto* out = std::get_if<OfficeOut>(&values_[i])) out->value = outs_[i];
  }

 private:
  std::span<OfficeValue> values_;
  std::vector<Variant> variants_;
  std::vector<LONG> outs_;
};

}  // namespace

HRESULT MemberIds::find(IDispatch& object, std::wstring_view member, DISPID& id) {
  if (const auto known = ids_.find(member); known != ids_.end()) {
    id = known->second;
    return S_OK;
  }
  std::wstring name(member);
  LPOLESTR names[] = {name.data()};
  const HRESULT result = object.GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
  if (SUCCEEDED(result)) ids_.emplace(std::move(name), id);
  return result;
}

std::shared_ptr<MemberIds> MemberIds::of(std::wstring_view member) {
  const auto known = given_.find(member);
  if (known != given_.end()) return known->second;
  return given_.emplace(member, std::make_shared<MemberIds>()).first->second;
}

OfficeValue DispatchObject::get(std::wstring_view member, std::span<OfficeValue> values) {
  Arguments arguments(values);
  DISPPARAMS parameters = arguments.parameters();
  Variant result;
  // Both flags, as script languages do: whether a member that gives a value is a property or
  // a method is the host's choice (collections have "Item" as either).
  invoke(member, DISPATCH_PROPERTYGET | DISPATCH_METHOD, parameters, &result);
  arguments.writeBack();
  return valueOf(member, result);
}

void DispatchObject::put(std::wstring_view member, OfficeValue value) {
  Arguments arguments({&value, 1});
  DISPPARAMS parameters = arguments.parameters();
  DISPID name = DISPID_PROPERTYPUT;  // the one argument of a put has this name
  parameters.rgdispidNamedArgs = &name;
  parameters.cNamedArgs = 1;
  invoke(member, DISPATCH_PROPERTYPUT, parameters, nullptr);
}

OfficeValue DispatchObject::call(std::wstring_view member, std::span<OfficeValue> arguments) {
  return get(member, arguments);
}

void DispatchObject::invoke(std::wstring_view member, WORD flags, DISPPARAMS& parameters,
                            VARIANT* result) {
  const auto self = shared_from_this();  // others may let go of this object while it waits
  ExceptionInfo exception;
  const HRESULT code = session_->askPatiently([&] {
    EXCEPINFO* info = exception.put();
    DISPID id = DISPID_UNKNOWN;
    const HRESULT found = ids_->find(*object_.get(), member, id);
    if (FAILED(found)) return found;
    return exception.codeOf(object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters,
                                            result, info, nullptr));
  });
  if (FAILED(code)) throw memberError(member, code, exception.description());
}

OfficeValue DispatchObject::valueOf(std::wstring_view member, Variant& variant) const {
  const auto convert = [&](VARTYPE type) {
    const HRESULT result = VariantChangeType(&variant, &variant, 0, type);
    if (FAILED(result)) throw memberError(member, result);
  };
  switch (variant.vt) {
    case VT_EMPTY:
    case VT_NULL:
      return std::monostate{};
    case VT_BOOL:
      return variant.boolVal != VARIANT_FALSE;
    case VT_I1:
    case VT_I2:
    case VT_I4:
    case VT_I8:
    case VT_INT:
    case VT_UI1:
    case VT_UI2:
    case VT_UI4:
    case VT_UI8:
    case VT_UINT:
    case VT_R4:  // sizes and distances
    case VT_R8:
      convert(VT_I4);
      return static_cast<std::int32_t>(variant.lVal);
    case VT_DISPATCH:
    case VT_UNKNOWN:
      convert(VT_DISPATCH);
      if (variant.pdispVal == nullptr) return OfficeObjectPtr{};
      return std::make_shared<DispatchObject>(session_, ComPtr<IDispatch>::share(variant.pdispVal),
                                              ids_->of(member));
    default:
      convert(VT_BSTR);
      return std::wstring(variant.bstrVal, SysStringLen(variant.bstrVal));
  }
}

}  // namespace tintline
