// The work on one input: its bytes in, the converted text out.
//
// Tested by tests/golden/run.py and tests/cli/run.py.
#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

#include "cli/options.h"
#include "convert/classic.h"
#include "engine/document_frame.h"
#include "engine/keyword_table.h"

namespace tintline {

// What all inputs of a run are converted with; nobody changes it while they are.
struct JobSettings {
  const Options& options;
  KeywordTable keywords;
  DocumentFrame frame;
  ClipboardFrame clipboard;
};

// An input cannot be converted; the reason is for the user.
class JobError {
 public:
  explicit JobError(std::wstring reason) : reason_(std::move(reason)) {}
  const std::wstring& reason() const { return reason_; }

 private:
  std::wstring reason_;
};

struct Converted {
  ClassicResult result;
  ProcedureNames ProzNamen;
  std::size_t sourceLines = 0;
  std::size_t replaced = 0;  // characters that do not fit the code page
};

// Converts a source, given as the bytes of its file, which are given away. Throws
// JobError; std::length_error, std::overflow_error and std::bad_alloc when the
// result would be too large.
Converted convertSource(std::string file, const JobSettings& settings);

// Writes the result in the chosen format.
void writeConverted(const Converted& converted, const JobSettings& settings, std::ostream& datei);

}  // namespace tintline
