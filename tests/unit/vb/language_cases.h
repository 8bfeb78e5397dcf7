// The cases of tests/golden/language, which has the format in its README.md.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "vb/token.h"

namespace tintline::vb {

struct LanguageCase {
  struct Section {
    std::u8string name;  // what stands behind "---"; the first is "module Module"
    std::u8string text;  // its lines, each with a line feed
  };
  std::string file;
  std::u8string title;
  std::vector<Section> sections;

  // The text of the first section of that name, or nothing.
  const std::u8string* section(std::u8string_view name) const;
};

// All cases of a folder, in the order of files and lines.
std::vector<LanguageCase> languageCases(const std::string& folder);

// Tells which lines of the case are not as they should be.
void expectLines(std::u8string_view is, std::u8string_view should, const LanguageCase& where);

// The text without its marks.
std::u8string withoutMarks(std::u8string_view marked);

// The text with the kinds of its tokens as marks; `all` marks names and operators, too.
std::u8string withMarks(std::u8string_view text, const Tokens& tokens, bool all);

// The lists that a case names, or the built-in ones.
WordLists wordLists(const LanguageCase& languageCase);

}  // namespace tintline::vb
