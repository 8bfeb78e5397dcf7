// What runs tell of their inputs and results, in both languages; the reasons of failed file
// operations are in base/file.cpp.
//
// Tested by tests/cli/run.py.
#pragma once

#include "base/message.h"

namespace tintline::messages {

// ----------------------------------------------------------------------------------------- names
inline constexpr Text<2> kAbout{L"{1}: {2}", L"{1}: {2}"};  // what it is about, what is told
inline constexpr Text<0> kStandardInput{L"standard input", L"Standardeingabe"};
inline constexpr Text<0> kStandardOutput{L"standard output", L"Standardausgabe"};

// ------------------------------------------------------------------------------------ the inputs
inline constexpr Text<0> kNoModuleFile{"no-module-file", L"is no module file",
                                       L"ist keine Moduldatei"};
inline constexpr Text<0> kHoldsNoModules{"no-modules", L"holds no module files",
                                         L"enthält keine Moduldateien"};
inline constexpr Text<0> kNoCode{"no-code", L"holds no code (empty documents with --all)",
                                 L"enthält keinen Code (leere Dokumente mit --all)"};
inline constexpr Text<1> kNoSuchModule{"no-such-module", L"holds no module {1}",
                                       L"enthält kein Modul {1}"};
inline constexpr Text<0> kNoFile{"no-file", L"is no file", L"ist keine Datei"};
inline constexpr Text<0> kFolderLink{"folder-link", L"is a link that leads to another folder",
                                     L"führt als Verknüpfung in einen anderen Ordner"};
inline constexpr Text<0> kTakesResults{"output-folder", L"takes the results",
                                       L"nimmt die Ergebnisse auf"};
inline constexpr Text<0> kLeadsElsewhere{
    "leads-elsewhere", L"is named by a project file, but is no module file in a folder near it",
    L"steht in einer Projektdatei, ist aber keine Moduldatei in einem Ordner bei ihr"};
inline constexpr Text<1> kTooLarge{"too-large", L"larger than {1} MB", L"größer als {1} MB"};

// ------------------------------------------------------------------------------- the work on one
inline constexpr Text<1> kCodePage{L"code page {1}", L"Codepage {1}"};
inline constexpr Text<1> kLostCharacter{"characters-lost",
                                        L"1 character is none in {1} and became U+FFFD",
                                        L"1 Zeichen gibt es in {1} nicht, es wurde zu U+FFFD"};
inline constexpr Text<2> kLostCharacters{"characters-lost",
                                         L"{1} characters are none in {2} and became U+FFFD",
                                         L"{1} Zeichen gibt es in {2} nicht, sie wurden zu U+FFFD"};
inline constexpr Text<0> kChangedMeanwhile{"changed-meanwhile",
                                           L"the file changed during the conversion",
                                           L"die Datei hat sich während der Umwandlung geändert"};
inline constexpr Text<0> kNotEnoughMemory{"out-of-memory", L"not enough memory",
                                          L"der Speicher reicht nicht"};
inline constexpr Text<0> kResultTooLarge{"result-too-large", L"the result becomes too large",
                                         L"das Ergebnis wird zu groß"};
inline constexpr Text<1> kUnexpected{"internal-error", L"unexpected error: {1}",
                                     L"unerwarteter Fehler: {1}"};

// ----------------------------------------------------------------------------------- the results
inline constexpr Text<2> kOverwritesSource{"would-overwrite", L"the output {1} would overwrite {2}",
                                           L"die Ausgabe {1} würde {2} überschreiben"};
inline constexpr Text<2> kUnwritable{"cannot-write", L"cannot write {1}: {2}",
                                     L"{1} kann nicht geschrieben werden: {2}"};
inline constexpr Text<0> kPageOfNoModule{"stale-page", L"belongs to no module any more",
                                         L"gehört zu keinem Modul mehr"};

}  // namespace tintline::messages
