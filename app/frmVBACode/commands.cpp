// See commands.h. Tested by tests/unit/app/dialogs_test.cpp.
#include "app/frmVBACode/commands.h"

namespace tintline {
namespace {

constexpr MenuEntry kLine{Command::None, L"", L""};

constexpr MenuEntry kDatei[] = {
    {Command::mnuneu, L"&Neu", L"Strg+N"},
    {Command::mnudatei, L"&Öffnen…", L"Strg+O"},
    {Command::mnuZuletzt, L"&Zuletzt geöffnet", L""},
    {Command::cmdExport, L"&Exportieren…", L"Strg+S"},
    {Command::mnuGespeichertes, L"&Gespeicherte Seite öffnen", L"Strg+E"},
    {Command::mnuDokumentieren, L"&Projekt dokumentieren…", L""},
    kLine,
    {Command::mnubeenden, L"&Beenden", L"Alt+F4"},
};

constexpr MenuEntry kBearbeiten[] = {
    {Command::mnuCopy, L"&Kopieren", L"Strg+C"},
    {Command::mnuFormatiertKopieren, L"&Formatiert kopieren", L"Strg+Umschalt+C"},
    {Command::mnuInsert, L"&Einfügen", L"Strg+V"},
    kLine,
    {Command::mnuSelectAll, L"Alles &markieren", L"Strg+A"},
    kLine,
    {Command::mnuSuchen, L"&Suchen…", L"Strg+F"},
    {Command::mnuWeitersuchen, L"&Weitersuchen", L"F3"},
    {Command::mnuRueckwaerts, L"&Rückwärts suchen", L"Umschalt+F3"},
    {Command::mnuGeheZu, L"&Gehe zu Zeile…", L"Strg+G"},
    {Command::mnuProzeduren, L"&Prozeduren…", L"Strg+R"},
};

constexpr MenuEntry kKonvertieren[] = {
    {Command::mnuMakro, L"M&akro/Datei", L"F5"},
    {Command::mnuModul, L"&Modul", L"F6"},
    {Command::mnuAuswahl, L"Aus&wahl", L"F7"},
    {Command::mnuAlleModule, L"Alle Module konvertieren", L""},
    kLine,
    {Command::mnuFormat, L"Einzug &vergrößern", L"Strg++"},
    {Command::mnuFormat2, L"Einzug ve&rkleinern", L"Strg+-"},
    {Command::mnuZeilenbreite, L"Zeilen&breite", L""},
    {Command::mnuUmbruch, L"Zeilen &umbrechen", L"Strg+U"},
    kLine,
    {Command::mnuKlassisch, L"&Klassisch", L"Strg+1"},
    {Command::mnuGenau, L"&Genau", L"Strg+2"},
    kLine,
    {Command::mnuZeilennummern, L"Zeilen&nummern", L""},
    {Command::mnuVorschau, L"V&orschau", L""},
};

constexpr MenuEntry kOffice[] = {
    {Command::mnuword, L"Word &analysieren", L""},
    {Command::mnuexcel, L"Excel analysieren", L""},
    kLine,
    {Command::mnutrennen, L"Verbindung zu Word &trennen", L""},
    {Command::mnutrennen2, L"Verbindung zu Excel trennen", L""},
    kLine,
    {Command::mnu2word, L"Nach Word exportieren", L""},
};

constexpr MenuEntry kExtras[] = {
    {Command::mnuFarben, L"&Farben einstellen…", L""},
    {Command::mnuFarbenSpeichern, L"Farben &speichern", L""},
    {Command::mnuPrePost, L"&Pre- u. PostCode konfigurieren", L""},
    {Command::mnuSchluesselworte, L"Schlüssel&worte bearbeiten", L""},
    kLine,
    {Command::mnuHelligkeitSystem, L"Hell oder dunkel wie das S&ystem", L""},
    {Command::mnuHell, L"&Hell", L""},
    {Command::mnuDunkel, L"&Dunkel", L""},
};

constexpr MenuEntry kHilfe[] = {
    {Command::mnuhelp, L"&Hilfe", L"F1"},
    kLine,
    {Command::mnuInfo, L"&Info über TINTLINE…", L""},
};

constexpr Menu kMenuBar[] = {
    {L"&Datei", kDatei},   {L"&Bearbeiten", kBearbeiten}, {L"&Konvertieren", kKonvertieren},
    {L"&Office", kOffice}, {L"E&xtras", kExtras},         {L"&?", kHilfe},
};

constexpr MenuEntry kModulExport[] = {{Command::mnuexport, L"Modul exportieren", L""}};

constexpr MenuEntry kModulAll[] = {
    {Command::mnuexportall, L"Alle Module exportieren", L""},
    {Command::mnuconvertall, L"Alle Module konvertieren", L""},
};

constexpr MenuEntry kListMenu[] = {
    {Command::mnuCopy, L"&Kopieren", L"Strg+C"},
    {Command::mnuFormatiertKopieren, L"&Formatiert kopieren", L"Strg+Umschalt+C"},
    kLine,
    {Command::mnuSelectAll, L"Alles &markieren", L"Strg+A"},
};

constexpr MenuEntry kPreviewMenu[] = {
    {Command::mnuFormatiertKopieren, L"&Formatiert kopieren", L"Strg+Umschalt+C"},
};

constexpr MenuEntry kOfficeDatei[] = {
    kModulAll[0],
    kModulAll[1],
    kLine,
    {Command::mnuSchliessen, L"Office-Datei schließen", L""},
};

constexpr ToolbarButton kGap{"", Command::None, L""};

constexpr ToolbarButton kToolbar[] = {
    {"file", Command::mnudatei, L"Liest eine VB(A)-Datei ein"},
    kGap,
    {"word", Command::mnuword, L"Liest die Makros aus Word ein"},
    {"wordende", Command::mnutrennen, L"Trennt die Verbindung zu Word"},
    kGap,
    {"ini", Command::mnuSchluesselworte, L"Öffnet die Liste der Schlüsselworte"},  // 6
    {"save", Command::mnuFarbenSpeichern, L"Speichert die Farben"},
    kGap,
    {"copy", Command::cmdVBAClp, L"Kopiert die Auswahl in die Zwischenablage"},  // 9
    {"insert", Command::mnuInsert, L"Fügt Code aus der Zwischenablage ein"},
    kGap,
    {"format", Command::mnuFormat, L"Vergrößert den Einzug"},
    {"format2", Command::mnuFormat2, L"Verkleinert den Einzug"},  // 13
    {"umbruch", Command::mnuUmbruch, L"Bricht lange Zeilen um"},
    kGap,
    {"makro", Command::mnuMakro, L"Verarbeitet das Makro/die Datei"},
    {"modul", Command::mnuModul, L"Verarbeitet das gesamte Modul"},
    {"auswahl", Command::mnuAuswahl, L"Verarbeitet die Auswahl"},
    kGap,
    {"preview", Command::mnuVorschau, L"Zeigt nach der Verarbeitung das HTML-Ergebnis an"},
    {"export", Command::cmdExport, L"Speichert das Ergebnis"},
    {"2word", Command::mnu2word,
     L"Überträgt das ganze Ergebnis nach Word; sind mehrere HTML-Zeilen markiert, nur diese"},
    kGap,
    {"excel", Command::mnuexcel, L"Liest die Makros aus Excel ein"},
    {"farbe", Command::mnuFarben, L"Stellt die Farben ein"},
    {"help", Command::mnuhelp, L"Zeigt die Hilfe an"},
};

constexpr Accelerator kAccelerators[] = {
    {kControl, Key::Letter, 'N', Command::mnuneu},
    {kControl, Key::Letter, 'O', Command::mnudatei},
    {kControl, Key::Letter, 'S', Command::cmdExport},
    {kControl, Key::Letter, 'E', Command::mnuGespeichertes},
    {kControl, Key::Letter, 'C', Command::mnuCopy},
    {kControl | kShift, Key::Letter, 'C', Command::mnuFormatiertKopieren},
    {kControl, Key::Letter, 'V', Command::mnuInsert},
    {kControl, Key::Letter, 'A', Command::mnuSelectAll},
    {kControl, Key::Letter, 'F', Command::mnuSuchen},
    {kNoModifier, Key::F3, 0, Command::mnuWeitersuchen},
    {kShift, Key::F3, 0, Command::mnuRueckwaerts},
    {kControl, Key::Letter, 'G', Command::mnuGeheZu},
    {kControl, Key::Letter, 'R', Command::mnuProzeduren},
    {kControl, Key::Letter, 'U', Command::mnuUmbruch},
    {kControl, Key::Letter, '1', Command::mnuKlassisch},
    {kControl, Key::Letter, '2', Command::mnuGenau},
    {kControl, Key::Plus, 0, Command::mnuFormat},
    {kControl, Key::Minus, 0, Command::mnuFormat2},
    {kNoModifier, Key::F1, 0, Command::mnuhelp},
    {kNoModifier, Key::F5, 0, Command::mnuMakro},
    {kNoModifier, Key::F6, 0, Command::mnuModul},
    {kNoModifier, Key::F7, 0, Command::mnuAuswahl},
    {kControl, Key::F6, 0, Command::mnuNaechsterBereich},
    {kControl | kShift, Key::F6, 0, Command::mnuVorigerBereich},
    {kAlt | kShift, Key::Left, 0, Command::mnuTeilerLinks},
    {kAlt | kShift, Key::Right, 0, Command::mnuTeilerRechts},
    {kAlt | kShift, Key::Up, 0, Command::mnuTeilerOben},
    {kAlt | kShift, Key::Down, 0, Command::mnuTeilerUnten},
    {kNoModifier, Key::Escape, 0, Command::mnuAbbrechen},
};

}  // namespace

std::span<const Menu> menuBar() { return kMenuBar; }

std::span<const MenuEntry> mnuModulExport() { return kModulExport; }

std::span<const MenuEntry> mnuModulAll() { return kModulAll; }

std::span<const MenuEntry> listMenu() { return kListMenu; }

std::span<const MenuEntry> previewMenu() { return kPreviewMenu; }
std::span<const MenuEntry> mnuOfficeDatei() { return kOfficeDatei; }

std::span<const MenuEntry> mnuOfficeDateiLeer() {
  return std::span<const MenuEntry>(kOfficeDatei).last(1);
}

std::span<const ToolbarButton> toolbar() { return kToolbar; }

std::span<const Accelerator> accelerators() { return kAccelerators; }

}  // namespace tintline
