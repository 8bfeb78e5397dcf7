// The table of the options, from which parsing, the help text and the messages about wrong usage
// come.
//
// Tested by tests/unit/cli/cli_test.cpp and tests/cli/run.py.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "base/message.h"
#include "cli/forms.h"
#include "cli/options.h"

namespace tintline {

// Where the help texts of options begin in a text of 80 columns, and how long their lines can be.
inline constexpr std::size_t kHelpColumn = 28;
inline constexpr std::size_t kHelpWidth = 80 - kHelpColumn;

struct OptionRow {
  std::string_view name;
  char shortName = 0;                              // 0: none
  Text<0> value = {};                              // name of the value, empty for a flag
  std::span<const std::string_view> choices = {};  // the values, or what they begin with
  Text<0> allowed = {};                            // what they are like, where choices do not tell
  Text<0> help;                                    // lines for the help text
  Forms forms = kAllForms;                         // on which it has an effect
  bool (*store)(Options& options, std::string_view value);  // false: a wrong value

  bool takesValue() const { return !value.in(Language::English).empty(); }
};

std::span<const OptionRow> optionTable();

}  // namespace tintline
