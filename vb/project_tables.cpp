// See project_tables.h. Tested by the cases in tests/golden/language/links.
#include "vb/project_tables.h"

#include <utility>

#include "vb/token_cursor.h"

namespace tintline::vb {

namespace {

// The libraries that "Object = ...; "Name.ocx"" lines of a file header name.
bool isLibrary(const Module& module, std::u8string_view name) {
  bool ofObject = false;
  for (std::uint32_t i = 0; i < module.header.end; ++i) {
    const Token& token = module.tokens[i];
    if (token.kind == TokenKind::LineEnd) ofObject = false;
    if (token.word == Word::Object) ofObject = true;
    if (!ofObject || token.kind != TokenKind::String) continue;
    std::u8string_view file = module.textOf(i).substr(1);
    if (equalFolded(file.substr(0, file.rfind(u8'.')), name)) return true;
  }
  return false;
}

}  // namespace

ProjectTables::ProjectTables(std::u8string_view name) {
  if (!name.empty()) name_ = intern(NameKey(name));
}

std::uint32_t ProjectTables::intern(const NameKey& name) {
  const std::uint32_t number = names_.add(texts_, name, texts_.size());
  if (number == names_.size() - 1) texts_ += name.name();
  return number;
}

// --------------------------------------------------------------------------------- modules

std::uint32_t ProjectTables::add(const Module& module) {
  const bool standard = module.kind == ModuleKind::Standard;
  modules_.push_back({.name = intern(NameKey(module.name)),
                      .defaultMember = kNone,
                      .standard = standard,
                      .isControl = module.kind == ModuleKind::UserControl,
                      .isObject = standard || module.predeclared});
  std::uint32_t owner = kNone;
  for (std::uint32_t i = 0; i < module.declarations.size(); ++i) addMember(module, i, owner);
  return static_cast<std::uint32_t>(modules_.size() - 1);
}

// `owner` is the last type or enum.
void ProjectTables::addMember(const Module& module, std::uint32_t declaration,
                              std::uint32_t& owner) {
  const Declaration& declared = module.declarations[declaration];
  const auto moduleIndex = static_cast<std::uint32_t>(modules_.size() - 1);
  const auto index = static_cast<std::uint32_t>(members_.size());
  switch (declared.kind) {
    case DeclarationKind::Parameter:
      if (!members_.empty() && members_.back().declaration == declared.scope)
        members_.back().takesArguments = true;
      return;
    case DeclarationKind::Label:
    case DeclarationKind::Local:
      return;
    default:
      break;
  }
  members_.push_back({.module = moduleIndex,
                      .declaration = declaration,
                      .nextAccessor = index,
                      .type = {},
                      .kind = declared.kind,
                      .accessor = declared.accessor,
                      .isPrivate = declared.visibility == Visibility::Private,
                      .isArray = declared.isArray,
                      .takesArguments = false});
  Pending pending{.name = intern(module.keyOf(declared.name)),
                  .owner = declared.scope == kNone ? kNone : owner,
                  .branch = declared.branch,
                  .qualifier = kNone,
                  .type = kNone,
                  .isPublic = declared.visibility == Visibility::Public,
                  .mayBeForeign = declared.kind == DeclarationKind::Control && name_ == kNone};
  setType(module, declared, pending);
  pending_.push_back(pending);
  if (declared.defaultMember) modules_.back().defaultMember = index;
  if (declared.kind == DeclarationKind::Type || declared.kind == DeclarationKind::Enum)
    owner = index;
}

void ProjectTables::setType(const Module& module, const Declaration& declared, Pending& pending) {
  std::uint32_t names[3] = {kNone, kNone, kNone};
  std::size_t count = 0;
  for (std::uint32_t i = declared.type.begin; i < declared.type.end; ++i) {
    const TokenKind kind = module.tokens[i].kind;
    if (!isNameKind(kind) && kind != TokenKind::HeaderWord) continue;
    if (count == 3) return;
    names[count++] = intern(module.keyOf(i));
  }
  if (declared.kind == DeclarationKind::Control) {
    // Of a foreign control's type nothing is known. Its library is named, or it is the project.
    const auto isForeign = [&](std::u8string_view library) {
      return equalFolded(library, u8"VB") || isLibrary(module, library);
    };
    if (count != 2 ||
        (name_ != kNone ? names[0] != name_ : isForeign(names_.nameOf(texts_, names[0]))))
      return;
    pending.type = names[1];
  } else if (count == 3) {
    if (names[0] != name_) return;
    pending.qualifier = names[1];
    pending.type = names[2];
  } else if (count != 0) {
    pending.qualifier = count == 2 ? names[0] : kNone;
    pending.type = names[count - 1];
  }
}

// ----------------------------------------------------------------------------------- tables

void ProjectTables::close() {
  findTwins();
  std::size_t count = 0;
  forAll([&count](Key, std::uint32_t) { ++count; });
  slots_ = std::vector<Slot>(count + count / 3 + 1);
  forAll([this](Key key, std::uint32_t found) { enter(key, found); });
  for (std::uint32_t i = 0; i < members_.size(); ++i) {
    const Pending& pending = pending_[i];
    const std::uint32_t from = members_[i].module;
    if (pending.type == kNone) continue;
    members_[i].type = typeReference(
        pending.qualifier == kNone ? type(from, pending.type)
                                   : type(from, qualifier(from, pending.qualifier), pending.type));
    const TypeReference found = members_[i].type;
    if (pending.mayBeForeign &&
        !(found.kind == TypeReference::Kind::Instance && modules_[found.index].isControl))
      members_[i].type = {};
  }
  pending_ = {};
}

// Modules of one name are alone.
void ProjectTables::findTwins() {
  std::vector<std::uint32_t> first(names_.size(), kNone);
  for (std::uint32_t i = 0; i < modules_.size(); ++i) {
    std::uint32_t& same = first[modules_[i].name];
    if (same == kNone)
      same = i;
    else
      modules_[i].alone = modules_[same].alone = true;
  }
}

template <typename Enter>
void ProjectTables::forAll(Enter enter) const {
  for (std::uint32_t i = 0; i < modules_.size(); ++i) {
    const ModuleEntry& module = modules_[i];
    if (module.alone) continue;
    enter(keyOf(Space::Modules, 0, module.name), i);
    if (module.isObject) enter(keyOf(Space::Objects, 0, module.name), i);
    if (!module.standard) enter(keyOf(Space::Classes, 0, module.name), i);
  }
  for (std::uint32_t i = 0; i < members_.size(); ++i) forMember(i, enter);
}

template <typename Enter>
void ProjectTables::forMember(std::uint32_t index, Enter enter) const {
  const Member& member = members_[index];
  const Pending& pending = pending_[index];
  const ModuleEntry& module = modules_[member.module];
  const auto in = [&](Space space, std::uint32_t owner) {
    enter(keyOf(space, owner, pending.name), index);
  };
  const DeclarationKind kind = member.kind;
  const bool ofEnum = kind == DeclarationKind::Enum || kind == DeclarationKind::EnumMember;
  const bool isType = kind == DeclarationKind::Type || kind == DeclarationKind::Enum;
  if (pending.owner != kNone) in(Space::Parts, pending.owner);
  if (kind == DeclarationKind::Field) return;
  if (kind == DeclarationKind::Event) return in(Space::Events, member.module);
  if (kind != DeclarationKind::Type) in(Space::Members, member.module);
  if (isType) in(Space::Types, member.module);
  if (!pending.isPublic || module.alone) return;
  if (kind != DeclarationKind::Type && (ofEnum || module.standard)) in(Space::SharedMembers, 0);
  if (isType) in(Space::SharedTypes, 0);
}

void ProjectTables::enter(Key key, std::uint32_t found) {
  Slot& slot = slots_[slotOf(key)];
  if (slot.found == kNone)
    slot = {key, found};
  else if (slot.found != kAmbiguous && !joins(slot.found, found))
    slot.found = kAmbiguous;
}

// Whether two members of one name are no contradiction: accessors of a property, or declarations
// in different branches of "#If", of which the first counts.
bool ProjectTables::joins(std::uint32_t first, std::uint32_t other) {
  Member& a = members_[first];
  Member& b = members_[other];
  if (a.module != b.module) return false;
  if (a.kind == DeclarationKind::Property && b.kind == DeclarationKind::Property) {
    for (std::uint32_t i = first;;) {
      if (i == other) return true;  // joined already, in another space
      if (members_[i].accessor == b.accessor) break;
      i = members_[i].nextAccessor;
      if (i != first) continue;
      b.nextAccessor = std::exchange(a.nextAccessor, other);
      return true;
    }
  }
  return pending_[first].branch != 0 && pending_[other].branch != 0 &&
         pending_[first].branch != pending_[other].branch;
}

std::size_t ProjectTables::slotOf(Key key) const {
  std::uint64_t hash =
      (static_cast<std::uint64_t>(key.space) << 32 | key.name) * 0x9E3779B97F4A7C15;
  hash = (hash ^ hash >> 32) * 0xD6E8FEB86659FD93;
  std::size_t at = (hash >> 32) * slots_.size() >> 32;  // evenly below size()
  while (slots_[at].found != kNone && slots_[at].key != key)
    at = at + 1 == slots_.size() ? 0 : at + 1;
  return at;
}

// ----------------------------------------------------------------------------------- lookups

// A member or module, kAmbiguous, or kNone.
std::uint32_t ProjectTables::find(Space space, std::uint32_t owner, std::uint32_t name) const {
  if (name == NameTable::kUnknown || slots_.empty()) return kNone;
  return slots_[slotOf(keyOf(space, owner, name))].found;
}

Meaning ProjectTables::bareName(std::uint32_t module, std::uint32_t name) const {
  const std::uint32_t own = find(Space::Members, module, name);
  if (own != kNone) return meaning(Meaning::Kind::Member, own);
  const ModuleEntry& entry = modules_[module];
  if (entry.alone) return entry.isObject ? itself(module, name) : Meaning{};
  if (name == name_ && name != kNone) return {Meaning::Kind::Project};
  return inProject(name);
}

Meaning ProjectTables::behindModules(std::uint32_t module, std::uint32_t name) const {
  if (modules_[module].alone) return {};
  return meaning(Meaning::Kind::Member, find(Space::SharedMembers, 0, name));
}

Meaning ProjectTables::itself(std::uint32_t module, std::uint32_t name) const {
  return name == modules_[module].name ? Meaning{Meaning::Kind::Module, module} : Meaning{};
}

Meaning ProjectTables::inProject(std::uint32_t name) const {
  const std::uint32_t object = find(Space::Objects, 0, name);
  if (object != kNone) return meaning(Meaning::Kind::Module, object);
  return meaning(Meaning::Kind::Member, find(Space::SharedMembers, 0, name));
}

Meaning ProjectTables::inModule(std::uint32_t module, std::uint32_t name) const {
  return meaning(Meaning::Kind::Member, find(Space::Members, module, name));
}

Meaning ProjectTables::part(std::uint32_t owner, std::uint32_t name) const {
  return meaning(Meaning::Kind::Member, find(Space::Parts, owner, name));
}

Meaning ProjectTables::event(std::uint32_t module, std::uint32_t name) const {
  return meaning(Meaning::Kind::Member, find(Space::Events, module, name));
}

Meaning ProjectTables::qualifier(std::uint32_t module, std::uint32_t name) const {
  if (modules_[module].alone) return itself(module, name);
  if (name == name_ && name != kNone) return {Meaning::Kind::Project};
  return meaning(Meaning::Kind::Module, find(Space::Modules, 0, name));
}

Meaning ProjectTables::type(std::uint32_t module, std::uint32_t name) const {
  const std::uint32_t own = find(Space::Types, module, name);
  if (own != kNone) return meaning(Meaning::Kind::Member, own);
  const ModuleEntry& entry = modules_[module];
  if (entry.alone) return entry.standard ? Meaning{} : itself(module, name);
  return type(module, {Meaning::Kind::Project}, name);
}

Meaning ProjectTables::type(std::uint32_t module, Meaning qualifier, std::uint32_t name) const {
  if (qualifier.kind == Meaning::Kind::Module) {
    const std::uint32_t found = find(Space::Types, qualifier.index, name);
    const bool hidden = found < kAmbiguous && members_[found].isPrivate;
    return hidden && qualifier.index != module ? Meaning{} : meaning(Meaning::Kind::Member, found);
  }
  if (qualifier.kind != Meaning::Kind::Project) return {};
  const std::uint32_t found = find(Space::Classes, 0, name);
  if (found != kNone) return meaning(Meaning::Kind::Module, found);
  return meaning(Meaning::Kind::Member, find(Space::SharedTypes, 0, name));
}

TypeReference ProjectTables::typeReference(Meaning type) const {
  switch (type.kind) {
    case Meaning::Kind::Module:
      return {TypeReference::Kind::Instance, type.index};
    case Meaning::Kind::Member:
      return {members_[type.index].kind == DeclarationKind::Type ? TypeReference::Kind::Record
                                                                 : TypeReference::Kind::Enum,
              type.index};
    default:
      return {};
  }
}

std::uint32_t ProjectTables::accessor(std::uint32_t member, Accessor wanted,
                                      std::uint32_t own) const {
  std::uint32_t found[4] = {kNone, kNone, kNone, kNone};
  std::uint32_t i = member;
  do {
    if (!members_[i].isPrivate || members_[i].module == own)
      found[static_cast<std::size_t>(members_[i].accessor)] = i;
    i = members_[i].nextAccessor;
  } while (i != member);
  if (members_[member].kind != DeclarationKind::Property) return found[0];
  for (const Accessor one : {wanted, Accessor::Get, Accessor::Let, Accessor::Set})
    if (found[static_cast<std::size_t>(one)] != kNone) return found[static_cast<std::size_t>(one)];
  return kNone;
}

}  // namespace tintline::vb
