// What the pages of a site say themselves, in each language.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "listing/options.h"
#include "listing/words.h"
#include "site/unused.h"

namespace tintline::site {

// The pages beside those of the modules, in the order in which they name each other.
enum class Page : std::uint8_t { Index, Names, Unused, Calls, Metrics };
inline constexpr std::size_t kPages = 5;

// The files of the pages, and the folder of those of the modules.
inline constexpr std::array<std::u8string_view, kPages> kPageFiles = {
    u8"index.htm", u8"namen.htm", u8"unbenutzt.htm", u8"aufrufe.htm", u8"kennzahlen.htm"};
inline constexpr std::u8string_view kModuleFolder = u8"module";

struct Words {
  std::array<std::u8string_view, kPages> pages;  // their names
  std::u8string_view site;                       // the list of these names
  std::u8string_view skipLink;
  std::u8string_view module;
  std::u8string_view oneModule, modules;  // behind a number
  std::u8string_view name, lines, procedures, kind, uses, line;
  std::u8string_view unread;                        // files
  std::array<std::u8string_view, 8> kinds;          // several modules, by vb::ModuleKind
  std::array<std::u8string_view, 15> declarations;  // by vb::DeclarationKind
  std::u8string_view nothing;
  std::u8string_view calledBy;  // in front of a number in parentheses
  std::u8string_view outside;   // of all procedures
  std::u8string_view parameters, returns;
  std::array<std::u8string_view, kUnusedGroups> unused;
  std::u8string_view unusedRule;  // HTML
  std::u8string_view callsRule;
  std::u8string_view itsCalls;  // a link to what the called one calls
  std::u8string_view modulesByName, modulesBySize, proceduresByName, proceduresBySize;
  std::u8string_view procedure, comments, nesting, branches, declares, metricsRule;
};

inline constexpr Words kGerman = {
    {u8"Projekt", u8"Namen", u8"Unbenutzt", u8"Aufrufe", u8"Kennzahlen"},
    u8"Seiten des Projekts",
    u8"Zum Inhalt",
    u8"Modul",
    u8"Modul",
    u8"Module",
    u8"Name",
    u8"Zeilen",
    u8"Prozeduren",
    u8"Art",
    u8"Benutzt",
    u8"Zeile",
    u8"Nicht gelesen",
    {u8"Module", u8"Klassenmodule", u8"Formulare", u8"Benutzersteuerelemente",
     u8"Eigenschaftenseiten", u8"Benutzerdokumente", u8"Designer", u8"Dokumentmodule"},
    {u8"Sub", u8"Function", u8"Property", u8"Declare", u8"Ereignis", u8"Typ", u8"Feld",
     u8"Aufzählung", u8"Wert", u8"Konstante", u8"Variable", u8"Steuerelement", u8"Marke",
     u8"Parameter", u8"lokal"},
    u8"Nichts.",
    u8"Wird aufgerufen von",
    u8"außerhalb von Prozeduren",
    u8"Parameter",
    u8"Ergebnis",
    {u8"Privat, nie benutzt", u8"Öffentlich, im Projekt nie benutzt", u8"Lokal, nie benutzt",
     u8"Nur in Texten genannt"},
    u8"<p>Hier steht, was deklariert ist und in keinem Code des Projekts vorkommt. Ein Name gilt "
    u8"als benutzt, wenn Code ihn meint, und auch, wenn er irgendwo im Code steht, ohne dass sich "
    u8"sagen lässt, was er dort meint (späte Bindung, Namen zweier Module). Was eine Prozedur in "
    u8"ihrem eigenen Rumpf nennt, zählt nicht.</p><p>Nicht genannt werden: "
    u8"Ereignisprozeduren, was nach seinem Namen vom System gestartet wird (Main, Auto…, "
    u8"Workbook_…, Document_…), Makros mit Tastenkürzel, Rückrufe des Menübands, "
    u8"Standardmember, implementierte Schnittstellen, Klassen, deren Name in einem Text steht, "
    u8"öffentliche Klassen von Bibliotheken und Namen, die ein Wort der Sprache sind. Namen, die "
    u8"nur in Texten vorkommen (<code>Application.Run</code>, <code>OnAction</code>, "
    u8"<code>CallByName</code>), stehen für sich.</p><p>Vor dem Löschen prüfen: Makros, die von "
    u8"Hand, von Schaltflächen oder aus Zellen gestartet werden, und Namen, die erst im Lauf "
    u8"zusammengesetzt werden, sind im Code nicht zu sehen.</p>",
    u8"Jede Prozedur, die etwas aus dem Projekt aufruft; aufgeklappt, was sie aufruft und in "
    u8"welchen Zeilen. Wer eine Prozedur aufruft, steht auf der Seite ihres Moduls unter ihrem "
    u8"Kopf.",
    u8"dessen Aufrufe",
    u8"Module nach Namen",
    u8"Module nach Größe",
    u8"Prozeduren nach Namen",
    u8"Prozeduren nach Größe",
    u8"Prozedur",
    u8"Kommentar",
    u8"Tiefe",
    u8"Zweige",
    u8"Declare",
    u8"Kommentar: Anteil der Zeilen mit Kommentar an denen, die nicht leer sind. Tiefe: wie tief "
    u8"If, Select Case, For, Do und While ineinander stehen. Zweige: zyklomatische Zahl, 1 und je "
    u8"eins für If, ElseIf, Case, For, Do und While. Declare: Aufrufe von Prozeduren in "
    u8"Bibliotheken."};

inline constexpr Words kEnglish = {
    {u8"Project", u8"Names", u8"Unused", u8"Calls", u8"Metrics"},
    u8"Pages of the project",
    u8"Skip to content",
    u8"Module",
    u8"module",
    u8"modules",
    u8"Name",
    u8"Lines",
    u8"Procedures",
    u8"Kind",
    u8"Uses",
    u8"Line",
    u8"Not read",
    {u8"Modules", u8"Class modules", u8"Forms", u8"User controls", u8"Property pages",
     u8"User documents", u8"Designers", u8"Document modules"},
    {u8"Sub", u8"Function", u8"Property", u8"Declare", u8"Event", u8"Type", u8"Field", u8"Enum",
     u8"Value", u8"Constant", u8"Variable", u8"Control", u8"Label", u8"Parameter", u8"local"},
    u8"Nothing.",
    u8"Called by",
    u8"outside of procedures",
    u8"Parameters",
    u8"Returns",
    {u8"Private, never used", u8"Public, never used in the project", u8"Local, never used",
     u8"Named only in texts"},
    u8"<p>This is what is declared and does not occur in any code of the project. A name counts as "
    u8"used when code means it, and also when it stands anywhere in code and it cannot be told "
    u8"what it means there (late binding, names of two modules). What a procedure names in its own "
    u8"body does not count.</p><p>Not listed are: event procedures, what is started by its name "
    u8"(Main, Auto…, Workbook_…, Document_…), macros with a shortcut, callbacks of the ribbon, "
    u8"default members, implemented interfaces, classes whose name stands in a text, public "
    u8"classes of libraries, and names that are a word of the language. Names that occur only in "
    u8"texts (<code>Application.Run</code>, <code>OnAction</code>, <code>CallByName</code>) stand "
    u8"apart.</p><p>Check before you delete: macros started by hand, by buttons or from cells, and "
    u8"names that are put together at run time, cannot be seen in the code.</p>",
    u8"Each procedure that calls something of the project; unfolded, what it calls and in which "
    u8"lines. Who calls a procedure stands in the page of its module, below its head.",
    u8"its calls",
    u8"Modules by name",
    u8"Modules by size",
    u8"Procedures by name",
    u8"Procedures by size",
    u8"Procedure",
    u8"Comments",
    u8"Nesting",
    u8"Branches",
    u8"Declare",
    u8"Comments: share of the lines with a comment among those that are not empty. Nesting: how "
    u8"deep If, Select Case, For, Do and While stand in each other. Branches: the cyclomatic "
    u8"number, 1 and one for each If, ElseIf, Case, For, Do and While. Declare: calls of "
    u8"procedures in libraries."};

inline const Words& wordsOf(listing::Language language) {
  return language == listing::Language::German ? kGerman : kEnglish;
}

}  // namespace tintline::site
