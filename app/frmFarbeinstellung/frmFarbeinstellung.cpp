// See frmFarbeinstellung.h. Tested by tests/unit/app/dialogs_test.cpp.
#include "app/frmFarbeinstellung/frmFarbeinstellung.h"

#include <charconv>
#include <stdexcept>
#include <utility>

#include "app/HTMLHelp.h"
#include "base/codepage.h"
#include "base/text.h"
#include "settings/modIniSave.h"

namespace tintline {
namespace {

// The field that holds the same colour as a number.
ColorField numberField(ColorField field) { return field == kTextColor ? kTextNumber : kBackNumber; }

}  // namespace

frmFarbeinstellung::frmFarbeinstellung(ColorScheme& colors, std::filesystem::path settingsFile,
                                       Dialogs& dialogs, Shell& shell,
                                       modColor::SystemColor systemColor)
    : colors_(colors),
      settingsFile_(std::move(settingsFile)),
      dialogs_(dialogs),
      shell_(shell),
      systemColor_(std::move(systemColor)) {
  Caption = L"TINTLINE Farben einstellen";
  lblKategorie.Caption = L"Kategorie:";
  lblText.Caption = L"Textfarbe:";
  lblHintergrund.Caption = L"Hintergrundfarbe:";
  lblKlassisch.Caption = L"Klassisch:";
  lblGenau.Caption = L"Genau:";
  cboKategorie.List = {L"Prozeduren", L"Reservierte Worte", L"Parameter", L"Kommentare",
                       L"Strings"};
  cboKategorie.ListIndex = 0;
  cmdFarbe.Caption = L"Ändern…";
  cmdHintergrund.Caption = L"Ändern…";
  txtFarbe.AccessibleName = lblText.Caption;  // a swatch stands in between
  txtHintergrund.AccessibleName = lblHintergrund.Caption;
  cmdFarbe.AccessibleName = L"Textfarbe ändern…";
  cmdHintergrund.AccessibleName = L"Hintergrundfarbe ändern…";
  chkTransparent.Caption = L"transparent";
  cmdStandard.Caption = L"Standard";
  cmdSpeichern.Caption = L"Speichern";
  cmdAbbrechen.Caption = L"Abbrechen";
  cmdHilfe.Caption = L"Hilfe";

  cboKategorie.Click = [this] { cboKategorie_Click(); };
  txtFarbe.Change = [this] { txtFarbe_Change(); };
  txtHintergrund.Change = [this] { txtHintergrund_Change(); };
  cmdFarbe.Click = lblFarbe.Click = [this] { cmdFarbe_Click(); };
  cmdHintergrund.Click = lblHintergrundfarbe.Click = [this] { cmdHintergrund_Click(); };
  chkTransparent.Click = [this] { chkTransparent_Click(); };
  cmdStandard.Click = [this] { cmdStandard_Click(); };
  cmdSpeichern.Click = [this] { cmdSpeichern_Click(); };
  cmdAbbrechen.Click = [this] { cmdAbbrechen_Click(); };
  cmdHilfe.Click = [this] { mnufarbe_Click(); };
}

void frmFarbeinstellung::Form_Load() {
  saved_ = false;
  CopyList(colors_, edited_);
  cboKategorie.ListIndex = 0;
  showCategory();
}

// ---------------------------------------------------------------------- events

void frmFarbeinstellung::cboKategorie_Click() { showCategory(); }

void frmFarbeinstellung::txtFarbe_Change() { textChanged(kTextColor); }

void frmFarbeinstellung::txtHintergrund_Change() { textChanged(kBackColor); }

void frmFarbeinstellung::cmdFarbe_Click() { Farbauswahl(kTextColor); }

void frmFarbeinstellung::cmdHintergrund_Click() { Farbauswahl(kBackColor); }

void frmFarbeinstellung::chkTransparent_Click() {
  edited_[category()][kTransparency] = chkTransparent.Value ? "1" : "0";
  showResult();
}

void frmFarbeinstellung::cmdStandard_Click() {
  modColor::Farbesetzen(edited_);
  showCategory();
}

void frmFarbeinstellung::cmdSpeichern_Click() {
  ColorScheme before;
  CopyList(colors_, before);
  CopyList(edited_, colors_);
  modIniSave::FarbenSpeichern(settingsFile_, colors_);
  saved_ = colors_ == edited_;
  if (saved_) return Unload();
  CopyList(before, colors_);
  lblHinweis.Caption = L"Die Farben konnten nicht gespeichert werden.";
}

void frmFarbeinstellung::cmdAbbrechen_Click() { Unload(); }

void frmFarbeinstellung::mnufarbe_Click() {
  HTMLHelp::showTopic(shell_, HTMLHelp::kHelpFile, HTMLHelp::kColors);
}

// --------------------------------------------------------------------- colours

void frmFarbeinstellung::Farbauswahl(ColorField field) {
  const auto chosen = dialogs_.chooseColor(color(category(), field));
  if (!chosen) return;
  setColor(field, *chosen);
  showText(field);
  showResult();
}

void frmFarbeinstellung::CopyList(const ColorScheme& from, ColorScheme& to) { to = from; }

std::optional<std::uint32_t> frmFarbeinstellung::FarbCode(std::string_view text) {
  text = Trim(text);
  if (text.size() != 7 || text.front() != '#') return std::nullopt;
  std::uint32_t rgb = 0;
  const auto [end, error] = std::from_chars(text.data() + 1, text.data() + text.size(), rgb, 16);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return (rgb & 0xFF) << 16 | (rgb & 0xFF00) | rgb >> 16;  // red is the low byte
}

std::size_t frmFarbeinstellung::category() const {
  return static_cast<std::size_t>(cboKategorie.ListIndex());
}

TextBox& frmFarbeinstellung::textField(ColorField field) {
  return field == kTextColor ? txtFarbe : txtHintergrund;
}

ColorSwatch& frmFarbeinstellung::swatch(ColorField field) {
  return field == kTextColor ? lblFarbe : lblHintergrundfarbe;
}

// The colour to show for a field: by its text, because that is what pages are written
// with; by its number when a damaged settings file has no colour there; else black.
std::uint32_t frmFarbeinstellung::color(std::size_t ofCategory, ColorField field) const {
  const auto& fields = edited_[ofCategory];
  if (const auto code = FarbCode(fields[field])) return *code;
  try {
    return FarbCode(modColor::fkt_FarbText(fields[numberField(field)], systemColor_)).value();
  } catch (const std::invalid_argument&) {
    return 0;
  }
}

void frmFarbeinstellung::setColor(ColorField field, std::uint32_t color) {
  auto& fields = edited_[category()];
  fields[field] = modColor::fkt_FarbText(color, systemColor_);
  // Signed: a system colour is a negative number.
  fields[numberField(field)] = std::to_string(static_cast<std::int32_t>(color));
}

void frmFarbeinstellung::textChanged(ColorField field) {
  const std::string text = toAnsi(textField(field).Text());
  const auto code = FarbCode(text);
  // A text that only says what the table holds must not cost a system colour its number.
  if (code && text != edited_[category()][field]) setColor(field, *code);
  showResult();
}

// --------------------------------------------------------------------- display

void frmFarbeinstellung::showCategory() {
  showText(kTextColor);
  showText(kBackColor);
  chkTransparent.Value = modColor::isTransparent(edited_, category());
  showResult();
}

void frmFarbeinstellung::showText(ColorField field) {
  textField(field).Text = fromAnsi(edited_[category()][field]);
}

// Everything that follows from the table and the texts, but for the texts themselves:
// the user may be typing in one.
void frmFarbeinstellung::showResult() {
  showSwatch(kTextColor);
  showSwatch(kBackColor);
  showSample(lblMusterKlassisch, Mode::Classic, edited_);
  showSample(lblMusterGenau, Mode::Exact, edited_);
  const auto wrong = [](const TextBox& field) { return !FarbCode(toAnsi(field.Text())); };
  lblHinweis.Caption = wrong(txtFarbe)         ? L"Die Textfarbe hat nicht die Form #RRGGBB."
                       : wrong(txtHintergrund) ? L"Die Hintergrundfarbe hat nicht die Form #RRGGBB."
                                               : L"";
  cmdSpeichern.Enabled = lblHinweis.Caption().empty();
}

void frmFarbeinstellung::showSwatch(ColorField field) {
  const std::uint32_t shown = color(category(), field);
  swatch(field).Value = shown;
  swatch(field).Caption = (field == kTextColor ? lblText : lblHintergrund).Caption() + L" " +
                          fromAnsi(modColor::fkt_FarbText(shown, systemColor_));
}

void frmFarbeinstellung::showSample(SampleLabel& label, Mode mode, const ColorScheme& colors) {
  label.Sample = codeSample(mode, colors);
  label.Caption = label.Sample().text();
}

}  // namespace tintline
