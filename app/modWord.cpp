// See modWord.h. Tested by tests/app/office_test.cpp.
#include "app/modWord.h"

#include <utility>

#include "app/frmVBACode/frmVBACode.h"
#include "base/codepage.h"

namespace tintline::modWord {
namespace {

// A new document holds the page, or is closed again.
void fillDocument(const AutomatedObject& document, const std::filesystem::path& page) {
  constexpr std::int32_t kMargin = 36;  // points: half an inch
  constexpr std::int32_t kFontSize = 9;
  const AutomatedObject paper = document.object(L"PageSetup");
  paper.put(L"LeftMargin", kMargin);
  paper.put(L"RightMargin", kMargin);
  document.put(L"ShowSpellingErrors", false);
  document.put(L"ShowGrammaticalErrors", false);
  constexpr bool kConfirmConversions = false;
  document.object(L"Content")
      .call(L"InsertFile", pathText(page), std::monostate(), kConfirmConversions);
  const AutomatedObject content = document.object(L"Content");
  content.put(L"NoProofing", true);
  const AutomatedObject font = content.object(L"Font");
  font.put(L"Name", std::wstring(L"Courier New"));
  font.put(L"Size", kFontSize);
}

void closeUnsaved(const AutomatedObject& document) {
  constexpr std::int32_t kDoNotSaveChanges = 0;
  try {
    document.call(L"Close", kDoNotSaveChanges);
  } catch (const OfficeError&) {
    return;  // the failure before it is the one to be told
  }
}

void addDocument(const AutomatedObject& application, const std::filesystem::path& page) {
  application.put(L"Visible", true);
  const AutomatedObject document(application.object(L"Documents").get<OfficeObjectPtr>(L"Add"));
  try {
    fillDocument(document, page);
  } catch (const OfficeError&) {
    closeUnsaved(document);
    throw;
  }
}

// How the window looks during an analysis, whichever way that ends: a starting application
// does not cover it.
class AnalysisShown {
 public:
  explicit AnalysisShown(frmVBACode& form) : form_(form) {
    form_.MousePointer = Pointer::Hourglass;
    form_.Topmost = true;
  }
  ~AnalysisShown() {
    form_.Topmost = false;
    form_.Label9.Caption = form_.abortRequested() ? L"Abgebrochen" : L"";
    form_.MousePointer = Pointer::Default;
  }
  AnalysisShown(const AnalysisShown&) = delete;
  AnalysisShown& operator=(const AnalysisShown&) = delete;

  // At once: what comes next may keep the window waiting.
  void tell(std::wstring text) {
    form_.Label9.Caption = std::move(text);
    form_.Label9.Refresh();
    form_.Refresh();
  }

 private:
  frmVBACode& form_;
};

bool readTree(frmVBACode& form, Connection& connection, std::wstring_view procedure) {
  AnalysisShown shown(form);
  shown.tell(L"Stelle Verbindung zu " + std::wstring(connection.name()) + L" her...");
  if (!form.Verbinden(connection, procedure)) return false;
  shown.tell(L"Analysiere die Dokumentvorlagen...");
  return form.Baumübersicht(connection);
}

void analyse(frmVBACode& form, Connection& connection, std::wstring_view procedure) {
  if (readTree(form, connection, procedure)) form.DummySeite();
}

}  // namespace

void Connection::connect(Office& office) {
  if (!stands()) disconnect();
  if (connected()) return;
  application_ = office.connect(std::wstring(name_) + L".Application");
  if (application_.created) AutomatedObject(application_.object).put(L"Visible", true);
}

bool Connection::stands() const {
  if (!connected()) return false;
  try {
    return AutomatedObject(application_.object).get<bool>(L"Visible");
  } catch (const OfficeError& error) {
    return error.kind() == OfficeError::Kind::Busy;
  }
}

bool Connection::disconnect() {
  projects_.clear();
  try {
    if (application_.created) AutomatedObject(application_.object).call(L"Quit");
  } catch (const OfficeError& error) {
    if (error.kind() == OfficeError::Kind::Busy) return false;
    // It is gone already, or does not want to end: it is let go all the same.
  }
  forget();
  return true;
}

void Connection::forget() {
  projects_.clear();
  application_ = {};
}

void Connection::giveUp(const OfficeError& error) {
  using Kind = OfficeError::Kind;
  if (error.kind() == Kind::AccessRefused || (error.kind() == Kind::ConnectionLost && !stands()))
    disconnect();
  if (error.kind() != Kind::Busy) return;
  projects_.clear();
  if (!application_.created) forget();
}

void Connection::readProjects() {
  projects_.clear();
  projects_ = projectsOf(application_.object);
}

Project& Connection::project(std::size_t index) {
  if (index == 0 || index > projects_.size()) throw noSuchProject();
  return projects_[index - 1];
}

void Connection::insertDocument(Office& office, const std::filesystem::path& page) {
  const bool passing = !connected();
  try {
    if (passing) connect(office);
    addDocument(AutomatedObject(application_.object), page);
  } catch (const OfficeError&) {
    if (passing) disconnect();  // quits what was started for nothing
    throw;
  }
  application_.created = false;
  if (passing) forget();
}

FailureMessage failureMessage(const OfficeError& error, std::wstring_view application,
                              std::wstring_view procedure) {
  // Both name Word also where Excel is meant: kept on purpose.
  if (error.kind() == OfficeError::Kind::AccessRefused)
    return {L"Bitte die Sicherheitseinstellungen für Makros ändern oder Word manuell starten.", {}};
  if (error.kind() == OfficeError::Kind::ConnectionLost || error.kind() == OfficeError::Kind::Busy)
    return connectionLost();
  std::wstring description = error.description();
  if (error.kind() == OfficeError::Kind::NotInstalled)
    description = std::wstring(application) +
                  L" ist nicht installiert oder lässt sich nicht starten: " + description;
  return {L"Error " + std::to_wstring(error.number()) + L" (" + description + L") in procedure " +
              std::wstring(procedure),
          {}};
}

FailureMessage connectionLost() {
  return {L"Die Verbindung zu Word wurde unterbrochen, bitte neu einlesen.", L"Verbindungsfehler!"};
}

void Wordanalyse(frmVBACode& form) { analyse(form, form.Word, L"Wordanalyse of Modul modWord"); }

void Excelanalyse(frmVBACode& form) { analyse(form, form.Excel, L"Excelanalyse of Modul modWord"); }

}  // namespace tintline::modWord
