// What the system's web browser object talks to: the place it is shown in, and
// three locks around the page that it shows. Comments of the source stand in the
// page as they are, so the page is nobody's to trust:
//   1. the ambient property DLCONTROL switches off scripts, controls, frames and
//      every download;
//   2. the security manager of the site disallows every action that is asked for;
//   3. no navigation but to the program's own page goes on; web and mail
//      addresses (see output/link_target.h) are handed out, new windows refused.
//
// Tested by tests/win32/preview/browser_site_test.cpp.
#pragma once

#include <windows.h>
#include <exdisp.h>
#include <exdispid.h>
#include <mshtmhst.h>
#include <ole2.h>
#include <servprov.h>
#include <urlmon.h>

#include <filesystem>
#include <functional>
#include <string>

namespace tintline {

struct BrowserEvents {
  std::function<void()> onLoaded;
  std::function<void()> onFailed;  // called from inside the browser: do not destroy it there
  std::function<void(const std::wstring& address)> onExternalLink;
  std::function<void(const std::wstring& id)> onAnchor;  // the user follows a link in the page
  std::function<void(POINT place)> onMenu;               // wanted at that place of the screen
};

class BrowserSite final : public IOleClientSite,
                          public IOleInPlaceSite,
                          public IOleInPlaceFrame,
                          public IDocHostUIHandler,
                          public IServiceProvider,
                          public IInternetSecurityManager,
                          public IDispatch {
 public:
  // `window`: the window that the browser fills. Born with one reference.
  BrowserSite(HWND window, BrowserEvents events);

  // The one page that may be shown from now on, with all its "#" links.
  void setPage(const std::filesystem::path& page);

  // The program leads the browser to that id of the page, which onAnchor is not told of.
  void setOwnAnchor(const std::wstring& id) { ownAnchor_ = id; }

  // Nothing is told any more: the owner goes, the browser may live a little longer.
  void detach();

  // Whether the browser may see this key: moving about, Tab, copying, selecting everything.
  // All its other keys would open, print, reload or leave the page.
  static bool mayTranslate(const MSG& message);

  // IUnknown
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;

  // IOleClientSite
  HRESULT STDMETHODCALLTYPE SaveObject() override;
  HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker** moniker) override;
  HRESULT STDMETHODCALLTYPE GetContainer(IOleContainer** container) override;
  HRESULT STDMETHODCALLTYPE ShowObject() override;
  HRESULT STDMETHODCALLTYPE OnShowWindow(BOOL) override;
  HRESULT STDMETHODCALLTYPE RequestNewObjectLayout() override;

  // IOleWindow, for the place and for its frame
  HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override;
  HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override;

  // IOleInPlaceSite
  HRESULT STDMETHODCALLTYPE CanInPlaceActivate() override;
  HRESULT STDMETHODCALLTYPE OnInPlaceActivate() override;
  HRESULT STDMETHODCALLTYPE OnUIActivate() override;
  HRESULT STDMETHODCALLTYPE GetWindowContext(IOleInPlaceFrame** frame,
                                             IOleInPlaceUIWindow** document, RECT* place,
                                             RECT* clip, OLEINPLACEFRAMEINFO* info) override;
  HRESULT STDMETHODCALLTYPE Scroll(SIZE) override;
  HRESULT STDMETHODCALLTYPE OnUIDeactivate(BOOL) override;
  HRESULT STDMETHODCALLTYPE OnInPlaceDeactivate() override;
  HRESULT STDMETHODCALLTYPE DiscardUndoState() override;
  HRESULT STDMETHODCALLTYPE DeactivateAndUndo() override;
  HRESULT STDMETHODCALLTYPE OnPosRectChange(const RECT*) override;

  // IOleInPlaceFrame
  HRESULT STDMETHODCALLTYPE GetBorder(RECT*) override;
  HRESULT STDMETHODCALLTYPE RequestBorderSpace(const BORDERWIDTHS*) override;
  HRESULT STDMETHODCALLTYPE SetBorderSpace(const BORDERWIDTHS*) override;
  HRESULT STDMETHODCALLTYPE SetActiveObject(IOleInPlaceActiveObject*, LPCOLESTR) override;
  HRESULT STDMETHODCALLTYPE InsertMenus(HMENU, OLEMENUGROUPWIDTHS*) override;
  HRESULT STDMETHODCALLTYPE SetMenu(HMENU, HOLEMENU, HWND) override;
  HRESULT STDMETHODCALLTYPE RemoveMenus(HMENU) override;
  HRESULT STDMETHODCALLTYPE SetStatusText(LPCOLESTR) override;
  HRESULT STDMETHODCALLTYPE EnableModeless(BOOL) override;  // and of IDocHostUIHandler
  HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG*, WORD) override;

  // IDocHostUIHandler
  HRESULT STDMETHODCALLTYPE ShowContextMenu(DWORD, POINT*, IUnknown*, IDispatch*) override;
  HRESULT STDMETHODCALLTYPE GetHostInfo(DOCHOSTUIINFO* info) override;
  HRESULT STDMETHODCALLTYPE ShowUI(DWORD, IOleInPlaceActiveObject*, IOleCommandTarget*,
                                   IOleInPlaceFrame*, IOleInPlaceUIWindow*) override;
  HRESULT STDMETHODCALLTYPE HideUI() override;
  HRESULT STDMETHODCALLTYPE UpdateUI() override;
  HRESULT STDMETHODCALLTYPE OnDocWindowActivate(BOOL) override;
  HRESULT STDMETHODCALLTYPE OnFrameWindowActivate(BOOL) override;
  HRESULT STDMETHODCALLTYPE ResizeBorder(const RECT*, IOleInPlaceUIWindow*, BOOL) override;
  HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG* message, const GUID*, DWORD) override;
  HRESULT STDMETHODCALLTYPE GetOptionKeyPath(LPOLESTR*, DWORD) override;
  HRESULT STDMETHODCALLTYPE GetDropTarget(IDropTarget*, IDropTarget**) override;
  HRESULT STDMETHODCALLTYPE GetExternal(IDispatch** external) override;
  HRESULT STDMETHODCALLTYPE TranslateUrl(DWORD, OLECHAR*, OLECHAR**) override;
  HRESULT STDMETHODCALLTYPE FilterDataObject(IDataObject*, IDataObject**) override;

  // IServiceProvider
  HRESULT STDMETHODCALLTYPE QueryService(REFGUID service, REFIID id, void** object) override;

  // IInternetSecurityManager
  HRESULT STDMETHODCALLTYPE SetSecuritySite(IInternetSecurityMgrSite*) override;
  HRESULT STDMETHODCALLTYPE GetSecuritySite(IInternetSecurityMgrSite**) override;
  HRESULT STDMETHODCALLTYPE MapUrlToZone(LPCWSTR, DWORD*, DWORD) override;
  HRESULT STDMETHODCALLTYPE GetSecurityId(LPCWSTR, BYTE*, DWORD*, DWORD_PTR) override;
  HRESULT STDMETHODCALLTYPE ProcessUrlAction(LPCWSTR, DWORD, BYTE* policy, DWORD policySize, BYTE*,
                                             DWORD, DWORD, DWORD) override;
  HRESULT STDMETHODCALLTYPE QueryCustomPolicy(LPCWSTR, REFGUID, BYTE**, DWORD*, BYTE*, DWORD,
                                              DWORD) override;
  HRESULT STDMETHODCALLTYPE SetZoneMapping(DWORD, LPCWSTR, DWORD) override;
  HRESULT STDMETHODCALLTYPE GetZoneMappings(DWORD, IEnumString**, DWORD) override;

  // IDispatch: ambient properties, and the browser's events (DWebBrowserEvents2)
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS* arguments,
                                   VARIANT* result, EXCEPINFO*, UINT*) override;

 private:
  ~BrowserSite() = default;  // by Release only

  HRESULT answer(DISPID member, DISPPARAMS* arguments, VARIANT* result);
  void beforeNavigate(DISPPARAMS& arguments);
  bool isOwnPage(const std::wstring& address) const;
  void tellAnchor(const std::wstring& address);

  LONG references_ = 1;
  HWND window_;
  BrowserEvents events_;
  std::wstring page_;
  std::wstring ownAnchor_;  // where the program itself leads the browser
};

}  // namespace tintline
