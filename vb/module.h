// A module as the language means it: its tokens, and what it declares.
//
// Tested by the cases in tests/golden/language/declarations
// and tests/unit/any_text_property_test.cpp.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "vb/name_table.h"
#include "vb/scan.h"
#include "vb/token.h"

namespace tintline::vb {

enum class ModuleKind : std::uint8_t {
  Standard,      // .bas
  Class,         // .cls
  Form,          // .frm
  UserControl,   // .ctl
  PropertyPage,  // .pag
  UserDocument,  // .dob
  Designer,      // .dsr
  Document       // the module behind a document or sheet of an Office project
};

enum class DeclarationKind : std::uint8_t {
  Sub,
  Function,
  Property,  // one accessor of it
  Declare,   // of a procedure in a library
  Event,
  Type,
  Field,
  Enum,
  EnumMember,
  Constant,
  Variable,
  Control,  // of the file header
  Label,
  Parameter,
  Local  // variable or constant of a procedure; by ReDim only when nothing else declares it
};

// Sub, Function or Property: with a body.
inline bool isProcedure(DeclarationKind kind) { return kind <= DeclarationKind::Property; }

enum class Accessor : std::uint8_t { None, Get, Let, Set };
enum class Visibility : std::uint8_t { Public, Private, Friend, None };  // None: label, local ...

inline constexpr std::uint32_t kNone = 0xFFFFFFFF;

// Tokens by their index, the end one behind the last.
struct TokenRange {
  std::uint32_t begin = 0;
  std::uint32_t end = 0;
  bool empty() const { return begin == end; }
};

struct Declaration {
  DeclarationKind kind{};
  Accessor accessor = Accessor::None;
  Visibility visibility = Visibility::None;
  bool isStatic = false;
  bool isConstant = false;  // of a Local
  bool isArray = false;     // "()" behind the name or the type; a control with an Index
  bool isNew = false;       // As New
  bool withEvents = false;
  bool optional = false;  // of a parameter, as the next two
  bool byValue = false;
  bool paramArray = false;
  bool defaultMember = false;   // VB_UserMemId = 0
  bool byReDim = false;         // a Local that only a ReDim declares: a project's variable of that
                                // name is meant before it
  std::uint32_t branch = 0;     // of "#If", counted from 1 in the module; outside of all: 0
  std::uint32_t name = 0;       // the token that names it
  std::uint32_t scope = kNone;  // the declaration that holds it: procedure, type, enum
  std::uint32_t line = 0;       // of its first token, from 1
  std::uint32_t endLine = 0;    // of its last token: a procedure's "End Sub"
  TokenRange head;              // from the first word (Public ...) to the end of what declares it;
                                // of a list's items but the first, of parameters, fields and
                                // members without the words that they share
  TokenRange lead;              // these words (Private Const), of a list's items but the first
  TokenRange body;              // of a procedure, type or enum: from behind the head to behind its
                                // End, else empty. A procedure with a head in each branch of "#If"
                                // has one, with the first: it holds the other heads
  TokenRange type;              // the words behind As (New), or empty: Excel . Range
};

// A module of a project. Its declarations stand in the order of their names in the text, so that
// what a procedure, type or enum holds follows it. The elements of a control array are one
// declaration, the first.
struct Module {
  std::u8string text;
  std::u8string name;  // VB_Name, else what the reader was given
  ModuleKind kind{};
  bool predeclared = false;   // exists as an object under its own name (VB_PredeclaredId, forms)
  std::u8string description;  // VB_Description of the module
  Tokens tokens;
  NameTable names;  // at least those that tokens have the numbers of, and the declared ones
  std::vector<Declaration> declarations;
  TokenRange header;        // the file header with the Attribute lines behind it
  std::uint32_t lines = 0;  // a text that ends in a line end has no line behind it
  // The number of the text's first line. When the header does not count, it is such (modulo 2^32)
  // that the line behind the header is 1.
  std::uint32_t firstLine = 1;

  std::u8string_view textOf(std::uint32_t token) const { return vb::textOf(text, tokens, token); }
  // What the name at a token is looked up by.
  NameKey keyOf(std::uint32_t token) const;
};

// Tokenizes the text and reads what it declares. `name` and `kind` are what its file says; the
// text's own attributes and header count before them.
Module readModule(std::u8string text, std::u8string name, ModuleKind kind, const WordLists& words);

// The name that a token holds, without type suffix and brackets.
std::u8string_view nameInMarks(std::u8string_view token);
inline std::u8string_view plainName(std::u8string_view token) {
  const bool plain = !token.empty() && (isWordByte(token.back()) || token.back() >= 0x80);
  return plain ? token : nameInMarks(token);
}

inline NameKey Module::keyOf(std::uint32_t token) const {
  const Word word = tokens[token].word;
  return isNumbered(word) ? names.keyOf(text, numberOf(word))
                          : NameKey(plainName(textOf(token)), text.data() + text.size());
}

}  // namespace tintline::vb
