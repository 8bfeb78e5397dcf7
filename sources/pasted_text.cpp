// See pasted_text.h. Tested by tests/unit/sources/sources_test.cpp.
#include "sources/pasted_text.h"

#include <string>

#include "base/text.h"

namespace tintline {

ModuleSource Einfügen(std::string_view text) {
  const char lineEnd = text.find('\r') == std::string_view::npos ? '\n' : '\r';
  ModuleSource source;
  std::string line;
  for (std::string_view piece : Split(text, lineEnd)) {
    source.tooManyLines = source.List1.size() == kMaxLines;
    if (source.tooManyLines) break;
    if (piece.starts_with('\n')) piece.remove_prefix(1);  // of a CR LF: the usual case
    line = piece;
    for (const char dropped : {'\n', '\t'})  // tabs are not expanded: on purpose
      if (line.find(dropped) != std::string::npos) std::erase(line, dropped);
    collectProcedureName(line, source.ProzNamen);
    source.List1.append(line, " ");
  }
  return source;
}

}  // namespace tintline
