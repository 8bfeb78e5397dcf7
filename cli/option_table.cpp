// See option_table.h. Tested by tests/unit/cli/cli_test.cpp and tests/cli/run.py.
#include "cli/option_table.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <optional>
#include <system_error>

#include "base/text.h"
#include "convert/source_text.h"
#include "reformat/wrapping.h"

namespace tintline {
namespace {

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

bool storeLines(Options& options, std::string_view value) {
  options.lines.clear();
  for (const std::string_view part : Split(value, ',')) {
    LineRange range{};
    if (!parseRange(part, range)) return false;
    options.lines.push_back(range);
  }
  return true;
}

bool storeEncoding(Options& options, std::string_view value) {
  options.encoding = value == "auto" ? kAutomatic : vb::codePageNamed(value);
  return options.encoding.has_value();
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

template <class Value>
using Choice = std::pair<std::string_view, Value>;

constexpr Choice<Format> kFormats[] = {
    {"page", Format::Page},       {"body", Format::Body},
    {"lines", Format::Lines},     {"rtf", Format::Rtf},
    {"md", Format::Markdown},     {"json", Format::Json},
    {"csv", Format::Csv},         {"source", Format::Source},
    {"preview", Format::Preview}, {"clipboard", Format::Clipboard},
    {"table", Format::Table}};
constexpr Choice<Mode> kModes[] = {{"exact", Mode::Exact}, {"classic", Mode::Classic}};
constexpr Choice<listing::Links> kLinks[] = {{"none", listing::Links::None},
                                             {"procs", listing::Links::Procedures},
                                             {"module", listing::Links::Module},
                                             {"all", listing::Links::All}};
constexpr Choice<NoticeFormat> kNoticeFormats[] = {{"text", NoticeFormat::Text},
                                                   {"json", NoticeFormat::Json}};
constexpr Choice<bool> kSwitch[] = {{"on", true}, {"off", false}};
constexpr Choice<bool> kExportEncodings[] = {{"stored", false}, {"utf-8", true}};
constexpr Choice<listing::Header> kHeaders[] = {{"fold", listing::Header::Fold},
                                                {"show", listing::Header::Show},
                                                {"drop", listing::Header::Drop}};
constexpr Choice<listing::Theme> kThemes[] = {{"auto", listing::Theme::Auto},
                                              {"light", listing::Theme::Light},
                                              {"dark", listing::Theme::Dark}};
constexpr Choice<Language> kLanguages[] = {{"de", Language::German}, {"en", Language::English}};
constexpr Choice<StyleMode> kStyles[] = {{"class", StyleMode::Class},
                                         {"inline", StyleMode::Inline}};

template <const auto& Choices>
constexpr auto kNamesOf = [] {
  std::array<std::string_view, std::size(Choices)> names;
  for (std::size_t i = 0; i < names.size(); ++i) names[i] = Choices[i].first;
  return names;
}();

template <const auto& Choices, auto Member>
bool storeChoice(Options& options, std::string_view value) {
  for (const auto& [name, choice] : Choices) {
    if (name != value) continue;
    options.*Member = choice;
    return true;
  }
  return false;
}

constexpr Choice<ColorCategory> kCategories[] = {{"Prozeduren", kProzeduren},
                                                 {"Worte", kReservierteWorte},
                                                 {"Reservierte Worte", kReservierteWorte},
                                                 {"Parameter", kParameter},
                                                 {"Kommentare", kKommentare},
                                                 {"Strings", kStrings},
                                                 {"procedures", kProzeduren},
                                                 {"words", kReservierteWorte},
                                                 {"parameters", kParameter},
                                                 {"comments", kKommentare}};

bool storeColor(Options& options, std::string_view value) {
  const std::size_t equals = std::min(value.find('='), value.size());
  const auto color = listing::colorFromText(value.substr(std::min(equals + 1, value.size())));
  const auto named = std::ranges::find_if(kCategories, [&](const auto& choice) {
    return equalsIgnoreCase(choice.first, value.substr(0, equals));
  });
  if (!color || named == std::end(kCategories)) return false;
  options.colors[named->second] = color;
  return true;
}

constexpr Text<0> kFile{L"FILE", L"DATEI"};
constexpr Text<0> kKind{L"KIND", L"ART"};
constexpr Text<0> kNumber{L"N", L"N"};

constexpr OptionRow kOptions[] = {
    {.name = "output",
     .shortName = 'o',
     .value = kFile,
     .help = {L"write the result to FILE, in a new folder if need be\n"
              L"(without -o and -d: to the standard output)",
              L"schreibt das Ergebnis in DATEI; ihr Ordner wird bei\n"
              L"Bedarf angelegt (ohne -o und -d: Standardausgabe)"},
     .store = storeText<&Options::output>},
    {.name = "output-dir",
     .shortName = 'd',
     .value = {L"FOLDER", L"ORDNER"},
     .help = {L"for each module write a file of the same name\n"
              L"(.htm, .rtf, .md, .json) into FOLDER, which is made\n"
              L"when it is missing; Form1.frm and Form1.cls become\n"
              L"Form1.frm.htm and Form1.cls.htm",
              L"schreibt je Modul eine Datei gleichen Namens\n"
              L"(.htm, .rtf, .md, .json) nach ORDNER, der bei\n"
              L"Bedarf angelegt wird; Form1.frm und Form1.cls\n"
              L"werden zu Form1.frm.htm und Form1.cls.htm"},
     .store = storeText<&Options::outputDir>},
    {.name = "mode",
     .value = {L"MODE", L"MODUS"},
     .choices = kNamesOf<kModes>,
     .help = {L"exact: reads the code as the language means it (the\n"
              L"default); classic: word by word",
              L"exact: genau, liest den Code, wie die Sprache ihn\n"
              L"meint (Vorgabe); classic: klassisch, Wort für Wort"},
     .store = storeChoice<kModes, &Options::mode>},
    {.name = "format",
     .value = {L"FORM", L"FORM"},
     .choices = kNamesOf<kFormats>,
     .help = {L"what is written:\n"
              L"  page   an HTML page with an index (the default)\n"
              L"  body   the HTML text only\n"
              L"  lines  the lines of HTML, one a line\n"
              L"exact only:\n"
              L"  rtf    for word processors\n"
              L"  md     Markdown: an index and the code\n"
              L"  json   what is known of the code, as data\n"
              L"  csv    the same of a project, as three tables\n"
              L"  source code of Office files as one text, for git\n"
              L"classic only:\n"
              L"  preview    the page of the preview\n"
              L"  clipboard  PreCode, lines of HTML, PostCode\n"
              L"  table      the lines as rows of a table",
              L"was geschrieben wird:\n"
              L"  page   HTML-Seite mit Übersicht (Vorgabe)\n"
              L"  body   nur der HTML-Text\n"
              L"  lines  die HTML-Zeilen, eine je Zeile\n"
              L"nur genau:\n"
              L"  rtf    für Textverarbeitungen\n"
              L"  md     Markdown: Übersicht und Code\n"
              L"  json   was vom Code bekannt ist, als Daten\n"
              L"  csv    dasselbe von einem Projekt, drei Tabellen\n"
              L"  source Code von Office-Dateien als Text, für git\n"
              L"nur klassisch:\n"
              L"  preview    die Seite der Vorschau\n"
              L"  clipboard  PreCode, HTML-Zeilen, PostCode\n"
              L"  table      die Zeilen als Tabellenzeilen"},
     .store = storeChoice<kFormats, &Options::format>},
    {.name = "style",
     .value = kKind,
     .choices = kNamesOf<kStyles>,
     .help = {L"class: CSS defined once (the default),\n"
              L"inline: CSS in the style of each element; exact: one\n"
              L"<pre> without an index, for mails and wikis",
              L"class: CSS zentral definiert (Vorgabe),\n"
              L"inline: CSS im Style jedes Elements; genau ein <pre>\n"
              L"ohne Übersicht, für Mails und Wikis"},
     .forms = kClassicForms | exactForms({Format::Page, Format::Body, Format::Lines}),
     .store = storeChoice<kStyles, &Options::style>},
    {.name = "links",
     .value = {L"TARGETS", L"ZIELE"},
     .choices = kNamesOf<kLinks>,
     .help = {L"exact only: what names link to: none nothing, procs\n"
              L"procedures, module all of the module, all the others\n"
              L"of the folder too (the default, but for inline)",
              L"nur genau: worauf Namen verweisen: none nichts,\n"
              L"procs Prozeduren, module alles im Modul, all auch\n"
              L"andere des Ordners (Vorgabe, außer bei inline)"},
     .forms = exactForms({Format::Page, Format::Body, Format::Lines, Format::Json}),
     .store = storeChoice<kLinks, &Options::links>},
    {.name = "titles",
     .value = {L"on|off", L"on|off"},
     .choices = kNamesOf<kSwitch>,
     .help = {L"exact only: links show the head of their target\n"
              L"(default: on)",
              L"nur genau: Verweise zeigen den Kopf ihres Ziels\n"
              L"(Vorgabe on)"},
     .forms = exactForms({Format::Page, Format::Body, Format::Lines}),
     .store = storeChoice<kSwitch, &Options::titles>},
    {.name = "header",
     .value = kKind,
     .choices = kNamesOf<kHeaders>,
     .help = {L"exact only, the header of the module file: fold it\n"
              L"(the default), show it, drop it",
              L"nur genau, den Kopf der Moduldatei: fold einklappen\n"
              L"(Vorgabe), show zeigen, drop weglassen"},
     .forms = kExactForms & kCodeForms,
     .store = storeChoice<kHeaders, &Options::header>},
    {.name = "theme",
     .value = kKind,
     .choices = kNamesOf<kThemes>,
     .help = {L"exact only: light or dark colours, or what the\n"
              L"browser is set to (auto, the default)",
              L"nur genau: Farben hell (light), dunkel (dark) oder\n"
              L"wie im Browser eingestellt (auto, Vorgabe)"},
     .forms = kClassForms & exactForms({Format::Page}),
     .store = storeChoice<kThemes, &Options::theme>},
    {.name = "lang",
     .value = {L"LANGUAGE", L"SPRACHE"},
     .choices = kNamesOf<kLanguages>,
     .help = {L"exact only: the words on pages are German (de, the\n"
              L"default) or English (en)",
              L"nur genau: Worte der Seiten deutsch (de, Vorgabe)\n"
              L"oder englisch (en)"},
     .forms =
         exactForms({Format::Page, Format::Markdown}) | (kClassForms & exactForms({Format::Body})),
     .store = storeChoice<kLanguages, &Options::language>},
    {.name = "color",
     .value = {L"WHAT=#RRGGBB", L"WAS=#RRGGBB"},
     .choices = kNamesOf<kCategories>,
     .allowed = {L"procedures, words, parameters, comments or strings, and a colour: "
                 L"comments=#228822",
                 L"Prozeduren, Worte, Parameter, Kommentare oder Strings und eine Farbe: "
                 L"Kommentare=#228822"},
     .help = {L"exact only: colour of procedures, words, parameters,\n"
              L"comments or strings, like comments=#228822",
              L"nur genau: Farbe für Prozeduren, Worte, Parameter,\n"
              L"Kommentare oder Strings, wie Kommentare=#228822"},
     .forms = exactForms({Format::Page, Format::Rtf}) |
              (kInlineForms & exactForms({Format::Body, Format::Lines})),
     .store = storeColor},
    {.name = "css",
     .value = kFile,
     .help = {L"exact only: style sheet that is put into each page\n"
              L"behind its own",
              L"nur genau: Formatvorlage (CSS), die in jede Seite\n"
              L"hinter deren eigene kommt"},
     .forms = kClassForms & exactForms({Format::Page}),
     .store = storeText<&Options::css>},
    {.name = "line-numbers",
     .shortName = 'n',
     .help = {L"put line numbers in front", L"setzt Zeilennummern davor"},
     .forms = kCodeForms & ~exactForms({Format::Json, Format::Csv}),
     .store = storeFlag<&Options::lineNumbers>},
    {.name = "lines",
     .value = {L"A-B[,C-D...]", L"A-B[,C-D...]"},
     .allowed = {L"ranges like 10-20 or 3,10-20, counted from 1",
                 L"Bereiche wie 10-20 oder 3,10-20, gezählt ab 1"},
     .help = {L"convert only these lines (counted from 1),\n"
              L"classic: one by one",
              L"wandelt nur diese Zeilen um (gezählt ab 1),\n"
              L"klassisch wie der Befehl \"Auswahl\""},
     .forms = kCodeForms,
     .store = storeLines},
    {.name = "indent",
     .value = kNumber,
     .allowed = {L"a number from 0 to 100", L"eine Zahl von 0 bis 100"},
     .help = {L"before that, indent by N blanks a level (0 to 100)",
              L"rückt vorher N Leerzeichen je Ebene ein,\n"
              L"wie N-mal \"format\" gedrückt (0 bis 100)"},
     .forms = kCodeForms,
     .store = storeIndent},
    {.name = "wrap",
     .value = kNumber,
     .allowed = {L"a number from 20 to 1000, or 0", L"eine Zahl von 20 bis 1000 oder 0"},
     .help = {L"after that, break lines of more than N characters\n"
              L"(20 to 1000, 0: off), what follows one level deeper\n"
              L"(by 4 without --indent); --lines counts new lines",
              L"bricht danach Zeilen über N Zeichen um (20 bis 1000,\n"
              L"0: aus), Folgezeilen eine Ebene tiefer (ohne\n"
              L"--indent um 4); --lines zählt die neuen Zeilen"},
     .forms = kCodeForms,
     .store = storeWrap},
    {.name = "pasted",
     .help = {L"classic only: treat the input as pasted text",
              L"nur klassisch: die Eingabe wie eingefügten Text\n"
              L"behandeln"},
     .forms = kClassicForms,
     .store = storeFlag<&Options::pasted>},
    {.name = "encoding",
     .value = {L"NAME", L"NAME"},
     .allowed = {L"auto, utf-8, utf-16, windows-1252, macintosh, shift_jis, 1251 ...",
                 L"auto, utf-8, utf-16, windows-1252, macintosh, shift_jis, 1251 ..."},
     .help = {L"how sources without a byte-order mark are read:\n"
              L"auto (exact: the default) as UTF-8 if they are that,\n"
              L"else in the code page of Windows; or a code page:\n"
              L"utf-8, windows-1252, macintosh, 932 ...",
              L"wie Eingaben ohne Byte-Order-Marke gelesen werden:\n"
              L"auto (bei exact Vorgabe) als UTF-8, wenn sie das\n"
              L"sind, sonst in der Codepage von Windows; oder eine\n"
              L"Codepage: utf-8, windows-1252, macintosh, 932 ..."},
     .forms = kCodeForms,
     .store = storeEncoding},
    {.name = "project",
     .help = {L"document whole projects: FILE is a folder, project\n"
              L"file (.vbp) or Office file; a site of HTML pages\n"
              L"goes into FOLDER (-d), with --format json or csv\n"
              L"data",
              L"dokumentiert ganze Projekte: DATEI ist ein Ordner,\n"
              L"eine Projektdatei (.vbp) oder Office-Datei; nach\n"
              L"ORDNER (-d) kommen HTML-Seiten, mit --format json\n"
              L"oder csv Daten"},
     .store = storeFlag<&Options::project>},
    {.name = "check-links",
     .help = {L"convert nothing; tell which links of the HTML pages\n"
              L"in the folder FILE do not land",
              L"wandelt nichts um, sondern sagt, welche Verweise der\n"
              L"HTML-Seiten im Ordner DATEI ins Leere führen"},
     .store = storeFlag<&Options::checkLinks>},
    {.name = "keywords",
     .value = kFile,
     .help = {L"control file with keywords (default: a vb.ini where\n"
              L"--settings looks, else the built-in lists)",
              L"Steuerdatei mit Schlüsselworten (Vorgabe: eine\n"
              L"vb.ini, gesucht wie bei --settings, sonst die\n"
              L"eingebauten Listen)"},
     .store = storeText<&Options::keywords>},
    {.name = "settings",
     .value = kFile,
     .help = {L"colours, PreCode, PostCode, Sprache; default: what\n"
              L"TINTLINE_SETTINGS names, else TINTLINE.ini, in\n"
              L"~/.config/tintline or beside the program (Windows:\n"
              L"beside the program or in %APPDATA%\\TINTLINE)",
              L"Farben, PreCode, PostCode und Sprache; Vorgabe: was\n"
              L"TINTLINE_SETTINGS nennt, sonst TINTLINE.ini, in\n"
              L"~/.config/tintline oder beim Programm (Windows: beim\n"
              L"Programm oder in %APPDATA%\\TINTLINE)"},
     .store = storeText<&Options::settings>},
    {.name = "print-settings",
     .help = {L"print the settings that count, as a settings file,\n"
              L"and where they come from",
              L"zeigt die Einstellungen, die gelten, als Datei für\n"
              L"--settings, und woher sie kommen"},
     .store = storeFlag<&Options::printSettings>},
    {.name = "skip-unchanged",
     .help = {L"write only files that this changes",
              L"schreibt nur Dateien, die sich dabei ändern"},
     .store = storeFlag<&Options::skipUnchanged>},
    {.name = "check",
     .help = {L"convert without writing, and tell what would fail",
              L"wandelt um, ohne zu schreiben, und meldet, was\n"
              L"misslänge"},
     .store = storeFlag<&Options::check>},
    {.name = "dry-run",
     .help = {L"only name the inputs and what would be written",
              L"nennt nur die Eingaben und was geschrieben würde"},
     .store = storeFlag<&Options::dryRun>},
    {.name = "list",
     .help = {L"of Office files: print projects and modules; with\n"
              L"--format json as data, one object a file",
              L"von Office-Dateien: Projekte und Module anzeigen;\n"
              L"mit --format json als Daten, ein Objekt je Datei"},
     .store = storeFlag<&Options::list>},
    {.name = "module",
     .value = {L"NAME", L"NAME"},
     .help = {L"of Office files: this module only", L"von Office-Dateien: nur dieses Modul"},
     .store = storeText<&Options::module>},
    {.name = "all",
     .help = {L"of Office files: documents without code, too",
              L"von Office-Dateien: auch Dokumente ohne Code"},
     .store = storeFlag<&Options::all>},
    {.name = "export-modules",
     .value = {L"FOLDER", L"ORDNER"},
     .help = {L"write the modules of Office files as the editor\n"
              L"exports them (.bas, .cls, .frm with .frx), into\n"
              L"FOLDER/NAME OF THE FILE/",
              L"schreibt die Module von Office-Dateien, wie der\n"
              L"Editor sie exportiert (.bas, .cls, .frm mit .frx),\n"
              L"nach ORDNER/NAME DER DATEI/"},
     .store = storeText<&Options::exportModules>},
    {.name = "export-encoding",
     .value = {L"ENCODING", L"KODIERUNG"},
     .choices = kNamesOf<kExportEncodings>,
     .help = {L"of these: stored, as in the file (the default),\n"
              L"or utf-8",
              L"davon: stored, wie in der Datei (Vorgabe),\n"
              L"oder utf-8"},
     .forms = kFilesForm,
     .store = storeChoice<kExportEncodings, &Options::exportUtf8>},
    {.name = "jobs",
     .value = kNumber,
     .allowed = {L"a number from 1 to 64", L"eine Zahl von 1 bis 64"},
     .help = {L"so many files at the same time (1 to 64,\n"
              L"default: the number of processors)",
              L"so viele Dateien gleichzeitig (1 bis 64,\n"
              L"Vorgabe: Zahl der Prozessoren)"},
     .store = storeJobs},
    {.name = "errors",
     .value = {L"FORM", L"FORM"},
     .choices = kNamesOf<kNoticeFormats>,
     .help = {L"how failures are told: text (the default), or json:\n"
              L"an object a line, with file, line, severity, code\n"
              L"and message",
              L"wie Fehler gemeldet werden: text (Vorgabe) oder\n"
              L"json: je Zeile ein Objekt mit file, line, severity,\n"
              L"code und message"},
     .store = storeChoice<kNoticeFormats, &Options::errors>},
    {.name = "quiet",
     .shortName = 'q',
     .help = {L"show no progress on a terminal (after a second)",
              L"zeigt im Terminal keinen Fortschritt (nach 1 s)"},
     .store = storeFlag<&Options::quiet>},
    {.name = "verbose",
     .shortName = 'v',
     .help = {L"tell how much was converted", L"sagt, wie viel umgewandelt wurde"},
     .store = storeFlag<&Options::verbose>},
    {.name = "help",
     .shortName = 'h',
     .help = {L"show this help", L"zeigt diese Hilfe"},
     .store = storeFlag<&Options::help>},
    {.name = "version",
     .shortName = 'V',
     .help = {L"show the version", L"zeigt die Version"},
     .store = storeFlag<&Options::version>},
};

constexpr bool linesFit(std::wstring_view text) {
  std::size_t length = 0;
  for (const wchar_t character : text) {
    length = character == L'\n' ? 0 : length + 1;
    if (length > kHelpWidth) return false;
  }
  return true;
}
static_assert(std::ranges::all_of(kOptions, [](const OptionRow& option) {
  return linesFit(option.help.in(Language::English)) && linesFit(option.help.in(Language::German));
}));

}  // namespace

std::span<const OptionRow> optionTable() { return kOptions; }

std::string_view formatName(Format format) {
  for (const auto& [name, known] : kFormats)
    if (known == format) return name;
  return {};
}

}  // namespace tintline
