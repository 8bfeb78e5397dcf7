// See line_emission.h. Tested by tests/unit/engine/engine_property_test.cpp.
#include "engine/line_emission.h"

#include <algorithm>
#include <utility>

#include "base/text.h"

namespace tintline {

std::string_view numberFill(std::size_t number) {
  const std::size_t digits = std::to_string(number).size();
  return kNumberColumn.substr(std::min(digits, kNumberColumn.size()));
}

std::string numberPrefix(std::size_t number) {
  std::string prefix = "<span class='Marks'>" + std::to_string(number) + ":";
  return prefix.append(numberFill(number)).append("</span>");
}

bool continuesInHtml(std::string_view html) {
  const std::string_view trimmed = RTrim(html);
  return trimmed.ends_with('_') || trimmed.ends_with("_ </span>");
}

bool continuesInSource(std::string_view line) { return RTrim(line).ends_with('_'); }

LineCollector::LineCollector(const LineList& source, const DocumentFrame& frame,
                             ConversionObserver& observer)
    : frame_(frame), observer_(observer) {
  constexpr std::size_t kUsualGrowth = 4;  // what is not filled costs next to nothing
  lines_.reserve(source.size());
  builder_.reserveMemory(kUsualGrowth * source.bytes());
}

void LineCollector::emit(std::string_view html, std::string_view lineEnd, bool alwaysWrapper) {
  if (frame_.mode() == StyleMode::Inline) html = styled_ = frame_.fkt_ReplaceStyle(html);
  const Route route = alwaysWrapper || html.size() > kDirectLength ? Route::Wrapper : Route::Direct;
  lines_.add(builder_.Length(), html.size(), route);
  append(html);
  append(lineEnd);
  observer_.emitted(html, route);
}

// Append takes no text longer than one chunk beyond its free space.
void LineCollector::appendInPieces(std::string_view text) {
  while (!text.empty()) {
    const std::size_t piece = std::min(text.size(), builder_.appendLimit());
    builder_.Append(text.substr(0, piece));
    text.remove_prefix(piece);
  }
}

HtmlLines LineCollector::take() && {
  lines_.setText(std::move(builder_).ToString());
  return std::move(lines_);
}

}  // namespace tintline
