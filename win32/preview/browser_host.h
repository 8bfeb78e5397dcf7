// The system's web browser object in a window of ours, locked down (see
// browser_site.h).
//
// Tested by tests/win32/preview/preview_test.cpp as far as it goes without an HTML engine.
#pragma once

#include <windows.h>
#include <exdisp.h>
#include <mshtml.h>
#include <ole2.h>

#include <filesystem>
#include <string>
#include <vector>

#include "win32/com_ptr.h"
#include "win32/preview/browser_site.h"

namespace tintline {

class BrowserHost {
 public:
  // Whether an HTML engine answers. Takes some 0.1 s: ask once.
  static bool engineAnswers();

  // Puts a browser into the window. The thread has called OleInitialize. Throws Win32Error.
  BrowserHost(HWND window, BrowserEvents events);
  ~BrowserHost();
  BrowserHost(const BrowserHost&) = delete;
  BrowserHost& operator=(const BrowserHost&) = delete;

  // Shows the page, its beginning or the share of it that the page before is scrolled to; ends in
  // onLoaded or onFailed, perhaps before this returns, perhaps never.
  void navigate(const std::filesystem::path& page, bool keepPlace);

  // Leads to the element of that id, as a link would; onAnchor does not tell it.
  void showAnchor(const std::wstring& id);

  // To be called behind onLoaded.
  void loaded();

  // Fills the window again after its size has changed.
  void fitWindow();

  // Gives it the keyboard.
  void focus();

  // Keys for the browser (Tab, Ctrl+C, …); true when the message is dealt with.
  bool translate(MSG& message);

 private:
  void open();
  void close();
  HRESULT doVerb(LONG verb);
  std::vector<ComPtr<IHTMLElement2>> scrolledElements() const;
  double place() const;
  void restorePlace(double place) const;
  void follow(const std::wstring& address) const;

  HWND window_;
  ComPtr<BrowserSite> site_;
  ComPtr<IOleObject> object_;
  ComPtr<IWebBrowser2> browser_;
  ComPtr<IConnectionPoint> events_;
  DWORD connection_ = 0;
  std::filesystem::path page_;
  bool loading_ = false;
  double place_ = 0;     // wanted when the page is there, of its height
  std::wstring anchor_;  // wanted then
};

}  // namespace tintline
