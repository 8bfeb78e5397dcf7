// See unused.h. Tested by tests/unit/site/site_test.cpp.
#include "site/unused.h"

#include <algorithm>
#include <functional>
#include <tuple>

#include "listing/module_targets.h"

namespace tintline::site {
namespace {

using vb::DeclarationKind;

bool isListed(DeclarationKind kind) {
  switch (kind) {
    case DeclarationKind::Sub:
    case DeclarationKind::Function:
    case DeclarationKind::Property:
    case DeclarationKind::Declare:
    case DeclarationKind::Variable:
    case DeclarationKind::Constant:
    case DeclarationKind::Type:
    case DeclarationKind::Enum:
    case DeclarationKind::Local:
      return true;
    default:
      return false;
  }
}

// Declarations of a module that stand and fall together: the accessors of a property, those of
// different branches of "#If", a type with its fields. Of a local: equal ones of its procedure.
struct Group {
  std::uint32_t scope, number;
  std::uint32_t declaration;
  bool operator<(const Group& other) const {
    return std::tie(scope, number, declaration) <
           std::tie(other.scope, other.number, other.declaration);
  }
};

class Finder {
 public:
  Finder(const Project& project, const Names& names) : project_(project), names_(names) {}

  std::vector<UnusedName> run() {
    for (std::uint32_t i = 0; i < project_.modules().size(); ++i) {
      module_ = i;
      facts_ = &project_.modules()[i];
      inModule();
    }
    return std::move(unused_);
  }

 private:
  void inModule() {
    std::vector<Group> groups;
    for (std::uint32_t i = 0; i < facts_->names.size(); ++i)
      if (const Name& name = facts_->names[i]; isListed(name.kind))
        groups.push_back({name.scope, name.number, i});
    std::ranges::sort(groups, std::less<>());
    const std::size_t before = unused_.size();
    for (auto begin = groups.begin(); begin != groups.end();) {
      const auto end = std::find_if(begin, groups.end(), [&](const Group& each) {
        return each.scope != begin->scope || each.number != begin->number;
      });
      if (std::all_of(begin, end, [this](const Group& each) { return isUnused(each); }))
        for (; begin != end; ++begin) list(*begin);
      begin = end;
    }
    std::ranges::sort(unused_.begin() + static_cast<std::ptrdiff_t>(before), unused_.end(), {},
                      &UnusedName::declaration);
  }

  bool isUnused(const Group& group) const {
    const Name& name = facts_->names[group.declaration];
    if (name.entryPoint || name.reserved) return false;
    if (name.kind == DeclarationKind::Local) return !name.used;
    if (names_.isInCode(group.number) || isShown(name)) return false;
    if (isUsed(group.declaration, group.number)) return false;
    if (name.kind != DeclarationKind::Type && name.kind != DeclarationKind::Enum) return true;
    for (std::uint32_t i = group.declaration + 1; i < facts_->names.size(); ++i) {
      const Name& part = facts_->names[i];
      if (part.scope != group.declaration) break;
      if (isUsed(i, group.number) || names_.isInCode(part.number)) return false;
    }
    return true;
  }

  // To what binds late or is no part of the project.
  bool isShown(const Name& name) const {
    if (name.visibility == vb::Visibility::Private || facts_->kind == vb::ModuleKind::Standard)
      return false;
    return facts_->isInterface || names_.isInText(facts_->number) ||
           (project_.isLibrary() && facts_->isShown);
  }

  // From outside the procedures of the same name in the module.
  bool isUsed(std::uint32_t declaration, std::uint32_t number) const {
    return std::ranges::any_of(project_.callers().of(module_, declaration),
                               [&](Callers::Place place) {
                                 const Use& use = project_.uses(place.module)[place.use];
                                 return place.module != module_ || use.procedure == vb::kNone ||
                                        facts_->names[use.procedure].number != number;
                               });
  }

  void list(const Group& group) {
    const Name& name = facts_->names[group.declaration];
    Unused where = name.visibility == vb::Visibility::Private ? Unused::Private : Unused::Public;
    if (name.kind == DeclarationKind::Local)
      where = Unused::Local;
    else if (names_.isInText(group.number))
      where = Unused::OnlyInTexts;
    unused_.push_back({module_, group.declaration, where});
  }

  const Project& project_;
  const Names& names_;
  std::uint32_t module_ = 0;
  const ModuleFacts* facts_ = nullptr;
  std::vector<UnusedName> unused_;
};

}  // namespace

std::vector<UnusedName> unusedIn(const Project& project, const Names& names) {
  return Finder(project, names).run();
}

}  // namespace tintline::site
