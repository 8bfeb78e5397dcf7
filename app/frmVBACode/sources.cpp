// Where the source lines come from: module files, the nodes of the tree, the
// clipboard. Tested by tests/app/commands_test.cpp.
#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <utility>

#include "app/application.h"
#include "app/frmVBACode/frmVBACode.h"
#include "base/codepage.h"
#include "base/file.h"
#include "convert/classic.h"
#include "convert/exact.h"
#include "convert/source_text.h"
#include "sources/module_file_reader.h"
#include "sources/pasted_text.h"

namespace tintline {
namespace {

const FileDialog kOpenDialog{.title = L"VB(A)-Datei einlesen",
                             .filter =
                                 L"Alle (*.bas;*.frm;*.cls)|*.bas;*.frm;*.cls|Module (*.bas)|*.bas|"
                                 L"Formen (*.frm)|*.frm|Klassen (*.cls)|*.cls|"
                                 L"Office-Dateien (*.xlsm;*.xls;*.docm;*.doc;*.pptm;…)|"
                                 L"*.xlsm;*.xlsb;*.xltm;*.xlam;*.xls;*.xlt;*.xla;"
                                 L"*.docm;*.dotm;*.doc;*.dot;"
                                 L"*.pptm;*.potm;*.ppsm;*.ppam;*.ppt;*.pot;*.pps;*.ppa;"
                                 L"*.xml;*.mht;vbaProject.bin",
                             .fileName = L""};

// The picture of a file node while it is selected, by the text behind the last dot,
// letter for letter; "" for a file that gets no node.
std::string_view pictureOf(const std::wstring& fileName) {
  const std::wstring type = fileName.substr(fileName.find_last_of(L'.') + 1);
  if (type == L"bas") return "modul";
  if (type == L"frm") return "frm";
  if (type == L"cls") return "cls";
  return {};
}

std::wstring tooManyLinesText() {
  return L"mehr als " + std::to_wstring(kMaxLines) + L" Zeilen, der Rest wurde nicht gelesen";
}

}  // namespace

void frmVBACode::DateiEinlesen() {
  TreeView1.Refresh();
  FileDialog dialog = kOpenDialog;
  dialog.folder = memory.openFolder;
  const FileChoice choice = ports_.dialogs.showOpen(dialog);
  if (choice.error != 0) return;
  memory.openFolder = choice.path.parent_path();
  open(choice.path);
}

// Nothing is loaded any more; documents stay in the tree.
void frmVBACode::NeuBeginnen() {
  fkt_DateiknotenEntnehmen();
  TreeView1.select(nullptr);
  Dateiname_.clear();
  Dateipfad_.clear();
  ProzNamen_.clear();
  blnPaste_ = gesamtmodul_ = false;
  resetDisplay();
  clearLists();
  setSource(Source::None);
  cmdModul.Enabled = false;
  QuellschalterSetzen(false);
  AusgabeschalterSetzen(false);
  Label9.Caption = L"";
  Label10.Caption = L"";
  DummySeite();
}

// One that is gone is no more offered.
void frmVBACode::openRecent(std::size_t index) {
  if (index >= memory.recent().size()) return;
  const std::filesystem::path file = memory.recent()[index];
  std::error_code none;
  if (!std::filesystem::exists(file, none)) memory.forget(file);
  open(file);
}

// Both lists in the colours that a page would have.
void frmVBACode::showInks() {
  List1.Inks = inksOf(LineInks::Lines::Source, chosenMode(), application_.colors);
  List2.Inks = inksOf(LineInks::Lines::Html, chosenMode(), application_.colors);
}

// What can be done where there is nothing to see.
void frmVBACode::showHints() {
  const bool code = List1.ListCount() > 0;
  List1.Hint = TreeView1.SelectedItem() != nullptr && hasModules(*TreeView1.SelectedItem())
                   ? L"Im Baum eine Prozedur wählen, oder ein Modul umwandeln (F6)"
                   : L"Moduldatei öffnen (Strg+O) oder hierher ziehen";
  List2.Hint = code ? L"Noch nicht umgewandelt: F5" : L"";
}

void frmVBACode::fileDropped(const std::filesystem::path& file) {
  command([this, &file] { open(file); });
}

void frmVBACode::open(const std::filesystem::path& file) {
  const std::wstring name = pathText(file.filename());
  if (name.empty() || name.find(L'*') != std::wstring::npos) return;
  if (isOfficeFile(file)) return openOffice(file);
  Dateiname_ = name;
  Dateipfad_ = file;
  resetDisplay();
  AusgabeschalterSetzen(false);
  if (ModulDateiLesen(file)) {
    QuellschalterSetzen(true);
    setSource(Source::File);
    DateiknotenEinfuegen(Dateiname_, Dateipfad_);
    memory.opened(file);
  }
  DummySeite();
}

// The file that the node stands for is the loaded one.
void frmVBACode::chooseFile(const TreeNode& node) {
  setSource(Source::File);
  Dateiname_ = node.Text();
  Dateipfad_ = pathFromText(node.Tag);
}

bool frmVBACode::ModulDateiLesen(const std::filesystem::path& file) {
  clearLists();
  ProzNamen_.clear();
  blnPaste_ = false;
  auto module = readModule(file);
  if (module) showModule(std::move(*module));
  return module.has_value();
}

// Nothing when it cannot be read, which Label9 tells.
std::optional<frmVBACode::ReadSource> frmVBACode::readModule(const std::filesystem::path& file) {
  Label9.Caption = L"";
  Label10.Caption = L"";
  MousePointer = Pointer::Hourglass;
  const float start = ports_.clock.timer();
  std::optional<ReadSource> module;
  try {
    const std::string bytes = readFile(file);
    module.emplace();
    module->classic = tintline::ModulDateiLesen(bytes, [this](std::size_t lines) {
      Label9.Caption = L"Lese Zeile: " + std::to_wstring(lines);
      ports_.messageLoop.yield();
    });
    module->exact = {.name = exactText(pathText(file.stem())),
                     .kind = moduleKindOf(file),
                     .text = decodeSource(bytes).text};
    const double seconds = double{ports_.clock.timer()} - start;
    const std::wstring warning = warningOf(*module);
    tellStatus(warning.empty() ? std::to_wstring(lineCount(*module)) + L" Zeilen eingelesen in " +
                                     decimal(std::floor(seconds * 10) / 10) + L"s"
                               : pathText(file.filename()) + L": " + warning);
  } catch (const FileError& error) {
    tellStatus(pathText(file.filename()) + L": " + reasonText(error.reason()).german);
  }
  MousePointer = Pointer::Default;
  return module;
}

// In the mode that is chosen; the exact one reads any character and any length.
std::wstring frmVBACode::warningOf(const ReadSource& module) const {
  if (chosenMode() == Mode::Exact) return {};
  return module.classic.tooManyLines ? tooManyLinesText()
                                     : replacedText(module.classic.replaced).german;
}

std::size_t frmVBACode::lineCount(const ReadSource& module) const {
  return chosenMode() == Mode::Exact ? exactLines(module.exact.text).size()
                                     : module.classic.List1.size();
}

void frmVBACode::showModule(ReadSource module) {
  ProcedureNames names = std::move(module.classic.ProzNamen);
  setSourceText(std::move(module));
  ProzNamen_ = std::move(names);
  cmdModul.Enabled = false;
}

// Replaces all that is there, the result too.
void frmVBACode::setSourceText(ReadSource source) {
  clearLists();
  blnPaste_ = false;
  sourceText_.classic = std::move(source.classic.List1);
  sourceText_.tooManyLines = source.classic.tooManyLines;
  sourceText_.exact.add(std::move(source.exact));
  showSource();
}

void frmVBACode::clearLists() {
  sourceText_ = {};
  shownSource_ = chosenMode();
  hscroll1_.Clear(encodingOf(shownSource_));
  clearResult();
  KopierschalterSetzen();
  Pruefen();
}

void frmVBACode::clearResult() {
  hscroll2_.Clear(encodingOf(chosenMode()));
  result_ = {};
  HTMLText.clear();
  HTMLTabelle.clear();
  exactPreview_.clear();
  shown_ = chosenOptions();
}

void frmVBACode::setSource(Source source) {
  source_ = source;
  cmdMakro.Caption = source == Source::File   ? L"Datei"
                     : source == Source::Text ? L"Text"
                                              : L"Makro";
}

void frmVBACode::DateiknotenEinfuegen(const std::wstring& name, const std::filesystem::path& path) {
  Dateiname_ = name;
  Dateipfad_ = path;
  if (TreeNode* old = TreeView1.find(kFilesKey)) TreeView1.Remove(*old);
  DateiknotenWiederherstellen();
}

bool frmVBACode::fkt_DateiknotenEntnehmen() {
  TreeNode* const files = TreeView1.find(kFilesKey);
  if (files == nullptr) return false;
  const bool loaded = !files->Children().empty();
  if (loaded) {
    Dateiname_ = files->Children().front()->Text();
    Dateipfad_ = pathFromText(files->Children().front()->Tag);
  }
  TreeView1.Remove(*files);
  return loaded;
}

// A file of another type, or with its type in capitals, gets no node of its own.
void frmVBACode::DateiknotenWiederherstellen() {
  TreeNode& files = TreeView1.Add(nullptr, std::wstring(kFilesKey), L"gel. Datei", "open", "open");
  const std::string_view picture = pictureOf(Dateiname_);
  if (picture.empty()) return;
  TreeNode& file = TreeView1.Add(&files, Dateiname_, Dateiname_, "modul", std::string(picture));
  file.Tag = pathText(Dateipfad_);
  files.setExpanded(true);
  TreeView1.select(&file);
}

void frmVBACode::TreeView1_NodeClick(TreeNode& node) {
  cmdModul.Enabled = true;
  QuellschalterSetzen(true);
  AusgabeschalterSetzen(true);
  resetDisplay();
  setSource(Source::Procedure);
  if (node.Children().empty())
    nodeWithoutChildren(node);
  else
    nodeWithChildren(node);
}

void frmVBACode::resetDisplay() {
  Frame1.Caption = std::wstring(kSourceCaption);
  reformatting_ = {};
  cmdVBAClp.Enabled = false;
  showExportPath({});
}

void frmVBACode::nodeWithChildren(TreeNode& node) {
  const bool component = node.path().size() == 2;
  if (node.Key() == kFilesKey) {
    cmdModul.Enabled = false;
    chooseFile(*node.Children().front());
  } else if (!component) {
    Label9.Caption = L"";
    Label10.Caption = L"";
    clearLists();
    cmdModul.Enabled = false;
  }
}

void frmVBACode::nodeWithoutChildren(TreeNode& node) {
  const std::size_t level = node.path().size();
  if (level == 2 && node.Parent()->Key() == kFilesKey) {
    cmdModul.Enabled = false;
    chooseFile(node);
    AusgabeschalterSetzen(ModulDateiLesen(Dateipfad_));
  } else if (level == 3) {
    AusgabeschalterSetzen(Makroeinlesen(node));
    const bool there = TreeView1.SelectedItem() != nullptr;  // not behind a lost connection
    cmdModul.Enabled = there;
    QuellschalterSetzen(there);
    cmdVBAClp.Enabled = false;
  } else if (level != 2) {  // of a component without code nothing is read, and nothing goes
    clearLists();
    cmdModul.Enabled = false;
    QuellschalterSetzen(false);
  }
  DummySeite();
  wBrowser.Visible = Check2.Value();
}

void frmVBACode::Einfügen() {
  const std::wstring text = ports_.clipboard.text();
  if (text.empty()) {
    tellStatus(L"In der Zwischenablage ist kein Text");
    return;
  }
  ModuleSource pasted = tintline::Einfügen(toAnsi(text));
  const LineList exact = exactLines(exactText(text));
  const std::size_t before = List1.ListCount();
  if (pasted.tooManyLines || !fits(std::max(pasted.List1.size(), exact.size())))
    return tellTooManyLines();
  appendClassic(pasted.List1);
  sourceText_.exact.append(exactText(text));
  if (shownSource_ == Mode::Exact) showAppended(exact);
  const std::size_t added = List1.ListCount() - before;
  setSource(Source::Text);
  for (std::string& name : pasted.ProzNamen) ProzNamen_.push_back(std::move(name));
  blnPaste_ = true;
  QuellschalterSetzen(true);
  AusgabeschalterSetzen(true);
  Pruefen();
  DummySeite();
  List1.setListIndex(static_cast<std::ptrdiff_t>(before));
  List1.scrollTo(before);
  tellStatus(std::to_wstring(added) + (added == 1 ? L" Zeile" : L" Zeilen") + L" eingefügt");
}

// Whether the lists have room for so many more lines.
bool frmVBACode::fits(std::size_t lines) const {
  return std::max(sourceText_.classic.size(), List1.ListCount()) + lines <= kMaxLines;
}

void frmVBACode::appendClassic(const LineList& lines) {
  for (std::size_t i = 0; i < lines.size(); ++i) sourceText_.classic.append(lines[i]);
  if (shownSource_ == Mode::Classic) showAppended(lines);
}

void frmVBACode::showAppended(const LineList& lines) {
  for (std::size_t i = 0; i < lines.size(); ++i)
    hscroll1_.AddItem(lines[i], -1, ListboxHScroll::kGrow);
}

void frmVBACode::tellTooManyLines() {
  ports_.dialogs.message(
      L"Mehr als " + std::to_wstring(kMaxLines) + L" Zeilen können nicht verarbeitet werden.",
      MessageIcon::Critical, {});
}

}  // namespace tintline
