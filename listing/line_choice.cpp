// See line_choice.h. Tested by tests/golden/exact.
#include "listing/line_choice.h"

#include <algorithm>
#include <iterator>

namespace tintline::listing {

LineChoice::LineChoice(const vb::Module& module, const Options& options)
    : ranges_(options.lines), headerEnd_(options.header == Header::Drop ? module.header.end : 0) {
  std::ranges::sort(ranges_, {}, &LineRange::first);
  std::uint32_t last = 0;  // of the ranges so far, so that the last that begins in time decides
  for (LineRange& range : ranges_) last = range.last = std::max(range.last, last);
}

bool LineChoice::isChosen(std::uint32_t line) const {
  const auto behind = std::ranges::upper_bound(ranges_, line, {}, &LineRange::first);
  return behind != ranges_.begin() && line <= std::prev(behind)->last;
}

std::string lineNumber(const vb::Module& module, std::uint32_t line) {
  const std::string number = std::to_string(line);
  const std::size_t width = std::to_string(module.lines).size();
  return std::string(width - std::min(width, number.size()), ' ') + number + "  ";
}

std::vector<std::uint32_t> linesOfNames(const vb::Module& module) {
  std::vector<std::uint32_t> lines;
  lines.reserve(module.declarations.size());
  std::uint32_t token = 0, line = module.firstLine;
  for (const vb::Declaration& declaration : module.declarations) {
    for (; token < declaration.name; ++token) line += lineEndsIn(module, token);
    lines.push_back(line);
  }
  return lines;
}

}  // namespace tintline::listing
