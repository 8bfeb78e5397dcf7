// What the names of one module mean, each looked up once, with the parameters, locals and labels of
// the procedure that is looked at.
//
// Tested by the cases in tests/golden/language/links.
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "vb/module.h"
#include "vb/name_table.h"
#include "vb/project_tables.h"
#include "vb/token_cursor.h"

namespace tintline::vb {

class Scope {
 public:
  struct Name {
    std::uint32_t inProject = NameTable::kUnknown;  // its number there
    std::uint32_t local = kNone;                    // declaration
    std::uint32_t localOf = kNone;                  // of this procedure; likewise:
    std::uint32_t label = kNone;
    std::uint32_t labelOf = kNone;
    bool bareKnown = false, typeKnown = false;
    Meaning bare, type;
  };

  Scope(const Module& module, std::uint32_t index, const ProjectTables& tables);

  std::uint32_t numberOf(std::uint32_t token) {
    const Word word = module_.tokens[token].word;
    return isNumbered(word) ? vb::numberOf(word) : findNumber(token);
  }
  Name& operator[](std::uint32_t number) { return names_[number]; }
  // The name at a token; valid until another is asked for.
  Name& at(std::uint32_t token) { return names_[numberOf(token)]; }

  const Meaning& bare(Name& name) {
    if (!std::exchange(name.bareKnown, true)) name.bare = tables_.bareName(index_, name.inProject);
    return name.bare;
  }

  // The type that is named from the token `at`: name, module.name, project.name or
  // project.module.name. `at` is left at the last of them, `note(token, meaning)` is told of each.
  template <typename Note>
  Meaning typePath(std::uint32_t& at, Note note);

  // The procedure whose body is looked at.
  void enter(std::uint32_t procedure);
  void leave();
  std::uint32_t procedure() const { return procedure_; }
  std::uint32_t procedureEnd() const { return end_; }  // token behind it; kNone outside of all
  bool resultTakesArguments() const { return resultTakesArguments_; }
  // Whether a name, by its number, is that of the function's own result.
  bool isResult(std::uint32_t number) const { return number == result_; }
  // The declaration of a local or label there, or kNone.
  std::uint32_t local(const Name& name) const {
    return name.localOf == procedure_ && procedure_ != kNone ? name.local : kNone;
  }
  std::uint32_t label(const Name& name) const {
    return name.labelOf == procedure_ && procedure_ != kNone ? name.label : kNone;
  }
  // The type of the procedure, or of what it declares.
  TypeReference typeOf(std::uint32_t declaration) const { return types_[declaration]; }

  // The token behind `token` and the gaps there.
  std::uint32_t nextToken(std::uint32_t token) const {
    do ++token;
    while (isGap(module_.tokens[token].kind));
    return token;
  }
  bool isMark(std::uint32_t token, char8_t character) const {
    const TokenKind kind = module_.tokens[token].kind;
    return (kind == TokenKind::Punctuation || kind == TokenKind::Operator) &&
           module_.text[module_.tokens[token].begin] == character;
  }

 private:
  std::uint32_t findNumber(std::uint32_t token);
  void bind(std::uint32_t declaration);
  TypeReference declaredType(const Declaration& declared);
  const Meaning& type(Name& name) {
    if (!std::exchange(name.typeKnown, true)) name.type = tables_.type(index_, name.inProject);
    return name.type;
  }

  const Module& module_;
  const std::uint32_t index_;
  const ProjectTables& tables_;
  NameTable others_;         // names that the module's table does not hold; their numbers follow
  std::vector<Name> names_;  // by their numbers
  std::vector<TypeReference> types_;  // by declaration
  std::uint32_t procedure_ = kNone;
  std::uint32_t end_ = kNone;
  std::uint32_t result_ = kNone;
  bool resultTakesArguments_ = false;
};

template <typename Note>
Meaning Scope::typePath(std::uint32_t& at, Note note) {
  std::uint32_t dot = nextToken(at);
  Meaning found =
      isMark(dot, u8'.') ? tables_.qualifier(index_, this->at(at).inProject) : type(this->at(at));
  note(at, found);
  while (isMark(dot, u8'.')) {
    const Meaning qualifier = found;
    at = nextToken(dot);
    if (!isNameKind(module_.tokens[at].kind)) return {};
    dot = nextToken(at);
    const std::uint32_t name = this->at(at).inProject;
    if (!isMark(dot, u8'.'))
      found = tables_.type(index_, qualifier, name);
    else
      found =
          qualifier.kind == Meaning::Kind::Project ? tables_.qualifier(index_, name) : Meaning{};
    note(at, found);
  }
  return found;
}

}  // namespace tintline::vb
