// What the files beside the program, or named by options, say: words, colours, texts around a
// copy. They are only read.
//
// Tested by tests/cli/run.py.
#pragma once

#include <optional>
#include <string>

#include "cli/options.h"
#include "cli/run.h"
#include "convert/classic.h"
#include "engine/color_scheme.h"
#include "engine/keyword_table.h"
#include "vb/word.h"

namespace tintline {

struct Settings {
  std::optional<std::string> keywords;  // the bytes of the vb.ini, if there is one
  ColorScheme colors;
  ClipboardFrame clipboard;
};

// Throws UsageError when a file that an option names cannot be read, FileError for one beside the
// program. Warns of a vb.ini that lacks a section.
Settings loadSettings(const Options& options, const Surroundings& surroundings);

// The words of both modes.
KeywordTable classicKeywords(const Settings& settings);
vb::WordLists exactKeywords(const Settings& settings);

}  // namespace tintline
