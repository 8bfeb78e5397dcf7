// See language.h. Tested by tests/unit/cli/cli_test.cpp and tests/cli/run.py.
#include "cli/language.h"

#include <cstdlib>
#include <string_view>

#include "base/text.h"
#include "cli/platform.h"

namespace tintline {
namespace {

// Of a name like "de_AT.UTF-8@euro"; "C" and "POSIX" are English, too.
Language languageOf(std::string_view locale) {
  const std::string_view tag = locale.substr(0, locale.find_first_of("_-.@"));
  return equalsIgnoreCase(tag, "de") ? Language::German : Language::English;
}

}  // namespace

Language userLanguage() {
  for (const char* const name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* const locale = std::getenv(name);
    if (locale != nullptr && *locale != '\0') return languageOf(locale);
  }
  return interfaceLanguage();
}

}  // namespace tintline
