// The passes over the lines of a source. See reformatting.h.
// Tested by tests/golden/run.py and tests/cli/run.py.
#include "convert/reformatting.h"

#include "reformat/indentation.h"
#include "reformat/wrapping.h"

namespace tintline {

std::optional<LineList> reformatted(const LineList& List1, const Reformatting& reformatting) {
  int narrower = reformatting.unit - 1;  // a press changes it by one
  int wider = reformatting.unit + 1;
  switch (reformatting.pass) {
    case Reformatting::Pass::Formatieren:
      return Formatieren(List1, narrower);
    case Reformatting::Pass::Formatieren2:
      return Formatieren2(List1, wider);
    case Reformatting::Pass::Umbruch:
      break;
  }
  return wrapLines(List1, reformatting.width, reformatting.unit);
}

}  // namespace tintline
