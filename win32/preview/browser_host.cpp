// See browser_host.h. Tested by tests/win32/preview/preview_test.cpp.
#include "win32/preview/browser_host.h"

#include <shlwapi.h>

#include <memory>
#include <utility>

#include "win32/error.h"

namespace tintline {
namespace {

// In none of the libraries of mingw-w64.
constexpr CLSID kHtmlDocument = {
    0x25336920, 0x03F9, 0x11CF, {0x8F, 0xD0, 0x00, 0xAA, 0x00, 0x68, 0x6F, 0x13}};

struct FreeString {
  void operator()(wchar_t* text) const { SysFreeString(text); }
};
using UniqueString = std::unique_ptr<wchar_t, FreeString>;

// The file address of a path, with "#" and "%" of the path escaped.
UniqueString addressOf(const std::filesystem::path& page) {
  constexpr DWORD kSize = 4096;
  wchar_t address[kSize];
  DWORD size = kSize;
  throwIfFailed(UrlCreateFromPathW(page.c_str(), address, &size, 0));
  return UniqueString(SysAllocString(address));
}

}  // namespace

bool BrowserHost::engineAnswers() {
  ComPtr<IUnknown> document;
  return SUCCEEDED(CoCreateInstance(kHtmlDocument, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown,
                                    document.putVoid()));
}

BrowserHost::BrowserHost(HWND window, BrowserEvents events)
    : window_(window),
      site_(ComPtr<BrowserSite>::adopt(new BrowserSite(window, std::move(events)))) {
  try {
    open();
  } catch (...) {
    close();  // browser and site hold each other
    throw;
  }
}

BrowserHost::~BrowserHost() { close(); }

void BrowserHost::open() {
  throwIfFailed(CoCreateInstance(CLSID_WebBrowser, nullptr, CLSCTX_INPROC_SERVER, IID_IOleObject,
                                 object_.putVoid()));
  throwIfFailed(object_->SetClientSite(site_.get()));  // reads DLCONTROL
  browser_ = object_.query<IWebBrowser2>();
  const auto container = object_.query<IConnectionPointContainer>();
  if (!browser_ || !container) throw Win32Error(E_NOINTERFACE);
  throwIfFailed(container->FindConnectionPoint(DIID_DWebBrowserEvents2, events_.put()));
  throwIfFailed(events_->Advise(static_cast<IDispatch*>(site_.get()), &connection_));
  throwIfFailed(doVerb(OLEIVERB_INPLACEACTIVATE));
  throwIfFailed(browser_->put_Silent(VARIANT_TRUE));  // no message boxes about the page
  throwIfFailed(browser_->put_RegisterAsDropTarget(VARIANT_FALSE));
}

void BrowserHost::close() {
  site_->detach();
  if (connection_ != 0) events_->Unadvise(connection_);
  if (browser_) browser_->Stop();
  if (object_) {
    object_->Close(OLECLOSE_NOSAVE);
    object_->SetClientSite(nullptr);
  }
}

void BrowserHost::navigate(const std::filesystem::path& page) {
  site_->setPage(page);
  VARIANT none;
  VariantInit(&none);
  throwIfFailed(browser_->Navigate(addressOf(page).get(), &none, &none, &none, &none));
}

void BrowserHost::fitWindow() {
  RECT place{};
  GetClientRect(window_, &place);
  if (const auto inPlace = object_.query<IOleInPlaceObject>())
    inPlace->SetObjectRects(&place, &place);
}

void BrowserHost::focus() { doVerb(OLEIVERB_UIACTIVATE); }

bool BrowserHost::translate(MSG& message) {
  if (!BrowserSite::mayTranslate(message)) return false;
  const auto active = browser_.query<IOleInPlaceActiveObject>();
  return active && active->TranslateAccelerator(&message) == S_OK;
}

HRESULT BrowserHost::doVerb(LONG verb) {
  RECT place{};
  GetClientRect(window_, &place);
  return object_->DoVerb(verb, nullptr, site_.get(), 0, window_, &place);
}

}  // namespace tintline
