// See random_text.h. Only the raw numbers of the generator are used, because the standard
// distributions give different numbers with different libraries.
#include "tests/support/random_text.h"

#include <algorithm>
#include <map>

#include "base/codepage.h"
#include "base/text.h"

namespace tintline::test {
namespace {

using namespace std::string_view_literals;

// What a rule stands for: one of the texts between the bars, in which "{rule}" stands for another.
const std::pair<std::string_view, std::string_view> kRules[] = {
    // The classic conversion's lines: heads, frames of modules, and whatever it stumbles over.
    {"line", "{frame}|{head}|{end}|{simple}|{simple}|{pieces}|{pieces}|{pieces}"},
    {"frame", "'-------\n' Modul:{name}\n'-------"},
    {"head", "{headOpener}{name}{headEnd}"},
    {"headOpener",
     "Sub |Private Sub |Public Function |  Function |Property Get |Friend Sub |"
     "Declare Sub |Private Declare Function "},
    {"headEnd", "()|(a, b)|( _|(ByVal a As Long, _|() As Long|| Lib \"k\" ()|() ' c|() ' c _"},
    {"end", "End Sub|End Function|  End Property|End If|Next|Wend|End Type|END WITH|| "},
    {"simple", "{simpleOpener}{name}{simpleEnd}"},
    {"simpleOpener", "|  |Call |x = |If |    ' |Dim x, |Rem |\"|MsgBox \"|Else|Type "},
    {"simpleEnd", "| = 1|(1, y)| ' c| _| ' c _|\" & x| Rem c|(a:=1)| Then| 'Foo"},
    {"name",
     "Foo|Bar|Laden|Main|x|a|s|span|class|name|Marks|HREF|hr|br|Sub|Code|foo|FooBar|F.o|"
     "Prüfe|Änderung|lt|Dim|</a>|'|\""},
    {"procedure", "{name}|{name}|{name}|{name}|{name}|{name}|"},
    {"pieces", "|{p}{pieces}|{p}{p}{pieces}|{p}{p}{p}{pieces}"},
    {"p", "{piece}|{piece}|{piece}|{piece}|{piece}|{piece}|{piece}|{name}"},
    {"piece",
     "\"|\"|\"|(|)|(|)|()|,|,|'|'|<|>|<|>|:=|:=|:|=| =| = |Sub|Function|Property|"
     "End Sub|End Function|End |end sub|Exit Sub|Private |Public |Declare |Lib |Sub | | "
     "| | |  |\t|Rem| REM| Rem |rem|Remove|_| _|_ |If|If |Then|Dim|Dim |As| As |True|"
     "Left$|Left$(|x|y1|vb_x|&|&lt;|.|class='Sub'>|class='EndSub'|class='sub'>|"
     "<span class='rem'>|<span class='Rem'>|<span name|</span>|_ </span>|"
     "<span class=\"Code\"> </span>|Modul:|modul:|'-------|$|\0|\3|Sub\3Function|ä|Ä|ü|Ü|"
     "ß|ÿ|Ÿ|µ|\u00A0|\r|\x1A"sv},
    // What short lines and heads of procedures are made of: where one word is taken out of a head,
    // what stood around it may make another.
    {"short", "\"|(|)|,|'|<|>|:=|Sub| |x"},
    {"headPart",
     "Private|Public|Declare|Sub|Function|Lib|Property|Pri|vate |Pub|lic |Dec|lare |"
     "Su|b |tion |sUB | |X"},
    // Lines as a programmer writes them, continued or not, with file headers among them.
    {"statement", "{plain}|{plain}|{plain}|{plain}|{plain}|{plain}|{plain}|{fixed}"},
    {"plain", "{opener}{code}{more}{remark}|{opener}{code}{more}{remark}|{opener}{remark}"},
    {"opener", "||    |\t|        |10 |Marke: |  Marke : |10: |If a Then |Declare Sub "},
    {"more", "|| _\n     {code}{more}"},
    {"remark", "|{comment}{moreRemark}"},
    {"moreRemark", "||||||| _\n  {comment}{moreRemark}"},
    {"code",
     "{word}{gap}|{word}{gap}{word}{gap}{code}|{word}{gap}{word}{gap}{code}|"
     "{word}{gap}{word}{gap}{code}"},
    {"word",
     "x|Kunde|strName|total_|_|(a, b)|(|)|=|+|&|And|Then|Else|:|:=|,|.Name|.Zelle(1)|"
     "!Feld|rs!Feld|a.b|5#|#1,|#n|x&|#1/2/2000#|#1/2/2000 10:30:00 PM#|# Jan 1, 2000 #|"
     "#|[Mein Name]|['Blatt 1'!A1]|[|\"a b c\"|\"it's \"\"so\"\" _\"|\"\"|\"offen |If|"
     "Debug.Print|Foo:|10|ByVal a As Long,|Rem|x.Rem|Rem.x|'"},
    {"gap", " | | | | ||  |\t| \t "},
    {"comment", "{apostrophe}{remarks}"},
    {"apostrophe", "'|' |'   |'''  |Rem |REM\t|: Rem "},
    {"remarks", "|{said} {said} {remarks}|{said} {said} {said} {remarks}|{said}{said} {remarks}"},
    {"said", "ein|Wort|foo_|_|it's|\"|----------------------------|x = 1|Rem|  |\t"},
    {"fixed",
     "VERSION 5.00\nObject = \"{831FDD16-0C5C-11D2-A9FC-0000F8754DA1}#2.0#0\"; \"x.ocx\"\n"
     "Begin VB.Form frmKunde\n   Caption = \"ein langer Titel\" 'und was er soll\n"
     "   BeginProperty Font {0BE35203-8F91-11CE-9DE3-00AA004BB851}\n   EndProperty\nEnd|"
     "VERSION 1.0 CLASS\nBEGIN\n  MultiUse = -1  'True, und so bleibt es auch\nEND|"
     "Version 5, x\nBegin|Attribute VB_Name = \"ein Name mit vielen Worten\"|"
     "Attribute Foo.VB_Description = \"ein Name\" ' Kommentar|"
     "#If VBA7 And Win64 Then ' ein Kommentar, der lang ist|"
     "#Const Schalter = _\n  1 + 2 + 3 + 4 + 5 + 6 + 7 + 8 + 9 + 10"},
    // What code is made of, and what could be taken for something else.
    {"token",
     "{layout}|{layout}|{layout}|{sign}|{sign}|{id}|{id}|{id}|{keyword}|{declaration}|"
     "{declaration}|{declaration}|{odd}"},
    {"layout", " | |  |\t|\n|\n|\n|\n|\r\n|\r|: | _\n| _ \r\n|\u3000"},
    {"sign",
     "(|)|,|;|:|:=|.|!|#|&|%|$|@|^|=|<>|+|?|[|]|{|_|'|'c|'c _\n|Rem |\"|\"\"|\"s\"|1|10 |"
     "1.5|* 5|&HFF|&O7|#1/2/2000#|#10:30 AM#"},
    {"id", "a|b|A|B|[a]|[A.B]|[a b]|c$|a: |12: |b_Click|Me|größe |変|vbCr|Left"},
    {"keyword",
     "If | Then | Else |GoTo a\n|On Error |Resume |For |To |Step |Line |Input|Open |"
     "Name |Option |Compare |Text|Date|Debug.Print|Set |New |TypeOf | Is |With |"
     "End With\n|RaiseEvent a|#If a Then\n|#Else\n|#End If\n|End "},
    {"declaration",
     "Sub |Public Sub |Private Sub |Static |Public Function |Property Get |Property Let |"
     "Property Set |End Sub\n|End Function\n|End Property\n|Type |End Type\n|Enum |End Enum\n|"
     "Const |Dim |ReDim |ReDim Preserve a|Declare Sub |Lib \"x\" |Event |Implements A|Optional |"
     "ParamArray |WithEvents | As | As New | Long|String|Attribute |VB_Name = \"B\"\n|"
     "Attribute a.VB_UserMemId = 0\n|Attribute VB_Description = \"|VERSION 5.00\n|Begin |"
     "Begin P.A a\n|BeginProperty x\n|Index = 0\n|End\n|Object |"
     "VERSION 5.00\nBegin VB.Form F\n  Begin VB.CommandButton b\n  End\nEnd\n"},
    {"odd",
     "</code></pre></main>|<script>|alert(1)|<!--|-->|]]>|&lt;|&amp|javascript:|onclick=|"
     "<img src=x onerror=a>|[1 <b>]|[\"'&]|[a.2]|code|constructor|```|{\\rtf|~|\0|\1|\v|\f|"
     "\x19|\x1A|\x7F|\u0081|“|\u202E|\u2066|\uFFFD|\uFFFE|\uFDD0|\U0001FFFF|😀|\0\1"sv},
};

const std::vector<std::string_view>& alternatives(std::string_view rule) {
  static const auto rules = [] {
    std::map<std::string_view, std::vector<std::string_view>> read;
    for (const auto& [name, texts] : kRules) read[name] = Split(texts, '|');
    return read;
  }();
  static const std::vector<std::string_view> none;
  const auto found = rules.find(rule);
  return found == rules.end() ? none : found->second;
}

void expand(std::mt19937& random, std::string_view rule, std::string& text) {
  const auto& texts = alternatives(rule);
  std::string_view rest = texts[random() % texts.size()];
  while (!rest.empty()) {
    const std::string_view inner = rest.substr(1, std::max<std::size_t>(rest.find('}'), 1) - 1);
    if (rest[0] == '{' && !alternatives(inner).empty()) {
      expand(random, inner, text);
      rest.remove_prefix(inner.size() + 2);
    } else {
      text += rest[0];
      rest.remove_prefix(1);
    }
  }
}

}  // namespace

std::string randomText(std::mt19937& random, std::string_view rule, std::size_t count) {
  std::string text;
  for (; count > 0; --count) expand(random, rule, text);
  return text;
}

std::vector<std::string> randomLines(std::mt19937& random, std::string_view rule,
                                     std::size_t maxLines) {
  const std::size_t count = random() % (maxLines + 1);
  const bool asReadFromFile = random() % 2 == 0;
  std::vector<std::string> lines;
  while (lines.size() < count) {
    const std::string text = toAnsi(fromUtf8(randomText(random, rule, 1)));
    for (const std::string_view line : Split(text, '\n')) lines.emplace_back(line);
    if (text.empty()) lines.emplace_back();
  }
  lines.resize(count);
  for (std::string& line : lines)
    if (asReadFromFile) line = std::string(RTrim(line)) + ' ';
  return lines;
}

std::vector<std::string> piecesOf(std::string_view rule) {
  std::vector<std::string> pieces;
  for (const std::string_view text : alternatives(rule)) {
    const auto inner = text.starts_with('{') && text.ends_with('}')
                           ? piecesOf(text.substr(1, text.size() - 2))
                           : std::vector<std::string>{};
    pieces.insert(pieces.end(), inner.begin(), inner.end());
    if (inner.empty()) pieces.emplace_back(text);
  }
  return pieces;
}

void forEachShortText(int maxPieces, std::string_view rule,
                      const std::function<void(const std::string&)>& callback) {
  const std::vector<std::string> alphabet = piecesOf(rule);
  std::vector<std::string> texts = {""};
  callback("");
  for (int length = 1; length <= maxPieces; ++length) {
    std::vector<std::string> longer;
    for (const std::string& text : texts)
      for (const std::string& piece : alphabet) longer.push_back(text + piece);
    for (const std::string& text : longer) callback(text);
    texts = std::move(longer);
  }
}

}  // namespace tintline::test
