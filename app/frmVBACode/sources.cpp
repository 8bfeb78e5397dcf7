// Where the source lines come from: module files, the nodes of the tree, the
// clipboard. Tested by tests/app/commands_test.cpp.
#include <cmath>
#include <stdexcept>
#include <utility>

#include "app/application.h"
#include "app/frmVBACode/frmVBACode.h"
#include "base/codepage.h"
#include "base/file.h"
#include "convert/classic.h"
#include "sources/module_file_reader.h"
#include "sources/pasted_text.h"

namespace tintline {
namespace {

const FileDialog kOpenDialog{.title = L"VB(A)-Datei einlesen",
                             .filter =
                                 L"Alle (*.bas;*.frm;*.cls)|*.bas;*.frm;*.cls|Module (*.bas)|*.bas|"
                                 L"Formen (*.frm)|*.frm|Klassen (*.cls)|*.cls",
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
  const FileChoice choice = ports_.dialogs.showOpen(kOpenDialog);
  if (choice.error == 0) open(choice.path);
}

void frmVBACode::fileDropped(const std::filesystem::path& file) {
  command([this, &file] { open(file); });
}

void frmVBACode::open(const std::filesystem::path& file) {
  const std::wstring name = pathText(file.filename());
  if (name.empty() || name.find(L'*') != std::wstring::npos) return;
  Dateiname_ = name;
  Dateipfad_ = file;
  resetDisplay();
  AusgabeschalterSetzen(false);
  if (ModulDateiLesen(file)) {
    QuellschalterSetzen(true);
    setSource(Source::File);
    DateiknotenEinfuegen(Dateiname_, Dateipfad_);
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
std::optional<ModuleSource> frmVBACode::readModule(const std::filesystem::path& file) {
  Label9.Caption = L"";
  Label10.Caption = L"";
  MousePointer = Pointer::Hourglass;
  const float start = ports_.clock.timer();
  std::optional<ModuleSource> module;
  try {
    module = tintline::ModulDateiLesen(readFile(file), [this](std::size_t lines) {
      Label9.Caption = L"Lese Zeile: " + std::to_wstring(lines);
      ports_.messageLoop.yield();
    });
    const double seconds = double{ports_.clock.timer()} - start;
    const std::wstring warning =
        module->tooManyLines ? tooManyLinesText() : replacedText(module->replaced).german;
    Label9.Caption = warning.empty()
                         ? std::to_wstring(module->List1.size()) + L" Zeilen eingelesen in " +
                               decimal(std::floor(seconds * 10) / 10) + L"s"
                         : pathText(file.filename()) + L": " + warning;
  } catch (const FileError& error) {
    Label9.Caption = pathText(file.filename()) + L": " + reasonText(error.reason()).german;
  }
  MousePointer = Pointer::Default;
  return module;
}

void frmVBACode::showModule(ModuleSource module) {
  clearLists();
  blnPaste_ = false;
  List1.setLines(std::move(module.List1));
  hscroll1_.fit();
  ProzNamen_ = std::move(module.ProzNamen);
  cmdModul.Enabled = false;
  Pruefen();
}

void frmVBACode::clearLists() {
  hscroll1_.Clear();
  clearResult();
  KopierschalterSetzen();
  Pruefen();
}

void frmVBACode::clearResult() {
  hscroll2_.Clear();
  HTMLText.clear();
  HTMLTabelle.clear();
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
  const std::string text = ports_.clipboard.text();
  if (text.empty()) {
    Label9.Caption = L"In der Zwischenablage ist kein Text";
    return;
  }
  ModuleSource pasted = tintline::Einfügen(text);
  const std::size_t before = List1.ListCount(), added = pasted.List1.size();
  if (!appendLines(pasted)) return;
  setSource(Source::Text);
  for (std::string& name : pasted.ProzNamen) ProzNamen_.push_back(std::move(name));
  blnPaste_ = true;
  QuellschalterSetzen(true);
  AusgabeschalterSetzen(true);
  Pruefen();
  DummySeite();
  List1.setListIndex(static_cast<std::ptrdiff_t>(before));
  List1.scrollTo(before);
  Label9.Caption = std::to_wstring(added) + (added == 1 ? L" Zeile" : L" Zeilen") + L" eingefügt";
  Label10.Caption = L"";
}

// False, and the user is told, when they are too many: then none is added.
bool frmVBACode::appendLines(const ModuleSource& source) {
  if (source.tooManyLines || List1.ListCount() + source.List1.size() > kMaxLines) {
    tellTooManyLines();
    return false;
  }
  for (std::size_t line = 0; line < source.List1.size(); ++line)
    hscroll1_.AddItem(source.List1[line], -1, ListboxHScroll::kGrow);
  return true;
}

void frmVBACode::tellTooManyLines() {
  ports_.dialogs.message(
      L"Mehr als " + std::to_wstring(kMaxLines) + L" Zeilen können nicht verarbeitet werden.",
      MessageIcon::Critical, {});
}

}  // namespace tintline
