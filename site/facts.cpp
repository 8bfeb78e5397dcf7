// See facts.h. Tested by tests/unit/site/site_test.cpp.
#include "site/facts.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "listing/module_targets.h"
#include "listing/sections.h"
#include "site/entry_points.h"

namespace tintline::site {
namespace {

// A word that is not always read as a name.
bool isReserved(std::u8string_view name, const vb::WordLists& words) {
  switch (words.find(vb::NameKey(name)).wordClass) {
    case vb::WordClass::None:
    case vb::WordClass::Runtime:
    case vb::WordClass::Listed:
      return false;
    default:
      return true;
  }
}

bool saysExposed(const vb::Module& module) {
  for (std::uint32_t i = 0; i < module.header.end; ++i)
    if (module.tokens[i].kind == vb::TokenKind::Directive &&
        vb::equalFolded(module.textOf(i), u8"VB_Exposed"))
      for (++i; module.tokens[i].kind != vb::TokenKind::LineEnd &&
                module.tokens[i].kind != vb::TokenKind::End;
           ++i)
        if (vb::equalFolded(module.textOf(i), u8"True")) return true;
  return false;
}

void addNames(ModuleFacts& facts, const vb::Module& module, const vb::WordLists& words) {
  const std::vector<bool> entries = entryPointsOf(module);
  facts.names.resize(module.declarations.size());
  for (std::uint32_t i = 0; i < module.declarations.size(); ++i) {
    const vb::Declaration& declaration = module.declarations[i];
    Name& name = facts.names[i];
    const auto text = vb::plainName(module.textOf(declaration.name))
                          .substr(0, std::numeric_limits<std::uint16_t>::max());
    name = {.text = static_cast<std::uint32_t>(facts.texts.size()),
            .scope = declaration.scope,
            .line = declaration.line,
            .size = static_cast<std::uint16_t>(text.size()),
            .kind = declaration.kind,
            .accessor = declaration.accessor,
            .visibility = declaration.visibility,
            .entryPoint = entries[i],
            .reserved = isReserved(text, words)};
    facts.texts += text;
  }
}

void addProcedures(ModuleFacts& facts, const vb::Module& module) {
  std::vector<std::uint32_t> procedures;
  for (std::uint32_t i = 0; i < module.declarations.size(); ++i)
    if (vb::isProcedure(module.declarations[i].kind)) procedures.push_back(i);
  ModuleMetrics metrics = measure(module, procedures);
  facts.counts = metrics.counts;
  const std::vector<listing::Section> sections = listing::sectionsOf(module);
  facts.description = descriptionOf(module, sections);
  std::size_t section = 0;
  for (std::size_t i = 0; i < procedures.size(); ++i) {
    const vb::Declaration& declaration = module.declarations[procedures[i]];
    facts.procedures.push_back({.declaration = procedures[i],
                                .bodyEnd = std::max(declaration.head.end, declaration.body.end),
                                .metrics = metrics.procedures[i],
                                .documentation = {}});
    while (section < sections.size() && sections[section].declaration < procedures[i]) ++section;
    if (section < sections.size() && sections[section].declaration == procedures[i])
      facts.procedures.back().documentation = documentationOf(module, sections[section]);
  }
}

}  // namespace

const Procedure* ModuleFacts::procedure(std::uint32_t declaration) const {
  const auto found = std::ranges::lower_bound(procedures, declaration, {}, &Procedure::declaration);
  return found != procedures.end() && found->declaration == declaration ? &*found : nullptr;
}

ModuleFacts factsOf(const vb::Module& module, const vb::WordLists& words) {
  ModuleFacts facts;
  facts.name = module.name;
  facts.kind = module.kind;
  facts.isShown = saysExposed(module);
  addNames(facts, module, words);
  addProcedures(facts, module);
  return facts;
}

void number(ModuleFacts& facts, Names& names) {
  facts.number = names.add(facts.name);
  for (std::uint32_t i = 0; i < facts.names.size(); ++i)
    if (facts.names[i].kind != vb::DeclarationKind::Parameter)
      facts.names[i].number = names.add(facts.nameOf(i));
}

}  // namespace tintline::site
