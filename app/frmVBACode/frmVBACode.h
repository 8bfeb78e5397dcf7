// The main window: source tree, source lines, HTML lines, preview, and the commands
// that read, convert, reformat and hand out.
//
// All commands that the user starts come through `execute` or an event of a control.
// They run one at a time: while one is at work, another is refused, although every
// yield to the message loop lets the user's events in. Esc raises bEsc.
//
// Tested by tests/unit/app/frmVBACode_test.cpp and its siblings.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

#include "app/controls/ListboxHScroll.h"
#include "app/controls/form.h"
#include "app/controls/list_box.h"
#include "app/controls/tree_view.h"
#include "app/controls/web_browser.h"
#include "app/frmVBACode/commands.h"
#include "app/ports.h"
#include "engine/conversion.h"
#include "engine/keyword_table.h"
#include "engine/line_highlighter.h"

namespace tintline {

class Application;

class frmVBACode final : public Form {
 public:
  explicit frmVBACode(Application& application);

  // ------------------------------------------------------------------- controls
  TreeView TreeView1;
  Frame Frame1;  // around List1
  ListBox List1;
  CommandButton cmdModul, cmdMakro, cmdAuswahl, cmdVBAClp;
  CheckBox Check1;  // "Zeilennummern"
  CheckBox Check2;  // "Vorschau"
  OptionButton optClass, optStyle;
  Frame Frame2;  // around List2
  ListBox List2;
  CommandButton cmdHTMClp, cmdExport, cmdWord;
  Frame FrameVorschau;  // the pane around wBrowser; shown as Check2 says
  WebBrowser wBrowser;
  Label Label9, Label10, lblExportPfad;
  Control Toolbar1;  // asks isEnabled() for its buttons whenever it has changed

  // What is true of a command now: for menus, tool bar and keys.
  bool isEnabled(Command command) const;
  bool isChecked(Command command) const;

  // Runs a command that the user started; nothing when it is not enabled.
  void execute(Command command);

  // The list that has the focus, for copying; set by the view.
  enum class ActiveList { None, List1, List2 };
  ActiveList activeList = ActiveList::None;

  // The view asks before it closes the window: false while a run goes on, which is
  // ended first; the window is then closed behind it.
  bool QueryUnload();

  // A file was dropped onto the window.
  void fileDropped(const std::filesystem::path& file);

  // ------------------------------------------------------------------- start-up
  void Initialisieren();  // the whole start-up behind the splash
  void Inilesen();

  // -------------------------------------------------------------------- sources
  void DateiEinlesen();
  void ModulDateiLesen(const std::filesystem::path& file);
  void DateiknotenEinfuegen(const std::wstring& name, const std::filesystem::path& path);
  bool fkt_DateiknotenEntnehmen();
  void DateiknotenWiederherstellen();
  void TreeView1_NodeClick(TreeNode& node);
  void QuellschalterSetzen(bool enabled);
  void AusgabeschalterSetzen(bool enabled);
  void Einfügen();

  // ----------------------------------------------------------------- conversion
  void cmdModul_Click();
  void cmdMakro_Click();
  void cmdAuswahl_Click();
  void AlleModuleVerarbeiten();
  void Verarbeiten();
  void List1auswerten();
  void ListBoxauswerten();

  // --------------------------------------------------------------- reformatting
  void Formatieren();
  void Formatieren2();
  void Zeilenbreite();
  void Umbruch();
  void Pruefen();

  // --------------------------------------------------------------------- output
  void cmdExport_Click();
  void HTMLKopieren();
  void Kopieren();
  void mnuCopy_Click();
  void HTMLDateierstellen();
  void DummySeite();

  // ---------------------------------------------------------------------- extras
  void mnuFarben_Click();
  void mnuPrePost_Click();
  void mnuSchluesselworte_Click();
  void fkt_ShowSplash();
  void mnubeenden_Click();

  // The HTML text and its companion, the table form of a selection.
  std::string HTMLText, HTMLTabelle;

 private:
  class RunObserver;

  void Form_Load() override;
  void Form_Unload() override;

  Application& application_;
  const Ports& ports_;
};

}  // namespace tintline
