// Runs the cases of tests/golden/language.
#include <gtest/gtest.h>

#include "tests/unit/vb/language_cases.h"
#include "vb/tokenizer.h"

namespace tintline::vb {
namespace {

TEST(Language, tokensHaveTheirKinds) {
  const std::vector<LanguageCase> cases = languageCases("tests/golden/language");
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
