// See word_page.h. Tested by tests/unit/output/output_test.cpp.
#include "output/word_page.h"

#include <optional>
#include <string>
#include <string_view>

#include "base/codepage.h"
#include "base/text.h"
#include "engine/document_frame.h"

namespace tintline {
namespace {

// What one of the program's own tags becomes; nothing for any other text. `tag` stands
// between "<" and ">", its classes turned into styles.
std::optional<std::string> wordTag(std::string_view tag) {
  if (tag == "/span" || tag == "/a") return "</span>";
  if (tag == "hr") return "<hr>";
  if (!tag.starts_with("span ") && !tag.starts_with("a ")) return {};
  constexpr std::string_view kOpener = "style=\"";
  const std::size_t start = tag.find(kOpener);
  if (start == std::string_view::npos) return "<span>";
  const std::string_view style = tag.substr(start + kOpener.size());
  const std::string_view value = style.substr(0, style.find('"'));
  // The letters of our own styles: with them, nothing can be loaded.
  constexpr std::string_view kLetters =
      " #:;-0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
  if (value.find_first_not_of(kLetters) != std::string_view::npos) return "<span>";
  // Without a size, "font" is no valid declaration to a word processor.
  return "<span style=\"" +
         Replace(value, "font: italic bold;", "font-style: italic; font-weight: bold;") + "\">";
}

// Text of the page as ASCII. "&lt;" and "&gt;" are what the conversion wrote; any other
// "&" is one of the code.
void appendText(std::string& page, std::string_view text) {
  const std::wstring wide = fromAnsi(text);
  for (std::size_t i = 0; i < wide.size(); ++i) {
    const wchar_t c = wide[i];
    const std::wstring_view reference = std::wstring_view(wide).substr(i, 4);
    if (c == L'>')
      page += "&gt;";
    else if (c == L'&' && reference != L"&lt;" && reference != L"&gt;")
      page += "&amp;";
    else if ((c >= L' ' && c <= L'~') || c == L'\t')
      page += static_cast<char>(c);
    else
      page += "&#" + std::to_string(static_cast<unsigned long>(c)) + ";";
  }
}

std::string wordLine(std::string_view line) {
  std::string page;
  while (!line.empty()) {
    const std::size_t open = line.find('<');
    appendText(page, line.substr(0, open));
    if (open == std::string_view::npos) break;
    line.remove_prefix(open);
    const std::size_t close = line.find('>');
    const auto tag = close == std::string_view::npos ? std::optional<std::string>()
                                                     : wordTag(line.substr(1, close - 1));
    page += tag ? *tag : "&lt;";
    line.remove_prefix(tag ? close + 1 : 1);
  }
  return page;
}

}  // namespace

void writeWordPage(std::ostream& page, const ColorScheme& colors, const SelectableLines& List2) {
  const DocumentFrame frame(colors, StyleMode::Inline);
  bool all = true;
  for (std::size_t i = 0; i < List2.count; ++i) all = all && !List2.selected(i);
  frame.HTMLKopf(page);
  page << "<pre>\r\n";
  for (std::size_t i = 0; i < List2.count; ++i)
    if (all || List2.selected(i)) page << wordLine(frame.fkt_ReplaceStyle(List2.line(i))) << "\r\n";
  page << "</pre>\r\n";
  frame.HTMLFuss(page);
}

void writeWordPage(std::ostream& page, std::string_view copy) {
  page << "<html>\r\n<head>\r\n<meta http-equiv=\"Content-Type\" content=\"text/html; "
          "charset=utf-8\">\r\n</head>\r\n<body>\r\n"
       << copy << "\r\n</body>\r\n</html>\r\n";
}

}  // namespace tintline
