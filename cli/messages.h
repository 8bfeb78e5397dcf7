// What the command line tells beside runs/messages.h, in both languages; the texts of the options
// are in cli/option_table.cpp, the reasons of failed file operations in base/file.cpp.
//
// Tested by tests/cli/run.py.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "base/message.h"
#include "runs/messages.h"

namespace tintline::messages {

// ------------------------------------------------------------------- how they are put together
inline constexpr Text<1> kTold{L"tintline: {1}\n", L"tintline: {1}\n"};
inline constexpr Text<1> kJust{L"{1}", L"{1}"};
inline constexpr Text<2> kOr{L"{1} or {2}", L"{1} oder {2}"};
inline constexpr Text<2> kList{L"{1}, {2}", L"{1}, {2}"};

// --------------------------------------------------------------------------------- the program
inline constexpr Text<0> kInterrupted{"interrupted", L"interrupted", L"abgebrochen"};
inline constexpr Text<0> kSeeHelp{
    L"Usage: tintline [OPTIONS] FILE|FOLDER...   (tintline --help tells more)\n",
    L"Aufruf: tintline [OPTIONEN] DATEI|ORDNER...   (mehr mit tintline --help)\n"};

// ----------------------------------------------------------------------------------- the usage
inline constexpr Text<1> kUnknownOption{L"unknown option {1}", L"unbekannte Option {1}"};
inline constexpr Text<2> kMistyped{L"{1}; did you mean {2}?", L"{1}; meinten Sie {2}?"};
inline constexpr Text<2> kValueMissing{L"{1}: the value {2} is missing",
                                       L"{1}: der Wert {2} fehlt"};
inline constexpr Text<3> kWrongValue{L"{1}: \"{2}\" is not possible, use {3}",
                                     L"{1}: \"{2}\" geht nicht, möglich: {3}"};
inline constexpr Text<1> kTakesNoValue{L"{1}: takes no value", L"{1}: nimmt keinen Wert"};
inline constexpr Text<0> kEmptyName{L"an empty text is no file name",
                                    L"ein leerer Text ist kein Dateiname"};
inline constexpr Text<0> kNoInput{L"no file is given", L"es ist keine Datei angegeben"};
inline constexpr Text<2> kOnlyInMode{L"{1} needs --mode {2}", L"{1} gibt es nur mit --mode {2}"};
inline constexpr Text<3> kNoEffect{L"{1} does nothing with {2}, only with {3}",
                                   L"{1} bewirkt nichts mit {2}, nur mit {3}"};
inline constexpr Text<0> kFileAndFolder{L"--output and --output-dir exclude each other",
                                        L"--output und --output-dir gehen nicht zusammen"};
inline constexpr Text<0> kSeveralNeedFolder{
    L"several files need --output-dir with --mode classic",
    L"mehrere Dateien brauchen mit --mode classic --output-dir"};
inline constexpr Text<0> kStandardInputHasNoName{
    L"the standard input (-) has no name for --output-dir",
    L"die Standardeingabe (-) hat keinen Namen für --output-dir"};
inline constexpr Text<0> kStandardInputOnce{L"the standard input (-) can be read only once",
                                            L"die Standardeingabe (-) lässt sich nur einmal lesen"};
inline constexpr Text<1> kOnlyWithProject{L"{1} needs --project", L"{1} gibt es nur mit --project"};
inline constexpr Text<1> kNotWithProject{L"{1} does not go with --project",
                                         L"{1} geht nicht mit --project"};
inline constexpr Text<1> kNotWithLinkCheck{L"{1} does not go with --check-links",
                                           L"{1} geht nicht mit --check-links"};
inline constexpr Text<0> kProjectNeedsFolder{L"--project needs --output-dir",
                                             L"--project braucht --output-dir"};

inline constexpr Text<0> kNoFileForExport{
    "wrong-usage", L"--export-modules writes into its folder: it excludes --output",
    L"--export-modules schreibt in seinen Ordner und geht nicht mit --output"};
inline constexpr Text<0> kNoFolderForOfficeRun{
    "wrong-usage", L"--list, --export-modules and --format source exclude --output-dir",
    L"--list, --export-modules und --format source gehen nicht mit --output-dir"};

// ------------------------------------------------------------------------- Office files' projects
inline constexpr Text<0> kLocked{L"locked", L"gesperrt"};
inline constexpr Text<0> kSigned{L"signed", L"signiert"};

// --------------------------------------------------------------------------------- the settings
inline constexpr Text<1> kSectionEmpty{"section-empty", L"the section [{1}] is missing or empty",
                                       L"der Abschnitt [{1}] fehlt oder ist leer"};
inline constexpr Text<0> kNoSetting{"no-setting", L"holds no setting in a section [TINTLINE]",
                                    L"enthält keine Einstellung in einem Abschnitt [TINTLINE]"};
inline constexpr Text<2> kNoColor{"no-color", L"{1}: \"{2}\" is no colour like #228822",
                                  L"{1}: \"{2}\" ist keine Farbe wie #228822"};
inline constexpr Text<1> kColorDamaged{"color-damaged",
                                       L"{1} has less than 6 fields, the default counts",
                                       L"{1} hat weniger als 6 Felder, es gilt die Vorgabe"};
inline constexpr Text<2> kNoLanguage{"no-language", L"{1}: \"{2}\" is neither de nor en",
                                     L"{1}: \"{2}\" ist weder de noch en"};

// ------------------------------------------------------------------------ the printed settings
inline constexpr Text<1> kSettingsFrom{L"; settings: {1}\n", L"; Einstellungen: {1}\n"};
inline constexpr Text<1> kKeywordsFrom{L"; keywords: {1}\n", L"; Schlüsselworte: {1}\n"};
inline constexpr Text<1> kStyleSheetFrom{L"; --css: {1}\n", L"; --css: {1}\n"};
inline constexpr Text<0> kNoSettingsFile{L"no file, all are defaults",
                                         L"keine Datei, alles sind Vorgaben"};
inline constexpr Text<0> kBuiltIn{L"built in", L"eingebaut"};
inline constexpr Text<0> kExactDefaults{L"; exact: a default colour stands for that of the page\n",
                                        L"; genau: eine Vorgabe steht für die Farbe der Seite\n"};
inline constexpr Text<0> kDefault{L"; default\n", L"; Vorgabe\n"};
inline constexpr Text<1> kFromOption{L"; {1}\n", L"; {1}\n"};

// ----------------------------------------------------------------------------------- the inputs
inline constexpr Text<1> kPassedOver{L"passed over, {1}", L"übergangen, {1}"};
inline constexpr Text<2> kWouldBecome{L"{1} -> {2}\n", L"{1} -> {2}\n"};
inline constexpr Text<2> kSameTarget{"same-target", L"{1} would be the result of {2} as well",
                                     L"{1} entstünde auch aus {2}"};
inline constexpr Text<2> kSameTargetButForCase{
    "same-target", L"{1} would be the result of {2} as well, as case does not count",
    L"{1} entstünde auch aus {2}, da Groß- und Kleinschreibung nicht zählt"};
inline constexpr Text<1> kBeyondLastLine{
    "no-such-line", L"--lines goes beyond the end, the last line is {1}",
    L"--lines reicht über das Ende hinaus, letzte Zeile ist {1}"};
inline constexpr Text<1> kTooManyLines{"too-many-lines", L"more than {1} lines",
                                       L"mehr als {1} Zeilen"};
inline constexpr Text<1> kTooManyLinesWrapped{"too-many-lines",
                                              L"more than {1} lines once they are wrapped",
                                              L"mehr als {1} Zeilen nach dem Umbruch"};

// ---------------------------------------------------------------------------- whole projects
inline constexpr Text<2> kNoFileThere{"broken-link", L"line {1}: {2} leads to no file",
                                      L"Zeile {1}: {2} führt zu keiner Datei"};
inline constexpr Text<2> kNoIdThere{"broken-link", L"line {1}: {2} leads to a file without this id",
                                    L"Zeile {1}: {2} führt in eine Datei ohne diese Sprungmarke"};
inline constexpr Text<2> kLeadsOutside{"broken-link", L"line {1}: {2} leads out of the folder",
                                       L"Zeile {1}: {2} führt aus dem Ordner hinaus"};
inline constexpr Text<0> kNoPages{"no-pages", L"holds no HTML pages", L"enthält keine HTML-Seiten"};
inline constexpr Text<2> kLinksLand{L"{1} links in {2} pages, all land\n",
                                    L"{1} Verweise auf {2} Seiten, alle kommen an\n"};

// -------------------------------------------------------------------------------- the progress
inline constexpr Text<2> kReadProgress{L"{1} of {2} files read", L"{1} von {2} Dateien gelesen"};
inline constexpr Text<2> kProgress{L"{1} of {2} files", L"{1} von {2} Dateien"};
inline constexpr Text<0> kOneFile{L"1 file", L"1 Datei"};
inline constexpr Text<1> kFiles{L"{1} files", L"{1} Dateien"};
inline constexpr Text<0> kOneLine{L"1 line", L"1 Zeile"};
inline constexpr Text<1> kLines{L"{1} lines", L"{1} Zeilen"};
inline constexpr Text<3> kSummary{"summary", L"{1}, {2} converted in {3} s",
                                  L"{1}, {2} in {3}s verarbeitet"};

// One of two texts, by a number.
inline Message counted(std::size_t count, const Text<0>& one, const Text<1>& many) {
  return count == 1 ? one() : many(count);
}

// "A, B or C".
inline Message oneOf(const std::vector<std::wstring>& names) {
  Message all = kJust(names.front());
  for (std::size_t i = 1; i < names.size(); ++i)
    all = i + 1 < names.size() ? kList(all, names[i]) : kOr(all, names[i]);
  return all;
}

}  // namespace tintline::messages
