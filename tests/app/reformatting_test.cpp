// Re-indenting and wrapping the lines of the list.
#include <string>
#include <vector>

#include "tests/app/program_fixture.h"

namespace tintline::test {
namespace {

class reformatting_commands : public ProgramTest {
 protected:
  void SetUp() override { start(); }
};

TEST_F(reformatting_commands, indent_and_back) {
  EXPECT_FALSE(form.isEnabled(Command::mnuFormat));
  openFile(moduleFile("a.bas", "If a Then\r\n      b\r\nEnd If\r\n"));
  EXPECT_FALSE(form.isEnabled(Command::mnuFormat2));
  selectLines(form.List1, {1});
  form.execute(Command::mnuFormat);
  form.execute(Command::mnuFormat);
  EXPECT_EQ(form.Frame1.Caption(), L"Quellcode (Tab=2)");
  EXPECT_EQ(form.List1.lines()[1], "  b ");
  EXPECT_TRUE(form.List1.Selected(1)) << "the selection stays where it was";
  EXPECT_TRUE(form.List1.Enabled);
  EXPECT_TRUE(form.isEnabled(Command::mnuFormat2));
  for (int i = 0; i < 3; ++i) form.execute(Command::mnuFormat2);
  EXPECT_EQ(form.Frame1.Caption(), L"Quellcode (Tab=0)");
  EXPECT_EQ(form.List1.lines()[1], "b ");
}

TEST_F(reformatting_commands, re_indented_lines_are_converted_as_they_stand) {
  openFile(moduleFile("a.bas", "If a Then\r\nb\r\nEnd If\r\n"));
  form.execute(Command::mnuFormat);
  form.execute(Command::mnuMakro);
  EXPECT_EQ(form.List2.lines()[1], " b  ");
}

}  // namespace
}  // namespace tintline::test
