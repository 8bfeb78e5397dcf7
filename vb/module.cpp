// See module.h. Tested by the cases in tests/golden/language/declarations
// and tests/unit/any_text_property_test.cpp.
#include "vb/module.h"

#include <utility>

#include "vb/declaration_reader.h"
#include "vb/fold.h"
#include "vb/own_names.h"
#include "vb/tokenizer.h"

namespace tintline::vb {

Module readModule(std::u8string text, std::u8string name, ModuleKind kind, const WordLists& words) {
  Module module;
  module.text = std::move(text);
  module.name = std::move(name);
  module.kind = kind;
  Breaks breaks;
  module.tokens = tokenize(module.text, words, module.names, breaks);
  readDeclarations(module, breaks);
  releaseOwnNames(module, words);
  return module;
}

std::u8string_view nameInMarks(std::u8string_view token) {
  if (token.starts_with(u8'[')) {
    token.remove_prefix(1);
    if (token.ends_with(u8']')) token.remove_suffix(1);
  } else if (token.size() > 1 &&
             std::u8string_view(u8"%&!#@$^").find(token.back()) != std::u8string_view::npos) {
    token.remove_suffix(1);
  }
  return token;
}

}  // namespace tintline::vb
