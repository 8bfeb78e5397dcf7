// See document_frame.h. Tested by tests/golden/run.py.
#include "engine/document_frame.h"

#include <utility>

#include "base/text.h"

namespace tintline {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

void writeLine(std::ostream& datei, std::string_view text) { datei << text << kLineEnd; }
void addLine(std::string& page, std::string_view text) { page.append(text).append(kLineEnd); }

}  // namespace

DocumentFrame::DocumentFrame(ColorScheme colors, StyleMode mode, std::string charset)
    : colors_(std::move(colors)),
      mode_(mode),
      charset_(std::move(charset)),
      replacements_{{{"class='Code'", styleAttribute(kReservierteWorte, false)},
                     {"class='Parms'", styleAttribute(kParameter, false)},
                     {"class='Marks'", styleAttribute(kStrings, false)},
                     {"class='Rem'", styleAttribute(kKommentare, false)},
                     {"class='Sub'", styleAttribute(kProzeduren, true)},
                     {"class='EndSub'", styleAttribute(kProzeduren, true)}}} {}

void DocumentFrame::HTMLKopf(std::ostream& datei) const {
  std::string head;  // one write: a page may be small
  addLine(head, "<!DOCTYPE HTML PUBLIC '-//W3C//DTD HTML 4.0 Transitional//EN'>");
  addLine(head, "<html>");
  addLine(head, "<head>");
  if (!charset_.empty())
    addLine(head, "<meta http-equiv='Content-Type' content='text/html; charset=" + charset_ + "'>");
  if (mode_ == StyleMode::Class) addStyleSheet(head);
  addLine(head, "</head>");
  addLine(head, "<body><a name='Index'></a>");
  datei << head;
}

void DocumentFrame::addStyleSheet(std::string& head) const {
  struct Rule {
    std::string_view selector;
    std::size_t category;
    std::size_t transparencyFrom;
    bool boldItalic;
  };
  // Code is transparent exactly when Parms is: kept on purpose.
  constexpr Rule kRules[] = {{".Code {", kReservierteWorte, kParameter, false},
                             {".Parms {", kParameter, kParameter, false},
                             {".Marks {", kStrings, kStrings, false},
                             {".Rem {", kKommentare, kKommentare, false},
                             {".Sub {", kProzeduren, kProzeduren, true},
                             {".EndSub {", kProzeduren, kProzeduren, true}};
  addLine(head, "<style type='text/css'>");
  addLine(head, "<!--");
  for (const Rule& rule : kRules) {
    const auto& fields = colors_[rule.category];
    const bool transparent = modColor::isTransparent(colors_, rule.transparencyFrom);
    addLine(head, rule.selector);
    addLine(head, " color: " + fields[kTextColor] + ";");
    if (rule.boldItalic) addLine(head, " font: italic bold;");
    addLine(head, " background-color: " + (transparent ? "inherit" : fields[kBackColor]) + ";");
    addLine(head, "}");
  }
  addLine(head, "-->");
  addLine(head, "</style>");
}

void DocumentFrame::HTMLFuss(std::ostream& datei) const {
  writeLine(datei, "</body>");
  writeLine(datei, "</html>");
}

void DocumentFrame::Procuebersicht(std::ostream& datei, const ProcedureNames& ProzNamen) const {
  const std::string inlineStyle =
      "style=\" color:" + colors_[kReservierteWorte][kTextColor] + "; background: inherit;\"";
  const bool inlineMode = mode_ == StyleMode::Inline;
  writeLine(datei, "<div style='border: thin solid " + colors_[kProzeduren][kTextColor] + ";'>");
  writeLine(datei, "<span name='Index' " + (inlineMode ? inlineStyle : "class='Sub'") +
                       ">&Uuml;bersicht &uuml;ber die enthaltenen Prozeduren (Sub und "
                       "Function)</span><br>");
  std::string links;
  for (const std::string& entry : ProzNamen) {
    const std::string_view name = Trim(entry);
    links.append("&nbsp;&nbsp;<a HREF='#").append(name).append("'>").append(name);
    links.append("</a><br>").append(kLineEnd);
  }
  datei << links;
  // The blank in front of the closing tag stands in class mode only: kept on purpose.
  writeLine(datei, inlineMode ? "<span " + inlineStyle + ">Ende der &Uuml;bersicht</span><br>"
                              : "<span class='Sub'>Ende der &Uuml;bersicht </span><br>");
  writeLine(datei, "</div><hr>");
}

std::string DocumentFrame::fkt_ReplaceStyle(std::string_view line) const {
  std::string result(line);
  for (const auto& [classAttribute, styleAttribute] : replacements_)
    if (result.find(classAttribute) != std::string::npos)
      result = Replace(result, classAttribute, styleAttribute);
  return result;
}

std::string DocumentFrame::fkt_ReplaceTransparent(std::string_view line) const {
  return Replace(line, "background: " + colors_[kReservierteWorte][kBackColor] + ";",
                 "background: inherit;");
}

std::string DocumentFrame::styleAttribute(std::size_t category, bool boldItalic) const {
  const auto& fields = colors_[category];
  const bool transparent = modColor::isTransparent(colors_, category);
  return "style=\" color:" + fields[kTextColor] +
         "; background: " + (transparent ? "inherit" : fields[kBackColor]) + ";" +
         (boldItalic ? " font: italic bold;" : "") + "\"";
}

}  // namespace tintline
