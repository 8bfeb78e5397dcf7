// What a project knows of its modules: their names and members, found by name.
//
// Tested by the cases in tests/golden/language/links.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "vb/module.h"
#include "vb/name_table.h"

namespace tintline::vb {

// A type in the project.
struct TypeReference {
  enum class Kind : std::uint8_t {
    Foreign,   // of the language or a library, or unknown
    Instance,  // of a class, form or control: `index` is its module
    Record,    // a Type: `index` is its member
    Enum       // `index` is its member
  };
  Kind kind = Kind::Foreign;
  std::uint32_t index = 0;
};

// What a module declares for others or for its procedures.
struct Member {
  std::uint32_t module;
  std::uint32_t declaration;
  std::uint32_t nextAccessor;  // of the same property, in a circle
  TypeReference type;
  DeclarationKind kind;
  Accessor accessor;
  bool isPrivate;
  bool isArray;
  bool takesArguments;
};

struct ModuleEntry {
  std::uint32_t name;
  std::uint32_t defaultMember;
  bool standard;
  bool isControl;      // a form may hold it
  bool isObject;       // its name can stand in expressions
  bool alone = false;  // shares its name with another: sees and shows nothing
};

// What a name means behind the parameters and locals.
struct Meaning {
  enum class Kind : std::uint8_t { Nothing, Member, Module, Project };
  Kind kind = Kind::Nothing;
  std::uint32_t index = 0;  // of the member or module
};

class ProjectTables {
 public:
  explicit ProjectTables(std::u8string_view name);

  std::uint32_t add(const Module& module);
  void close();

  // The number of a name, NameTable::kUnknown when nothing here has it.
  std::uint32_t numberOf(const NameKey& name) const { return names_.find(texts_, name); }
  const Member& member(std::uint32_t index) const { return members_[index]; }
  const ModuleEntry& module(std::uint32_t index) const { return modules_[index]; }

  // What a bare name means in expressions of `module`; two matches in a tier mean nothing.
  Meaning bareName(std::uint32_t module, std::uint32_t name) const;
  // Where that is a standard module: what the name means when no "." is behind it.
  Meaning behindModules(std::uint32_t module, std::uint32_t name) const;
  // What it means in front of a "." where a type is expected, and what the type does: bare, or
  // behind what was found for its qualifier.
  Meaning qualifier(std::uint32_t module, std::uint32_t name) const;
  Meaning type(std::uint32_t module, std::uint32_t name) const;
  Meaning type(std::uint32_t module, Meaning qualifier, std::uint32_t name) const;
  TypeReference typeReference(Meaning type) const;
  // The accessor of a property that fits best, of another member itself; kNone when only the module
  // that declares it may name it and that is not `own`.
  std::uint32_t accessor(std::uint32_t member, Accessor wanted, std::uint32_t own) const;

  // What a name means behind the project's name, as member of a module, as field or Enum member of
  // the member `owner`, and as an event of its module.
  Meaning inProject(std::uint32_t name) const;
  Meaning inModule(std::uint32_t module, std::uint32_t name) const;
  Meaning part(std::uint32_t owner, std::uint32_t name) const;
  Meaning event(std::uint32_t module, std::uint32_t name) const;

 private:
  // Where names are looked up.
  enum class Space : std::uint8_t {
    Members,        // of a module: what expressions can name, members of its enums too
    Types,          // of a module, enums too
    Events,         // of a module
    Parts,          // of a type or enum
    Modules,        // of the project, as all that follow
    Objects,        // modules that expressions can name
    Classes,        // modules that are types
    SharedMembers,  // of modules, for expressions of all others
    SharedTypes
  };
  struct Key {
    std::uint32_t space, name;  // the space with its owner
    bool operator==(const Key&) const = default;
  };
  struct Slot {
    Key key{};
    std::uint32_t found = kNone;  // member or module
  };
  // What is known of a member until the tables are closed.
  struct Pending {
    std::uint32_t name;
    std::uint32_t owner;  // the member that holds it, or kNone
    std::uint32_t branch;
    std::uint32_t qualifier, type;  // names
    bool isPublic;
    bool mayBeForeign;  // a control of that name, of this project or a library
  };

  static constexpr std::uint32_t kAmbiguous = kNone - 1;

  std::uint32_t intern(const NameKey& name);
  void addMember(const Module& module, std::uint32_t declaration, std::uint32_t& owner);
  void setType(const Module& module, const Declaration& declared, Pending& pending);
  void findTwins();
  // Calls enter(key, found) for all that can be looked up.
  template <typename Enter>
  void forAll(Enter enter) const;
  template <typename Enter>
  void forMember(std::uint32_t index, Enter enter) const;
  void enter(Key key, std::uint32_t found);
  bool joins(std::uint32_t first, std::uint32_t other);
  static Key keyOf(Space space, std::uint32_t owner, std::uint32_t name) {
    return {static_cast<std::uint32_t>(space) << 28 | owner, name};
  }
  std::size_t slotOf(Key key) const;
  std::uint32_t find(Space space, std::uint32_t owner, std::uint32_t name) const;
  Meaning itself(std::uint32_t module, std::uint32_t name) const;
  static Meaning meaning(Meaning::Kind kind, std::uint32_t found) {
    return found < kAmbiguous ? Meaning{kind, found} : Meaning{};
  }

  std::u8string texts_;  // of all names
  NameTable names_;
  std::uint32_t name_ = kNone;  // of the project, kNone where it is unknown
  std::vector<ModuleEntry> modules_;
  std::deque<Member> members_;
  std::deque<Pending> pending_;  // as many
  std::vector<Slot> slots_;      // at most three quarters are taken
};

}  // namespace tintline::vb
