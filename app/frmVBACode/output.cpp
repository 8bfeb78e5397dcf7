// The commands that hand the result out: export, clipboard, preview.
// Tested by tests/app/commands_test.cpp.
#include <filesystem>
#include <optional>
#include <sstream>
#include <string>

#include "app/application.h"
#include "app/frmVBACode/frmVBACode.h"
#include "base/codepage.h"
#include "base/file.h"
#include "output/clipboard_text.h"
#include "output/export_name.h"
#include "output/html_document.h"
#include "settings/modIniSave.h"

namespace tintline {
namespace {

// What the shell's answer to "Open" means, "" when there is nothing to say. -1 stands
// for nine reasons of which the first is told, on purpose.
std::wstring openFailureText(int answer) {
  switch (answer) {
    case 11:
      return L"Datei ist keine Win32 Anwendung";
    case 5:
      return L"Zugriff verweigert";
    case 27:
      return L"Datei-Assoziation ist unvollständig";
    case -1:
      return L"DDE ist nicht bereit";
    default:
      return {};
  }
}

}  // namespace

SelectableLines frmVBACode::selectable(const ListBox& list) {
  return {.count = list.ListCount(),
          .line = [&list](std::size_t index) { return list.lines()[index]; },
          .selected = [&list](std::size_t index) { return list.Selected(index); }};
}

// Converts when that was not done yet; false when there is nothing, or the user ended the run.
bool frmVBACode::hasResult() {
  if (List1.ListCount() == 0) return false;
  if (List2.ListCount() == 0) runAside([this] { Verarbeiten(); });
  return !closeWanted_ && resultExists();
}

void frmVBACode::cmdExport_Click() {
  if (!hasResult()) return;
  const std::optional<std::filesystem::path> file = chooseExportFile();
  if (!file) return;
  showExportPath(pathText(*file));
  if (writeExportFile(*file))
    openFile(*file);
  else
    showExportPath({});
}

void frmVBACode::showExportPath(const std::wstring& path) {
  pathTold_ = true;
  lblExportPfad.Caption = path;
  lblExportPfad.ToolTipText = path;
}

// What the status line tells to be there. It may be gone meanwhile.
void frmVBACode::openExported() {
  const std::filesystem::path path = pathFromText(lblExportPfad.Caption());
  std::error_code none;
  if (std::filesystem::exists(path, none)) return openFile(path);
  showExportPath({});
  tellStatus(pathText(path.filename()) + L" gibt es nicht mehr");
}

// The name that the user chose; one that exists, with his consent.
std::optional<std::filesystem::path> frmVBACode::chooseExportFile() {
  const FileDialog dialog{.title = L"HTML-Quellcode speichern",
                          .filter = L"*.htm|*.htm|*.html|*.html",
                          .fileName = defaultName(),
                          .folder = memory.exportFolder};
  for (;;) {
    const FileChoice choice = ports_.dialogs.showSave(dialog);
    if (choice.error >= 1 && choice.error != FileChoice::kCancelled)
      ports_.dialogs.message(
          L"Es ist der Fehler: " + std::to_wstring(choice.error) + L" aufgetreten!",
          MessageIcon::None, {});
    if (choice.error != 0) return {};
    memory.exportFolder = choice.path.parent_path();
    const std::filesystem::path file =
        choice.path.parent_path() /
        pathFromText(forceExtension(pathText(choice.path.filename()), choice.filterIndex));
    std::error_code missing;
    if (!std::filesystem::exists(file, missing) ||
        ports_.dialogs.confirm(L"Soll die Datei " + pathText(file) + L" überschrieben werden?"))
      return file;
  }
}

std::wstring frmVBACode::defaultName() const {
  if (Dateiname_.empty() && gesamtmodul_) return {};
  const TreeNode* const node = TreeView1.SelectedItem();
  const bool ofNode = source_ == Source::Procedure || Dateiname_.empty();
  if (ofNode && node != nullptr && hasModules(*node)) return defaultExportName(node->path());
  return defaultExportName({Dateiname_});
}

bool frmVBACode::writeExportFile(const std::filesystem::path& file) {
  try {
    AtomicFile target(file);
    if (shown_.mode == Mode::Exact)
      target.stream() << HTMLText;
    else
      writeExport(target.stream(), frame(), ProzNamen_, HTMLText);
    target.commit();
    return true;
  } catch (const FileError& error) {
    tellUnwritable(error);
    return false;
  }
}

void frmVBACode::tellUnwritable(const FileError& error) {
  ports_.dialogs.message(L"Die Datei " + pathText(error.path()) +
                             L" kann nicht geschrieben werden: " +
                             reasonText(error.reason()).german,
                         MessageIcon::Critical, L"Exportieren");
}

void frmVBACode::openFile(const std::filesystem::path& file) {
  const std::wstring failure = openFailureText(ports_.shell.open(pathText(file)));
  if (!failure.empty()) ports_.dialogs.message(failure, MessageIcon::Critical, L"Datei öffnen");
}

void frmVBACode::mnuCopy_Click() {
  if (ActiveControl == &List1) Kopieren();
  if (ActiveControl == &List2) HTMLKopieren();
}

void frmVBACode::AllesMarkieren() {
  ActiveControl->selectAll();
  KopierschalterSetzen();
}

void frmVBACode::HTMLKopieren() {
  const auto code = [this](std::string_view key) {
    std::string text = modIniSave::fkt_IniWertLesen(application_.settingsFile, key);
    return List2.encoding() == TextEncoding::Utf8 ? toUtf8(fromAnsi(text)) : text;
  };
  ports_.clipboard.setText(
      toWide(tintline::HTMLKopieren(code("PreCode"), selectable(List2), code("PostCode")),
             List2.encoding()));
}

void frmVBACode::Kopieren() {
  ports_.clipboard.setText(toWide(tintline::Kopieren(selectable(List1)), List1.encoding()));
  Pruefen();
}

void frmVBACode::HTMLDateierstellen() {
  writeScratchPage([this](std::ostream& datei) {
    if (shown_.mode == Mode::Exact)
      datei << exactPreview_;
    else
      tintline::HTMLDateierstellen(datei, frame(), HTMLText);
  });
  wBrowser.Visible = true;
}

void frmVBACode::DummySeite() {
  clearResult();
  writeScratchPage([this](std::ostream& datei) { tintline::DummySeite(datei, frame(), HTMLText); });
}

// Writes the scratch page and shows it: beside the program, or where the user may
// write.
void frmVBACode::writeScratchPage(const std::function<void(std::ostream&)>& write) {
  std::ostringstream page;
  write(page);
  const auto show = [this, &page](const std::filesystem::path& folder) {
    AtomicFile scratch(folder / kScratchFile);
    scratch.stream() << page.view();
    scratch.commit();
    wBrowser.Navigate(folder / kScratchFile, keepsPlaces_);
  };
  try {
    show(ports_.files.programFolder());
  } catch (const FileError&) {
    show(ports_.files.temporaryFolder());
  }
}

}  // namespace tintline
