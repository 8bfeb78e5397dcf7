// See selection.h. Tested by tests/unit/engine/engine_property_test.cpp.
#include "reformat/selection.h"

#include <stdexcept>
#include <utility>

#include "engine/line_emission.h"

namespace tintline {

SelectionConversion AuswahlKonvertieren(const LineList& List1, const std::vector<bool>& selected,
                                        const ConversionOptions& options,
                                        const DocumentFrame& frame, Highlighter& highlighter,
                                        ConversionObserver& observer) {
  if (List1.size() > kMaxLines) throw std::length_error("more lines than the counters hold");
  LineCollector collector(List1, frame, observer);
  std::size_t lineCounter = 0;  // completed logical lines
  bool continued = false;       // the selected line before ended in a continuation
  std::string numbered;
  for (std::size_t i = 0; i < List1.size(); ++i) {
    if (!selected[i]) continue;
    const std::string_view html = highlighter.fkt_ZeileKonvertieren(List1[i]);
    if (options.lineNumbers)
      numbered.assign(continued ? kNumberColumn : numberPrefix(lineCounter + 1)).append(html);
    collector.emit(options.lineNumbers ? numbered : html, "<br>");
    continued = continuesInHtml(html);
    if (!continuesInSource(List1[i])) ++lineCounter;
    observer.processed(i, List1.size());
  }
  SelectionConversion result{std::move(collector).take(), {}};
  for (std::size_t i = 0; i < result.List2.size(); ++i)
    result.table.append("<tr><td>").append(result.List2[i]).append("<br></td></tr>");
  return result;
}

}  // namespace tintline
