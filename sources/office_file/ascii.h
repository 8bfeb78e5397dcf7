// Names of parts and streams, which are compared without regard to the case of ASCII letters.
#pragma once

#include <algorithm>
#include <string_view>

namespace tintline::office_file {

template <class Char>
constexpr Char lowerAscii(Char c) {
  return c >= Char('A') && c <= Char('Z') ? static_cast<Char>(c + ('a' - 'A')) : c;
}

template <class Char>
constexpr bool equalsAscii(std::basic_string_view<Char> a, std::basic_string_view<Char> b) {
  return std::ranges::equal(a, b, {}, lowerAscii<Char>, lowerAscii<Char>);
}
constexpr bool equalsAscii(std::string_view a, std::string_view b) {
  return equalsAscii<char>(a, b);
}

// Where `part` (in lower case) stands first in the text from `from` on; npos where it does not.
inline std::size_t findAscii(std::string_view text, std::string_view part, std::size_t from = 0) {
  if (from > text.size()) return text.npos;
  const auto found =
      std::search(text.begin() + static_cast<std::ptrdiff_t>(from), text.end(), part.begin(),
                  part.end(), [](char c, char lower) { return lowerAscii(c) == lower; });
  return found == text.end() && !part.empty() ? text.npos
                                              : static_cast<std::size_t>(found - text.begin());
}

}  // namespace tintline::office_file
