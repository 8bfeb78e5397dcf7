// Tests of win32/preview/preview_pane.h and, as far as it goes without an HTML engine,
// win32/preview/browser_host.h.
#include <gtest/gtest.h>

#include <optional>
#include <vector>

#include "base/file.h"
#include "tests/support/rendered_page.h"
#include "tests/win32/test_window.h"
#include "win32/preview/preview_pane.h"

namespace tintline {
namespace {

using Engine = PreviewPane::Engine;

struct PreviewPaneTest : testing::Test {
  test::Ole ole;
  test::TempFolder folder;
  test::TestWindow parent;
  std::optional<PreviewPane> pane;
  std::vector<std::wstring> links;

  PreviewPane& make(Engine engine) {
    pane.emplace(parent.get(), 42, engine);
    pane->onExternalLink = [this](const std::wstring& link) { links.push_back(link); };
    return *pane;
  }

  std::filesystem::path page(const char* text) {
    return test::writePage(folder, "Seite #1 100%.html", std::string("<body><pre>") + text);
  }

  bool waitForText(const std::wstring& text) {
    return test::pumpUntil([&] {
      return pane->richEdit() != nullptr && pane->richEdit()->loaded() &&
             test::windowText(pane->richEdit()->window()) == text;
    });
  }
};

TEST_F(PreviewPaneTest, showsAPageOfTheProgram) {
  make(Engine::RichEdit);
  const std::string html = test::examplePage("Kunde.cls", StyleMode::Class, false);
  pane->navigate(test::writePage(folder, "dummy.html", html));
  EXPECT_TRUE(waitForText(renderPage(html).text));
  pane->navigate(page("zweite"));
  EXPECT_TRUE(waitForText(L"zweite"));
  EXPECT_THROW(pane->navigate(folder / "fehlt.html"), FileError);
  EXPECT_TRUE(waitForText(L"zweite"));
}

TEST_F(PreviewPaneTest, isAnOrdinaryChildWindow) {
  make(Engine::RichEdit);
  EXPECT_EQ(GetDlgItem(parent.get(), 42), pane->window());
  EXPECT_FALSE(IsWindowVisible(pane->window()));
  pane->setVisible(true);
  EXPECT_TRUE(IsWindowVisible(pane->window()));
  pane->setVisible(false);
  EXPECT_FALSE(IsWindowVisible(pane->window()));
  pane->setVisible(true);
  pane->navigate(page("x"));
  for (const int width : {300, 500, 0}) {
    SetWindowPos(pane->window(), nullptr, 5, 5, width, 200, SWP_NOZORDER);
    RECT outer{}, inner{};
    GetClientRect(pane->window(), &outer);
    GetWindowRect(pane->richEdit()->window(), &inner);
    EXPECT_EQ(inner.right - inner.left, outer.right);
    EXPECT_EQ(inner.bottom - inner.top, outer.bottom);
  }
  SetFocus(pane->window());
  EXPECT_EQ(GetFocus(), pane->richEdit()->window());
  pane->navigate(page("y"));
  EXPECT_EQ(GetFocus(), pane->richEdit()->window()) << "the next page keeps the keyboard";
}

TEST_F(PreviewPaneTest, linksReachTheOwner) {
  make(Engine::RichEdit);
  SetWindowPos(pane->window(), nullptr, 0, 0, 300, 200, SWP_NOZORDER);
  pane->navigate(page("<a href='https://example.org/'>x</a>"));
  test::clickCharacter(pane->richEdit()->window(), 0);
  EXPECT_EQ(links, std::vector<std::wstring>{L"https://example.org/"});
}

TEST_F(PreviewPaneTest, asksForAnEngineOnce) {
  make(Engine::Automatic);
  EXPECT_EQ(pane->richEdit(), nullptr) << "not before the first page";
  pane->navigate(page("eins"));
  EXPECT_EQ(pane->richEdit() == nullptr, BrowserHost::engineAnswers());
}

// Where there is no engine the browser object fails, and the page is shown all the same.
TEST_F(PreviewPaneTest, aBrowserThatFailsIsReplaced) {
  if (BrowserHost::engineAnswers()) GTEST_SKIP() << "the browser works here";
  make(Engine::Browser);
  pane->setVisible(true);
  SetWindowPos(pane->window(), nullptr, 0, 0, 300, 200, SWP_NOZORDER);
  pane->navigate(page("eins"));
  EXPECT_EQ(pane->richEdit(), nullptr) << "not inside of the browser's own event";
  EXPECT_TRUE(waitForText(L"eins"));
  MSG key{};
  key.hwnd = pane->richEdit()->window();
  key.message = WM_KEYDOWN;
  key.wParam = VK_TAB;
  EXPECT_FALSE(pane->translate(key));
  pane->navigate(page("zwei"));
  EXPECT_TRUE(waitForText(L"zwei"));
}

TEST_F(PreviewPaneTest, mayGoWhileTheBrowserFails) {
  if (BrowserHost::engineAnswers()) GTEST_SKIP() << "the browser works here";
  make(Engine::Browser).navigate(page("eins"));
  pane->navigate(page("zwei"));
  pane.reset();
  test::pumpUntil([] { return false; }, 100);
  make(Engine::Browser).navigate(page("drei"));
  parent.destroy();
  EXPECT_EQ(pane->window(), nullptr);
}

}  // namespace
}  // namespace tintline
