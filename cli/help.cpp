// See help.h. Tested by tests/cli/run.py.
#include "cli/help.h"

#include "cli/option_table.h"

namespace tintline {
namespace {

constexpr Text<0> kHead{
    L"Turns Visual Basic and VBA source into coloured, linked pages.\n"
    L"\n"
    L"Usage: tintline [OPTIONS] FILE|FOLDER...\n"
    L"\n"
    L"FILE is a module file, or - for the standard input. Of a FOLDER all module\n"
    L"files are read (.bas .cls .frm .ctl .pag .dob .dsr), in the folders inside it\n"
    L"as well. Without -d several modules become one document (exact only).\n"
    L"\n"
    L"Options:\n",
    L"Macht aus Visual-Basic- und VBA-Quelltext farbige, verlinkte Seiten.\n"
    L"\n"
    L"Aufruf: tintline [OPTIONEN] DATEI|ORDNER...\n"
    L"\n"
    L"DATEI ist eine Moduldatei oder - für die Standardeingabe. Von einem ORDNER\n"
    L"werden alle Moduldateien gelesen (.bas .cls .frm .ctl .pag .dob .dsr), auch in\n"
    L"den Ordnern darin. Ohne -d werden mehrere Module ein Dokument (nur genau).\n"
    L"\n"
    L"Optionen:\n"};

constexpr std::wstring_view kExamples =
    L"  tintline -o Modul1.htm Modul1.bas\n"
    L"  tintline -n -d html Projekt\n"
    L"  tintline --format body --style inline --lines 10-42 Modul1.bas\n"
    L"  tintline --mode classic -o Modul1.htm Modul1.bas\n";

constexpr Text<0> kExamplesHead{L"\nExamples:\n", L"\nBeispiele:\n"};
constexpr Text<0> kFoot{
    L"\nExit status: 0 all converted, 1 not all converted, 2 wrong usage.\n",
    L"\nRückgabewert: 0 alles umgewandelt, 1 nicht alles umgewandelt, 2 falscher Aufruf.\n"};

void appendOption(const OptionRow& option, Language language, std::wstring& text) {
  std::wstring left = L"  ";
  left += option.shortName != 0 ? std::wstring{L'-', wchar_t(option.shortName), L',', L' '}
                                : std::wstring(4, L' ');
  left += L"--" + argumentText(option.name);
  if (option.takesValue()) (left += L' ') += option.value.in(language);
  if (left.size() >= kHelpColumn) left += L'\n';
  text += left;
  std::size_t column = left.back() == L'\n' ? 0 : left.size();
  for (const wchar_t character : option.help.in(language)) {
    if (column < kHelpColumn) text.append(kHelpColumn - column, L' ');
    text += character;
    column = character == L'\n' ? 0 : kHelpColumn;
  }
  text += L'\n';
}

}  // namespace

std::wstring helpText(Language language) {
  std::wstring text(kHead.in(language));
  for (const OptionRow& option : optionTable()) appendOption(option, language, text);
  return text.append(kExamplesHead.in(language)).append(kExamples).append(kFoot.in(language));
}

}  // namespace tintline
