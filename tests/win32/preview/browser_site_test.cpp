// Tests of win32/preview/browser_site.h: the locks, asked as the browser asks them.
#include "win32/preview/browser_site.h"

#include <gtest/gtest.h>
#include <mshtmdid.h>

#include <vector>

#include "win32/com_ptr.h"

namespace tintline {
namespace {

struct BrowserSiteTest : testing::Test {
  ComPtr<BrowserSite> site = ComPtr<BrowserSite>::adopt(new BrowserSite(
      nullptr, {.onLoaded = [this] { ++loaded; },
                .onFailed = [this] { ++failed; },
                .onExternalLink = [this](const std::wstring& link) { links.push_back(link); },
                .onAnchor = [this](const std::wstring& id) { anchors += id + L" "; },
                .onMenu = [this](POINT place) { menu = place.x; }}));
  int loaded = 0, failed = 0;
  LONG menu = 0;
  std::vector<std::wstring> links;
  std::wstring anchors;

  HRESULT invoke(DISPID member, std::vector<VARIANT> arguments, VARIANT* result = nullptr) {
    DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
    return site->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, result,
                        nullptr, nullptr);
  }

  // Whether the site lets the browser go there.
  bool maySee(const wchar_t* address) {
    VARIANT_BOOL cancel = VARIANT_FALSE;
    VARIANT url{}, reference{}, flag{}, none{};
    url.vt = VT_BSTR;
    url.bstrVal = SysAllocString(address);
    reference.vt = VT_BYREF | VT_VARIANT;
    reference.pvarVal = &url;
    flag.vt = VT_BYREF | VT_BOOL;
    flag.pboolVal = &cancel;
    EXPECT_EQ(invoke(DISPID_BEFORENAVIGATE2, {flag, none, none, none, none, reference, none}),
              S_OK);
    VariantClear(&url);
    return cancel == VARIANT_FALSE;
  }
};

TEST_F(BrowserSiteTest, nothingIsRunOrLoaded) {
  VARIANT flags{};
  ASSERT_EQ(invoke(DISPID_AMBIENT_DLCONTROL, {}, &flags), S_OK);
  ASSERT_EQ(flags.vt, VT_I4);
  for (const int wanted : {DLCTL_NO_SCRIPTS, DLCTL_NO_JAVA, DLCTL_NO_DLACTIVEXCTLS,
                           DLCTL_NO_RUNACTIVEXCTLS, DLCTL_NO_FRAMEDOWNLOAD, DLCTL_NO_CLIENTPULL,
                           DLCTL_NO_BEHAVIORS, DLCTL_SILENT, static_cast<int>(DLCTL_FORCEOFFLINE)})
    EXPECT_NE(flags.lVal & wanted, 0) << std::hex << wanted;
  for (const int unwanted : {DLCTL_DLIMAGES, DLCTL_VIDEOS, DLCTL_BGSOUNDS})
    EXPECT_EQ(flags.lVal & unwanted, 0) << std::hex << unwanted;
}

TEST_F(BrowserSiteTest, everyActionIsDisallowed) {
  ComPtr<IInternetSecurityManager> manager;
  ComPtr<IServiceProvider> services;
  ASSERT_EQ(site->QueryInterface(IID_IServiceProvider, services.putVoid()), S_OK);
  ASSERT_EQ(services->QueryService(IID_IInternetSecurityManager, IID_IInternetSecurityManager,
                                   manager.putVoid()),
            S_OK);
  DWORD policy = URLPOLICY_ALLOW;
  EXPECT_EQ(manager->ProcessUrlAction(L"file:///C:/x.html", URLACTION_SCRIPT_RUN,
                                      reinterpret_cast<BYTE*>(&policy), sizeof policy, nullptr, 0,
                                      PUAF_DEFAULT, 0),
            S_FALSE);
  EXPECT_EQ(policy, static_cast<DWORD>(URLPOLICY_DISALLOW));
}

TEST_F(BrowserSiteTest, onlyTheOwnPageIsShown) {
  const struct {
    const wchar_t* address;
    bool allowed, handedOut;
  } rows[] = {
      {L"c:\\pr\u00DCf c#\\100%\\DUMMY.html#Index", true, false},
      {L"file:///C:/Pr\u00FCf%20C%23/100%25/dummy.html#Lesen", true, false},
      {L"file:///C:/Pr\u00FCf%20C%23/100%25/dummy.htm", false, false},
      {L"file://server/Pr\u00FCf%20C%23/100%25/dummy.html", false, false},
      {L"C:\\Windows\\notepad.exe#C:\\Pr\u00FCf C#\\100%\\dummy.html", false, false},
      {L"javascript:alert(1)", false, false},
      {L"https://example.org/x", false, true},
  };
  EXPECT_FALSE(maySee(L"")) << "before there is a page";
  site->setPage(L"C:\\Pr\u00FCf C#\\100%\\dummy.html");
  for (const auto& row : rows) {
    SCOPED_TRACE(&row - rows);
    links.clear();
    EXPECT_EQ(maySee(row.address), row.allowed);
    EXPECT_EQ(links.size(), row.handedOut ? 1U : 0U);
    EXPECT_TRUE(links.empty() || links[0] == row.address);
  }
}

TEST_F(BrowserSiteTest, linksInThePageAreToldButNotWhereTheProgramLeads) {
  site->setPage(L"C:\\C#\\dummy.html");
  for (const wchar_t* address : {L"C:\\C#\\dummy.html", L"file:///C:/C%23/dummy.html",
                                 L"C:\\C#\\dummy.html#12", L"file:///C:/C%23/dummy.html#Modul1.3"})
    EXPECT_TRUE(maySee(address)) << address;
  site->setOwnAnchor(L"7");
  for (const wchar_t* id : {L"7", L"7", L"8"})
    EXPECT_TRUE(maySee((L"C:\\C#\\dummy.html#" + std::wstring(id)).c_str()));
  EXPECT_EQ(anchors, L"12 Modul1.3 7 8 ");
}

TEST_F(BrowserSiteTest, nothingOpensAWindowAndADetachedSiteIsQuiet) {
  VARIANT_BOOL cancel = VARIANT_FALSE;
  std::vector<VARIANT> arguments(2, VARIANT{});
  arguments[0].vt = VT_BYREF | VT_BOOL;
  arguments[0].pboolVal = &cancel;
  EXPECT_EQ(invoke(DISPID_NEWWINDOW2, arguments), S_OK);
  EXPECT_EQ(cancel, VARIANT_TRUE);
  EXPECT_EQ(invoke(DISPID_BEFORENAVIGATE2, {}), DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(invoke(DISPID_NAVIGATEERROR, {}), S_OK);
  EXPECT_EQ(failed, 1);
  POINT place{7, 9};
  EXPECT_EQ(site->ShowContextMenu(0, &place, nullptr, nullptr), S_OK);
  EXPECT_EQ(menu, 7) << "ours instead of the browser's";
  site->detach();
  EXPECT_EQ(site->ShowContextMenu(0, nullptr, nullptr, nullptr), S_OK);
  EXPECT_EQ(invoke(DISPID_NAVIGATEERROR, {}), S_OK);
  EXPECT_FALSE(maySee(L"https://example.org/"));
  EXPECT_EQ(failed, 1);
  EXPECT_TRUE(links.empty());
}

TEST_F(BrowserSiteTest, onlyHarmlessKeysReachTheBrowser) {
  const auto allowed = [this](UINT message, WPARAM key) {
    MSG pressed{};
    pressed.message = message;
    pressed.wParam = key;
    EXPECT_EQ(site->TranslateAccelerator(&pressed, nullptr, 0),
              BrowserSite::mayTranslate(pressed) ? S_FALSE : S_OK);
    return BrowserSite::mayTranslate(pressed);
  };
  BYTE keys[256] = {};
  SetKeyboardState(keys);
  for (const WPARAM key : {VK_TAB, VK_NEXT}) EXPECT_TRUE(allowed(WM_KEYDOWN, key)) << key;
  for (const WPARAM key : {VK_F5, VK_BACK, int{'C'}}) EXPECT_FALSE(allowed(WM_KEYDOWN, key)) << key;
  EXPECT_FALSE(allowed(WM_SYSKEYDOWN, VK_LEFT));
  keys[VK_CONTROL] = 0x80;
  SetKeyboardState(keys);
  for (const WPARAM key : {'C', 'A'}) EXPECT_TRUE(allowed(WM_KEYDOWN, key)) << key;
  for (const WPARAM key : {'N', 'O', 'P'}) EXPECT_FALSE(allowed(WM_KEYDOWN, key)) << key;
  keys[VK_CONTROL] = 0;
  SetKeyboardState(keys);
}

}  // namespace
}  // namespace tintline
