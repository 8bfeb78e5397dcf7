// Office files in the main window without Office: their documents in the tree, beside those of
// running applications. Tested by tests/app/office_files_test.cpp.
#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "app/frmVBACode/frmVBACode.h"
#include "base/codepage.h"
#include "base/file.h"
#include "base/text.h"
#include "convert/office_text.h"

namespace tintline {

// By what is in it; what is called like a module is none.
bool frmVBACode::isOfficeFile(const std::filesystem::path& file) {
  const std::string type = toAnsi(pathText(file.extension()));
  for (const std::string_view module : {".bas", ".frm", ".cls"})
    if (equalsIgnoreCase(type, module)) return false;
  return office_file::isOfficeFileAt(file);
}

// Lets the user's events in; false when he wants no more.
bool frmVBACode::goOn() {
  ports_.messageLoop.yield();
  return !bEsc_;
}

// Of the first document the tree shows the modules, as if the user had chosen it. A loaded module
// file stays below the documents.
void frmVBACode::openOffice(const std::filesystem::path& file) {
  auto read = readOffice(file);
  if (!read) return;
  const std::wstring name = pathText(file.filename());
  if (read->projects.empty()) return tellProblems(name, read->problems, true);
  memory.opened(file);
  closeDocuments(officeFiles_.documentsOf(file));
  const bool loaded = fkt_DateiknotenEntnehmen();
  TreeNode* const document = addProjects(file, std::move(read->projects));
  if (loaded) DateiknotenWiederherstellen();
  const bool aborted = std::exchange(bEsc_, false);
  if (document != nullptr) {
    document->setExpanded(true);
    TreeView1.select(document);
    TreeView1_NodeClick(*document);
    DummySeite();
    tellStatus(name + L" eingelesen");
  }
  if (aborted) return tellAborted();
  if (!read->problems.empty()) tellProblems(name, read->problems, false);
}

// Nothing when it cannot be read, or the user wants it no more, which Label9 tells.
std::optional<office_file::OfficeFile> frmVBACode::readOffice(const std::filesystem::path& file) {
  const std::wstring name = pathText(file.filename());
  Label9.Caption = L"Lese " + name + L"...";
  Label10.Caption = L"";
  MousePointer = Pointer::Hourglass;
  std::optional<office_file::OfficeFile> read;
  try {
    office_file::FileSource source(file);
    read = office_file::readOfficeFile(source, [this] { return goOn(); });
    if (std::exchange(bEsc_, false)) {
      read.reset();
      tellAborted();
    }
  } catch (const FileError& error) {
    tellStatus(name + L": " + reasonText(error.reason()).german);
  }
  MousePointer = Pointer::Default;
  return read;
}

// Puts them into the tree and gives the first one's node, null when the user wanted no more before.
TreeNode* frmVBACode::addProjects(const std::filesystem::path& file,
                                  std::vector<office_file::Project> projects) {
  TreeNode* first = nullptr;
  for (office_file::Project& project : projects) {
    const Lock lock = project.locked ? Lock::Readable : Lock::None;
    const std::size_t number = officeFiles_.add(file, std::move(project), projects.size() > 1);
    const auto summary = analyseProject(officeFiles_.project(number), [this] { return goOn(); });
    if (!summary) {
      officeFiles_.remove(number);
      break;
    }
    TreeNode& document = addDocument(officeFiles_, number, *summary, lock);
    if (first == nullptr) first = &document;
  }
  return first;
}

void frmVBACode::closeDocuments(const std::vector<std::size_t>& numbers) {
  for (const std::size_t number : numbers) {
    officeFiles_.remove(number);
    if (TreeNode* const node = TreeView1.find(officeFiles_.keyOf(number))) TreeView1.Remove(*node);
  }
  if (TreeView1.SelectedItem() == nullptr) cmdModul.Enabled = false;
}

// With all documents of its file. The lines that the user sees stay.
void frmVBACode::OfficeDateiSchliessen(const TreeNode& document) {
  closeDocuments(officeFiles_.documentsBeside(std::stoul(document.Tag)));
  tellStatus({});  // nothing of what was read
}

// What could not be read, and why: the first of it, where it is much.
void frmVBACode::tellProblems(const std::wstring& file,
                              const std::vector<office_file::Problem>& problems, bool nothingRead) {
  constexpr std::size_t kTold = 12;
  std::wstring text = nothingRead ? file + L" kann nicht gelesen werden:"
                                  : L"Nicht alles in " + file + L" ist lesbar:";
  const std::size_t told = std::min(problems.size(), kTold);
  for (std::size_t i = 0; i < told; ++i) text += L"\r\n" + problemText(problems[i]).german;
  if (told < problems.size())
    text += L"\r\nund " + std::to_wstring(problems.size() - told) + L" weitere";
  if (nothingRead) tellStatus(file + L": " + problemText(problems.front()).german);
  ports_.dialogs.message(text, nothingRead ? MessageIcon::Critical : MessageIcon::Information,
                         L"Office-Datei öffnen");
}

}  // namespace tintline
