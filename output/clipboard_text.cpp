// See clipboard_text.h. Tested by tests/unit/output/output_test.cpp.
#include "output/clipboard_text.h"

namespace tintline {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

enum class Which { Selected, All };

void appendLines(std::string& text, const SelectableLines& lines, Which which) {
  for (std::size_t i = 0; i < lines.count; ++i)
    if (which == Which::All || lines.selected(i)) text.append(kLineEnd).append(lines.line(i));
}

// Adds the selected lines, and all lines if the text is still empty then.
void appendChosenLines(std::string& text, const SelectableLines& lines) {
  appendLines(text, lines, Which::Selected);
  if (text.empty()) appendLines(text, lines, Which::All);
}

}  // namespace

std::string HTMLKopieren(std::string_view PreCode, const SelectableLines& List2,
                         std::string_view PostCode) {
  std::string text(PreCode);
  appendChosenLines(text, List2);
  if (!PostCode.empty()) text.append(kLineEnd).append(PostCode);
  return text;
}

std::string Kopieren(const SelectableLines& List1) {
  std::string text;
  appendChosenLines(text, List1);
  return text;
}

}  // namespace tintline
