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

TEST_F(reformatting_commands, width_is_asked_for_and_checked) {
  const struct {
    std::optional<std::wstring> answer;
    const wchar_t* offered;  // at the next question
  } cases[] = {{std::nullopt, L"80"}, {L"100", L"100"}, {L"19", L"100"},
               {L"abc", L"100"},      {L"0", L"0"},     {L"1000", L"1000"}};
  for (const auto& c : cases) {
    const bool wrong = c.answer && *c.answer != c.offered;
    ports.dialogs.answerInput(c.answer);
    if (wrong) ports.dialogs.expectMessage();
    form.execute(Command::mnuZeilenbreite);
    ports.dialogs.answerInput(std::nullopt);
    form.execute(Command::mnuZeilenbreite);
    EXPECT_EQ(ports.dialogs.asked.back().value, c.offered);
  }
}

TEST_F(reformatting_commands, wrapping_is_offered_exactly_for_lines_beyond_the_width) {
  const std::string fits(80, 'x');
  openFile(moduleFile("a.bas", fits + "\r\n"));
  EXPECT_FALSE(form.isEnabled(Command::mnuUmbruch));
  openFile(moduleFile("b.bas", "Call " + std::string(70, 'x') + " 123456\r\n"));
  ASSERT_TRUE(form.isEnabled(Command::mnuUmbruch));
  ports.dialogs.answerInput(L"0");
  form.execute(Command::mnuZeilenbreite);
  EXPECT_FALSE(form.isEnabled(Command::mnuUmbruch));
  ports.dialogs.answerInput(L"80");
  form.execute(Command::mnuZeilenbreite);
  selectLines(form.List1, {0});
  form.execute(Command::mnuUmbruch);
  EXPECT_EQ(form.List1.ListCount(), 2U);
  EXPECT_FALSE(form.isEnabled(Command::mnuUmbruch));
  EXPECT_FALSE(form.cmdVBAClp.Enabled) << "nothing is selected any more";
  form.execute(Command::mnuMakro);
  EXPECT_EQ(form.List2.ListCount(), 2U) << "the file is read anew and wrapped again";
  openFile(moduleFile("c.bas", "If a Then\r\n" + std::string(79, 'x') + "\r\nEnd If\r\n"));
  form.execute(Command::mnuFormat);
  form.execute(Command::mnuFormat);
  EXPECT_TRUE(form.isEnabled(Command::mnuUmbruch));
  openFile(ports.files.folder / "fehlt.bas");
  EXPECT_FALSE(form.isEnabled(Command::mnuUmbruch)) << "nothing is left to wrap";
}

// Not as the width and the indentation are by then.
TEST_F(reformatting_commands, what_is_read_anew_is_reformatted_as_it_was) {
  openFile(moduleFile("a.bas", "If a Then\r\nCall Eins(zwei, drei, vier)\r\nEnd If\r\n"));
  const auto setWidth = [this](const wchar_t* width) {
    ports.dialogs.answerInput(width);
    form.execute(Command::mnuZeilenbreite);
  };
  setWidth(L"20");
  for (const Command command : {Command::mnuFormat, Command::mnuUmbruch, Command::mnuFormat,
                                Command::mnuFormat, Command::mnuUmbruch})
    form.execute(command);
  setWidth(L"0");
  const std::vector<std::string> shown = strings(form.List1.lines());
  ASSERT_GT(shown.size(), 3U);
  form.execute(Command::mnuMakro);
  EXPECT_EQ(strings(form.List1.lines()), shown);
  EXPECT_EQ(form.List2.ListCount(), shown.size());
  EXPECT_EQ(form.Frame1.Caption(), L"Quellcode (Tab=3)");
}

TEST_F(reformatting_commands, scroll_range_follows_the_lines) {
  openFile(moduleFile("a.bas", std::string(60, 'W') + " " + std::string(60, 'W') + "\r\n"));
  const int before = form.List1.HorizontalExtent;
  EXPECT_GE(before, 1200);
  form.execute(Command::mnuUmbruch);
  EXPECT_GT(form.List1.HorizontalExtent, 600);
  EXPECT_LT(form.List1.HorizontalExtent, before);
}

}  // namespace
}  // namespace tintline::test
