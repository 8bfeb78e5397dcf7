// See pasted_text.h. Tested by tests/unit/sources/pasted_text_test.cpp.
#include "sources/pasted_text.h"

#include <string>

#include "base/text.h"

namespace tintline {

ModuleSource Einfügen(std::string_view text) {
  const char lineEnd = text.find('\r') == std::string_view::npos ? '\n' : '\r';
  ModuleSource source;
  std::string line;
  for (const std::string_view piece : Split(text, lineEnd)) {
    source.tooManyLines = source.List1.size() == kMaxLines;
    if (source.tooManyLines) break;
    line = piece;
    std::erase(line, '\n');
    std::erase(line, '\t');  // tabs are dropped, not expanded: on purpose
    collectProcedureName(line, source.ProzNamen);
    source.List1.append(line, " ");
  }
  return source;
}

}  // namespace tintline
