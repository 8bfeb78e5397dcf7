// See attributes.h. Tested by the cases in tests/golden/language/declarations
// and tests/unit/any_text_property_test.cpp.
#include "vb/attributes.h"

#include <string>
#include <string_view>

#include "vb/fold.h"

namespace tintline::vb {

namespace {

std::u8string unquoted(std::u8string_view string) {
  std::u8string text;
  for (std::size_t i = 1; i < string.size(); ++i) {
    if (string[i] == u8'"' && ++i == string.size()) break;  // the closing one, else a doubled one
    text += string[i];
  }
  return text;
}

void readMember(Module& module, TokenCursor& cursor, std::u8string_view name,
                std::uint32_t described) {
  const std::u8string_view attribute = cursor.textHere();
  if (described == kNone ||
      !(equalFolded(attribute, u8"VB_UserMemId") || equalFolded(attribute, u8"VB_VarUserMemId")))
    return;
  cursor.advanceInLine();
  cursor.advanceInLine();  // "="
  Declaration& member = module.declarations[described];
  if (cursor.textHere() == u8"0" && equalFolded(plainName(module.textOf(member.name)), name))
    member.defaultMember = true;
}

}  // namespace

bool readAttribute(Module& module, TokenCursor& cursor, std::uint32_t described) {
  cursor.advanceInLine();
  const std::u8string_view name = cursor.textHere();
  cursor.advanceInLine();
  const bool ofMember = cursor.is(u8'.');
  cursor.advanceInLine();  // "." or "="
  if (ofMember) {
    readMember(module, cursor, name, described);
  } else if (equalFolded(name, u8"VB_PredeclaredId")) {
    module.predeclared = equalFolded(cursor.textHere(), u8"True");
  } else if (cursor.kind() == TokenKind::String) {
    if (equalFolded(name, u8"VB_Name")) module.name = unquoted(cursor.textHere());
    if (equalFolded(name, u8"VB_Description")) module.description = unquoted(cursor.textHere());
  }
  return !ofMember;
}

}  // namespace tintline::vb
