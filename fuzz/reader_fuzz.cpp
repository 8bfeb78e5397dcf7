// Fuzzes reading a module file and splitting pasted text.
#include <algorithm>
#include <cassert>
#include <cstdint>

#include "base/text.h"
#include "sources/module_file_reader.h"
#include "sources/pasted_text.h"

using namespace tintline;

namespace {

// The lines without the blank behind each, one after the other, each closed by CR; and checks
// that the names are those of the lines that are heads.
std::string joined(const ModuleSource& source) {
  assert(source.tooManyLines ? source.List1.size() == kMaxLines : source.List1.size() <= kMaxLines);
  std::string text;
  ProcedureNames names;
  for (std::size_t i = 0; i < source.List1.size(); ++i) {
    std::string_view line = source.List1[i];
    assert(line.ends_with(' '));
    line.remove_suffix(1);
    collectProcedureName(line, names);
    text.append(line) += '\r';
  }
  assert(source.ProzNamen == names);
  for (const std::string& name : names)
    assert(name.starts_with(' ') && name.find_first_of(" (", 1) == std::string::npos);
  return text;
}

void checkReading(std::string_view file) {
  std::size_t told = 0;
  const ModuleSource source =
      ModulDateiLesen(file, [&told](std::size_t n) { assert(n == ++told); });
  assert(told == source.List1.size());
  std::string text = decodeModuleText(file);
  if (text.find('\r') == std::string::npos) std::replace(text.begin(), text.end(), '\n', '\r');
  text = Replace(text, "\r\n", "\r");
  if (!text.empty() && !text.ends_with('\r')) text += '\r';
  const std::string lines = joined(source);
  assert(source.tooManyLines ? text.starts_with(lines) : text == lines);
}

void checkPasting(std::string_view pasted) {
  std::string text(pasted);
  if (text.find('\r') == std::string::npos) std::replace(text.begin(), text.end(), '\n', '\r');
  if (!text.empty()) text += '\r';
  std::erase(text, '\n');
  std::erase(text, '\t');
  const ModuleSource source = Einfügen(pasted);
  const std::string lines = joined(source);
  assert(source.tooManyLines ? text.starts_with(lines) : text == lines);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  checkReading(input);
  checkPasting(input);
  return 0;
}
