// Tests of app/frmPrePostCode/frmPrePostCode.h.
#include "app/frmPrePostCode/frmPrePostCode.h"

#include <gtest/gtest.h>

#include "base/codepage.h"
#include "base/file.h"
#include "tests/support/fake_form_view.h"
#include "tests/support/temp_folder.h"

namespace tintline {
namespace {

struct Dialog {
  test::TempFolder folder;
  std::filesystem::path file = folder / "TINTLINE.ini";
  test::FakeWindow window;
  frmPrePostCode form{file};

  Dialog() { form.makeView = window.maker(); }

  // Shows the dialog and lets the user do that.
  void show(std::function<void()> user) {
    window.whileModal = std::move(user);
    form.ShowModal();
    EXPECT_FALSE(window.open);
  }

  void put(std::string_view content) const {
    AtomicFile target(file);
    target.stream() << content;
    target.commit();
  }
};

TEST(frmPrePostCode, SavesBothTextsAsTheyStand) {
  const struct {
    const char* name;
    const wchar_t *pre, *post;
    std::string_view stored;
  } rows[] = {
      {"tags", L"<div class=\"a\">", L"</div>",
       "PreCode=<div class=\"a\">,\r\nPostCode=</div>,\r\n"},
      {"nothing", L"", L"", "PreCode=,\r\nPostCode=,\r\n"},
      {"blanks and commas", L" a, ", L",", "PreCode= a, ,\r\nPostCode=,,\r\n"},
      {"letters of the code page", L"Grüße €", L"ß", u8"PreCode=Grüße €,\r\nPostCode=ß,\r\n"_ansi},
  };
  for (const auto& row : rows) {
    Dialog dialog;
    dialog.show([&] {
      EXPECT_EQ(dialog.form.txtPreCode.Text(), L"");
      EXPECT_EQ(dialog.form.txtPostCode.Text(), L"");
      dialog.form.txtPreCode.Text = row.pre;
      dialog.form.txtPostCode.Text = row.post;
      dialog.form.OKButton.Click();
    });
    EXPECT_EQ(readFile(dialog.file), "[TINTLINE]\r\n" + std::string(row.stored)) << row.name;
    dialog.show([&] {
      EXPECT_EQ(dialog.form.txtPreCode.Text(), row.pre) << row.name;
      EXPECT_EQ(dialog.form.txtPostCode.Text(), row.post) << row.name;
    });
  }
}

TEST(frmPrePostCode, OnlyTheTwoKeysChange) {
  Dialog dialog;
  dialog.put("[TINTLINE]\r\nColRem=x,\r\nPreCode=alt,\r\n; mein\r\nPostCode=b,\r\n");
  dialog.show([&] {
    dialog.form.txtPreCode.Text = L"neu";
    dialog.form.OKButton.Click();
  });
  EXPECT_EQ(readFile(dialog.file),
            "[TINTLINE]\r\nColRem=x,\r\nPreCode=neu,\r\n; mein\r\nPostCode=b,\r\n");
}

TEST(frmPrePostCode, WithoutSpeichernNothingIsWritten) {
  Dialog dialog;
  const std::string content = "[TINTLINE]\r\nPreCode=alt,\r\n";
  dialog.put(content);
  for (const bool byCloseBox : {false, true})
    dialog.show([&] {
      EXPECT_EQ(dialog.form.txtPreCode.Text(), L"alt");
      dialog.form.txtPreCode.Text = L"neu";
      if (!byCloseBox) dialog.form.CancelButton.Click();
    });
  EXPECT_EQ(readFile(dialog.file), content);
}

TEST(frmPrePostCode, ALongTextIsStoredWholeAndComesBackCut) {
  Dialog dialog;
  const std::wstring text(300, L'x');
  dialog.show([&] {
    dialog.form.txtPreCode.Text = text;
    dialog.form.OKButton.Click();
  });
  EXPECT_EQ(readFile(dialog.file),
            "[TINTLINE]\r\nPreCode=" + std::string(300, 'x') + ",\r\nPostCode=,\r\n");
  dialog.show([&] { EXPECT_EQ(dialog.form.txtPreCode.Text(), text.substr(0, 253)); });
}

TEST(frmPrePostCode, AFileThatCannotBeWrittenGoesUnreported) {
  Dialog dialog;
  std::filesystem::create_directory(dialog.file);
  dialog.show([&] { dialog.form.OKButton.Click(); });
  EXPECT_FALSE(dialog.form.isLoaded());
  EXPECT_TRUE(std::filesystem::is_directory(dialog.file));
}

}  // namespace
}  // namespace tintline
