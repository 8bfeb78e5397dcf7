// See text_measure.h.
#include "win32/system/text_measure.h"

#include "win32/controls/fonts.h"

namespace tintline {

ListTextMeasure::ListTextMeasure()
    : characterWidth_(characterSize(listFont(kDesignDpi).get()).width) {}

int ListTextMeasure::width(std::string_view text) {
  return static_cast<int>(expandTabs(text).size()) * characterWidth_;
}

}  // namespace tintline
