// Reads back what output/rich_text.h writes.
#pragma once

#include <cstdlib>
#include <string>
#include <string_view>

namespace tintline::test {

// The text of a document: groups directly inside the outermost one that open with "\fonttbl" or
// "\colortbl" are left out. Fails on unbalanced braces by returning "unbalanced".
inline std::wstring plainText(std::string_view rtf) {
  std::wstring text;
  int depth = 0, hiddenFrom = 0;  // depth of the table we are in; 0 for none
  const auto add = [&](wchar_t c) {
    if (hiddenFrom == 0) text += c;
  };
  for (std::size_t i = 0; i < rtf.size(); ++i) {
    const char c = rtf[i];
    if (c == '{') {
      ++depth;
    } else if (c == '}') {
      if (depth-- == hiddenFrom) hiddenFrom = 0;
    } else if (c == '\\' && std::string_view("\\{}").find(rtf[i + 1]) != std::string_view::npos) {
      add(static_cast<wchar_t>(rtf[++i]));
    } else if (c == '\\') {
      const std::size_t end = rtf.find_first_not_of("abcdefghijklmnopqrstuvwxyz", i + 1);
      const std::string word(rtf.substr(i + 1, end - i - 1));
      const std::size_t behind = std::min(rtf.find_first_not_of("-0123456789", end), rtf.size());
      const std::string number(rtf.substr(end, behind - end));
      if (word == "par") add(L'\n');
      if (word == "tab") add(L'\t');
      if (word == "fonttbl" || word == "colortbl") hiddenFrom = depth;
      i = behind - 1;
      if (word == "u") {
        add(static_cast<wchar_t>(std::atoi(number.c_str()) & 0xFFFF));
        ++i;  // the "?" for readers that do not know the word
      } else if (behind < rtf.size() && rtf[behind] == ' ') {
        ++i;
      }
    } else if (c != '\r' && c != '\n') {
      add(static_cast<wchar_t>(c));
    }
  }
  return depth == 0 ? text : L"unbalanced";
}

}  // namespace tintline::test
