// Runs the cases of tests/golden/language.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/unit/vb/language_cases.h"
#include "vb/tokenizer.h"

namespace tintline::vb {
namespace {

// Tells which lines are not as they should be.
void expectLines(std::u8string_view is, std::u8string_view should, const LanguageCase& where) {
  const auto takeLine = [](std::u8string_view& text) {
    const std::u8string_view line = text.substr(0, text.find(u8'\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    return std::string(line.begin(), line.end());
  };
  while (!is.empty() || !should.empty()) {
    const std::string line = takeLine(is), expected = takeLine(should);
    if (line != expected)
      ADD_FAILURE() << where.file << ", " << std::string(where.title.begin(), where.title.end())
                    << "\n  is     " << line << "\n  should " << expected;
  }
}

TEST(Language, tokensHaveTheirKinds) {
  const std::vector<LanguageCase> cases = languageCases();
  ASSERT_GT(cases.size(), 20U);
  for (const LanguageCase& one : cases) {
    const WordLists words = wordLists(one);
    const bool all = one.title.ends_with(u8"(all)");
    for (const LanguageCase::Section& section : one.sections) {
      if (!section.name.starts_with(u8"module ")) continue;
      const std::u8string text = withoutMarks(section.text);
      expectLines(withMarks(text, tokenize(text, words), all), section.text, one);
    }
  }
}

}  // namespace
}  // namespace tintline::vb
