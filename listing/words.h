// What listings say themselves, in each language.
#pragma once

#include <array>
#include <string_view>

#include "listing/module_targets.h"
#include "listing/options.h"

namespace tintline::listing {

struct Words {
  std::u8string_view tag;       // of the language, BCP 47
  std::u8string_view skipLink;  // to the code
  std::u8string_view index;
  std::u8string_view code;
  std::u8string_view header;
  std::u8string_view line, lines;
  std::u8string_view procedure, procedures;
  std::array<std::u8string_view, 8> kinds;  // by vb::ModuleKind
  std::array<std::u8string_view, kGroups> groups;
};

inline constexpr Words kGerman = {
    u8"de",
    u8"Zum Code",
    u8"Übersicht",
    u8"Code",
    u8"Dateikopf",
    u8"Zeile",
    u8"Zeilen",
    u8"Prozedur",
    u8"Prozeduren",
    {u8"Modul", u8"Klassenmodul", u8"Formular", u8"Benutzersteuerelement", u8"Eigenschaftenseite",
     u8"Benutzerdokument", u8"Designer", u8"Dokumentmodul"},
    {u8"Öffentlich", u8"Ereignisprozeduren", u8"Privat", u8"Ereignisse", u8"Typen und Aufzählungen",
     u8"API-Deklarationen", u8"Konstanten"}};

inline constexpr Words kEnglish = {
    u8"en",
    u8"Skip to code",
    u8"Index",
    u8"Code",
    u8"File header",
    u8"line",
    u8"lines",
    u8"procedure",
    u8"procedures",
    {u8"Module", u8"Class module", u8"Form", u8"User control", u8"Property page", u8"User document",
     u8"Designer", u8"Document module"},
    {u8"Public", u8"Event procedures", u8"Private", u8"Events", u8"Types and enumerations",
     u8"API declarations", u8"Constants"}};

inline const Words& wordsOf(Language language) {
  return language == Language::German ? kGerman : kEnglish;
}

// "1 Zeile", "12 Zeilen"
std::u8string counted(std::size_t count, std::u8string_view one, std::u8string_view many);

// "Modul · 218 Zeilen · 16 Prozeduren"
std::u8string summaryOf(const vb::Module& module, const Words& words);

}  // namespace tintline::listing
