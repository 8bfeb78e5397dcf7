// The dialog that edits the colour scheme.
//
// It works on a copy of the colour table. A text that is no colour changes nothing:
// lblHinweis says what is wrong, and until it is corrected "Speichern" is disabled. It
// is gone when another category is chosen.
//
// Tested by tests/unit/app/dialogs_test.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "app/controls/combo_box.h"
#include "app/controls/form.h"
#include "app/frmFarbeinstellung/code_sample.h"
#include "engine/color_scheme.h"
#include "ports/dialogs.h"
#include "ports/shell.h"

namespace tintline {

// A field of a colour, with its value as text.
class ColorSwatch final : public Label {
 public:
  Property<std::uint32_t> Value{*this, 0};  // 0x00BBGGRR
};

class SampleLabel final : public Label {
 public:
  Property<CodeSample> Sample{*this, {}};
};

class frmFarbeinstellung final : public Form {
 public:
  // `colors` is the program's colour table; only "Speichern" leaves it changed.
  frmFarbeinstellung(ColorScheme& colors, std::filesystem::path settingsFile, Dialogs& dialogs,
                     Shell& shell, modColor::SystemColor systemColor);

  Label lblKategorie, lblText, lblHintergrund, lblKlassisch, lblGenau;
  ComboBox cboKategorie;                      // the five categories
  ColorSwatch lblFarbe, lblHintergrundfarbe;  // a click is one on the button beside
  TextBox txtFarbe, txtHintergrund;           // "#RRGGBB"
  CommandButton cmdFarbe, cmdHintergrund;     // the system's colour dialog
  CheckBox chkTransparent;
  SampleLabel lblMusterKlassisch, lblMusterGenau;  // what pages of the modes make of the colours
  Label lblHinweis;  // what is wrong with a colour text, "" when nothing is
  CommandButton cmdStandard, cmdSpeichern, cmdAbbrechen, cmdHilfe;

  void cboKategorie_Click();
  void txtFarbe_Change();
  void txtHintergrund_Change();
  void cmdFarbe_Click();
  void cmdHintergrund_Click();
  void chkTransparent_Click();
  void cmdStandard_Click();
  void cmdSpeichern_Click();
  void cmdAbbrechen_Click();
  void mnufarbe_Click();

  // Lets the user choose the colour of that field (kTextColor, kBackColor) of the
  // category in the system's dialog.
  void Farbauswahl(ColorField field);

  // Copies a colour table.
  static void CopyList(const ColorScheme& from, ColorScheme& to);

  // The colour integer of a text "#RRGGBB" (blanks around it do not count); nothing
  // when it is no such text.
  static std::optional<std::uint32_t> FarbCode(std::string_view text);

  // True when the last showing ended with "Speichern".
  bool saved() const { return saved_; }

 private:
  void Form_Load() override;

  std::size_t category() const;
  TextBox& textField(ColorField field);
  ColorSwatch& swatch(ColorField field);
  std::uint32_t color(std::size_t ofCategory, ColorField field) const;
  void setColor(ColorField field, std::uint32_t color);
  void textChanged(ColorField field);
  void showCategory();
  void showText(ColorField field);
  void showResult();
  void showSwatch(ColorField field);
  static void showSample(SampleLabel& label, Mode mode, const ColorScheme& colors);

  ColorScheme& colors_;
  std::filesystem::path settingsFile_;
  Dialogs& dialogs_;
  Shell& shell_;
  modColor::SystemColor systemColor_;
  ColorScheme edited_;
  bool saved_ = false;
};

}  // namespace tintline
