// What somebody meant who mistyped a word.
//
// Tested by tests/cli/run.py.
#pragma once

#include <span>
#include <string_view>

namespace tintline {

// The word that is nearest to the typed one: but for case the same, but for some letters (left out,
// added, replaced, or two of them swapped), or begun with it; "" when none is near.
std::string_view nearest(std::string_view typed, std::span<const std::string_view> words);

}  // namespace tintline
