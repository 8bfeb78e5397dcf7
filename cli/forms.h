// The forms that results have, to tell which options have an effect on them.
//
// Tested by tests/unit/cli/cli_test.cpp.
#pragma once

#include <cstdint>
#include <initializer_list>

#include "convert/format.h"
#include "engine/document_frame.h"

namespace tintline {

struct Options;

// A set, with two bits for each format of a mode: for --style class and inline.
using Forms = std::uint64_t;

constexpr Forms formOf(Mode mode, Format format, StyleMode style) {
  const unsigned place = 32 * static_cast<unsigned>(mode) + 2 * static_cast<unsigned>(format);
  return Forms{1} << (place + static_cast<unsigned>(style));
}

inline constexpr Forms kAllForms = ~Forms{0};
inline constexpr Forms kExactForms = 0xFFFF'FFFF;
inline constexpr Forms kClassicForms = kAllForms ^ kExactForms;
inline constexpr Forms kClassForms = 0x5555'5555'5555'5555;
inline constexpr Forms kInlineForms = kAllForms ^ kClassForms;
inline constexpr Forms kListForm = Forms{1} << 30;   // what --list prints
inline constexpr Forms kFilesForm = Forms{1} << 31;  // what --export-modules writes

// These formats of the mode exact, in both styles.
constexpr Forms exactForms(std::initializer_list<Format> formats) {
  Forms forms = 0;
  for (const Format format : formats)
    forms |= formOf(Mode::Exact, format, StyleMode::Class) |
             formOf(Mode::Exact, format, StyleMode::Inline);
  return forms;
}

// Code as it is read, numbered and broken, in any format but that of Office files' bare code.
inline constexpr Forms kCodeForms =
    kAllForms & ~(exactForms({Format::Source}) | kListForm | kFilesForm);

// Throws UsageError when the mode has no such format, or an option is given that has no effect on
// the form.
void checkForms(const Options& options);

}  // namespace tintline
