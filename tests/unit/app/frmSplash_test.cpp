// Tests of app/frmSplash/frmSplash.h.
#include "app/frmSplash/frmSplash.h"

#include <gtest/gtest.h>

#include <cstdio>

#include "tests/support/fake_form_view.h"
#include "tests/support/fake_shell.h"

namespace tintline {
namespace {

struct Splash {
  test::FakeShell shell;
  test::FakeWindow window;
  frmSplash form{shell};

  Splash() { form.makeView = window.maker(); }
};

TEST(frmSplash, LoadingPutsNameAndVersionIntoTheirLabels) {
  Splash splash;
  EXPECT_EQ(splash.form.lblProductName.Caption(), L"Produkt");
  EXPECT_EQ(splash.form.lblVersion.Caption(), L"- Version -");
  splash.form.Load();
  EXPECT_EQ(splash.form.lblProductName.Caption(), L"TINTLINE");
  unsigned major = 0, minor = 0, revision = 0;
  ASSERT_EQ(std::sscanf(TINTLINE_VERSION, "%u.%u.%u", &major, &minor, &revision), 3);
  EXPECT_EQ(splash.form.lblVersion.Caption(), L"Version " + std::to_wstring(major) + L"." +
                                                  std::to_wstring(minor) + L" (Build " +
                                                  std::to_wstring(revision) + L")");
}

TEST(frmSplash, IsClosedAsItsFlagAllows) {
  const struct {
    const char* name;
    void (frmSplash::*event)();
    bool closable;
    bool open;
  } rows[] = {
      {"a key while starting", &frmSplash::Form_KeyPress, false, true},
      {"the mouse while starting", &frmSplash::Form_MouseUp, false, true},
      {"the frame while starting", &frmSplash::Frame1_Click, false, false},
      {"a key in the about display", &frmSplash::Form_KeyPress, true, false},
      {"the mouse in the about display", &frmSplash::Form_MouseUp, true, false},
      {"the frame in the about display", &frmSplash::Frame1_Click, true, false},
  };
  for (const auto& row : rows) {
    Splash splash;
    splash.form.Show();
    splash.form.Check1 = row.closable;
    (splash.form.*row.event)();
    EXPECT_EQ(splash.window.open, row.open) << row.name;
    EXPECT_EQ(splash.form.isLoaded(), row.open) << row.name;
    EXPECT_FALSE(splash.form.Check1) << row.name;
  }
}

TEST(frmSplash, TheFeedbackLinkLeavesItOpenWhateverTheShellSays) {
  Splash splash;
  splash.shell.result = 2;
  splash.form.Show();
  splash.form.Check1 = true;
  splash.form.Label3.Click();
  ASSERT_EQ(splash.shell.opened.size(), 1u);
  const std::wstring& link = splash.shell.opened[0];
  EXPECT_TRUE(link.starts_with(L"mailto:") && link.ends_with(L"?subject=Feedback"));
  EXPECT_TRUE(splash.window.open);
  EXPECT_TRUE(splash.form.Check1);
}

}  // namespace
}  // namespace tintline
