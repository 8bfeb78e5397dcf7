// See accessible.h.
#include "win32/controls/accessible.h"

#include <commctrl.h>

#include <memory>
#include <type_traits>
#include <utility>

#include "win32/controls/window.h"
#include "win32/error.h"

namespace tintline {
namespace {

constexpr UINT_PTR kNamed = 0xACC, kLink = 0xACD;  // of the subclasses

class NamedAccessible final : public Accessible {
 public:
  NamedAccessible(HWND control, std::wstring name) : Accessible(control), name_(std::move(name)) {}

  HRESULT STDMETHODCALLTYPE get_accName(VARIANT child, BSTR* name) override {
    return isSelf(child) ? give(name_, name) : Accessible::get_accName(child, name);
  }

 private:
  std::wstring name_;
};

class LinkAccessible final : public Accessible {
 public:
  explicit LinkAccessible(HWND control) : Accessible(control) {}

  HRESULT STDMETHODCALLTYPE get_accRole(VARIANT, VARIANT* role) override {
    return give(ROLE_SYSTEM_LINK, role);
  }
  HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT, BSTR* action) override {
    return give(L"Öffnen", action);
  }
  // Posted: what is opened may keep the program from answering for a while.
  HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT) override {
    if (isGone()) return CO_E_OBJNOTCONNECTED;
    PostMessageW(GetParent(control()), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(control()), STN_CLICKED),
                 reinterpret_cast<LPARAM>(control()));
    return S_OK;
  }
};

// `Data` is what the subclass owns.
template <class Data>
LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                           DWORD_PTR data) {
  const auto* own = reinterpret_cast<const Data*>(data);
  if (message == WM_NCDESTROY) {
    RemoveWindowSubclass(window, procedure<Data>, id);
    delete own;
  } else if (Accessible::isAskedFor(message, lParam)) {
    if constexpr (std::is_same_v<Data, std::wstring>)
      return Accessible::answer<NamedAccessible>(wParam, window, *own);
    else if ((*own)())
      return Accessible::answer<LinkAccessible>(wParam, window);
  }
  return DefSubclassProc(window, message, wParam, lParam);
}

template <class Data>
void subclass(HWND control, UINT_PTR id, Data data) {
  auto own = std::make_unique<Data>(std::move(data));
  if (SetWindowSubclass(control, procedure<Data>, id, reinterpret_cast<DWORD_PTR>(own.get())))
    static_cast<void>(own.release());  // the window's from now on
}

}  // namespace

void setAccessibleName(HWND control, std::wstring name) {
  subclass(control, kNamed, std::move(name));
}

void makeAccessibleLink(HWND control, std::function<bool()> isLink) {
  subclass(control, kLink, std::move(isLink));
}

Accessible::Accessible(HWND control) : control_(control) {
  throwIfFailed(
      CreateStdAccessibleObject(control, OBJID_CLIENT, __uuidof(IAccessible), standard_.putVoid()));
  children_ = standard_.query<IEnumVARIANT>();
}

bool Accessible::isAskedFor(UINT message, LPARAM lParam) {
  return message == WM_GETOBJECT && static_cast<LONG>(lParam) == OBJID_CLIENT;
}

HRESULT Accessible::give(const std::wstring& text, BSTR* out) {
  if (out == nullptr) return E_INVALIDARG;
  *out = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  return *out != nullptr ? S_OK : E_OUTOFMEMORY;
}

HRESULT Accessible::give(LONG number, VARIANT* out) {
  if (out == nullptr) return E_INVALIDARG;
  out->vt = VT_I4;
  out->lVal = number;
  return S_OK;
}

// -------------------------------------------------------------------------- IUnknown
HRESULT Accessible::QueryInterface(REFIID id, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (id == IID_IUnknown || id == IID_IDispatch || id == __uuidof(IAccessible))
    *object = static_cast<IAccessible*>(this);
  else if (id == IID_IOleWindow)
    *object = static_cast<IOleWindow*>(this);
  else if (id == IID_IEnumVARIANT && hasStandardChildren())
    *object = static_cast<IEnumVARIANT*>(this);
  if (*object == nullptr) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

ULONG Accessible::AddRef() { return static_cast<ULONG>(InterlockedIncrement(&references_)); }

ULONG Accessible::Release() {
  const LONG left = InterlockedDecrement(&references_);
  if (left == 0) delete this;
  return static_cast<ULONG>(left);
}

// ------------------------------------------------- the rest is the system's, word for word
HRESULT Accessible::GetTypeInfoCount(UINT* count) { return standard_->GetTypeInfoCount(count); }

HRESULT Accessible::GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) {
  return standard_->GetTypeInfo(index, locale, info);
}

HRESULT Accessible::GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale,
                                  DISPID* members) {
  return standard_->GetIDsOfNames(id, names, count, locale, members);
}

HRESULT Accessible::Invoke(DISPID member, REFIID, LCID locale, WORD flags, DISPPARAMS* arguments,
                           VARIANT* result, EXCEPINFO* exception, UINT* wrong) {
  ComPtr<ITypeInfo> type;
  const HRESULT known = standard_->GetTypeInfo(0, locale, type.put());
  if (FAILED(known)) return known;
  return DispInvoke(static_cast<IAccessible*>(this), type.get(), member, flags, arguments, result,
                    exception, wrong);
}

HRESULT Accessible::get_accParent(IDispatch** parent) { return standard_->get_accParent(parent); }

HRESULT Accessible::get_accChildCount(LONG* count) { return standard_->get_accChildCount(count); }

HRESULT Accessible::get_accChild(VARIANT child, IDispatch** object) {
  return standard_->get_accChild(child, object);
}

HRESULT Accessible::get_accName(VARIANT child, BSTR* name) {
  return standard_->get_accName(child, name);
}

HRESULT Accessible::get_accValue(VARIANT child, BSTR* value) {
  return standard_->get_accValue(child, value);
}

HRESULT Accessible::get_accDescription(VARIANT child, BSTR* description) {
  return standard_->get_accDescription(child, description);
}

HRESULT Accessible::get_accRole(VARIANT child, VARIANT* role) {
  return standard_->get_accRole(child, role);
}

HRESULT Accessible::get_accState(VARIANT child, VARIANT* state) {
  return standard_->get_accState(child, state);
}

HRESULT Accessible::get_accHelp(VARIANT child, BSTR* help) {
  return standard_->get_accHelp(child, help);
}

HRESULT Accessible::get_accHelpTopic(BSTR* file, VARIANT child, LONG* topic) {
  return standard_->get_accHelpTopic(file, child, topic);
}

HRESULT Accessible::get_accKeyboardShortcut(VARIANT child, BSTR* keys) {
  return standard_->get_accKeyboardShortcut(child, keys);
}

HRESULT Accessible::get_accFocus(VARIANT* child) { return standard_->get_accFocus(child); }

HRESULT Accessible::get_accSelection(VARIANT* children) {
  return standard_->get_accSelection(children);
}

HRESULT Accessible::get_accDefaultAction(VARIANT child, BSTR* action) {
  return standard_->get_accDefaultAction(child, action);
}

HRESULT Accessible::accSelect(LONG flags, VARIANT child) {
  return standard_->accSelect(flags, child);
}

HRESULT Accessible::accLocation(LONG* left, LONG* top, LONG* width, LONG* height, VARIANT child) {
  return standard_->accLocation(left, top, width, height, child);
}

HRESULT Accessible::accNavigate(LONG direction, VARIANT start, VARIANT* end) {
  return standard_->accNavigate(direction, start, end);
}

HRESULT Accessible::accHitTest(LONG left, LONG top, VARIANT* child) {
  return standard_->accHitTest(left, top, child);
}

HRESULT Accessible::accDoDefaultAction(VARIANT child) {
  return standard_->accDoDefaultAction(child);
}

HRESULT Accessible::put_accName(VARIANT child, BSTR name) {
  return standard_->put_accName(child, name);
}

HRESULT Accessible::put_accValue(VARIANT child, BSTR value) {
  return standard_->put_accValue(child, value);
}

HRESULT Accessible::Next(ULONG count, VARIANT* children, ULONG* given) {
  return children_->Next(count, children, given);
}

HRESULT Accessible::Skip(ULONG count) { return children_->Skip(count); }

HRESULT Accessible::Reset() { return children_->Reset(); }

HRESULT Accessible::Clone(IEnumVARIANT** copy) { return children_->Clone(copy); }

HRESULT Accessible::GetWindow(HWND* window) {
  if (window == nullptr) return E_INVALIDARG;
  *window = control_;
  return S_OK;
}

}  // namespace tintline
