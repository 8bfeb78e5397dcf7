// The option table, the parser and the help text. See options.h.
// Tested by tests/unit/cli/cli_test.cpp and tests/cli/run.py.
#include "cli/options.h"

#include <charconv>
#include <limits>
#include <optional>
#include <system_error>

#include "base/codepage.h"
#include "base/text.h"
#include "reformat/wrapping.h"

namespace tintline {
namespace {

constexpr std::size_t kHelpColumn = 28;

constexpr std::pair<std::string_view, Format> kFormats[] = {
    {"page", Format::Page},       {"body", Format::Body},           {"lines", Format::Lines},
    {"preview", Format::Preview}, {"clipboard", Format::Clipboard}, {"table", Format::Table},
    {"rtf", Format::Rtf},         {"md", Format::Markdown},         {"json", Format::Json}};

// A whole number without sign. One that is too large for the type is given as
// the largest, so that it fails where its meaning is known.
bool parseNumber(std::string_view text, std::size_t& number) {
  const char* const end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, number);
  if (error == std::errc::result_out_of_range) number = std::numeric_limits<std::size_t>::max();
  return error != std::errc::invalid_argument && rest == end;
}

bool parseNumberBetween(std::string_view text, std::size_t low, std::size_t high,
                        std::size_t& number) {
  return parseNumber(text, number) && number >= low && number <= high;
}

bool parseRange(std::string_view text, LineRange& range) {
  const std::size_t dash = text.find('-');
  if (!parseNumber(text.substr(0, dash), range.first)) return false;
  range.last = range.first;
  if (dash != std::string_view::npos && !parseNumber(text.substr(dash + 1), range.last))
    return false;
  return range.first >= 1 && range.first <= range.last;
}

template <class Choice, class Value, std::size_t N>
bool choose(const std::pair<std::string_view, Choice> (&choices)[N], std::string_view text,
            Value& value) {
  for (const auto& [name, choice] : choices) {
    if (name != text) continue;
    value = choice;
    return true;
  }
  return false;
}

bool storeFormat(Options& options, std::string_view value) {
  return choose(kFormats, value, options.format);
}

bool storeMode(Options& options, std::string_view value) {
  static constexpr std::pair<std::string_view, Mode> kModes[] = {{"exact", Mode::Exact},
                                                                 {"classic", Mode::Classic}};
  return choose(kModes, value, options.mode);
}

bool storeLinks(Options& options, std::string_view value) {
  using enum listing::Links;
  static constexpr std::pair<std::string_view, listing::Links> kLinks[] = {
      {"none", None}, {"procs", Procedures}, {"module", Module}, {"all", All}};
  return choose(kLinks, value, options.links);
}

bool storeTitles(Options& options, std::string_view value) {
  static constexpr std::pair<std::string_view, bool> kSwitch[] = {{"on", true}, {"off", false}};
  return choose(kSwitch, value, options.titles);
}

bool storeHeader(Options& options, std::string_view value) {
  using enum listing::Header;
  static constexpr std::pair<std::string_view, listing::Header> kHeaders[] = {
      {"fold", Fold}, {"show", Show}, {"drop", Drop}};
  return choose(kHeaders, value, options.header);
}

bool storeTheme(Options& options, std::string_view value) {
  using enum listing::Theme;
  static constexpr std::pair<std::string_view, listing::Theme> kThemes[] = {
      {"auto", Auto}, {"light", Light}, {"dark", Dark}};
  return choose(kThemes, value, options.theme);
}

bool storeStyle(Options& options, std::string_view value) {
  static constexpr std::pair<std::string_view, StyleMode> kStyles[] = {
      {"class", StyleMode::Class}, {"inline", StyleMode::Inline}};
  return choose(kStyles, value, options.style);
}

bool storeLines(Options& options, std::string_view value) {
  options.lines.clear();
  for (const std::string_view part : Split(value, ',')) {
    LineRange range{};
    if (!parseRange(part, range)) return false;
    options.lines.push_back(range);
  }
  return true;
}

bool storeIndent(Options& options, std::string_view value) {
  std::size_t presses = 0;
  if (!parseNumberBetween(value, 0, 100, presses)) return false;
  options.indent = static_cast<int>(presses);
  return true;
}

bool storeWrap(Options& options, std::string_view value) {
  const std::optional<int> width = parseLineWidth(argumentText(value));
  options.wrap = width.value_or(0);
  return width.has_value();
}

bool storeJobs(Options& options, std::string_view value) {
  std::size_t jobs = 0;
  if (!parseNumberBetween(value, 1, 64, jobs)) return false;
  options.jobs = static_cast<unsigned>(jobs);
  return true;
}

template <std::string Options::*Member>
bool storeText(Options& options, std::string_view value) {
  options.*Member = value;
  return true;
}

template <bool Options::*Member>
bool storeFlag(Options& options, std::string_view) {
  options.*Member = true;
  return true;
}

struct OptionRow {
  std::string_view name;
  char shortName;             // 0: none
  std::wstring_view value;    // name of the value, empty for a flag
  std::wstring_view allowed;  // the values that can be given, empty: any text
  std::wstring_view help;     // lines for the help text
  bool (*store)(Options& options, std::string_view value);  // false: a wrong value
};

constexpr OptionRow kOptions[] = {
    {"output", 'o', L"DATEI", L"",
     L"schreibt das Ergebnis in DATEI; ihr Ordner wird bei\n"
     L"Bedarf angelegt (ohne -o und -d: Standardausgabe)",
     storeText<&Options::output>},
    {"output-dir", 'd', L"ORDNER", L"",
     L"schreibt je Modul eine Datei gleichen Namens\n"
     L"(.htm, .rtf, .md, .json) nach ORDNER, der bei\n"
     L"Bedarf angelegt wird; Form1.frm und Form1.cls\n"
     L"werden zu Form1.frm.htm und Form1.cls.htm",
     storeText<&Options::outputDir>},
    {"mode", 0, L"MODUS", L"exact oder classic",
     L"exact: genau, liest den Code, wie die Sprache ihn\n"
     L"meint (Vorgabe); classic: klassisch, Wort für Wort",
     storeMode},
    {"format", 0, L"FORM", L"page, body, lines, rtf, md, json, preview, clipboard oder table",
     L"was geschrieben wird:\n"
     L"  page   HTML-Seite mit Übersicht (Vorgabe)\n"
     L"  body   nur der HTML-Text\n"
     L"  lines  die HTML-Zeilen, eine je Zeile\n"
     L"nur genau:\n"
     L"  rtf    für Textverarbeitungen\n"
     L"  md     Markdown: Übersicht und Code\n"
     L"  json   was vom Code bekannt ist, als Daten\n"
     L"nur klassisch:\n"
     L"  preview    die Seite der Vorschau\n"
     L"  clipboard  PreCode, HTML-Zeilen, PostCode\n"
     L"  table      die Zeilen als Tabellenzeilen",
     storeFormat},
    {"style", 0, L"ART", L"class oder inline",
     L"class: CSS zentral definiert (Vorgabe),\n"
     L"inline: CSS im Style jedes Elements; genau ein <pre>\n"
     L"ohne Übersicht, für Mails und Wikis",
     storeStyle},
    {"links", 0, L"ZIELE", L"none, procs, module oder all",
     L"nur genau: worauf Namen verweisen: none nichts,\n"
     L"procs Prozeduren, module alles im Modul, all auch\n"
     L"andere des Ordners (Vorgabe, außer bei inline)",
     storeLinks},
    {"titles", 0, L"on|off", L"on oder off",
     L"nur genau: Verweise zeigen den Kopf ihres Ziels\n"
     L"(Vorgabe on)",
     storeTitles},
    {"header", 0, L"ART", L"fold, show oder drop",
     L"nur genau, den Kopf der Moduldatei: fold einklappen\n"
     L"(Vorgabe), show zeigen, drop weglassen",
     storeHeader},
    {"theme", 0, L"ART", L"auto, light oder dark",
     L"nur genau: Farben hell (light), dunkel (dark) oder\n"
     L"wie im Browser eingestellt (auto, Vorgabe)",
     storeTheme},
    {"line-numbers", 'n', L"", L"", L"setzt Zeilennummern davor", storeFlag<&Options::lineNumbers>},
    {"lines", 0, L"A-B[,C-D...]", L"Bereiche wie 10-20 oder 3,10-20, gezählt ab 1",
     L"wandelt nur diese Zeilen um (gezählt ab 1),\n"
     L"klassisch wie der Befehl \"Auswahl\"",
     storeLines},
    {"indent", 0, L"N", L"eine Zahl von 0 bis 100",
     L"rückt vorher N Leerzeichen je Ebene ein,\n"
     L"wie N-mal \"format\" gedrückt (0 bis 100)",
     storeIndent},
    {"wrap", 0, L"N", L"eine Zahl von 20 bis 1000 oder 0",
     L"bricht danach Zeilen über N Zeichen um (20 bis 1000,\n"
     L"0: aus), Folgezeilen eine Ebene tiefer (ohne\n"
     L"--indent um 4); --lines zählt die neuen Zeilen",
     storeWrap},
    {"pasted", 0, L"", L"", L"behandelt die Eingabe wie eingefügten Text",
     storeFlag<&Options::pasted>},
    {"keywords", 0, L"DATEI", L"",
     L"Steuerdatei mit den Schlüsselworten (Vorgabe: vb.ini\n"
     L"beim Programm, sonst die eingebauten Listen)",
     storeText<&Options::keywords>},
    {"settings", 0, L"DATEI", L"",
     L"Farben, PreCode und PostCode (Vorgabe: TINTLINE.ini\n"
     L"beim Programm); die Datei wird nie geschrieben",
     storeText<&Options::settings>},
    {"jobs", 0, L"N", L"eine Zahl von 1 bis 64",
     L"so viele Dateien gleichzeitig (1 bis 64,\n"
     L"Vorgabe: Zahl der Prozessoren)",
     storeJobs},
    {"quiet", 'q', L"", L"", L"zeigt im Terminal keinen Fortschritt", storeFlag<&Options::quiet>},
    {"help", 0, L"", L"", L"zeigt diese Hilfe", storeFlag<&Options::help>},
    {"version", 0, L"", L"", L"zeigt die Version", storeFlag<&Options::version>},
};

constexpr std::wstring_view kHelpHead =
    L"Macht aus Visual-Basic- und VBA-Quelltext farbige, verlinkte Seiten.\n"
    L"\n"
    L"Aufruf: tintline [OPTIONEN] DATEI|ORDNER...\n"
    L"\n"
    L"DATEI ist eine Moduldatei oder - für die Standardeingabe. Von einem ORDNER\n"
    L"werden alle Moduldateien gelesen (.bas .cls .frm .ctl .pag .dob .dsr), auch in\n"
    L"den Ordnern darin. Ohne -d werden mehrere Module ein Dokument (nur genau).\n"
    L"\n"
    L"Optionen:\n";

constexpr std::wstring_view kHelpFoot =
    L"\n"
    L"Beispiele:\n"
    L"  tintline -o Modul1.htm Modul1.bas\n"
    L"  tintline -n -d html Projekt\n"
    L"  tintline --format body --style inline --lines 10-42 Modul1.bas\n"
    L"  tintline --mode classic -o Modul1.htm Modul1.bas\n"
    L"\n"
    L"Rückgabewert: 0 alles umgewandelt, 1 nicht alles umgewandelt, 2 falscher Aufruf.\n";

std::wstring inQuotes(std::string_view argument) { return L"\"" + argumentText(argument) + L"\""; }

std::wstring nameOf(const OptionRow& option) { return L"--" + argumentText(option.name); }

void store(const OptionRow& option, std::string_view value, Options& options) {
  if (!option.value.empty() && value.empty())
    throw UsageError(nameOf(option) + L": der Wert " + std::wstring(option.value) + L" fehlt");
  if (!option.store(options, value))
    throw UsageError(nameOf(option) + L": " + inQuotes(value) + L" geht nicht, möglich: " +
                     std::wstring(option.allowed));
}

class Parser {
 public:
  explicit Parser(const std::vector<std::string>& arguments) : arguments_(arguments) {}

  Options parse() {
    bool optionsEnded = false;
    while (next_ < arguments_.size() && !options_.help && !options_.version) {
      const std::string_view argument = arguments_[next_++];
      if (optionsEnded || argument == kStandardStream || !argument.starts_with('-'))
        addInput(argument);
      else if (argument == "--")
        optionsEnded = true;
      else if (argument.starts_with("--"))
        takeLong(argument.substr(2));
      else
        takeShort(argument.substr(1));
    }
    return std::move(options_);
  }

 private:
  void addInput(std::string_view argument) {
    if (argument.empty()) throw UsageError(L"ein leerer Text ist kein Dateiname");
    options_.inputs.emplace_back(argument);
  }

  // NAME, NAME=VALUE, or NAME with the value in the next argument.
  void takeLong(std::string_view argument) {
    const std::size_t equals = argument.find('=');
    const std::string_view name = argument.substr(0, equals);
    for (const OptionRow& option : kOptions) {
      if (option.name != name) continue;
      if (equals == std::string_view::npos) return store(option, nextValue(option), options_);
      if (option.value.empty()) throw UsageError(nameOf(option) + L": nimmt keinen Wert");
      return store(option, argument.substr(equals + 1), options_);
    }
    throw UsageError(L"unbekannte Option --" + argumentText(name));
  }

  // One or more letters; behind one that takes a value stands that value, or it
  // is the next argument.
  void takeShort(std::string_view letters) {
    while (!letters.empty()) {
      const OptionRow& option = shortOption(letters);
      letters.remove_prefix(1);
      if (option.value.empty()) {
        store(option, {}, options_);
      } else {
        store(option, letters.empty() ? nextValue(option) : letters, options_);
        return;
      }
    }
  }

  static const OptionRow& shortOption(std::string_view letters) {
    for (const OptionRow& option : kOptions)
      if (option.shortName == letters.front()) return option;
    throw UsageError(L"unbekannte Option " + inQuotes("-" + std::string(letters)));
  }

  std::string_view nextValue(const OptionRow& option) {
    if (option.value.empty() || next_ == arguments_.size()) return {};
    return arguments_[next_++];
  }

  const std::vector<std::string>& arguments_;
  std::size_t next_ = 0;
  Options options_;
};

void appendHelp(const OptionRow& option, std::wstring& text) {
  std::wstring left = L"  ";
  left += option.shortName != 0 ? std::wstring{L'-', wchar_t(option.shortName), L',', L' '}
                                : std::wstring(4, L' ');
  left += nameOf(option);
  if (!option.value.empty()) left += L" " + std::wstring(option.value);
  if (left.size() >= kHelpColumn) left += L'\n';
  text += left;
  std::size_t column = left.back() == L'\n' ? 0 : left.size();
  for (const wchar_t character : option.help) {
    if (column < kHelpColumn) text.append(kHelpColumn - column, L' ');
    text += character;
    column = character == L'\n' ? 0 : kHelpColumn;
  }
  text += L'\n';
}

}  // namespace

Options parseOptions(const std::vector<std::string>& arguments) {
  return Parser(arguments).parse();
}

std::wstring formatName(Format format) {
  for (const auto& [name, known] : kFormats)
    if (known == format) return argumentText(name);
  return {};
}

std::wstring helpText() {
  std::wstring text(kHelpHead);
  for (const OptionRow& option : kOptions) appendHelp(option, text);
  text += kHelpFoot;
  return text;
}

// Of UTF-8 text a path takes the bytes unchanged where its own characters are
// bytes, whatever they are, and converts them on Windows.
std::filesystem::path argumentPath(std::string_view argument) {
  return std::u8string(argument.begin(), argument.end());
}

std::wstring argumentText(std::string_view argument) { return fromUtf8(argument); }

}  // namespace tintline
