// The small windows of the running program, and the clipboard.
#include <gtest/gtest.h>

#include "tests/win32/program/program_test.h"

namespace tintline::test {
namespace {

namespace fs = std::filesystem;

class dialogs : public SharedProgramTest {
 protected:
  // A command that opens a window of that class, which is then shown.
  struct Opened {
    Started command;
    Window window;
  };
  Opened opened(Command command, const wchar_t* className) const {
    Started started = main().start(command);
    return {started, app().windowOfClass(className)};
  }

  void leave(const Opened& dialog, int button) const {
    dialog.window.control(button).post(BM_CLICK);
    dialog.command.finish();
    EXPECT_FALSE(dialog.window.exists() && dialog.window.visible());
  }

  std::string settings() const { return folder().read(L"TINTLINE.ini"); }

  // Pre-code and post-code, by their dialog.
  void setPrePost(const std::wstring& pre, const std::wstring& post) const {
    const Opened dialog = opened(Command::mnuPrePost, kPrePostClass);
    dialog.window.control(id::kTxtPreCode).setText(pre);
    dialog.window.control(id::kTxtPostCode).setText(post);
    leave(dialog, id::kOk);
  }
};

TEST_F(dialogs, pre_and_post_code_go_into_the_settings_file) {
  setPrePost(L"<div class=\"ä\">", L"</div>");
  const std::string saved = settings();
  EXPECT_TRUE(saved.ends_with("PreCode=<div class=\"\xE4\">,\r\nPostCode=</div>,\r\n")) << saved;

  const Opened dialog = opened(Command::mnuPrePost, kPrePostClass);
  EXPECT_EQ(dialog.window.text(), L"TINTLINE PreCode/PostCode konfigurieren");
  EXPECT_EQ(dialog.window.control(id::kTxtPreCode).text(), L"<div class=\"ä\">");
  EXPECT_EQ(dialog.window.control(id::kTxtPostCode).text(), L"</div>");
  dialog.window.control(id::kTxtPreCode).setText(L"verworfen");
  leave(dialog, id::kCancel);
  EXPECT_EQ(settings(), saved);

  const Opened again = opened(Command::mnuPrePost, kPrePostClass);
  again.window.control(id::kTxtPreCode).setText(L"verworfen");
  again.window.post(WM_CLOSE);
  again.command.finish();
  EXPECT_EQ(settings(), saved);
  setPrePost(L"", L"");
}

TEST_F(dialogs, a_changed_color_is_saved) {
  const std::string before = settings();
  const Opened dialog = opened(Command::mnuFarben, kColorsClass);
  const Window category = dialog.window.control(id::kCboKategorie);
  EXPECT_EQ(category.send(CB_GETCOUNT), 5);
  dialog.window.control(id::kTxtFarbe).setText(L"#102030");
  leave(dialog, id::kOk);
  std::string expected = before;
  const auto value = expected.find("ColProz=");
  expected.replace(value, expected.find("\r\n", value) - value,
                   "ColProz=,#102030,#DFDFDF,3153936,14671839,0,");
  EXPECT_EQ(settings(), expected);

  main().setChecked(id::kOptClass, true);
  main().open(sampleModule());
  main().convert();
  const fs::path page = newFile();
  main().exportTo(page);
  EXPECT_TRUE(
      sameText(folder().read(page.filename().wstring()), folder().convert(sampleModule(), L"")));

  const Opened discarded = opened(Command::mnuFarben, kColorsClass);
  EXPECT_EQ(discarded.window.control(id::kTxtFarbe).text(), L"#102030");
  discarded.window.control(id::kTxtFarbe).setText(L"#FFFFFF");
  leave(discarded, id::kCancel);
  EXPECT_EQ(settings(), expected);
}

TEST_F(dialogs, the_line_width_is_offered_again_and_a_wrong_one_is_refused) {
  const auto answer = [this](const std::wstring& text) {
    Opened dialog = opened(Command::mnuZeilenbreite, kInputClass);
    const std::wstring offered = dialog.window.control(id::kInputText).text();
    dialog.window.control(id::kInputText).setText(text);
    dialog.window.control(id::kOk).post(BM_CLICK);
    app().untilGone(dialog.window);
    return std::pair(dialog.command, offered);
  };
  const auto [set, before] = answer(L"100");
  set.finish();
  EXPECT_FALSE(before.empty());
  const auto [refused, offered] = answer(L"19");
  EXPECT_EQ(offered, L"100");
  const MessageBoxOf box(app());
  EXPECT_NE(box.text().find(L"\"19\" ist keine Zeilenbreite"), std::wstring::npos) << "told";
  box.answer(IDOK);
  refused.finish();
  const auto [restored, kept] = answer(before);
  EXPECT_EQ(kept, L"100");
  restored.finish();
}

TEST_F(dialogs, the_about_display_closes_on_a_key_every_time) {
  for (int round = 0; round < 2; ++round) {
    main().run(Command::mnuInfo);
    const Window splash = app().windowOfClass(kSplashClass);
    EXPECT_FALSE(splash.control(id::kSplashProgressBar).visible());
    EXPECT_EQ(splash.control(id::kSplashVersion).text(), L"Version 0.1 (Build 0)");
    splash.pressKey(VK_SPACE);
    app().untilGone(splash);
  }
  main().run(Command::mnuInfo);
  const Window splash = app().windowOfClass(kSplashClass);
  splash.click({1, 1});
  app().untilGone(splash);
}

// -------------------------------------------------------------------------- clipboard

TEST_F(dialogs, copies_selected_source_lines) {
  main().open(folder().write(L"k.bas", "eins\r\nzwei \xE4\r\ndrei\r\n"));
  main().selectLines(id::kList1, 1, 2);
  main().run(Command::mnuCopy);
  EXPECT_EQ(clipboardText(), "\r\nzwei \xE4 \r\ndrei ");
  main().run(Command::mnuSelectAll);
  main().run(Command::mnuCopy);
  EXPECT_EQ(clipboardText(), "\r\neins \r\nzwei \xE4 \r\ndrei ");
}

TEST_F(dialogs, copies_html_lines_between_pre_and_post_code) {
  main().setChecked(id::kCheck1, false);
  main().open(folder().write(L"k.bas", "eins\r\nzwei\r\n"));
  main().convert();
  main().pressAndWait(id::kCmdHTMClp);
  EXPECT_EQ(clipboardText(), "\r\neins  \r\nzwei  ");
  setPrePost(L"vorn", L"hinten");
  main().pressAndWait(id::kCmdHTMClp);
  EXPECT_EQ(clipboardText(), "vorn\r\nhinten") << "lines only when selected";
  main().clickLine(id::kList2, 1);
  main().run(Command::mnuCopy);
  EXPECT_EQ(clipboardText(), "vorn\r\nzwei  \r\nhinten");
  setPrePost(L"", L"");
}

TEST_F(dialogs, pasted_lines_are_added_and_convert_without_call_links) {
  main().open(folder().write(L"k.bas", "Sub Eins()\r\n"));
  setClipboardText(L"Sub Zwei()\r\n\tEins\r\nEnd Sub Größe");
  main().run(Command::mnuInsert);
  EXPECT_EQ(
      main().lines(id::kList1),
      (std::vector<std::string>{"Sub Eins() ", "Sub Zwei() ", "Eins ", "End Sub Gr\xF6\xDF\x65 "}));
  EXPECT_EQ(main().text(id::kCmdMakro), L"Text");
  clearClipboard();
  main().run(Command::mnuInsert);
  EXPECT_EQ(main().lineCount(id::kList1), 4U);
}

}  // namespace
}  // namespace tintline::test
