// What is known of code, in the words and texts of data formats.
//
// Tested by tests/unit/listing/listing_test.cpp.
#pragma once

#include <string_view>

#include "listing/output.h"
#include "vb/module.h"

namespace tintline::listing {

constexpr std::string_view dataName(vb::ModuleKind kind) {
  constexpr std::string_view kNames[] = {"standard",     "class",        "form",     "userControl",
                                         "propertyPage", "userDocument", "designer", "document"};
  return kNames[static_cast<std::size_t>(kind)];
}

constexpr std::string_view dataName(vb::DeclarationKind kind) {
  constexpr std::string_view kNames[] = {
      "sub",        "function", "property", "declare", "event", "type",      "field", "enum",
      "enumMember", "constant", "variable", "control", "label", "parameter", "local"};
  return kNames[static_cast<std::size_t>(kind)];
}

// Empty where there is none.
constexpr std::string_view dataName(vb::Accessor accessor) {
  constexpr std::string_view kNames[] = {"", "get", "let", "set"};
  return kNames[static_cast<std::size_t>(accessor)];
}
constexpr std::string_view dataName(vb::Visibility visibility) {
  constexpr std::string_view kNames[] = {"public", "private", "friend", ""};
  return kNames[static_cast<std::size_t>(visibility)];
}

// A string of JSON (RFC 8259).
void writeJsonString(Output& out, std::u8string_view text);

// One of the words above; null for an empty one.
inline void writeJsonWord(Output& out, std::string_view word) {
  if (word.empty())
    out << "null";
  else
    out << "\"" << word << "\"";
}

}  // namespace tintline::listing
