// Whole numbers as users type them, in a field or an argument.
//
// Tested by tests/unit/reformat/wrapping_test.cpp and tests/app/search_test.cpp.
#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string_view>

namespace tintline {

// The number of digits with blanks around them; nothing when it is none from 0 to `most`.
inline std::optional<std::size_t> parseNumber(std::wstring_view text, std::size_t most) {
  while (text.starts_with(L' ')) text.remove_prefix(1);
  while (text.ends_with(L' ')) text.remove_suffix(1);
  if (text.empty()) return {};
  std::size_t number = 0;
  for (const wchar_t digit : text) {
    if (digit < L'0' || digit > L'9') return {};
    number = std::min(number * 10 + static_cast<std::size_t>(digit - L'0'), most + 1);
  }
  if (number > most) return {};
  return number;
}

}  // namespace tintline
