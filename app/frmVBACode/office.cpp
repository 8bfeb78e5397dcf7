// Word and Excel in the main window: documents in the tree, their code in the lists,
// the result in a new Word document. Tested by tests/app/office_test.cpp.
#include <algorithm>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "app/application.h"
#include "app/frmVBACode/frmVBACode.h"
#include "base/codepage.h"
#include "base/file.h"
#include "convert/exact.h"
#include "output/word_page.h"
#include "sources/module_export.h"
#include "sources/module_header.h"

namespace tintline {
namespace {

constexpr std::wstring_view kOfForm = L" of Formular frmVBACode";
constexpr std::wstring_view kDeclarationKey = L"_Declaration";

const TreeNode& rootOf(const TreeNode& node) {
  return node.Parent() == nullptr ? node : rootOf(*node.Parent());
}

// "Modul1 (12 Z.)": the name in front of the count.
std::wstring nameOf(const TreeNode& node) { return node.Text().substr(0, node.Text().find(L" (")); }

std::wstring withLines(std::wstring_view name, std::int32_t lines) {
  return std::wstring(name) + L" (" + std::to_wstring(lines) + L" Z.)";
}

std::string pictureOf(const ComponentSummary& component) {
  if (component.name == L"ThisDocument") return "this";
  switch (component.type) {
    case kClassModule:
    case kDocumentModule:
      return "cls";
    case kFormModule:
      return "frm";
    default:
      return "modul";
  }
}

// The name of the procedure in its node's text, "Get Wert (3 Z.)", and its kind.
std::wstring procedureOf(const TreeNode& node, ProcedureKind& kind) {
  const std::wstring name = nameOf(node);
  for (const ProcedureKind known : {ProcedureKind::Get, ProcedureKind::Let, ProcedureKind::Set}) {
    if (!name.starts_with(kindPrefix(known))) continue;
    kind = known;
    return name.substr(kindPrefix(known).size());
  }
  kind = ProcedureKind::Procedure;
  return nameOf(node);
}

vb::ModuleKind moduleKindOf(std::int32_t type) {
  switch (type) {
    case kClassModule:
      return vb::ModuleKind::Class;
    case kFormModule:
      return vb::ModuleKind::Form;
    case kDocumentModule:
      return vb::ModuleKind::Document;
    default:
      return vb::ModuleKind::Standard;
  }
}

void addComponent(TreeView& tree, TreeNode& document, const std::wstring& key,
                  const ComponentSummary& component) {
  const std::string picture = pictureOf(component);
  TreeNode& node =
      tree.Add(&document, key, withLines(component.name, component.lines), picture, picture);
  if (component.declarationLines > 0)
    tree.Add(&node, key + std::wstring(kDeclarationKey),
             withLines(L"Declaration", component.declarationLines), "dec", "dec");
  for (std::size_t i = 0; i < component.procedures.size(); ++i) {
    const ProcedureSummary& procedure = component.procedures[i];
    tree.Add(&node, key + L"_" + std::to_wstring(i + 1),
             withLines(std::wstring(kindPrefix(procedure.kind)) + procedure.name, procedure.lines),
             "vb", "vb");
  }
}

// A page in the folder for temporary files, until it was used.
class TemporaryPage {
 public:
  TemporaryPage(std::filesystem::path path, std::string_view text) : path_(std::move(path)) {
    AtomicFile file(path_);
    file.stream() << text;
    file.commit();
  }
  ~TemporaryPage() {
    std::error_code kept;
    std::filesystem::remove(path_, kept);
  }
  TemporaryPage(const TemporaryPage&) = delete;
  TemporaryPage& operator=(const TemporaryPage&) = delete;

  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace

// ---------------------------------------------------------------------- connections
// Does something that needs the projects, in the name of that procedure. What fails is told, and
// false; a connection that cannot be used any more is ended first.
bool frmVBACode::OfficeAufruf(ProjectSource& source, std::wstring_view procedure,
                              const std::function<void()>& work) {
  try {
    work();
    return true;
  } catch (const OfficeError& error) {
    source.giveUp(error);
    if (source.projectCount() == 0) removeDocuments(source);
    MousePointer = Pointer::Default;
    tell(modWord::failureMessage(error, source.name(), procedure));
    return false;
  }
}

bool frmVBACode::Verbinden(modWord::Connection& connection, std::wstring_view procedure) {
  const bool done = OfficeAufruf(connection, procedure, [&] { connection.connect(ports_.office); });
  if (!done) {
    connection.disconnect();
    removeDocuments(connection);
  }
  return done;
}

void frmVBACode::Trennen(modWord::Connection& connection) {
  const bool ended = connection.disconnect();
  removeDocuments(connection);
  if (!ended) tell(modWord::connectionLost());
}

void frmVBACode::tell(const modWord::FailureMessage& failure) {
  ports_.dialogs.message(failure.text, MessageIcon::Critical, failure.title);
}

void frmVBACode::removeDocuments(const ProjectSource& source) {
  std::vector<TreeNode*> documents;
  for (const auto& root : TreeView1.roots())
    if (root->Key().starts_with(source.keyPrefix())) documents.push_back(root.get());
  for (TreeNode* document : documents) TreeView1.Remove(*document);
  if (TreeView1.SelectedItem() == nullptr) cmdModul.Enabled = false;
}

// Where the node's document comes from; null for a loaded module file.
ProjectSource* frmVBACode::sourceOf(const TreeNode& node) {
  for (ProjectSource* source :
       {static_cast<ProjectSource*>(&Word), static_cast<ProjectSource*>(&Excel),
        static_cast<ProjectSource*>(&officeFiles_)})
    if (rootOf(node).Key().starts_with(source->keyPrefix())) return source;
  return nullptr;
}

Project& frmVBACode::projectOf(const TreeNode& node) {
  return sourceOf(node)->project(std::stoul(rootOf(node).Tag));
}

bool frmVBACode::isOfOfficeFile(const TreeNode& node) const {
  return rootOf(node).Key().starts_with(officeFiles_.keyPrefix());
}

bool frmVBACode::hasModules(const TreeNode& node) const {
  return rootOf(node).Key() != kFilesKey && !rootOf(node).Children().empty();
}

// -------------------------------------------------------------------------- analysis
bool frmVBACode::Baumübersicht(modWord::Connection& connection) {
  const bool file = fkt_DateiknotenEntnehmen();
  removeDocuments(connection);
  cmdModul.Enabled = false;
  const auto goOn = [this] {
    ports_.messageLoop.yield();
    return !bEsc_;
  };
  const bool done = OfficeAufruf(connection, L"Baumübersicht" + std::wstring(kOfForm), [&] {
    connection.readProjects();
    for (std::size_t index = 1; index <= connection.projectCount() && goOn(); ++index)
      if (const auto project = analyseProject(connection.project(index), goOn))
        addDocument(connection, index, *project, Lock::None);
  });
  if (file) DateiknotenWiederherstellen();
  TreeView1.Refresh();
  return done;
}

// A document gets into the tree when all of it is known: nothing half-built is ever there.
TreeNode& frmVBACode::addDocument(const ProjectSource& source, std::size_t index,
                                  const ProjectSummary& project, Lock lock) {
  const std::wstring key = source.keyOf(index);
  const std::wstring locked = L"geschützt";
  std::wstring count = project.isProtected ? locked : std::to_wstring(project.components.size());
  if (lock == Lock::Readable) count += L", " + locked;
  const std::string picture = lock == Lock::Readable ? "lock" : "word";
  TreeNode& document =
      TreeView1.Add(nullptr, key, project.document + L" (" + count + L")", picture, picture);
  document.Tag = std::to_wstring(index);
  for (std::size_t i = 0; i < project.components.size(); ++i)
    addComponent(TreeView1, document, key + L"_" + std::to_wstring(i + 1), project.components[i]);
  return document;
}

// --------------------------------------------------------------------------- reading
bool frmVBACode::Makroeinlesen(const TreeNode& node) {
  clearLists();
  gesamtmodul_ = false;
  blnPaste_ = false;
  auto code = readProcedure(node);
  if (code) showProcedure(std::move(*code));
  return code.has_value();
}

// Nothing when it cannot be read, which the user was told.
std::optional<frmVBACode::ReadSource> frmVBACode::readProcedure(const TreeNode& node) {
  Label9.Caption = L"";
  Label10.Caption = L"";
  MousePointer = Pointer::Hourglass;
  std::optional<ReadSource> lines;
  OfficeAufruf(*sourceOf(node), L"Makroeinlesen" + std::wstring(kOfForm), [&] {
    const bool declarations = node.Key().ends_with(kDeclarationKey);
    ProcedureKind kind{};
    const std::wstring procedure = procedureOf(node, kind);
    const std::wstring module = nameOf(*node.Parent());
    const CodeModule code = projectOf(node).VBComponents().Item(module).CodeModule();
    lines = declarations ? readCode(code, 1, code.CountOfDeclarationLines())
                         : readCode(code, code.ProcStartLine(procedure, kind),
                                    code.ProcCountLines(procedure, kind));
    lines->exact.name = exactText(module);
  });
  MousePointer = Pointer::Default;
  Label9.Caption = L"";
  if (!lines || !lines->classic.tooManyLines) return lines;
  tellTooManyLines();
  return {};
}

// The index of procedures stays that of the last module.
void frmVBACode::showProcedure(ReadSource code) {
  gesamtmodul_ = false;
  setSourceText(std::move(code));
  tellStatus(std::to_wstring(List1.ListCount()) + L" Zeilen eingelesen");
}

bool frmVBACode::Modulbearbeiten(Project& project, const std::wstring& module, bool header) {
  const Component component = project.VBComponents().Item(module);
  const CodeModule code = component.CodeModule();
  if (header) {
    LineList lines;
    for (const std::string& line : Modulkopf(toAnsi(module))) lines.append(line);
    if (!fits(lines.size())) return tellTooManyLines(), false;
    appendClassic(lines);  // the exact page has headings
  }
  ReadSource read = readCode(code, 1, code.CountOfLines());
  const LineList exact = exactLines(read.exact.text);
  if (read.classic.tooManyLines || !fits(std::max(read.classic.List1.size(), exact.size())))
    return tellTooManyLines(), false;
  appendClassic(read.classic.List1);
  if (shownSource_ == Mode::Exact) showAppended(exact);
  read.exact.name = exactText(module);
  read.exact.kind = moduleKindOf(component.Type());
  sourceText_.exact.add(std::move(read.exact));
  const ProcedureNames& names = read.classic.ProzNamen;
  ProzNamen_.insert(ProzNamen_.end(), names.begin(), names.end());
  return true;
}

// The whole stretch is asked for in one call. Its lines and names are those that a file
// with the same code has.
frmVBACode::ReadSource frmVBACode::readCode(const CodeModule& code, std::int32_t start,
                                            std::int32_t count) {
  if (count <= 0) return {};
  const std::wstring text = code.Lines(start, count) + L"\r\n";
  const auto progress = [this, count](std::size_t line) {
    Label9.Caption =
        L"Lese Zeile: " + std::to_wstring(line) + L" (" + std::to_wstring(count) + L")";
    ports_.messageLoop.yield();
  };
  return {.classic = tintline::ModulDateiLesen(toAnsi(text), progress),
          .exact = {.name = {}, .text = exactText(text)}};
}

// ------------------------------------------------------------------------ conversion
void frmVBACode::cmdModul_Click() {
  const TreeNode* node = TreeView1.SelectedItem();
  if (node == nullptr || sourceOf(*node) == nullptr) return;
  if (node->Children().empty() && node->Parent() != nullptr) node = node->Parent();
  if (node->Text() == node->path().front()) return;  // a document is no module
  convertModules(rootOf(*node), {nameOf(*node)}, false, L"cmdModul_Click");
}

void frmVBACode::AlleModuleVerarbeiten() {
  const TreeNode* const node = TreeView1.SelectedItem();
  if (node == nullptr || !hasModules(*node)) return;
  const TreeNode& document = rootOf(*node);
  std::vector<std::wstring> modules;
  for (const auto& module : document.Children()) modules.push_back(nameOf(*module));
  convertModules(document, modules, true, L"AlleModuleVerarbeiten");
  TreeView1.Refresh();
}

// Reads the modules one behind the other and converts them as one document.
void frmVBACode::convertModules(const TreeNode& document, const std::vector<std::wstring>& modules,
                                bool headers, std::wstring_view procedure) {
  clearLists();
  clearResult();
  resetDisplay();
  setSource(Source::Procedure);
  ProzNamen_.clear();
  blnPaste_ = false;
  run([&] {
    MousePointer = Pointer::Hourglass;
    bool complete = true, aborted = false;
    const bool done =
        OfficeAufruf(*sourceOf(document), std::wstring(procedure) + std::wstring(kOfForm), [&] {
          Project& project = projectOf(document);
          for (std::size_t i = 0; complete && !aborted && i < modules.size(); ++i) {
            showProgress(i, modules.size(), 2);
            ports_.messageLoop.yield();
            complete = Modulbearbeiten(project, modules[i], headers);
            aborted = std::exchange(bEsc_, false);
          }
        });
    MousePointer = Pointer::Default;
    Pruefen();
    if (aborted) return tellAborted();
    Label9.Caption = L"";
    if (!done || !complete) return;
    gesamtmodul_ = true;
    Verarbeiten();
  });
}

// ---------------------------------------------------------------------------- export
void frmVBACode::TreeView1_RightClick(TreeNode& node) {
  menuNode_ = node.id();
  if (!PopupMenu) return;
  const std::size_t level = node.path().size();
  if (level == 1 && isOfOfficeFile(node))
    return PopupMenu(hasModules(node) ? mnuOfficeDatei() : mnuOfficeDateiLeer());
  if (node.Children().empty() || !hasModules(node)) return;
  if (level == 2) PopupMenu(mnuModulExport());
  if (level == 1) PopupMenu(mnuModulAll());
}

// The folder of today's exports below the one that the user chooses.
std::optional<std::filesystem::path> frmVBACode::chooseExportFolder(const std::wstring& name) {
  const auto folder =
      ports_.dialogs.chooseFolder(L"Export-Ordner auswählen", ports_.files.temporaryFolder());
  if (!folder) return {};
  try {
    return fkt_DatumsOrdner(*folder, ports_.clock.today());
  } catch (const FileError& error) {
    tellNotExported(name, L": \r\n" + reasonText(error.reason()).german);
    return {};
  }
}

void frmVBACode::tellNotExported(const std::wstring& name, const std::wstring& reason) {
  ports_.dialogs.message(L"Das Modul \"" + name + L"\" konnte nicht exportiert werden" + reason,
                         MessageIcon::Critical, {});
}

// Exports a module, whose name may get known on the way. False when it was not exported, which
// the user was told.
bool frmVBACode::exportModule(const std::wstring& name, const std::function<void()>& work) {
  try {
    work();
    return true;
  } catch (const OfficeError& error) {
    if (error.kind() != OfficeError::Kind::Failed) throw;
    tellNotExported(name, L": \r\n" + error.description());
  } catch (const FileError& error) {
    tellNotExported(name, L": \r\n" + reasonText(error.reason()).german);
  }
  return false;
}

void frmVBACode::ModulExportieren(const TreeNode& node) {
  const std::wstring name = nameOf(node);
  if (node.path().size() != 2 || node.Children().empty() || !hasModules(node))
    return tellNotExported(name, {});
  OfficeAufruf(*sourceOf(node), L"ModulExportieren" + std::wstring(kOfForm), [&] {
    Project& project = projectOf(node);
    const std::wstring document = documentFolder(project.BuildFileName());
    const auto folder = chooseExportFolder(name);
    if (!folder) return;
    const auto work = [&] {
      const Component component = project.VBComponents().Item(name);
      component.Export(fkt_ExportPfad(*folder, document, name, component.Type()));
    };
    if (exportModule(name, work))
      ports_.dialogs.message(L"Das Modul \"" + name +
                                 L"\" wurde in folgendes Verzeichnis exportiert: \r\n" +
                                 pathText(*folder),
                             MessageIcon::Information, {});
  });
}

void frmVBACode::AlleModuleExportieren(const TreeNode& node) {
  const std::wstring name = nameOf(node);
  if (node.path().size() != 1 || !hasModules(node)) return tellNotExported(name, {});
  OfficeAufruf(*sourceOf(node), L"AlleModuleExportieren" + std::wstring(kOfForm), [&] {
    Project& project = projectOf(node);
    const std::wstring document = documentFolder(project.BuildFileName());
    const auto folder = chooseExportFolder(name);
    if (!folder) return;
    const Components& components = project.VBComponents();
    const std::int32_t count = components.Count();
    for (std::int32_t i = 1; i <= count; ++i) {
      std::wstring module = std::to_wstring(i);
      exportModule(module, [&] {
        const Component component = components.Item(i);
        module = component.Name();
        component.Export(fkt_ExportPfad(*folder, document, module, component.Type()));
      });
      showProgress(static_cast<std::size_t>(i), static_cast<std::size_t>(count), 2);
      ports_.messageLoop.yield();
      if (std::exchange(bEsc_, false)) return tellAborted();
    }
    ports_.dialogs.message(
        L"Alle Module wurden in folgendes Verzeichnis exportiert: \r\n" + pathText(*folder),
        MessageIcon::Information, {});
  });
}

// -------------------------------------------------------------------------- transfer
// Of the whole result, or of the lines that are selected in List2. Nothing when the user wants no
// more.
std::optional<std::string> frmVBACode::wordPage(bool selected) {
  std::ostringstream text;
  if (shown_.mode == Mode::Exact) {
    const ChosenLines chosen = selected ? chosenOf(List2.selection()) : result_.chosen;
    const bool complete = watched([&](const Progress& progress) {
      writeWordPage(
          text,
          formattedCopy(result_.source, chosen, exactOptions(shown_), exactWords_, progress).html);
    });
    if (!complete) return {};
  } else {
    SelectableLines lines = selectable(List2);
    if (!selected) lines.selected = [](std::size_t) { return false; };
    writeWordPage(text, application_.colors, lines);
  }
  return std::move(text).str();
}

// The page goes over as a file: the application itself knows best how to read it.
void frmVBACode::cmdWord_Click() {
  if (!hasResult()) return;
  // One line is selected behind every click on its source line.
  const bool some = List2.SelCount() > 1;
  MousePointer = Pointer::Hourglass;
  if (const auto text = wordPage(some))
    sendToWord(*text, some);
  else
    tellAborted();
  MousePointer = Pointer::Default;
}

void frmVBACode::sendToWord(std::string_view text, bool some) {
  try {
    const TemporaryPage page(ports_.files.temporaryFolder() / "TINTLINE-Word.htm", text);
    if (OfficeAufruf(Word, L"cmdWord_Click" + std::wstring(kOfForm),
                     [&] { Word.insertDocument(ports_.office, page.path()); }))
      tellSent(some);
  } catch (const FileError& error) {
    tellUnwritable(error);
  }
}

void frmVBACode::tellSent(bool some) {
  const std::wstring count = std::to_wstring(some ? List2.SelCount() : List2.ListCount());
  tellStatus(some ? L"Nach Word übertragen: " + count + L" markierte Zeilen"
                  : L"Nach Word übertragen: das ganze Ergebnis (Zeilen: " + count + L")");
}

}  // namespace tintline
