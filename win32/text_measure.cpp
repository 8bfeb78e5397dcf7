// See text_measure.h.
#include "win32/text_measure.h"

#include "base/codepage.h"
#include "win32/fonts.h"

namespace tintline {

ListTextMeasure::ListTextMeasure()
    : font_(listFont(kDesignDpi)), characterWidth_(characterSize(font_.get()).width) {}

int ListTextMeasure::width(std::string_view text) {
  return static_cast<int>(textSize(font_.get(), fromAnsi(expandTabs(text))).cx);
}

}  // namespace tintline
