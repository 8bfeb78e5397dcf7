// See browser_site.h. Tested by tests/win32/preview/browser_site_test.cpp.
#include "win32/preview/browser_site.h"

#include <mshtmdid.h>
#include <shlwapi.h>

#include <exception>
#include <utility>

#include "output/link_target.h"

namespace tintline {
namespace {

constexpr LONG kDownloadControl =
    DLCTL_NO_SCRIPTS | DLCTL_NO_JAVA | DLCTL_NO_DLACTIVEXCTLS | DLCTL_NO_RUNACTIVEXCTLS |
    DLCTL_NO_FRAMEDOWNLOAD | DLCTL_NO_CLIENTPULL | DLCTL_NO_BEHAVIORS | DLCTL_FORCEOFFLINE |
    DLCTL_SILENT;  // images, sounds and videos are not among what may be loaded either

std::wstring textOf(const VARIANT& argument) {
  const VARIANT& value = argument.vt == (VT_BYREF | VT_VARIANT) ? *argument.pvarVal : argument;
  if (value.vt != VT_BSTR || value.bstrVal == nullptr) return {};
  return {value.bstrVal, SysStringLen(value.bstrVal)};
}

// Events hand their arguments over from the last to the first; Cancel is the last of some.
void setCancel(VARIANT& argument, bool cancel = true) {
  if (argument.vt == (VT_BYREF | VT_BOOL))
    *argument.pboolVal = cancel ? VARIANT_TRUE : VARIANT_FALSE;
}

bool samePath(const std::wstring& a, const std::wstring& b) {
  return CompareStringOrdinal(a.data(), static_cast<int>(a.size()), b.data(),
                              static_cast<int>(b.size()), TRUE) == CSTR_EQUAL;
}

}  // namespace

BrowserSite::BrowserSite(HWND window, BrowserEvents events)
    : window_(window), events_(std::move(events)) {}

void BrowserSite::setPage(const std::filesystem::path& page) { page_ = page.native(); }

void BrowserSite::detach() {
  events_ = {};
  window_ = nullptr;
}

bool BrowserSite::mayTranslate(const MSG& message) {
  if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST) return false;
  if (message.message == WM_SYSKEYDOWN || message.message == WM_SYSKEYUP) return false;
  const bool control = GetKeyState(VK_CONTROL) < 0;
  switch (message.wParam) {
    case 'A':
    case 'C':
      return control && GetKeyState(VK_SHIFT) >= 0;
    case VK_INSERT:
      return control;
    case VK_UP:
    case VK_DOWN:
    case VK_LEFT:
    case VK_RIGHT:
    case VK_PRIOR:
    case VK_NEXT:
    case VK_HOME:
    case VK_END:
      return true;
    case VK_TAB:
    case VK_RETURN:
      return !control;
    default:
      return false;
  }
}

// ------------------------------------------------------------------------------ IUnknown
HRESULT BrowserSite::QueryInterface(REFIID id, void** object) {
  *object = nullptr;
  if (id == IID_IUnknown || id == IID_IOleClientSite)
    *object = static_cast<IOleClientSite*>(this);
  else if (id == IID_IOleWindow || id == IID_IOleInPlaceSite)
    *object = static_cast<IOleInPlaceSite*>(this);
  else if (id == IID_IOleInPlaceFrame || id == IID_IOleInPlaceUIWindow)
    *object = static_cast<IOleInPlaceFrame*>(this);
  else if (id == IID_IDocHostUIHandler)
    *object = static_cast<IDocHostUIHandler*>(this);
  else if (id == IID_IServiceProvider)
    *object = static_cast<IServiceProvider*>(this);
  else if (id == IID_IInternetSecurityManager)
    *object = static_cast<IInternetSecurityManager*>(this);
  else if (id == IID_IDispatch || id == DIID_DWebBrowserEvents2)
    *object = static_cast<IDispatch*>(this);
  if (*object == nullptr) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

ULONG BrowserSite::AddRef() { return static_cast<ULONG>(InterlockedIncrement(&references_)); }

ULONG BrowserSite::Release() {
  const LONG left = InterlockedDecrement(&references_);
  if (left == 0) delete this;
  return static_cast<ULONG>(left);
}

// ------------------------------------------------------------------------ IOleClientSite
HRESULT BrowserSite::SaveObject() { return E_NOTIMPL; }
HRESULT BrowserSite::GetMoniker(DWORD, DWORD, IMoniker** moniker) {
  *moniker = nullptr;
  return E_NOTIMPL;
}
HRESULT BrowserSite::GetContainer(IOleContainer** container) {
  *container = nullptr;
  return E_NOINTERFACE;
}
HRESULT BrowserSite::ShowObject() { return S_OK; }
HRESULT BrowserSite::OnShowWindow(BOOL) { return S_OK; }
HRESULT BrowserSite::RequestNewObjectLayout() { return E_NOTIMPL; }

// ----------------------------------------------------------- IOleWindow, IOleInPlaceSite
HRESULT BrowserSite::GetWindow(HWND* window) {
  *window = window_;
  return window_ != nullptr ? S_OK : E_FAIL;
}
HRESULT BrowserSite::ContextSensitiveHelp(BOOL) { return E_NOTIMPL; }
HRESULT BrowserSite::CanInPlaceActivate() { return S_OK; }
HRESULT BrowserSite::OnInPlaceActivate() { return S_OK; }
HRESULT BrowserSite::OnUIActivate() { return S_OK; }

HRESULT BrowserSite::GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                                      RECT* place, RECT* clip, OLEINPLACEFRAMEINFO* info) {
  AddRef();
  *frame = this;
  *document = nullptr;
  if (GetClientRect(window_, place) == FALSE) *place = {};
  *clip = *place;
  info->fMDIApp = FALSE;
  info->hwndFrame = GetAncestor(window_, GA_ROOT);
  info->haccel = nullptr;
  info->cAccelEntries = 0;
  return S_OK;
}

HRESULT BrowserSite::Scroll(SIZE) { return E_NOTIMPL; }
HRESULT BrowserSite::OnUIDeactivate(BOOL) { return S_OK; }
HRESULT BrowserSite::OnInPlaceDeactivate() { return S_OK; }
HRESULT BrowserSite::DiscardUndoState() { return S_OK; }
HRESULT BrowserSite::DeactivateAndUndo() { return S_OK; }
HRESULT BrowserSite::OnPosRectChange(const RECT*) { return S_OK; }

// ---------------------------------------------------------------------- IOleInPlaceFrame
HRESULT BrowserSite::GetBorder(RECT*) { return INPLACE_E_NOTOOLSPACE; }
HRESULT BrowserSite::RequestBorderSpace(const BORDERWIDTHS*) { return INPLACE_E_NOTOOLSPACE; }
HRESULT BrowserSite::SetBorderSpace(const BORDERWIDTHS*) { return S_OK; }
HRESULT BrowserSite::SetActiveObject(IOleInPlaceActiveObject*, LPCOLESTR) { return S_OK; }
HRESULT BrowserSite::InsertMenus(HMENU, OLEMENUGROUPWIDTHS*) { return E_NOTIMPL; }
HRESULT BrowserSite::SetMenu(HMENU, HOLEMENU, HWND) { return S_OK; }
HRESULT BrowserSite::RemoveMenus(HMENU) { return S_OK; }
HRESULT BrowserSite::SetStatusText(LPCOLESTR) { return S_OK; }
HRESULT BrowserSite::EnableModeless(BOOL) { return S_OK; }
HRESULT BrowserSite::TranslateAccelerator(MSG*, WORD) { return S_FALSE; }

// --------------------------------------------------------------------- IDocHostUIHandler
HRESULT BrowserSite::ShowContextMenu(DWORD, POINT* place, IUnknown*, IDispatch*) {
  if (events_.onMenu && place != nullptr) events_.onMenu(*place);
  return S_OK;  // shown, as far as the browser knows
}

HRESULT BrowserSite::GetHostInfo(DOCHOSTUIINFO* info) {
  info->dwFlags = DOCHOSTUIFLAG_NO3DBORDER | DOCHOSTUIFLAG_DISABLE_SCRIPT_INACTIVE |
                  DOCHOSTUIFLAG_THEME | DOCHOSTUIFLAG_DPI_AWARE;
  info->dwDoubleClick = DOCHOSTUIDBLCLK_DEFAULT;
  return S_OK;
}

HRESULT BrowserSite::ShowUI(DWORD, IOleInPlaceActiveObject*, IOleCommandTarget*, IOleInPlaceFrame*,
                            IOleInPlaceUIWindow*) {
  return S_OK;  // no menus and bars of its own
}
HRESULT BrowserSite::HideUI() { return S_OK; }
HRESULT BrowserSite::UpdateUI() { return S_OK; }
HRESULT BrowserSite::OnDocWindowActivate(BOOL) { return S_OK; }
HRESULT BrowserSite::OnFrameWindowActivate(BOOL) { return S_OK; }
HRESULT BrowserSite::ResizeBorder(const RECT*, IOleInPlaceUIWindow*, BOOL) { return S_OK; }

HRESULT BrowserSite::TranslateAccelerator(MSG* message, const GUID*, DWORD) {
  return mayTranslate(*message) ? S_FALSE : S_OK;  // S_OK: already dealt with
}

HRESULT BrowserSite::GetOptionKeyPath(LPOLESTR*, DWORD) { return E_NOTIMPL; }
HRESULT BrowserSite::GetDropTarget(IDropTarget*, IDropTarget**) { return E_NOTIMPL; }
HRESULT BrowserSite::GetExternal(IDispatch** external) {
  *external = nullptr;
  return S_FALSE;
}
HRESULT BrowserSite::TranslateUrl(DWORD, OLECHAR*, OLECHAR**) { return S_FALSE; }
HRESULT BrowserSite::FilterDataObject(IDataObject*, IDataObject**) { return S_FALSE; }

// --------------------------------------------- IServiceProvider, IInternetSecurityManager
HRESULT BrowserSite::QueryService(REFGUID service, REFIID id, void** object) {
  if (service == IID_IInternetSecurityManager)  // the service's id too
    return QueryInterface(id, object);
  *object = nullptr;
  return E_NOINTERFACE;
}

HRESULT BrowserSite::SetSecuritySite(IInternetSecurityMgrSite*) { return INET_E_DEFAULT_ACTION; }
HRESULT BrowserSite::GetSecuritySite(IInternetSecurityMgrSite**) { return INET_E_DEFAULT_ACTION; }
HRESULT BrowserSite::MapUrlToZone(LPCWSTR, DWORD*, DWORD) { return INET_E_DEFAULT_ACTION; }
HRESULT BrowserSite::GetSecurityId(LPCWSTR, BYTE*, DWORD*, DWORD_PTR) {
  return INET_E_DEFAULT_ACTION;
}

HRESULT BrowserSite::ProcessUrlAction(LPCWSTR, DWORD, BYTE* policy, DWORD policySize, BYTE*, DWORD,
                                      DWORD, DWORD) {
  if (policySize >= sizeof(DWORD)) *reinterpret_cast<DWORD*>(policy) = URLPOLICY_DISALLOW;
  return S_FALSE;  // not allowed
}

HRESULT BrowserSite::QueryCustomPolicy(LPCWSTR, REFGUID, BYTE**, DWORD*, BYTE*, DWORD, DWORD) {
  return INET_E_DEFAULT_ACTION;
}
HRESULT BrowserSite::SetZoneMapping(DWORD, LPCWSTR, DWORD) { return INET_E_DEFAULT_ACTION; }
HRESULT BrowserSite::GetZoneMappings(DWORD, IEnumString**, DWORD) { return INET_E_DEFAULT_ACTION; }

// ----------------------------------------------------------------------------- IDispatch
HRESULT BrowserSite::GetTypeInfoCount(UINT* count) {
  *count = 0;
  return S_OK;
}
HRESULT BrowserSite::GetTypeInfo(UINT, LCID, ITypeInfo**) { return E_NOTIMPL; }
HRESULT BrowserSite::GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) {
  return DISP_E_UNKNOWNNAME;
}

HRESULT BrowserSite::Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS* arguments,
                            VARIANT* result, EXCEPINFO*, UINT*) {
  try {
    return answer(member, arguments, result);
  } catch (const std::exception&) {
    return E_FAIL;  // no exception may reach the browser
  }
}

HRESULT BrowserSite::answer(DISPID member, DISPPARAMS* arguments, VARIANT* result) {
  const UINT count = arguments != nullptr ? arguments->cArgs : 0;
  switch (member) {
    case DISPID_AMBIENT_DLCONTROL:
      if (result == nullptr) return E_INVALIDARG;
      result->vt = VT_I4;
      result->lVal = kDownloadControl;
      return S_OK;
    case DISPID_BEFORENAVIGATE2:
      if (count != 7) return DISP_E_BADPARAMCOUNT;
      beforeNavigate(*arguments);
      return S_OK;
    case DISPID_NEWWINDOW2:  // (ppDisp, Cancel)
      if (count != 2) return DISP_E_BADPARAMCOUNT;
      setCancel(arguments->rgvarg[0]);
      return S_OK;
    case DISPID_NEWWINDOW3:  // (ppDisp, Cancel, flags, urlContext, url)
      if (count != 5) return DISP_E_BADPARAMCOUNT;
      setCancel(arguments->rgvarg[3]);
      return S_OK;
    case DISPID_DOCUMENTCOMPLETE:
      if (events_.onLoaded) events_.onLoaded();
      return S_OK;
    case DISPID_NAVIGATEERROR:
      if (events_.onFailed) events_.onFailed();
      return S_OK;
    default:
      return DISP_E_MEMBERNOTFOUND;
  }
}

// (pDisp, URL, Flags, TargetFrameName, PostData, Headers, Cancel)
void BrowserSite::beforeNavigate(DISPPARAMS& arguments) {
  setCancel(arguments.rgvarg[0]);  // first, whatever happens then
  const std::wstring address = textOf(arguments.rgvarg[5]);
  if (isOwnPage(address)) {
    setCancel(arguments.rgvarg[0], false);
    return tellAnchor(address);
  }
  const LinkTarget target = classifyLink(address);
  if (target.kind == LinkTarget::Kind::External && events_.onExternalLink)
    events_.onExternalLink(target.value);
}

void BrowserSite::tellAnchor(const std::wstring& address) {
  const std::size_t mark = address.find_last_of(L'#');
  if (mark == address.npos || samePath(address, page_)) return;  // "#" in the path of the page
  const std::wstring id = address.substr(mark + 1);
  if (id != std::exchange(ownAnchor_, {}) && events_.onAnchor) events_.onAnchor(id);
}

// The browser names a file by its path or by a file address, in both with the "#" of a link.
bool BrowserSite::isOwnPage(const std::wstring& address) const {
  if (page_.empty()) return false;
  const auto withoutFragment = [](const std::wstring& text) {
    return text.substr(0, text.find_last_of(L'#'));
  };
  if (UrlIsFileUrlW(address.c_str()) == FALSE)
    return samePath(address, page_) || samePath(withoutFragment(address), page_);
  constexpr DWORD kSize = 4096;  // longer than any path that the browser can open
  wchar_t path[kSize];
  DWORD size = kSize;
  // In a file address a "#" of the path is written "%23".
  const std::wstring file = address.substr(0, address.find(L'#'));
  return SUCCEEDED(PathCreateFromUrlW(file.c_str(), path, &size, 0)) &&
         samePath(std::wstring(path, size), page_);
}

}  // namespace tintline
