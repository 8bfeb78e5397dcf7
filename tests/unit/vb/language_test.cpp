// Runs the cases of tests/golden/language.
#include <gtest/gtest.h>

#include "tests/unit/vb/language_cases.h"
#include "vb/module.h"

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
      expectLines(withMarks(text, readModule(text, u8"M", ModuleKind::Standard, words).tokens, all),
                  section.text, one);
    }
  }
}

}  // namespace
}  // namespace tintline::vb
