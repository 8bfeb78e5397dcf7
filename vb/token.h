// The tokens of a source: what the tokenizer makes of a text.
//
// A text is UTF-8 (std::u8string, vb/text.h makes it). Its tokens cover it from the first byte
// to the last: behind the blanks in front of it (`gap`) each token reaches to the blanks in front
// of the next one, so that the joined tokens with their gaps are the text, whatever it is.
//
// Tested by tests/unit/any_text_property_test.cpp and the cases in tests/golden/language.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <string_view>
#include <utility>
#include <vector>

#include "vb/word.h"

namespace tintline::vb {

enum class TokenKind : std::uint8_t {
  Blank,         // blanks that do not fit into a gap (more than 255 bytes), rare
  LineEnd,       // CR LF, CR or LF
  Continuation,  // "_" and the line end that it takes back, with the blanks between them
  Keyword,
  TypeWord,       // a type of the language: Long, String behind As
  ConstantWord,   // True, False, Nothing, Null, Empty
  OperatorWord,   // And, Mod, Like ...
  Builtin,        // function, statement or object of the runtime library, or added by the user
  ListedWord,     // word of the user's second keyword list
  ProcedureName,  // of a procedure, event or Declare, where it is declared
  TypeName,       // of a type, enum or class, declared or named as a type (As, New ...)
  Label,          // label or line number, declared or jumped to
  NamedArgument,  // the name, and its ":=" as a token of its own
  Name,           // any other name, with its type suffix or in its brackets
  String,
  Date,
  Number,
  Comment,     // with continuations one token over several lines
  Directive,   // "#", words, "=" and "." of a directive or Attribute line
  HeaderWord,  // other word of a file header
  Operator,
  Punctuation,
  Error,  // a character that cannot stand there
  End     // the last token of each list: empty, at the end of the text
};

struct Token {
  std::uint32_t begin;  // offset of its first byte
  Word word;            // a word of the language, perhaps the number of a name, or None
  TokenKind kind;
  std::uint8_t gap;  // bytes of blanks directly in front of it
};
static_assert(sizeof(Token) == 8);

// Leaves elements as they are that a vector's `resize` adds: they are filled at once.
template <typename T>
struct LeavesUnset : std::allocator<T> {
  template <typename Other>
  struct rebind {
    using other = LeavesUnset<Other>;
  };
  template <typename Other>
  void construct(Other* place) noexcept {
    ::new (static_cast<void*>(place)) Other;
  }
  template <typename Other, typename... Values>
  void construct(Other* place, Values&&... values) {
    std::construct_at(place, std::forward<Values>(values)...);
  }
};

// The list of a text: never empty, closed by TokenKind::End.
using Tokens = std::vector<Token, LeavesUnset<Token>>;

// Tokens of such a list, by their indices.
using Breaks = std::vector<std::uint32_t, LeavesUnset<std::uint32_t>>;

// The offset behind token `index` (not that of End).
inline std::size_t endOf(const Tokens& tokens, std::size_t index) {
  return tokens[index + 1].begin - tokens[index + 1].gap;
}

inline std::u8string_view textOf(std::u8string_view text, const Tokens& tokens, std::size_t index) {
  const std::size_t begin = tokens[index].begin;
  return {text.data() + begin, endOf(tokens, index) - begin};
}

}  // namespace tintline::vb
