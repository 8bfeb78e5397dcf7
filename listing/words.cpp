// See words.h. Tested by tests/golden/exact.
#include "listing/words.h"

#include <algorithm>
#include <string>

namespace tintline::listing {

std::u8string counted(std::size_t count, std::u8string_view one, std::u8string_view many) {
  const std::string number = std::to_string(count);
  return std::u8string(number.begin(), number.end()) + u8" " +
         std::u8string(count == 1 ? one : many);
}

std::u8string summaryOf(const vb::Module& module, const Words& words) {
  const auto procedures = std::ranges::count_if(
      module.declarations, [](const vb::Declaration& each) { return isProcedure(each.kind); });
  return std::u8string(words.kinds[static_cast<std::size_t>(module.kind)]) + u8" · " +
         counted(module.lines, words.line, words.lines) + u8" · " +
         counted(static_cast<std::size_t>(procedures), words.procedure, words.procedures);
}

}  // namespace tintline::listing
