// See text_measure.h.
#include "win32/system/text_measure.h"

#include "app/controls/line_layout.h"
#include "win32/controls/fonts.h"

namespace tintline {

ListTextMeasure::ListTextMeasure()
    : characterWidth_(characterSize(listFont(kDesignDpi).get()).width) {}

int ListTextMeasure::width(std::wstring_view text) {
  return static_cast<int>(layOutLine(text).columns.back()) * characterWidth_;
}

}  // namespace tintline
