// What the kinds of tokens are called in listings, and which colour they have.
//
// Tested by tests/golden/exact.
#pragma once

#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

#include "listing/palette.h"
#include "vb/token.h"

namespace tintline::listing {

// Class names in HTML, the short ones that common style sheets share; the kinds of JSON.
constexpr std::string_view classOf(vb::TokenKind kind) {
  using enum vb::TokenKind;
  switch (kind) {
    case Keyword:
      return "k";
    case TypeWord:
      return "kt";
    case ConstantWord:
      return "kc";
    case OperatorWord:
      return "ow";
    case Builtin:
      return "nb";
    case ListedWord:
      return "no";
    case ProcedureName:
      return "nf";
    case TypeName:
      return "nc";
    case Label:
      return "nl";
    case NamedArgument:
      return "na";
    case String:
      return "s";
    case Date:
      return "ld";
    case Number:
      return "m";
    case Comment:
      return "c";
    case Directive:
      return "cp";
    case Error:
      return "err";
    case Name:
      return "n";
    case HeaderWord:
      return "h";
    case Operator:
      return "o";
    case Punctuation:
      return "p";
    case Blank:
    case LineEnd:
    case Continuation:
    case End:
      break;
  }
  return {};
}

// Nothing for what looks like other text.
constexpr std::optional<Tint> tintOf(vb::TokenKind kind) {
  using enum vb::TokenKind;
  switch (kind) {
    case Keyword:
    case TypeWord:
    case ConstantWord:
    case OperatorWord:
    case Builtin:
      return Tint::Word;
    case ProcedureName:
    case TypeName:
    case Label:
      return Tint::Name;
    case ListedWord:
    case NamedArgument:
      return Tint::Parameter;
    case String:
    case Date:
      return Tint::String;
    case Number:
      return Tint::Number;
    case Comment:
      return Tint::Comment;
    case Directive:
      return Tint::Directive;
    case Error:
      return Tint::Error;
    default:
      return {};
  }
}

// "#rrggbb"
std::string colorText(const Palette& palette, Tint tint);

}  // namespace tintline::listing
