// The passes over the lines of a source. See reformatting.h.
// Tested by tests/golden/run.py and tests/cli/run.py.
#include "convert/reformatting.h"

#include "reformat/indentation.h"
#include "reformat/wrapping.h"

namespace tintline {

namespace {

std::optional<LineList> pass(const LineList& lines, const Reformatting& reformatting,
                             LineText kind) {
  int narrower = reformatting.unit - 1;  // a press changes it by one
  int wider = reformatting.unit + 1;
  switch (reformatting.pass) {
    case Reformatting::Pass::Formatieren:
      return Formatieren(lines, narrower, kind);
    case Reformatting::Pass::Formatieren2:
      return Formatieren2(lines, wider, kind);
    case Reformatting::Pass::Umbruch:
      break;
  }
  return wrapLines(lines, reformatting.width, reformatting.unit, kind);
}

}  // namespace

std::optional<LineList> reformatted(const LineList& List1, const Reformatting& reformatting) {
  return pass(List1, reformatting, LineText::Ansi);
}

std::u8string reformatted(std::u8string_view text, const Reformatting& reformatting) {
  return textOf(*pass(linesOf(text), reformatting, LineText::Utf8));
}

}  // namespace tintline
