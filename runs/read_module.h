// Reading an input as a module of the exact conversion.
//
// Tested by tests/cli/run.py and tests/golden/run.py.
#pragma once

#include <optional>
#include <vector>

#include "base/message.h"
#include "convert/reformatting.h"
#include "listing/options.h"
#include "runs/inputs.h"
#include "vb/module.h"
#include "vb/text.h"
#include "vb/word.h"

namespace tintline {

// How all inputs of a run are read.
struct Reading {
  std::optional<vb::CodePage> encoding{};   // of files; none: what each says itself
  std::optional<listing::Header> header{};  // Drop: as the editor shows it; none: modules of Office
  vb::WordLists words{};
  std::vector<Reformatting> passes{};
};

struct ReadModule {
  vb::Module module;
  Message warning;  // of what was lost
};

// Throws JobError and std::length_error.
ReadModule readModule(const Input& input, const Reading& reading);

}  // namespace tintline
