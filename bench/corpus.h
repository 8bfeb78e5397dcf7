// Writes made-up modules that are shaped like real ones: procedures of some
// seven hundred bytes, a fifth of the bytes in comments, a twentieth in string
// literals, two in a hundred lines continued, calls of the module's own
// procedures. The same seed gives the same bytes on every machine.
//
// Tested by bench/make_corpus.cpp, which measures every set that it writes.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/codepage.h"

namespace tintline::bench {

inline constexpr std::size_t kKB = 1024;

struct Block {
  std::string_view opens, closes;
};

// In the templates %v stands for a variable, %i for a counter, %n for a number,
// %s for a string literal, %o for an object, %m for a member, %p for one of the
// module's procedures.
inline constexpr std::array<std::string_view, 22> kStatements = {
    "%v = %v + %n",
    "%v = %o.%m",
    "%v = (%v * %n) / 100",
    "%v(%i) = %v",
    "%v(%i, %n) = Val(%o.%m)",
    "%o.%m = %v",
    "%o.%m(%i).Value = %v",
    "Set %o = New Collection",
    "Set %o = Nothing",
    "ReDim Preserve %v(1 To %n)",
    "If %v < %n Then %v = %n",
    "If Not %o Is Nothing Then %o.Close",
    "If %v <> %v And %v >= %n Then Exit For",
    "Debug.Print %v; %o.%m",
    "Dim %v As Long, %i As Integer",
    "Dim %v As String",
    "On Error GoTo Fehler",
    "DoEvents",
    "%v = Left$(%v, %n) & Mid$(%v, %n, 3)",
    "%o.%m %v, %n, True",
    "%v = IIf(%v > %n, %v, %v)",
    "%o.Add Item:=%v, Key:=CStr(%i)"};

inline constexpr std::array<std::string_view, 5> kTextStatements = {
    "%v = %s", "MsgBox %s, vbInformation", "%o.%m = %s & %v", "If %v = %s Then %v = vbNullString",
    "Debug.Print %s; %v"};

inline constexpr std::array<std::string_view, 5> kCalls = {
    "Call %p(%v, %n)", "%v = %p(%v, %n)", "%p %v, %n", "If %p(%v, %n) > 0 Then %v = %n",
    "%p Betrag:=%v, Satz:=%n"};

inline constexpr std::array<std::string_view, 4> kContinued = {
    "%v = %v + %o.%m _|+ %v * %n", "%o.%m %v, _|%n, True", "If %v > %n And _|%v < %n Then %v = 0",
    "%v = %s & %v _|& vbCrLf"};

inline constexpr std::array<Block, 6> kBlocks = {{{"If %v > %n Then", "End If"},
                                                  {"For %i = 1 To %n", "Next %i"},
                                                  {"With %o", "End With"},
                                                  {"Do While %v < %n", "Loop"},
                                                  {"Select Case %v", "End Select"},
                                                  {"For Each %v In %o.%m", "Next %v"}}};

inline constexpr std::array<std::string_view, 12> kVariables = {
    "strName", "lngAnzahl", "dblSumme", "curBetrag", "varWert",   "blnGefunden",
    "strText", "lngZeile",  "intStufe", "datTag",    "sngAnteil", "lngSpalte"};
inline constexpr std::array<std::string_view, 4> kCounters = {"i", "j", "k", "n"};
inline constexpr std::array<std::string_view, 8> kObjects = {
    "wksBlatt", "docBrief", "rngZelle", "colListe", "frmMaske", "rstDaten", "objKunde", "Me"};
inline constexpr std::array<std::string_view, 10> kMembers = {
    "Value", "Caption", "Text", "Name", "Count", "Cells", "Range", "Fields", "Font", "Items"};
inline constexpr std::array<std::string_view, 25> kNouns = {
    "Rechnung", "Kunde",  "Artikel", "Lager",  "Auftrag", "Zahlung", "Mahnung", "Beleg", "Liste",
    "Tabelle",  "Blatt",  "Zelle",   "Brief",  "Adresse", "Vorlage", "Ordner",  "Datei", "Feld",
    "Summe",    "Steuer", "Rabatt",  "Termin", "Konto",   "Posten",  "Bericht"};
inline constexpr std::array<std::string_view, 20> kVerbs = {
    "Lesen",  "Schreiben", "Pruefen", "Drucken",   "Sortieren", "Suchen",   "Anlegen",
    "Senden", "Kopieren",  "Leeren",  "Berechnen", "Anzeigen",  "Sichern",  "Buchen",
    "Teilen", "Mischen",   "Ordnen",  "Ersetzen",  "Filtern",   "Verbinden"};
inline constexpr std::array<std::string_view, 14> kWords = {
    u8"prüft"_ansi,      "die",        "Eingabe", "und",
    u8"übernimmt"_ansi,  "den Wert",   "aus der", "Tabelle",
    u8"für jeden"_ansi,  "Kunden",     "wenn",    "der Betrag",
    u8"größer ist"_ansi, "als zuletzt"};

// The same bytes on every platform, which the standard distributions do not promise.
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}
  std::size_t below(std::size_t limit) { return static_cast<std::size_t>(next() % limit); }
  bool chance(double probability) {
    return static_cast<double>(next() % 1'000'000) < probability * 1e6;
  }
  template <typename Choices>
  auto pick(const Choices& choices) {
    return choices[below(std::size(choices))];
  }

 private:
  std::uint64_t next() {
    std::uint64_t z = state_ += 0x9E3779B97F4A7C15;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EB;
    return z ^ (z >> 31);
  }
  std::uint64_t state_;
};

struct Module {
  std::string text;
  std::size_t lines = 0, continuedLines = 0, procedures = 0;
  std::size_t commentBytes = 0, stringBytes = 0;
};

class ModuleWriter {
 public:
  ModuleWriter(std::size_t bytes, std::size_t procedures, std::uint64_t seed)
      : random_(seed), bytes_(bytes), procedures_(procedures) {}

  Module write() {
    module_.text.reserve(bytes_ + 4096);
    nameProcedures();
    writeDeclarations();
    for (std::size_t p = 0; p < procedures_; ++p) writeProcedure(p);
    return std::move(module_);
  }

 private:
  static constexpr std::size_t kDeepest = 5;
  static constexpr double kComments = 0.20, kStrings = 0.05, kContinuedLines = 0.02;

  void nameProcedures() {
    const std::size_t all = kNouns.size() * kVerbs.size();
    const std::size_t first = random_.below(all);
    for (std::size_t p = 0; p < procedures_; ++p) {
      const std::size_t k = (first + p * 7) % all;  // 7 has no common factor with `all`
      std::string name(kNouns[k % kNouns.size()]);
      if (p >= all) name += kNouns[(p / all + k) % kNouns.size()];
      names_.push_back(name.append(kVerbs[k / kNouns.size()]));
    }
  }

  void writeDeclarations() {
    line("Attribute VB_Name = \"modTest\"");
    line("Option Explicit");
    line("");
    if (bytes_ < 2000) return;
    line("Private Declare Function GetTickCount Lib \"kernel32\" () As Long");
    line("Private Const MAX_ZEILEN As Long = 500");
    line("Private mlngAnzahl As Long");
    line("");
  }

  void writeProcedure(std::size_t p) {
    const std::size_t left = bytes_ > module_.text.size() ? bytes_ - module_.text.size() : 0;
    const std::size_t share = left / (procedures_ - p);
    const bool last = p + 1 == procedures_;
    const std::size_t end =
        module_.text.size() + (last ? share : share / 2 + random_.below(share + 1));
    ++module_.procedures;
    depth_ = 0;
    const bool function = random_.chance(0.4);
    writeHead(names_[p], function);
    depth_ = 1;
    while (module_.text.size() + 60 < end || !open_.empty()) {
      const bool room = module_.text.size() + 60 + 20 * open_.size() < end;
      if (room) statement();
      if (room && random_.chance(0.04)) line("");
      if (!room || (!open_.empty() && random_.chance(0.2))) closeBlock();
    }
    if (function) line(names_[p] + " = " + std::string(random_.pick(kVariables)));
    depth_ = 0;
    line(function ? "End Function" : "End Sub");
    line("");
  }

  void writeHead(const std::string& name, bool function) {
    std::string head(random_.chance(0.5) ? "Private " : "Public ");
    head.append(function ? "Function " : "Sub ").append(name);
    head.append("(ByVal Betrag As Double, ");
    if (wanted(kContinuedLines, module_.continuedLines, module_.lines)) {
      line(head + "_");
      ++module_.continuedLines;
      head = "        ";
    }
    line(head.append("Satz As Long)").append(function ? " As Double" : ""));
  }

  void statement() {
    if (wanted(kContinuedLines, module_.continuedLines, module_.lines)) return continued();
    if (wanted(kComments, module_.commentBytes, module_.text.size())) {
      if (random_.chance(0.6)) return line(comment(20 + random_.below(50)));
      line(filled(random_.pick(kStatements)) + "  " + comment(10 + random_.below(25)));
    } else if (wanted(kStrings, module_.stringBytes, module_.text.size())) {
      line(filled(random_.pick(kTextStatements)));
    } else if (open_.size() < kDeepest && random_.chance(0.15)) {
      const Block block = random_.pick(kBlocks);
      const char* const placeholder = block.closes == "Next %i" ? "%i" : "%v";
      const std::string name(block.closes == "Next %i" ? random_.pick(kCounters)
                                                       : random_.pick(kVariables));
      line(filled(named(block.opens, placeholder, name)));
      open_.push_back(named(block.closes, placeholder, name));
      ++depth_;
    } else {
      line(filled(random_.chance(0.1) ? random_.pick(kCalls) : random_.pick(kStatements)));
    }
  }

  void continued() {
    const std::string_view text = random_.pick(kContinued);
    const std::size_t bar = text.find('|');
    line(filled(text.substr(0, bar)));
    ++module_.continuedLines;
    line("    " + filled(text.substr(bar + 1)));
  }

  void closeBlock() {
    if (open_.empty()) return;
    --depth_;
    line(open_.back());
    open_.pop_back();
  }

  // Keeps a share near its aim without making it regular.
  bool wanted(double share, std::size_t have, std::size_t of) {
    return static_cast<double>(have) < share * static_cast<double>(of) && random_.chance(0.7);
  }

  std::string comment(std::size_t length) {
    std::string text("'");
    while (text.size() < length) text.append(" ").append(random_.pick(kWords));
    module_.commentBytes += text.size();
    return text;
  }

  std::string literal() {
    std::string text("\"");
    for (std::size_t words = 1 + random_.below(4); words > 0; --words)
      text.append(random_.pick(kWords)).append(words > 1 ? " " : "\"");
    module_.stringBytes += text.size();
    return text;
  }

  // The template with its first placeholder of that kind filled in.
  static std::string named(std::string_view text, std::string_view placeholder,
                           const std::string& name) {
    std::string result(text);
    const std::size_t at = result.find(placeholder);
    return at == std::string::npos ? result : result.replace(at, placeholder.size(), name);
  }

  std::string filled(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i)
      text[i] == '%' ? static_cast<void>(result.append(value(text[++i])))
                     : result.push_back(text[i]);
    return result;
  }

  std::string value(char kind) {
    switch (kind) {
      case 'v':
        return std::string(random_.pick(kVariables));
      case 'i':
        return std::string(random_.pick(kCounters));
      case 'o':
        return std::string(random_.pick(kObjects));
      case 'm':
        return std::string(random_.pick(kMembers));
      case 'p':
        return names_[random_.below(names_.size())];
      case 'n':
        return std::to_string(random_.below(2000));
      default:
        return literal();
    }
  }

  void line(std::string_view text) {
    if (!text.empty()) module_.text.append(4 * depth_, ' ');
    module_.text.append(text).append("\r\n");
    ++module_.lines;
  }

  Random random_;
  std::size_t bytes_, procedures_;
  std::size_t depth_ = 0;
  std::vector<std::string> names_, open_;
  Module module_;
};

}  // namespace tintline::bench
