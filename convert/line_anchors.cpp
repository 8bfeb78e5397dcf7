// See line_anchors.h. Tested by tests/unit/convert/exact_source_test.cpp.
#include "convert/line_anchors.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace tintline {
namespace {

// The number that the text is, as ids have it; 0 for none.
std::size_t numberOf(std::wstring_view digits) {
  constexpr std::size_t kMostDigits = 10;
  if (digits.size() > kMostDigits || digits.starts_with(L'0')) return 0;
  std::size_t number = 0;
  for (const wchar_t c : digits) {
    if (c < L'0' || c > L'9') return 0;
    number = 10 * number + static_cast<std::size_t>(c - L'0');
  }
  return number;
}

}  // namespace

void LineAnchors::add(std::wstring prefix, std::size_t lines) {
  modules_.push_back({std::move(prefix), this->lines(), lines});
}

std::size_t LineAnchors::lines() const {
  return modules_.empty() ? 0 : modules_.back().first + modules_.back().lines;
}

std::optional<std::wstring> LineAnchors::anchorOf(std::size_t line) const {
  if (line >= lines()) return {};
  const auto module = std::prev(
      std::ranges::upper_bound(modules_, line, {}, [](const Module& m) { return m.first; }));
  return module->prefix + std::to_wstring(line - module->first + 1);
}

std::optional<std::size_t> LineAnchors::lineOf(std::wstring_view anchor) const {
  for (const Module& module : modules_) {
    if (!anchor.starts_with(module.prefix)) continue;
    const std::size_t number = numberOf(anchor.substr(module.prefix.size()));
    if (number >= 1 && number <= module.lines) return module.first + number - 1;
  }
  return {};
}

}  // namespace tintline
