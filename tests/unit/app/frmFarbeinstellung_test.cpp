// Tests of app/frmFarbeinstellung/frmFarbeinstellung.h.
#include "app/frmFarbeinstellung/frmFarbeinstellung.h"

#include <gtest/gtest.h>

#include "app/settings/modIniSave.h"
#include "tests/support/convert.h"
#include "tests/support/fake_form_view.h"
#include "tests/support/fake_ports.h"

namespace tintline {
namespace {

// The dialog on the default colours, but for what a test makes of them beforehand.
struct ColorDialog {
  test::FakePorts ports;
  std::filesystem::path file = ports.files.program / "TINTLINE.ini";
  ColorScheme colors = test::defaultColors();
  test::FakeWindow window;
  frmFarbeinstellung form{colors, file, ports.dialogs, ports.shell, test::FakePorts::systemColor};

  ColorDialog() { form.makeView = window.maker(); }

  void show(std::function<void()> user) {
    window.whileModal = std::move(user);
    form.ShowModal();
    EXPECT_FALSE(window.open);
  }

  void choose(std::size_t category) {
    form.cboKategorie.ListIndex = static_cast<int>(category);
    form.cboKategorie.Click();
  }

  static void type(TextBox& field, const wchar_t* text) {
    field.Text = text;
    field.Change();
  }

  // What the file holds.
  ColorScheme stored() const {
    ColorScheme scheme;
    EXPECT_TRUE(modIniSave::readColors(file, scheme));
    return scheme;
  }
};

TEST(frmFarbeinstellung, ShowsTheChosenCategory) {
  ColorDialog dialog;
  dialog.colors[kParameter][kTransparency] = "2";
  dialog.show([&] {
    auto& form = dialog.form;
    EXPECT_EQ(form.cboKategorie.List().size(), kColorCategories);
    EXPECT_EQ(form.txtFarbe.Text(), L"#000080");
    EXPECT_EQ(form.txtHintergrund.Text(), L"#DFDFDF");
    EXPECT_FALSE(form.chkTransparent.Value);
    EXPECT_EQ(form.lblMuster.ForeColor(), 0x800000u);
    EXPECT_EQ(form.lblMuster.BackColor(), 0xDFDFDFu);
    EXPECT_TRUE(form.lblMuster.BoldItalic);
    dialog.choose(kParameter);
    EXPECT_EQ(form.txtFarbe.Text(), L"#008080");
    EXPECT_TRUE(form.chkTransparent.Value);
    EXPECT_TRUE(form.lblMuster.Transparent);
    EXPECT_FALSE(form.lblMuster.BoldItalic);
    EXPECT_EQ(form.lblMusterSchema[kKommentare].ForeColor(), 0x008000u);
    EXPECT_TRUE(form.cmdSpeichern.Enabled);
  });
}

TEST(frmFarbeinstellung, ATypedTextIsAColourOrChangesNothing) {
  const struct {
    const wchar_t* typed;
    const char *text, *number;  // "" for wrong
  } rows[] = {
      {L"#102030", "#102030", "3153936"},
      {L"#ff00aB", "#FF00AB", "11206911"},
      {L" #000000 ", "#000000", "0"},
      {L"", "", ""},
      {L"#", "", ""},
      {L"102030", "", ""},
      {L"#10203", "", ""},
      {L"#1020304", "", ""},
      {L"#10203G", "", ""},
      {L"#-10203", "", ""},
      {L"#+10203", "", ""},
      {L"#0x1020", "", ""},
      {L"# 10203", "", ""},
      {L"#10\u0416030", "", ""},
      {L"red", "", ""},
  };
  for (const auto& row : rows) {
    ColorDialog dialog;
    auto& form = dialog.form;
    const bool right = *row.text != '\0';
    ColorScheme expected = dialog.colors;
    if (right) expected[kStrings][kTextColor] = expected[kStrings][kBackColor] = row.text;
    if (right) expected[kStrings][kTextNumber] = expected[kStrings][kBackNumber] = row.number;
    dialog.show([&] {
      dialog.choose(kStrings);
      for (TextBox* field : {&form.txtFarbe, &form.txtHintergrund}) {
        ColorDialog::type(*field, row.typed);
        EXPECT_EQ(field->Text(), row.typed) << "the user is typing in it";
        EXPECT_EQ(form.cmdSpeichern.Enabled, right) << row.typed;
        EXPECT_EQ(form.lblHinweis.Caption().empty(), right) << row.typed;
      }
      dialog.choose(kProzeduren);  // leaves what is wrong behind
      EXPECT_TRUE(form.cmdSpeichern.Enabled);
      EXPECT_EQ(form.lblHinweis.Caption(), L"");
      form.cmdSpeichern.Click();
    });
    EXPECT_EQ(dialog.colors, expected) << row.typed;
  }
}

TEST(frmFarbeinstellung, BothTextsMustBeRight) {
  ColorDialog dialog;
  auto& form = dialog.form;
  dialog.show([&] {
    ColorDialog::type(form.txtFarbe, L"#1");
    const std::wstring first = form.lblHinweis.Caption();
    ColorDialog::type(form.txtHintergrund, L"#2");
    ColorDialog::type(form.txtFarbe, L"#000080");
    EXPECT_NE(form.lblHinweis.Caption(), L"");
    EXPECT_NE(form.lblHinweis.Caption(), first);
    EXPECT_FALSE(form.cmdSpeichern.Enabled);
    ColorDialog::type(form.txtHintergrund, L"#DFDFDF");
    EXPECT_TRUE(form.cmdSpeichern.Enabled);
  });
}

TEST(frmFarbeinstellung, TheSystemsDialogGivesAColour) {
  const struct {
    const char* name;
    std::optional<std::uint32_t> chosen;
    const char *text, *number;
  } rows[] = {
      {"a colour", 0x0000FF, "#FF0000", "255"},
      {"a system colour", 0x8000000F, "#0F0F0F", "-2147483633"},
      {"cancelled", std::nullopt, "#008000", "32768"},
  };
  for (const auto& row : rows) {
    ColorDialog dialog;
    auto& form = dialog.form;
    ColorScheme expected = dialog.colors;
    expected[kKommentare][kTextColor] = row.text;
    expected[kKommentare][kTextNumber] = row.number;
    dialog.show([&] {
      dialog.choose(kKommentare);
      ColorDialog::type(form.txtHintergrund, L"#12");
      dialog.ports.dialogs.answerColor(row.chosen);
      form.cmdFarbe.Click();
      EXPECT_EQ(form.txtHintergrund.Text(), L"#12") << "the other text stays";
      EXPECT_FALSE(form.cmdSpeichern.Enabled);
      form.txtFarbe.Change();  // as a view that reports its own changes
      ColorDialog::type(form.txtHintergrund, L"#FFFFFF");
      form.cmdSpeichern.Click();
    });
    EXPECT_EQ(dialog.ports.dialogs.asked[0].color, 0x008000u) << row.name;
    EXPECT_EQ(dialog.colors, expected) << row.name;
    EXPECT_EQ(dialog.stored(), expected) << row.name;
  }
}

TEST(frmFarbeinstellung, TheBackgroundHasAColourOfItsOwn) {
  ColorDialog dialog;
  dialog.show([&] {
    dialog.ports.dialogs.answerColor(0x332211);
    dialog.form.cmdHintergrund.Click();
    EXPECT_EQ(dialog.form.txtHintergrund.Text(), L"#112233");
    EXPECT_EQ(dialog.form.lblMuster.BackColor(), 0x332211u);
    EXPECT_EQ(dialog.form.lblMusterSchema[kProzeduren].BackColor(), 0x332211u);
    EXPECT_EQ(dialog.form.lblMuster.ForeColor(), 0x800000u);
  });
  EXPECT_EQ(dialog.ports.dialogs.asked[0].color, 0xDFDFDFu);
}

TEST(frmFarbeinstellung, SpeichernTakesTheTableOverAndStoresIt) {
  ColorDialog dialog;
  dialog.colors[kStrings][0] = "eigen";
  ColorScheme expected = dialog.colors;
  expected[kReservierteWorte][kTransparency] = "1";
  dialog.show([&] {
    dialog.choose(kReservierteWorte);
    dialog.form.chkTransparent.Value = true;
    dialog.form.chkTransparent.Click();
    EXPECT_TRUE(dialog.form.lblMuster.Transparent);
    EXPECT_EQ(dialog.colors[kReservierteWorte][kTransparency], "0") << "not before Speichern";
    dialog.form.cmdSpeichern.Click();
  });
  EXPECT_TRUE(dialog.form.saved());
  EXPECT_EQ(dialog.colors, expected);
  EXPECT_EQ(dialog.stored(), expected);
}

TEST(frmFarbeinstellung, WithoutSpeichernNothingChanges) {
  ColorDialog dialog;
  dialog.show([&] { dialog.form.cmdSpeichern.Click(); });
  const ColorScheme before = dialog.colors;
  for (const bool byCloseBox : {false, true}) {
    dialog.show([&] {
      EXPECT_EQ(dialog.form.txtFarbe.Text(), L"#000080") << "nothing is left of the last time";
      ColorDialog::type(dialog.form.txtFarbe, L"#010203");
      if (!byCloseBox) dialog.form.cmdAbbrechen.Click();
    });
    EXPECT_FALSE(dialog.form.saved());
    EXPECT_EQ(dialog.colors, before);
    EXPECT_EQ(dialog.stored(), before);
  }
}

TEST(frmFarbeinstellung, StandardBringsTheDefaultsBack) {
  ColorDialog dialog;
  dialog.colors[kProzeduren] = {"eigen", "#010203", "#040506", "1", "2", "1"};
  const ColorScheme before = dialog.colors;
  ColorScheme expected = test::defaultColors();
  expected[kProzeduren][0] = "eigen";
  dialog.show([&] {
    ColorDialog::type(dialog.form.txtFarbe, L"falsch");
    dialog.form.cmdStandard.Click();
    EXPECT_EQ(dialog.form.txtFarbe.Text(), L"#000080");
    EXPECT_FALSE(dialog.form.chkTransparent.Value);
    EXPECT_EQ(dialog.form.lblHinweis.Caption(), L"");
    EXPECT_EQ(dialog.colors, before) << "not before Speichern";
    dialog.form.cmdSpeichern.Click();
  });
  EXPECT_EQ(dialog.colors, expected);
}

TEST(frmFarbeinstellung, AFileThatCannotBeWrittenLeavesTheDialogOpen) {
  ColorDialog dialog;
  std::filesystem::create_directory(dialog.file);
  dialog.colors[kProzeduren][kTextColor] = "#010203";
  const ColorScheme before = dialog.colors;
  dialog.show([&] {
    ColorDialog::type(dialog.form.txtFarbe, L"#040506");
    dialog.form.cmdSpeichern.Click();
    EXPECT_TRUE(dialog.form.isLoaded());
    EXPECT_NE(dialog.form.lblHinweis.Caption(), L"");
    EXPECT_EQ(dialog.form.txtFarbe.Text(), L"#040506");
  });
  EXPECT_FALSE(dialog.form.saved());
  EXPECT_EQ(dialog.colors, before);
}

TEST(frmFarbeinstellung, DamagedColoursAreShownAsWellAsTheyCanBe) {
  const struct {
    const char* name;
    const char *text, *number;
    std::uint32_t color;
    bool wrong;
  } rows[] = {
      {"the text counts", "#010203", "9", 0x030201, false},
      {"the number stands in", "red", "9", 9, true},
      {"a system colour as a negative number", "", "-2147483641", 0x070707, true},
      {"neither of them", "red", "red", 0, true},
      {"no scheme at all", "", "", 0, true},
  };
  for (const auto& row : rows) {
    ColorDialog dialog;
    dialog.colors[kProzeduren][kTextColor] = row.text;
    dialog.colors[kProzeduren][kTextNumber] = row.number;
    const ColorScheme before = dialog.colors;
    dialog.show([&] {
      EXPECT_EQ(dialog.form.lblMuster.ForeColor(), row.color) << row.name;
      EXPECT_EQ(dialog.form.cmdSpeichern.Enabled, !row.wrong) << row.name;
      dialog.choose(kStrings);
      dialog.form.cmdSpeichern.Click();
    });
    EXPECT_EQ(dialog.colors, before) << row.name;
  }
}

TEST(frmFarbeinstellung, HilfeShowsItsTopic) {
  ColorDialog dialog;
  dialog.show([&] { dialog.form.cmdHilfe.Click(); });
  ASSERT_EQ(dialog.ports.shell.shownHelp.size(), 1u);
  EXPECT_EQ(dialog.ports.shell.shownHelp[0].first, "TINTLINE2.chm");
  EXPECT_EQ(dialog.ports.shell.shownHelp[0].second, "./htm/farbeinstellungen.htm");
}

}  // namespace
}  // namespace tintline
