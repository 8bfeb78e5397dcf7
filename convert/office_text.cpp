// See office_text.h. Tested by tests/cli/run.py.
#include "convert/office_text.h"

#include "base/codepage.h"
#include "convert/exact.h"

namespace tintline {
namespace {

using office_file::Fault;

constexpr Text<2> kAbout{L"{1}: {2}", L"{1}: {2}"};

// As long as Fault. The texts stand behind the name of what they are about.
constexpr Text<0> kFaults[] = {
    {"", L"", L""},
    {"no-office-file", L"is no Office file", L"ist keine Office-Datei"},
    {"no-project", L"holds no VBA project", L"enthält kein VBA-Projekt"},
    {"encrypted",
     L"is encrypted with a password, nothing inside can be read: open it in Office and save a copy "
     L"without a password",
     L"ist mit einem Kennwort verschlüsselt, nichts darin ist lesbar: in Office öffnen und eine "
     L"Kopie "
     L"ohne Kennwort speichern"},
    {"rights-managed",
     L"is protected by rights management, nothing inside can be read: whoever has full control of "
     L"it "
     L"can save a copy without protection",
     L"ist durch eine Rechteverwaltung geschützt, nichts darin ist lesbar: wer vollen Zugriff hat, "
     L"kann eine Kopie ohne Schutz speichern"},
    {"excel-95",
     L"is not read: a workbook of Excel 5.0/95 stores its code in another way; save it in a newer "
     L"format",
     L"wird nicht gelesen: eine Arbeitsmappe von Excel 5.0/95 speichert ihren Code anders; in "
     L"einem "
     L"neueren Format speichern"},
    {"visio", L"is not read: drawings of Visio store their code in another way",
     L"wird nicht gelesen: Zeichnungen von Visio speichern ihren Code anders"},
    {"access",
     L"is not read: databases of Access store their code in another way; export its modules",
     L"wird nicht gelesen: Datenbanken von Access speichern ihren Code anders; die Module "
     L"exportieren"},
    {"truncated", L"ends too early", L"endet zu früh"},
    {"damaged", L"is damaged", L"ist beschädigt"},
    {"wrong-checksum", L"is damaged (wrong checksum); shown as it is",
     L"ist beschädigt (falsche Prüfsumme); gezeigt, wie es ist"},
    {"unknown-compression", L"is compressed in a way that Office does not use",
     L"ist auf eine Weise komprimiert, die Office nicht verwendet"},
    {"part-encrypted", L"is encrypted", L"ist verschlüsselt"},
    {"too-large", L"is too large", L"ist zu groß"},
    {"too-deep", L"is embedded too deeply", L"ist zu tief eingebettet"},
    {"module-missing", L"is missing in the file", L"fehlt in der Datei"},
    {"module-list-damaged", L"the list of modules is damaged; shown is what was found without it",
     L"die Liste der Module ist beschädigt; gezeigt wird, was ohne sie zu finden war"},
    {"compiled-only", L"holds compiled code only: its source was removed or cannot be found",
     L"enthält nur übersetzten Code: der Quelltext wurde entfernt oder ist nicht zu finden"},
};
static_assert(std::size(kFaults) == static_cast<std::size_t>(Fault::CompiledOnly) + 1);

}  // namespace

Message problemText(const office_file::Problem& problem) {
  Message text = kFaults[static_cast<std::size_t>(problem.fault)]();
  for (const std::u8string& about : {problem.module, problem.place})
    if (!about.empty()) text = kAbout(fromUtf8(about), text);
  return text;
}

std::string_view kindName(vb::ModuleKind kind) {
  switch (kind) {
    case vb::ModuleKind::Class:
      return "class";
    case vb::ModuleKind::Document:
      return "document";
    case vb::ModuleKind::Form:
      return "form";
    default:
      return "standard";
  }
}

Message kindText(vb::ModuleKind kind) {
  constexpr Text<0> kStandard{L"standard module", L"Standardmodul"}, kClass{L"class", L"Klasse"},
      kDocument{L"document", L"Dokument"}, kForm{L"form", L"Formular"};
  switch (kind) {
    case vb::ModuleKind::Class:
      return kClass();
    case vb::ModuleKind::Document:
      return kDocument();
    case vb::ModuleKind::Form:
      return kForm();
    default:
      return kStandard();
  }
}

}  // namespace tintline
