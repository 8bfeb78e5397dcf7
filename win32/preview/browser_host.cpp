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
std::wstring addressOf(const std::filesystem::path& page) {
  constexpr DWORD kSize = 4096;
  wchar_t address[kSize];
  DWORD size = kSize;
  throwIfFailed(UrlCreateFromPathW(page.c_str(), address, &size, 0));
  return {address, size};
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

void BrowserHost::navigate(const std::filesystem::path& page, bool keepPlace) {
  place_ = keepPlace ? place() : 0;
  anchor_.clear();
  loading_ = true;
  page_ = page;
  site_->setPage(page);
  follow(addressOf(page));
}

void BrowserHost::showAnchor(const std::wstring& id) {
  if (loading_) {
    anchor_ = id;
    return;
  }
  site_->setOwnAnchor(id);
  follow(addressOf(page_) + L"#" + id);
}

// The browser tells it of jumps inside a page, too.
void BrowserHost::loaded() {
  if (!std::exchange(loading_, false)) return;
  if (place_ > 0) restorePlace(place_);
  if (!anchor_.empty()) showAnchor(std::exchange(anchor_, {}));
}

void BrowserHost::follow(const std::wstring& address) const {
  const UniqueString text(SysAllocString(address.c_str()));
  VARIANT none;
  VariantInit(&none);
  throwIfFailed(browser_->Navigate(text.get(), &none, &none, &none, &none));
}

// The elements that a page is scrolled by: in the modes of older pages the body.
std::vector<ComPtr<IHTMLElement2>> BrowserHost::scrolledElements() const {
  std::vector<ComPtr<IHTMLElement2>> elements;
  ComPtr<IDispatch> document;
  if (browser_->get_Document(document.put()) != S_OK || !document) return elements;
  ComPtr<IHTMLElement> root, body;
  if (const auto page = document.query<IHTMLDocument3>()) page->get_documentElement(root.put());
  if (const auto page = document.query<IHTMLDocument2>()) page->get_body(body.put());
  for (const auto* element : {&root, &body})
    if (*element) elements.push_back(element->query<IHTMLElement2>());
  std::erase_if(elements, [](const auto& element) { return !element; });
  return elements;
}

double BrowserHost::place() const {
  for (const auto& element : scrolledElements()) {
    long top = 0, height = 0;
    if (SUCCEEDED(element->get_scrollTop(&top)) && SUCCEEDED(element->get_scrollHeight(&height)) &&
        top > 0 && height > 0)
      return static_cast<double>(top) / static_cast<double>(height);
  }
  return 0;
}

void BrowserHost::restorePlace(double place) const {
  for (const auto& element : scrolledElements()) {
    long height = 0;
    if (SUCCEEDED(element->get_scrollHeight(&height)))
      element->put_scrollTop(static_cast<long>(place * static_cast<double>(height)));
  }
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
