// Owns the value in a VARIANT.
//
// Tested by tests/win32/office/office_test.cpp.
#pragma once

#include <windows.h>
#include <oleauto.h>

#include <new>
#include <string_view>

namespace tintline {

// An array of it is an array of VARIANT.
struct Variant : VARIANT {
  Variant() noexcept : VARIANT{} { VariantInit(this); }
  ~Variant() { VariantClear(this); }
  Variant(const Variant&) = delete;
  Variant& operator=(const Variant&) = delete;

  void setText(std::wstring_view text) {
    BSTR copy = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    if (copy == nullptr) throw std::bad_alloc();
    VariantClear(this);
    vt = VT_BSTR;
    bstrVal = copy;
  }

  // Takes a reference of its own; the object may be none.
  void setObject(IDispatch* object) {
    if (object != nullptr) object->AddRef();
    VariantClear(this);
    vt = VT_DISPATCH;
    pdispVal = object;
  }
};
static_assert(sizeof(Variant) == sizeof(VARIANT));

}  // namespace tintline
