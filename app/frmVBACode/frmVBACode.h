// The main window: source tree, source lines, HTML lines, preview, and the commands
// that read, convert, reformat and hand out.
//
// All commands that the user starts come through `execute` or an event of a control.
// They run one at a time: while one is at work, another is refused, although every
// yield to the message loop lets the user's events in. Esc raises bEsc.
//
// Tested by the tests in tests/app.
#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <ostream>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "app/controls/ListboxHScroll.h"
#include "app/controls/form.h"
#include "app/controls/list_box.h"
#include "app/controls/tree_view.h"
#include "app/controls/web_browser.h"
#include "app/frmVBACode/commands.h"
#include "app/modWord.h"
#include "app/office_files.h"
#include "app/ports.h"
#include "app/window_memory.h"
#include "base/file.h"
#include "convert/exact_source.h"
#include "convert/format.h"
#include "convert/reformatting.h"
#include "engine/conversion.h"
#include "engine/keyword_table.h"
#include "engine/line_highlighter.h"
#include "output/clipboard_text.h"
#include "sources/module_file_reader.h"
#include "sources/office_file/office_file.h"
#include "sources/project_analysis.h"
#include "vb/word.h"

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
  OptionButton optKlassisch, optGenau;  // the mode
  Frame Frame2;                         // around List2
  ListBox List2;
  CommandButton cmdHTMClp, cmdExport, cmdWord;
  Frame FrameVorschau;  // the pane around wBrowser; shown as Check2 says
  WebBrowser wBrowser;
  Label Label9, Label10, lblExportPfad;  // a click on the last opens the file
  ProgressBar Fortschritt;               // of a long run, while it goes on
  Control Toolbar1;                      // asks isEnabled() for its buttons whenever it has changed

  // What is true of a command now: for menus, tool bar and keys.
  bool isEnabled(Command command) const;
  bool isChecked(Command command) const;
  static bool isChoice(Command command);  // of one of several

  // Runs a command that the user started; nothing when it is not enabled.
  void execute(Command command);

  // Shows these entries as a menu where the mouse pointer is, and `execute`s the one that
  // the user chooses; set by the view.
  std::function<void(std::span<const MenuEntry>)> PopupMenu;

  // The list that has the focus, or null; set by the view.
  ListBox* ActiveControl = nullptr;

  // The view asks before it closes the window: false while a run goes on, which is
  // ended first; the window is then closed behind it.
  bool QueryUnload();

  // Whether the user asked to end the command at work.
  bool abortRequested() const { return bEsc_; }

  // A file was dropped onto the window.
  void fileDropped(const std::filesystem::path& file);

  // What is remembered from one start to the next; the view tells where the window stands when
  // it is asked.
  WindowMemory memory;
  std::function<void()> TellPlace;

  // The colours of the windows may be others now: light or dark.
  void FarbenGewechselt();

  // ------------------------------------------------------------------- start-up
  void Initialisieren();  // the whole start-up behind the splash
  void Inilesen();

  // -------------------------------------------------------------------- sources
  void NeuBeginnen();
  void DateiEinlesen();
  bool ModulDateiLesen(const std::filesystem::path& file);  // false: could not be read
  void DateiknotenEinfuegen(const std::wstring& name, const std::filesystem::path& path);
  bool fkt_DateiknotenEntnehmen();
  void DateiknotenWiederherstellen();
  void TreeView1_NodeClick(TreeNode& node);
  void QuellschalterSetzen(bool enabled);
  void AusgabeschalterSetzen(bool enabled);
  void Einfügen();

  // --------------------------------------------------------------------- Office
  modWord::Connection Word{L"Word"}, Excel{L"Excel"};

  // Connects; false when it failed, which the user was told.
  bool Verbinden(modWord::Connection& connection, std::wstring_view procedure);

  // Ends the connection and takes its documents out of the tree.
  void Trennen(modWord::Connection& connection);

  // Puts the documents of the application into the tree anew; false when it failed. Esc
  // ends it: the documents up to then stay.
  bool Baumübersicht(modWord::Connection& connection);

  // Reads the code of a procedure's or declarations' node; false when it failed. What it
  // asks for are the names and the project's index that this node and those above it hold.
  // A node may be gone after a failure.
  bool Makroeinlesen(const TreeNode& node);

  // Adds the lines of that module of the project, behind a header when it is to have one.
  // False when there are too many. Throws OfficeError.
  bool Modulbearbeiten(Project& project, const std::wstring& module, bool header);

  void TreeView1_RightClick(TreeNode& node);
  void ModulExportieren(const TreeNode& node);
  void AlleModuleExportieren(const TreeNode& node);
  void cmdWord_Click();

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
  void AllesMarkieren();
  void FormatiertKopieren();
  void Suchen();
  void Weitersuchen(bool forward);
  void GeheZuZeile();
  void ProzedurenZeigen();
  void ProjektDokumentieren();
  void HTMLDateierstellen();
  void DummySeite();

  // ---------------------------------------------------------------------- extras
  void Check2_Click();
  void mnuFarben_Click();
  void mnuSchluesselworte_Click();
  void fkt_ShowSplash();
  void mnubeenden_Click();

  // F1 in a dialog: the help's entry for context help.
  void KontexthilfeZeigen();

  // The HTML text and its companion, the table form of a selection. In the exact mode the text is
  // the whole page, in UTF-8.
  std::string HTMLText, HTMLTabelle;

 private:
  static constexpr std::wstring_view kSourceCaption = L"Quellcode";
  static constexpr std::wstring_view kFilesKey = L"Dateien";
  static constexpr std::string_view kKeywordsFile = "vb.ini";
  static constexpr std::string_view kScratchFile = "dummy.html";

  class RunObserver;
  class ProjectProgress;
  class WholeRun;
  class SelectionRun;

  // Where the lines of List1 came from: what cmdMakro converts.
  enum class Source { None, File, Text, Procedure };

  // A source as each of the modes reads it. List1 shows the lines of the mode that is chosen.
  struct SourceText {
    LineList classic;
    bool tooManyLines = false;  // for the classic mode, which has only the first of them
    ExactSource exact;
  };

  // A module or procedure that was read.
  struct ReadSource {
    ModuleSource classic;
    ExactModule exact;
  };

  // What the texts of the status line are about: the lines, and what of them is marked.
  struct Display {
    std::array<unsigned, 2> lines;
    std::array<std::ptrdiff_t, 4> marks;
  };
  Display display() const;

  // What a result depends on beside its lines.
  struct ResultOptions {
    Mode mode;
    bool lineNumbers;
    StyleMode style;
    bool darkPreview;
    bool operator==(const ResultOptions&) const = default;
  };

  void Form_Load() override;
  void Form_Unload() override;

  void wireEvents();
  void command(const std::function<void()>& work);
  void guarded(const std::function<void()>& work);
  void catchUp();
  void tellStatus(const std::wstring& text);
  void clearStale();
  void dispatch(Command command);

  void SchluesselworteLaden(std::string_view fileName);
  void StandardSchluesselworteLaden();
  void showFirstPage();
  void waitUntil(float start, float seconds);
  void showKeywordProgress(std::size_t entries);

  void open(const std::filesystem::path& file);
  void openRecent(std::size_t index);
  void showHints();
  void showInks();
  void showBrightness();
  void chooseBrightness(Brightness brightness);
  void chooseFile(const TreeNode& node);
  std::optional<ReadSource> readModule(const std::filesystem::path& file);
  void showModule(ReadSource module);
  std::wstring warningOf(const ReadSource& module) const;
  std::size_t lineCount(const ReadSource& module) const;
  void clearLists();
  void clearResult();
  void showExportPath(const std::wstring& path);
  void openExported();
  void resetDisplay();
  void setSource(Source source);
  void nodeWithChildren(TreeNode& node);
  void nodeWithoutChildren(TreeNode& node);

  Mode chosenMode() const { return optGenau.Value ? Mode::Exact : Mode::Classic; }
  static TextEncoding encodingOf(Mode mode) {
    return mode == Mode::Exact ? TextEncoding::Utf8 : TextEncoding::Ansi;
  }
  void loadMode();
  void followMode();
  void setSourceText(ReadSource source);
  void tellNotConverted();
  void refuseToConvert();
  bool convertChosen(const ChosenLines& chosen, ConversionObserver& observer);
  bool convertExactly(const ChosenLines& chosen);
  bool watched(const std::function<void(const Progress&)>& work);
  std::size_t sourceLineOf(std::size_t htmlLine) const;
  bool pageHasSourceLines() const;
  void showInPreview(std::size_t sourceLine);
  void anchorFollowed(const std::wstring& anchor);
  ChosenLines chosenOf(const std::vector<bool>& htmlLines) const;
  listing::Options exactOptions(const ResultOptions& result) const;
  std::wstring title() const;

  void run(const std::function<void()>& work);
  void runAside(const std::function<void()>& work);
  void showProgress(std::size_t done, std::size_t all, std::size_t least);
  void endRun();
  void OptionenSetzen(bool enabled);
  bool readSourceAnew();
  void convertSelection();
  void tellSelected();
  void tellAborted();
  void ErgebnisAuffrischen();
  bool resultExists() const;
  std::optional<std::size_t> pairedLine(const ListBox& moved);
  void KopierschalterSetzen();
  ResultOptions chosenOptions() const;
  ConversionOptions conversionOptions() const;
  DocumentFrame frame() const;
  std::wstring decimal(double number) const;

  ListBox& searchedList();
  void findNext(ListBox& list, bool forward);
  void goTo(ListBox& list, std::size_t line);

  void document(const std::filesystem::path& source, const std::filesystem::path& folder);

  void indent(const Reformatting& pass);
  void tellTooManyWrapped();
  static std::optional<SourceText> reformatted(const SourceText& text, const Reformatting& pass);
  void replaceSource(SourceText text);
  void showSource();
  void reformatAgain();

  bool OfficeAufruf(ProjectSource& source, std::wstring_view procedure,
                    const std::function<void()>& work);
  void tell(const modWord::FailureMessage& failure);
  ProjectSource* sourceOf(const TreeNode& node);
  Project& projectOf(const TreeNode& node);
  TreeNode* menuNode() const { return menuNode_ ? TreeView1.byId(*menuNode_) : nullptr; }
  bool hasModules(const TreeNode& node) const;
  bool fits(std::size_t lines) const;
  void appendClassic(const LineList& lines);
  void showAppended(const LineList& lines);
  bool isOfOfficeFile(const TreeNode& node) const;
  // Locked with a password, but read from a file: there it locks nothing.
  enum class Lock { None, Readable };
  TreeNode& addDocument(const ProjectSource& source, std::size_t index,
                        const ProjectSummary& project, Lock lock);
  void removeDocuments(const ProjectSource& source);

  static bool isOfficeFile(const std::filesystem::path& file);
  void openOffice(const std::filesystem::path& file);
  std::optional<office_file::OfficeFile> readOffice(const std::filesystem::path& file);
  TreeNode* addProjects(const std::filesystem::path& file,
                        std::vector<office_file::Project> projects);
  void closeDocuments(const std::vector<std::size_t>& numbers);
  void tellProblems(const std::wstring& file, const std::vector<office_file::Problem>& problems,
                    bool nothingRead);
  void OfficeDateiSchliessen(const TreeNode& document);
  bool goOn();
  void tellTooManyLines();
  ReadSource readCode(const CodeModule& code, std::int32_t start, std::int32_t count);
  std::optional<ReadSource> readProcedure(const TreeNode& node);
  void showProcedure(ReadSource code);
  void convertModules(const TreeNode& document, const std::vector<std::wstring>& modules,
                      bool headers, std::wstring_view procedure);
  std::optional<std::filesystem::path> chooseExportFolder(const std::wstring& name);
  bool exportModule(const std::wstring& name, const std::function<void()>& work);
  void tellNotExported(const std::wstring& name, const std::wstring& reason);
  std::optional<std::string> wordPage(bool selected);
  void sendToWord(std::string_view text, bool some);
  void tellSent(bool some);

  static SelectableLines selectable(const ListBox& list);
  bool hasResult();
  void tellUnwritable(const FileError& error);
  std::optional<std::filesystem::path> chooseExportFile();
  std::wstring defaultName() const;
  bool writeExportFile(const std::filesystem::path& file);
  void openFile(const std::filesystem::path& file);
  void writeScratchPage(const std::function<void(std::ostream&)>& write);

  Application& application_;
  const Ports& ports_;
  ListboxHScroll hscroll1_, hscroll2_;
  OfficeFiles officeFiles_;
  KeywordTable keywords_;
  Highlighter highlighter_;
  vb::WordLists exactWords_;

  SourceText sourceText_;
  Mode shownSource_ = Mode::Classic;  // the mode whose lines List1 shows
  struct Converted {
    ExactSource source;
    ChosenLines chosen;
  };
  Converted result_;          // what the result was made of
  std::string exactPreview_;  // the page of an exact result with an id for each line
  LineAnchors lineAnchors_;   // these ids
  bool keepsPlaces_ = false;  // lists and preview stay where they are
  Source source_ = Source::None;
  std::wstring Dateiname_;           // of the loaded file, without folder; "" for none
  std::filesystem::path Dateipfad_;  // its full path
  ProcedureNames ProzNamen_;
  std::vector<Reformatting> reformatting_;  // to be done again when the lines are read anew
  bool dark_ = false;                       // the windows are
  ResultOptions shown_{Mode::Classic, false, StyleMode::Class, false};  // those of the result
  Display lastDisplay_{};                                               // behind the last command
  ListBox* searched_ = &List1;                  // the list that was searched last
  std::wstring suchtext_;                       // what was looked for
  std::optional<std::size_t> menuNode_;         // the node under the last right click
  int einzug_ = 0;                              // blanks per block level
  int zeilenbreite_ = 80;                       // 0: lines are not wrapped
  bool busy_ = false;                           // a command is at work
  bool statusTold_ = false, pathTold_ = false;  // by the command at work
  bool closeWanted_ = false;         // the user closed the window while a command was at work
  bool bEsc_ = false;                // abort request
  bool blnPaste_ = false;            // the lines are pasted code
  bool gesamtmodul_ = false;         // List1 holds one or more whole modules of a project
  bool Auswahl_ = false;             // the result stems from a selection:
  std::vector<bool> selectedLines_;  // of these lines
  bool controlFile_ = false;         // there is a "vb.ini"
  bool narrowable_ = false;          // button "format2": lines were indented once
  bool wrappable_ = false;           // button "umbruch": some line is longer than the width
};

}  // namespace tintline
