// Fuzzes base/ini.h and the keyword lists that are read from such a file.
//
// The input's first lines are the section, the key and the value that is written, what
// follows is the file.
#include <cassert>
#include <cstdint>
#include <set>

#include "base/ini.h"
#include "base/text.h"
#include "engine/keyword_table.h"

using namespace tintline;

namespace {

std::string_view takeLine(std::string_view& text) {
  const std::string_view line = text.substr(0, text.find_first_of("\r\n"));
  text.remove_prefix(std::min(line.size() + 1, text.size()));
  return line;
}

// Names that a file can hold: others (blanks around them, a "=" in a key) cannot be found again.
std::string_view usableName(std::string_view name, std::string_view forbidden) {
  return Trim(name.substr(0, name.find_first_of(forbidden)));
}

// Every text of the file that may be the name of a section or a key.
struct Names {
  std::set<std::string_view> sections, keys;
};

Names namesIn(std::string_view file) {
  Names names;
  while (!file.empty()) {
    const std::string_view line = LTrim(takeLine(file));
    if (line.starts_with('['))
      names.sections.insert(Trim(line.substr(1, line.find(']') - 1)));
    else
      names.keys.insert(RTrim(line.substr(0, line.find('='))));
  }
  return names;
}

void checkWriting(std::string_view file, std::string_view section, std::string_view key,
                  std::string_view value) {
  const std::string after = ini::withValue(file, section, key, value);
  assert(ini::value(after, section, key) == value);
  assert(ini::withValue(after, section, key, value) == after);
  const auto entries = [section](std::string_view text) {
    return ini::sectionText(text, section, text.size() + 1);
  };
  if (const auto old = ini::value(file, section, key))
    assert(ini::withValue(after, section, key, *old) == file);  // nothing else was touched
  else
    assert(entries(after) == entries(file).append(key).append("=").append(value) + '\0');
  const Names names = namesIn(file);
  for (const std::string_view otherSection : names.sections)
    for (const std::string_view otherKey : names.keys)
      if (!equalsIgnoreCase(section, otherSection) || !equalsIgnoreCase(key, otherKey))
        assert(ini::value(after, otherSection, otherKey) ==
               ini::value(file, otherSection, otherKey));
}

void checkSection(std::string_view file, std::string_view section, std::size_t limit) {
  const std::string whole = ini::sectionText(file, section, file.size() + 1);
  const std::string cut = ini::sectionText(file, section, limit);
  assert(cut.size() <= limit + 1 && (cut.empty() || cut.back() == '\0'));
  assert(whole.starts_with(std::string_view(cut).substr(0, limit)));
  assert(cut.size() >= std::min(limit, whole.size()));
}

// A word is in a list when NUL + word + NUL occurs in its text.
void checkKeywords(std::string_view file) {
  const KeywordLoad load = SchluesselworteLaden(file);
  assert((load.outcome == KeywordOutcome::Keywords1Missing) == load.table.Keywords1().empty());
  assert((load.outcome == KeywordOutcome::Loaded) == !load.table.Keywords2().empty());
  while (!file.empty()) {
    const std::string_view word = takeLine(file);
    if (word.empty() || !fkt_NurBuchstaben(word)) continue;
    const std::string entry = '\0' + std::string(word) + '\0';
    const WordClass expected =
        load.table.Keywords1().find(entry) != std::string::npos   ? WordClass::Code
        : load.table.Keywords2().find(entry) != std::string::npos ? WordClass::Parms
                                                                  : WordClass::None;
    assert(load.table.lookup(word) == expected);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view file(reinterpret_cast<const char*>(data), size);
  checkKeywords(file);
  const std::string_view section = usableName(takeLine(file), "]");
  const std::string_view key = usableName(takeLine(file), "=");
  const std::string_view value = takeLine(file);
  checkSection(file, section, value.size());
  if (!key.starts_with(';') && !key.starts_with('[')) checkWriting(file, section, key, value);
  return 0;
}
