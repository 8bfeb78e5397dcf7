// Words of the runtime library and the built-in second list that a module declares as names of its
// own: Dim Left, Function Format, ByVal Value. Where such a declaration counts, the word is a name
// like any other; words that only a user's list holds stay what the user says.
//
// Tested by the cases in tests/golden/language/declarations.
#pragma once

#include "vb/module.h"

namespace tintline::vb {

// Makes plain names of the tokens that mean what the module itself declares: parameters and locals
// in their procedure, the module's own procedures, variables, constants, Enum members and controls
// everywhere.
void releaseOwnNames(Module& module, const WordLists& words);

inline bool isOfLibrary(Word word) {
  return word == Word::LibraryFunction || word == Word::LibraryObject;
}

// The kind of a token that names a declaration, which may be another module's.
inline TokenKind kindOfName(const Token& token) {
  const bool known = token.kind == TokenKind::Builtin || token.kind == TokenKind::ListedWord;
  return known && isOfLibrary(token.word) ? TokenKind::Name : token.kind;
}

}  // namespace tintline::vb
