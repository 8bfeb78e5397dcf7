// See targets.h. Tested by tests/golden/exact.
#include "listing/targets.h"

#include <utility>
#include <vector>

#include "listing/module_targets.h"
#include "vb/name_table.h"

namespace tintline::listing {

struct Targets::State {
  const Options& options;
  Place place;
  std::vector<ModuleTargets> modules;
  std::u8string prefixes;  // one behind another; `known` tells where
  vb::NameTable known;

  // "Modul1." or, where that stands there already, "Modul1-2.": with no other point in it, so
  // that it cannot be taken for the beginning of a longer one.
  std::u8string newPrefix(std::u8string_view name) {
    std::u8string wanted;
    appendIdText(wanted, name);
    for (char8_t& c : wanted)
      if (c == '.') c = '_';
    std::u8string prefix = wanted;
    for (std::size_t repeated = 2; !isNew(prefix); ++repeated) {
      const std::string number = std::to_string(repeated);
      prefix = wanted + u8"-" + std::u8string(number.begin(), number.end());
    }
    return prefix + u8".";
  }

  bool isNew(std::u8string_view prefix) {
    const std::size_t begin = prefixes.size();
    const std::uint32_t count = known.size();
    prefixes += prefix;
    known.add(prefixes, vb::NameKey(prefix), begin);
    if (known.size() == count) prefixes.resize(begin);
    return known.size() > count;
  }
};

Targets::Targets(const Options& options, Place place)
    : state_(std::make_unique<State>(State{options, place, {}, {}, {}})) {}
Targets::~Targets() = default;
Targets::Targets(Targets&&) noexcept = default;
Targets& Targets::operator=(Targets&&) noexcept = default;

std::uint32_t Targets::add(const vb::Module& module, std::u8string_view page) {
  std::u8string prefix;
  if (state_->place == Place::OnePage) prefix = state_->newPrefix(module.name);
  state_->modules.emplace_back(module, state_->options, std::move(prefix), std::u8string(page));
  return static_cast<std::uint32_t>(state_->modules.size() - 1);
}

std::size_t Targets::size() const { return state_->modules.size(); }
const ModuleTargets& Targets::operator[](std::uint32_t module) const {
  return state_->modules[module];
}
Place Targets::place() const { return state_->place; }

std::u8string addressOf(std::u8string_view file) {
  constexpr std::u8string_view kPlain = u8"-._~/";
  constexpr std::u8string_view kHex = u8"0123456789ABCDEF";
  std::u8string address;
  for (const char8_t byte : file) {
    const bool letter = (byte | 0x20) >= 'a' && (byte | 0x20) <= 'z';
    if (letter || (byte >= '0' && byte <= '9') || kPlain.find(byte) != std::u8string_view::npos) {
      address += byte;
      continue;
    }
    address += u8'%';
    address += kHex[byte >> 4];
    address += kHex[byte & 15];
  }
  return address;
}

}  // namespace tintline::listing
