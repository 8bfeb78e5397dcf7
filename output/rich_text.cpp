// See rich_text.h. Tested by tests/unit/output/rendered_page_test.cpp.
#include "output/rich_text.h"

#include <algorithm>
#include <map>

namespace tintline {
namespace {

constexpr std::string_view kHead =
    R"({\rtf1\ansi\deff0{\fonttbl{\f0\fmodern\fprq1\fcharset0 Courier New;}})";

// The format of all paragraphs and what text has without looks of its own.
std::string basicFormat() {
  std::string words = R"(\pard\li)" + std::to_string(kLeftMargin);
  for (int number = 1; number <= kTabStops; ++number)
    words += "\\tx" + std::to_string(tabStop(number));
  return words + R"(\plain\uc1\f0\fs)" + std::to_string(kFontHeight / 10) + " ";
}

class ColorTable {
 public:
  // The number of a colour in the table; 0 is the window's own.
  std::size_t number(Color color) {
    return numbers_.try_emplace(color, numbers_.size() + 1).first->second;
  }

  std::string text() const {
    std::map<std::size_t, Color> byNumber;
    for (const auto& [color, number] : numbers_) byNumber[number] = color;
    std::string table = "{\\colortbl;";
    for (const auto& [number, color] : byNumber)
      table += "\\red" + std::to_string(color >> 16 & 0xFF) + "\\green" +
               std::to_string(color >> 8 & 0xFF) + "\\blue" + std::to_string(color & 0xFF) + ";";
    return table + "}\r\n";
  }

 private:
  std::map<Color, std::size_t> numbers_;
};

void appendCharacter(std::string& rtf, wchar_t character) {
  switch (character) {
    case L'\n':
      rtf += "\\par\r\n";
      return;
    case L'\t':
      rtf += "\\tab ";
      return;
    case L'\\':
    case L'{':
    case L'}':
      rtf += '\\';
      break;
    default:
      break;
  }
  if (character >= L' ' && character < 0x7F) {
    rtf += static_cast<char>(character);
    return;
  }
  // Numbers are signed and of 16 bits; a reader that does not know them shows the "?".
  const int unit = static_cast<int>(character) & 0xFFFF;
  rtf += "\\u" + std::to_string(unit > 0x7FFF ? unit - 0x10000 : unit) + "?";
}

std::string controlWords(const TextLooks& looks, const RichTextColors& wanted, ColorTable& colors) {
  std::string words;
  const std::optional<Color> color = looks.color ? looks.color : wanted.text;
  if (color && wanted.ofPage) words += "\\cf" + std::to_string(colors.number(*color));
  if (looks.background && wanted.ofPage)
    words += "\\highlight" + std::to_string(colors.number(*looks.background));
  if (looks.bold) words += "\\b";
  if (looks.italic) words += "\\i";
  if (looks.underlined) words += "\\ul";
  return words;
}

}  // namespace

std::string richText(const RenderedPage& page, std::size_t from, std::size_t to,
                     const RichTextColors& wanted) {
  ColorTable colors;
  std::string body;
  to = std::min(to, page.text.size());
  if (from < to) {
    const TextRun* const behind = page.runs.data() + page.runs.size();
    for (const TextRun* run = page.runAt(from); run != behind && run->start < to; ++run) {
      const std::string words = controlWords(run->looks, wanted, colors);
      if (!words.empty()) body.append("{").append(words).append(" ");
      const std::size_t end = std::min(to, run->start + run->length);
      for (std::size_t i = std::max(from, run->start); i < end; ++i)
        appendCharacter(body, page.text[i]);
      if (!words.empty()) body += '}';
    }
  }
  return std::string(kHead) + colors.text() + basicFormat() + body + "}";
}

std::size_t pieceEnd(const RenderedPage& page, std::size_t from, std::size_t characters) {
  const std::wstring& text = page.text;
  if (text.size() - from <= characters) return text.size();
  const std::size_t before = text.rfind(L'\n', from + characters);
  if (before != std::wstring::npos && before > from) return before;
  return std::min(text.find(L'\n', from + characters), text.size());
}

}  // namespace tintline
