// The main window's controls and the one place that decides what may be started.
// See frmVBACode.h. Tested by the tests in tests/app.
#include "app/frmVBACode/frmVBACode.h"

#include <exception>
#include <new>
#include <stdexcept>

#include "app/HTMLHelp.h"
#include "app/application.h"
#include "base/codepage.h"
#include "settings/modIniSave.h"

namespace tintline {
namespace {

// What a text, a list or the memory does not hold.
bool isTooLarge(const std::exception& error) {
  return dynamic_cast<const std::length_error*>(&error) != nullptr ||
         dynamic_cast<const std::overflow_error*>(&error) != nullptr ||
         dynamic_cast<const std::bad_alloc*>(&error) != nullptr;
}

std::size_t recentIndex(Command command) {
  return static_cast<std::size_t>(command) - static_cast<std::size_t>(Command::mnuZuletzt1);
}

}  // namespace

frmVBACode::frmVBACode(Application& application)
    : memory(application.ports.files.userFolder()),
      application_(application),
      ports_(application.ports),
      hscroll1_(List1, ports_.textMeasure),
      hscroll2_(List2, ports_.textMeasure),
      highlighter_(keywords_) {
  TreeView1.AccessibleName = L"Quellbaum";
  List1.AccessibleName = std::wstring(kSourceCaption);
  List2.AccessibleName = L"HTML-Code";
  wBrowser.AccessibleName = L"Vorschau";
  Fortschritt.AccessibleName = L"Fortschritt";
  Toolbar1.AccessibleName = L"Symbolleiste";
  Frame1.Caption = std::wstring(kSourceCaption);
  Frame2.Caption = L"HTML-Code";
  FrameVorschau.Caption = L"Vorschau";
  cmdModul.Caption = L"Modul";
  cmdModul.ToolTipText = L"Verarbeitet das gesamte Modul";
  cmdMakro.Caption = L"Makro";
  cmdMakro.ToolTipText = L"Verarbeitet das Makro/die Datei";
  cmdAuswahl.Caption = L"Auswahl";
  cmdAuswahl.ToolTipText = L"Verarbeitet die Auswahl";
  for (CommandButton* button : {&cmdVBAClp, &cmdHTMClp}) {
    button->Caption = L"Clipboard";
    button->ToolTipText = L"Kopiert die Auswahl in die Zwischenablage";
  }
  cmdExport.Caption = L"Exportieren";
  cmdExport.ToolTipText = L"Speichert das Ergebnis";
  cmdWord.Caption = L">> Word";
  cmdWord.ToolTipText =
      L"Überträgt das ganze Ergebnis in ein neues Word-Dokument; sind mehrere HTML-Zeilen "
      L"markiert, nur diese";
  Check1.Caption = L"Zeilennummern";
  Check1.ToolTipText = L"Nummeriert die Zeilen";
  Check2.Caption = L"Vorschau";
  Check2.ToolTipText = L"Zeigt nach der Verarbeitung das HTML-Ergebnis an";
  optClass.Caption = L"CSS zentral def.";
  optClass.ToolTipText = L"Schreibt die Farben einmal in den Kopf der Seite";
  optStyle.Caption = L"CSS im Style def.";
  optStyle.ToolTipText = L"Schreibt die Farben an jede Stelle, die sie braucht";
  optKlassisch.Caption = L"Klassisch";
  optKlassisch.ToolTipText = L"Wandelt Wort für Wort um";
  optGenau.Caption = L"Genau";
  optGenau.ToolTipText = L"Liest den Code, wie die Sprache ihn meint";
  optKlassisch.Value = true;
  wBrowser.ToolTipText = L"Vorschau auf den konvertierten Quellcode";
  optClass.Value = true;
  for (CommandButton* button : {&cmdModul, &cmdVBAClp}) button->Enabled = false;
  FrameVorschau.Visible = false;
  Fortschritt.Visible = false;
  QuellschalterSetzen(false);
  AusgabeschalterSetzen(false);
  wireEvents();
}

void frmVBACode::wireEvents() {
  cmdModul.Click = [this] { execute(Command::mnuModul); };
  cmdMakro.Click = [this] { execute(Command::mnuMakro); };
  cmdAuswahl.Click = [this] { execute(Command::mnuAuswahl); };
  cmdVBAClp.Click = [this] { execute(Command::cmdVBAClp); };
  cmdHTMClp.Click = [this] { command([this] { HTMLKopieren(); }); };
  lblExportPfad.Click = [this] { execute(Command::mnuGespeichertes); };
  cmdExport.Click = [this] { execute(Command::cmdExport); };
  Check1.Click = [this] { command([] {}); };  // which catches up
  const auto chosenInsteadOf = [this](OptionButton& other) {
    return [this, &other] {
      other.Value = false;
      command([] {});
    };
  };
  optClass.Click = chosenInsteadOf(optStyle);
  optStyle.Click = chosenInsteadOf(optClass);
  optKlassisch.Click = chosenInsteadOf(optGenau);
  optGenau.Click = chosenInsteadOf(optKlassisch);
  cmdWord.Click = [this] { execute(Command::mnu2word); };
  Check2.Click = [this] { command([] {}); };
  TreeView1.NodeClick = [this](TreeNode& node) { command([&] { TreeView1_NodeClick(node); }); };
  TreeView1.RightClick = [this](TreeNode& node) {
    if (!busy_) TreeView1_RightClick(node);
  };
  wBrowser.AnchorFollowed = [this](const std::wstring& anchor) {
    command([&] { anchorFollowed(anchor); });
  };
  List1.Click = [this] { command([this] { List1auswerten(); }); };
  List2.Click = [this] { command([this] { ListBoxauswerten(); }); };
}

// No command starts inside another.
void frmVBACode::command(const std::function<void()>& work) {
  if (busy_) return;
  busy_ = true;
  Toolbar1.changed();
  guarded(work);
  guarded([this] { catchUp(); });
  Fortschritt.Visible = false;
  clearStale();
  busy_ = false;
  Toolbar1.changed();
  if (closeWanted_) Unload();
}

// What happened, in the status line.
void frmVBACode::tellStatus(const std::wstring& text) {
  statusTold_ = true;
  Label9.Caption = text;
  Label10.Caption = L"";
}

frmVBACode::Display frmVBACode::display() const {
  const auto version = [](const ListBox& list) {
    return list.ListCount() > 0 ? list.lineVersion() : 0;
  };
  return {.lines = {version(List1), version(List2)},
          .marks = {static_cast<std::ptrdiff_t>(List1.SelCount()), List1.ListIndex(),
                    static_cast<std::ptrdiff_t>(List2.SelCount()), List2.ListIndex()}};
}

// What was told before is true no more when the command at work changed what it was about.
void frmVBACode::clearStale() {
  const Display now = display();
  const bool others = now.lines != lastDisplay_.lines;
  if (!statusTold_ && (others || now.marks != lastDisplay_.marks)) tellStatus({});
  if (!pathTold_ && others) showExportPath({});
  statusTold_ = pathTold_ = false;
  lastDisplay_ = now;
}

// The one guard around every command: an unexpected error ends it quietly.
void frmVBACode::guarded(const std::function<void()>& work) {
  bEsc_ = false;
  keepsPlaces_ = false;
  try {
    work();
  } catch (const std::exception& error) {
    MousePointer = Pointer::Default;
    if (isTooLarge(error))
      ports_.dialogs.message(L"Das Ergebnis wird zu groß.", MessageIcon::Critical, {});
  }
}

// The user may have changed the options, now or while the command was at work: the source is shown
// in the mode that is chosen, a result with the options, and the preview as its box says.
void frmVBACode::catchUp() {
  if (closeWanted_) return;
  followMode();
  if (shown_ != chosenOptions()) ErgebnisAuffrischen();
  showHints();
  showInks();
  if (FrameVorschau.Visible() != Check2.Value()) Check2_Click();
}

void frmVBACode::execute(Command command) {
  if (!isEnabled(command)) return;
  if (command == Command::mnuAbbrechen)
    bEsc_ = true;
  else if (command == Command::mnubeenden && !QueryUnload())
    return;  // the window is closed behind the run
  else
    this->command([this, command] { dispatch(command); });
}

void frmVBACode::dispatch(Command command) {
  if (command >= Command::mnuZuletzt1 && command <= Command::mnuZuletzt8)
    return openRecent(recentIndex(command));
  switch (command) {
    case Command::mnuneu:
      return NeuBeginnen();
    case Command::mnudatei:
      return DateiEinlesen();
    case Command::cmdExport:
      return cmdExport_Click();
    case Command::mnubeenden:
      return mnubeenden_Click();
    case Command::mnuCopy:
      return mnuCopy_Click();
    case Command::cmdVBAClp:
      return Kopieren();
    case Command::mnuInsert:
      return Einfügen();
    case Command::mnuFormatiertKopieren:
      return FormatiertKopieren();
    case Command::mnuSelectAll:
      return AllesMarkieren();
    case Command::mnuSuchen:
      return Suchen();
    case Command::mnuWeitersuchen:
    case Command::mnuRueckwaerts:
      return Weitersuchen(command == Command::mnuWeitersuchen);
    case Command::mnuGeheZu:
      return GeheZuZeile();
    case Command::mnuProzeduren:
      return ProzedurenZeigen();
    case Command::mnuDokumentieren:
      return ProjektDokumentieren();
    case Command::mnuGespeichertes:
      return openExported();
    case Command::mnuModul:
      return cmdModul_Click();
    case Command::mnuMakro:
      return cmdMakro_Click();
    case Command::mnuAuswahl:
      return cmdAuswahl_Click();
    case Command::mnuAlleModule:
      return AlleModuleVerarbeiten();
    case Command::mnuFormat:
      return Formatieren();
    case Command::mnuFormat2:
      return Formatieren2();
    case Command::mnuZeilenbreite:
      return Zeilenbreite();
    case Command::mnuUmbruch:
      return Umbruch();
    case Command::mnuKlassisch:
    case Command::mnuGenau:
      optGenau.Value = command == Command::mnuGenau;
      optKlassisch.Value = !optGenau.Value;
      return;
    case Command::mnuZeilennummern:
      Check1.Value = !Check1.Value;
      return;
    case Command::mnuVorschau:
      Check2.Value = !Check2.Value;
      return;
    case Command::mnuFarben:
      return mnuFarben_Click();
    case Command::mnuFarbenSpeichern:
      return modIniSave::FarbenSpeichern(application_.settingsFile, application_.colors);
    case Command::mnuPrePost:
      return application_.prePostCode.ShowModal();
    case Command::mnuSchluesselworte:
      return mnuSchluesselworte_Click();
    case Command::mnuHelligkeitSystem:
      return chooseBrightness(Brightness::System);
    case Command::mnuHell:
      return chooseBrightness(Brightness::Light);
    case Command::mnuDunkel:
      return chooseBrightness(Brightness::Dark);
    case Command::mnuhelp:
      return HTMLHelp::showTopic(ports_.shell, HTMLHelp::kHelpFile, HTMLHelp::kOverview);
    case Command::mnuInfo:
      return fkt_ShowSplash();
    case Command::mnuword:
      return modWord::Wordanalyse(*this);
    case Command::mnuexcel:
      return modWord::Excelanalyse(*this);
    case Command::mnutrennen:
      return Trennen(Word);
    case Command::mnutrennen2:
      return Trennen(Excel);
    case Command::mnu2word:
      return cmdWord_Click();
    case Command::mnuexport:
      return ModulExportieren(*menuNode());
    case Command::mnuexportall:
      return AlleModuleExportieren(*menuNode());
    case Command::mnuconvertall:
      TreeView1.select(menuNode());
      cmdModul.Enabled = false;  // a document is no module
      return AlleModuleVerarbeiten();
    case Command::mnuSchliessen:
      return OfficeDateiSchliessen(*menuNode());
    case Command::mnuZuletzt:
    case Command::mnuZuletzt1:
    case Command::mnuZuletzt8:
    case Command::mnuNaechsterBereich:
    case Command::mnuVorigerBereich:
    case Command::mnuTeilerLinks:
    case Command::mnuTeilerRechts:
    case Command::mnuTeilerOben:
    case Command::mnuTeilerUnten:
    case Command::mnuAbbrechen:
    case Command::None:
      return;  // not enabled, or done by execute or the view
  }
}

bool frmVBACode::isEnabled(Command command) const {
  if (busy_) return command == Command::mnuAbbrechen || command == Command::mnubeenden;
  const bool code = List1.ListCount() > 0;
  if (command >= Command::mnuZuletzt1 && command <= Command::mnuZuletzt8)
    return recentIndex(command) < memory.recent().size();
  switch (command) {
    case Command::mnuneu:
      return code || source_ != Source::None;
    case Command::cmdExport:  // what was not converted is so first
      return cmdExport.Enabled || code;
    case Command::mnuCopy:
    case Command::mnuSelectAll:
      return ActiveControl != nullptr && ActiveControl->ListCount() > 0;
    case Command::cmdVBAClp:
      return cmdVBAClp.Enabled;
    case Command::mnuGespeichertes:
      return !lblExportPfad.Caption().empty();
    case Command::mnuModul:
      return cmdModul.Enabled;
    case Command::mnuMakro:
      return cmdMakro.Enabled;
    case Command::mnuAuswahl:
      return cmdAuswahl.Enabled;
    case Command::mnuFormat:
    case Command::mnuFormatiertKopieren:
    case Command::mnuSuchen:
    case Command::mnuWeitersuchen:
    case Command::mnuRueckwaerts:
    case Command::mnuGeheZu:
    case Command::mnuProzeduren:
      return code;
    case Command::mnuFormat2:
      return code && narrowable_;
    case Command::mnuUmbruch:
      return wrappable_;
    case Command::mnuSchluesselworte:
      return controlFile_;
    case Command::mnuAlleModule:
      return TreeView1.SelectedItem() != nullptr && hasModules(*TreeView1.SelectedItem());
    case Command::mnutrennen:
      return Word.connected();
    case Command::mnutrennen2:
      return Excel.connected();
    case Command::mnu2word:
      return cmdWord.Enabled;
    case Command::mnuexport:
    case Command::mnuexportall:
    case Command::mnuconvertall:
      return menuNode() != nullptr;
    case Command::mnuSchliessen:
      return menuNode() != nullptr && isOfOfficeFile(*menuNode());
    case Command::mnuAbbrechen:
    case Command::None:
      return false;
    default:
      return true;
  }
}

bool frmVBACode::isChecked(Command command) const {
  return (command == Command::mnuKlassisch && optKlassisch.Value) ||
         (command == Command::mnuGenau && optGenau.Value) ||
         (command == Command::mnuHelligkeitSystem && memory.brightness == Brightness::System) ||
         (command == Command::mnuHell && memory.brightness == Brightness::Light) ||
         (command == Command::mnuDunkel && memory.brightness == Brightness::Dark) ||
         (command == Command::mnuZeilennummern && Check1.Value) ||
         (command == Command::mnuVorschau && Check2.Value);
}

bool frmVBACode::isChoice(Command command) {
  return command == Command::mnuKlassisch || command == Command::mnuGenau ||
         command == Command::mnuHelligkeitSystem || command == Command::mnuHell ||
         command == Command::mnuDunkel;
}

void frmVBACode::chooseBrightness(Brightness brightness) {
  memory.brightness = brightness;
  showBrightness();
}

void frmVBACode::showBrightness() { dark_ = ports_.showBrightness(memory.brightness); }

// What depends on them catches up, behind a command that is at work.
void frmVBACode::FarbenGewechselt() {
  showBrightness();
  command([] {});
}

void frmVBACode::QuellschalterSetzen(bool enabled) {
  cmdAuswahl.Enabled = enabled;
  cmdMakro.Enabled = enabled;
}

void frmVBACode::AusgabeschalterSetzen(bool enabled) {
  cmdHTMClp.Enabled = enabled;
  cmdExport.Enabled = enabled;
  cmdWord.Enabled = enabled;
}

bool frmVBACode::QueryUnload() {
  if (!busy_) return true;
  bEsc_ = closeWanted_ = true;
  return false;
}

// The page is written anew: another running program may have written its own meanwhile.
void frmVBACode::Check2_Click() {
  FrameVorschau.Visible = Check2.Value();
  wBrowser.Visible = Check2.Value();
  if (!Check2.Value || HTMLText.empty()) return;
  if (resultExists())
    HTMLDateierstellen();
  else
    DummySeite();
}

void frmVBACode::mnuFarben_Click() {
  application_.farbeinstellung.ShowModal();
  if (application_.farbeinstellung.saved()) ErgebnisAuffrischen();
}

void frmVBACode::mnuSchluesselworte_Click() {
  openFile(ports_.files.programFolder() / kKeywordsFile);
}

void frmVBACode::fkt_ShowSplash() {
  frmSplash& splash = application_.splash;
  splash.Load();
  splash.lblEinstellungen.Caption = L"Einstellungen: " + pathText(application_.settingsFile);
  splash.Check1 = true;
  splash.Label1.Visible = false;
  splash.ProgressBar1.Visible = false;
  for (Control* control : splash.controls()) control->Enabled = !control->Visible;
  splash.Label3.Enabled = true;
  splash.Frame1.Enabled = true;
  splash.Show();
}

void frmVBACode::KontexthilfeZeigen() { ports_.shell.showHelp(application_.HelpFile, {}); }

void frmVBACode::mnubeenden_Click() {
  application_.ProgrammBeenden();
  Unload();
}

void frmVBACode::Form_Load() { Initialisieren(); }

void frmVBACode::Form_Unload() {
  if (TellPlace) TellPlace();
  memory.save();
  busy_ = true;  // an application may keep us waiting: nothing starts any more
  Word.disconnect();
  Excel.disconnect();
  application_.ProgrammBeenden();
}

}  // namespace tintline
