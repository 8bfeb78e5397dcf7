// Tests of app/HTMLHelp.h.
#include "app/HTMLHelp.h"

#include <gtest/gtest.h>

#include "tests/support/fake_shell.h"

namespace tintline::HTMLHelp {
namespace {

TEST(HTMLHelp, ShowsTopicsOfTheFileWithThatNumber) {
  const struct {
    int number;
    std::string_view topic;
    const char* file;
  } rows[] = {{1, kOverview, "TINTLINE2.chm"},
              {1, kColors, "TINTLINE2.chm"},
              {0, kColors, ""},
              {2, kColors, ""}};
  for (const auto& row : rows) {
    test::FakeShell shell;
    showTopic(shell, row.number, row.topic);
    ASSERT_EQ(shell.shownHelp.size(), 1u);
    EXPECT_EQ(shell.shownHelp[0].first, row.file) << row.number;
    EXPECT_EQ(shell.shownHelp[0].second, row.topic) << row.number;
  }
}

TEST(HTMLHelp, ClosesTheHelpWindows) {
  test::FakeShell shell;
  CloseHelp(shell);
  EXPECT_EQ(shell.helpClosed, 1);
}

}  // namespace
}  // namespace tintline::HTMLHelp
