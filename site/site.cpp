// See site.h. Tested by tests/unit/site/site_test.cpp.
#include "site/site.h"

#include <algorithm>
#include <numeric>
#include <tuple>
#include <utility>

#include "vb/fold.h"

namespace tintline::site {

std::uint32_t Project::add(const vb::Module& module, ModuleFacts facts, std::u8string_view page,
                           Names& names) {
  facts.page = page;
  number(facts, names);
  bound_.add(module);
  modules_.push_back(std::move(facts));
  return targets_.add(module, page);
}

void Project::close() {
  bound_.close();
  uses_.resize(modules_.size());
}

void Project::addUses(const vb::Module& module, std::uint32_t index, Names& names) {
  ModuleFacts& facts = modules_[index];
  uses_[index] = usesIn(module, index, bound_.resolve(module, index), facts, names);
}

void Project::finish() {
  std::vector<std::uint32_t> counts;
  for (const ModuleFacts& module : modules_)
    counts.push_back(static_cast<std::uint32_t>(module.names.size()));
  callers_.emplace(uses_, counts);
  for (const ModuleFacts& module : modules_)
    for (const std::uint32_t interface : module.interfaces) modules_[interface].isInterface = true;
  for (std::uint32_t i = 0; i < modules_.size(); ++i)
    for (const Use& use : uses_[i]) {
      if (use.declaration == vb::kNone ||
          modules_[use.module].names[use.declaration].kind != vb::DeclarationKind::Declare)
        continue;
      ++modules_[i].declares;
      auto& procedures = modules_[i].procedures;
      const auto found =
          std::ranges::lower_bound(procedures, use.procedure, {}, &Procedure::declaration);
      if (found != procedures.end() && found->declaration == use.procedure) ++found->declares;
    }
}

std::vector<std::uint32_t> Project::modulesInOrder() const {
  std::vector<std::u8string> keys;
  for (const ModuleFacts& module : modules_) keys.push_back(vb::folded(module.name));
  std::vector<std::uint32_t> order(modules_.size());
  std::iota(order.begin(), order.end(), 0U);
  std::ranges::stable_sort(order, {}, [&](std::uint32_t i) {
    return std::tuple(modules_[i].kind, std::u8string_view(keys[i]));
  });
  return order;
}

}  // namespace tintline::site
