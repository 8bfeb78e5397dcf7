// What the pages of a site tell of a module: computed once from its tokens and declarations, which
// are not needed afterwards.
//
// Tested by tests/unit/site/site_test.cpp.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "site/documentation.h"
#include "site/metrics.h"
#include "site/names.h"
#include "vb/module.h"

namespace tintline::site {

// A declaration of the module, at the same index.
struct Name {
  std::uint32_t text = 0;    // where it begins in the texts of its module
  std::uint32_t number = 0;  // in Names; of a local: of equal ones of its procedure the first
  std::uint32_t scope = vb::kNone;
  std::uint32_t line = 0;
  std::uint16_t size = 0;
  vb::DeclarationKind kind{};
  vb::Accessor accessor{};
  vb::Visibility visibility{};
  bool entryPoint = false;  // can be used without being named
  bool reserved = false;    // called like a word of the language: its uses cannot all be told
  bool used = false;        // of a local
};

struct Procedure {
  std::uint32_t declaration = 0;
  std::uint32_t bodyEnd = 0;   // token behind its End
  std::uint32_t declares = 0;  // uses of procedures in libraries
  Metrics metrics;
  Documentation documentation;
};

struct ModuleFacts {
  std::u8string name;
  vb::ModuleKind kind{};
  std::u8string description;
  std::u8string page;  // its address from the folder of all module pages: "src/Modul1.htm"
  std::u8string file;  // what it was read from, as the user reads it
  LineCounts counts;
  std::uint32_t number = 0;               // of its name, in Names
  std::uint32_t declares = 0;             // uses of procedures in libraries
  std::vector<std::uint32_t> interfaces;  // modules that it implements
  bool isInterface = false;               // another module implements it
  bool isShown = false;                   // it is part of the public face of a library
  std::u8string texts;                    // of all names
  std::vector<Name> names;                // by declaration
  std::vector<Procedure> procedures;      // Sub, Function, Property, in the order of the text

  std::u8string_view nameOf(std::uint32_t declaration) const {
    const Name& declared = names[declaration];
    return std::u8string_view(texts).substr(declared.text, declared.size);
  }
  // The procedure of a declaration, nothing when it is none.
  const Procedure* procedure(std::uint32_t declaration) const;
};

// All but `page`, `file`, the names' numbers, and what is told by uses.
ModuleFacts factsOf(const vb::Module& module, const vb::WordLists& words);

// Gives the names their numbers.
void number(ModuleFacts& facts, Names& names);

}  // namespace tintline::site
