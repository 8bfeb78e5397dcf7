// What screen readers learn of a control, where the system alone knows too little to tell: names of
// controls that show none, links, and the lines of lists that draw themselves
// (list_accessible.h). The interface is IAccessible of Microsoft Active Accessibility, which
// other ways of asking (UI Automation) stand on as well.
//
// Tested by tests/win32/controls/accessible_test.cpp.
#pragma once

#include <windows.h>
#include <oleacc.h>
#include <oleauto.h>
#include <oleidl.h>

#include <exception>
#include <functional>
#include <string>

#include "win32/com_ptr.h"

namespace tintline {

// The control has that name from now on.
void setAccessibleName(HWND control, std::wstring name);

// The control is a link as long as `isLink`: what it shows is its name, and opening it is a click.
void makeAccessibleLink(HWND control, std::function<bool()> isLink);

// What the system tells of a control. Others tell more in their own words.
class Accessible : public IAccessible, public IEnumVARIANT, public IOleWindow {
 public:
  // Whether a message asks for the client area, and the answer: an object of that kind, or 0, with
  // which the system answers itself.
  static bool isAskedFor(UINT message, LPARAM lParam);
  template <class Object, class... Arguments>
  static LRESULT answer(WPARAM wParam, const Arguments&... arguments) try {
    const auto object = ComPtr<IAccessible>::adopt(new Object(arguments...));
    return LresultFromObject(__uuidof(IAccessible), wParam, object.get());
  } catch (const std::exception&) {
    return 0;  // none may leave a window procedure
  }

  // IUnknown
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;

  // IDispatch
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* members) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID id, LCID locale, WORD flags,
                                   DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* exception,
                                   UINT* wrong) override;

  // IAccessible. "Child" is CHILDID_SELF or the number of a part, from 1.
  HRESULT STDMETHODCALLTYPE get_accParent(IDispatch** parent) override;
  HRESULT STDMETHODCALLTYPE get_accChildCount(LONG* count) override;
  HRESULT STDMETHODCALLTYPE get_accChild(VARIANT child, IDispatch** object) override;
  HRESULT STDMETHODCALLTYPE get_accName(VARIANT child, BSTR* name) override;
  HRESULT STDMETHODCALLTYPE get_accValue(VARIANT child, BSTR* value) override;
  HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT child, BSTR* description) override;
  HRESULT STDMETHODCALLTYPE get_accRole(VARIANT child, VARIANT* role) override;
  HRESULT STDMETHODCALLTYPE get_accState(VARIANT child, VARIANT* state) override;
  HRESULT STDMETHODCALLTYPE get_accHelp(VARIANT child, BSTR* help) override;
  HRESULT STDMETHODCALLTYPE get_accHelpTopic(BSTR* file, VARIANT child, LONG* topic) override;
  HRESULT STDMETHODCALLTYPE get_accKeyboardShortcut(VARIANT child, BSTR* keys) override;
  HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT* child) override;
  HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT* children) override;
  HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT child, BSTR* action) override;
  HRESULT STDMETHODCALLTYPE accSelect(LONG flags, VARIANT child) override;
  HRESULT STDMETHODCALLTYPE accLocation(LONG* left, LONG* top, LONG* width, LONG* height,
                                        VARIANT child) override;
  HRESULT STDMETHODCALLTYPE accNavigate(LONG direction, VARIANT start, VARIANT* end) override;
  HRESULT STDMETHODCALLTYPE accHitTest(LONG left, LONG top, VARIANT* child) override;
  HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT child) override;
  HRESULT STDMETHODCALLTYPE put_accName(VARIANT child, BSTR name) override;
  HRESULT STDMETHODCALLTYPE put_accValue(VARIANT child, BSTR value) override;

  // IEnumVARIANT: the children, where the system lists them
  HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* children, ULONG* given) override;
  HRESULT STDMETHODCALLTYPE Skip(ULONG count) override;
  HRESULT STDMETHODCALLTYPE Reset() override;
  HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** copy) override;

  // IOleWindow
  HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override;
  HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }

 protected:
  explicit Accessible(HWND control);
  virtual ~Accessible() = default;  // by Release only

  HWND control() const { return control_; }

  // Whether the children are those that the system lists.
  virtual bool hasStandardChildren() const { return static_cast<bool>(children_); }

  // The control is gone, but whoever asked for it keeps this object a little longer.
  bool isGone() const { return !IsWindow(control_); }

  static bool isSelf(const VARIANT& child) {
    return child.vt == VT_I4 && child.lVal == CHILDID_SELF;
  }
  static HRESULT give(const std::wstring& text, BSTR* out);
  static HRESULT give(LONG number, VARIANT* out);

 private:
  LONG references_ = 1;
  HWND control_;
  ComPtr<IAccessible> standard_;
  ComPtr<IEnumVARIANT> children_;
};

}  // namespace tintline
