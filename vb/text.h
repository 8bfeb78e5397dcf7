// Decoded source text: valid UTF-8 in a type of its own (std::u8string), which cannot be taken
// for the 8-bit text of the classic conversion.
//
// Tested by tests/unit/vb/text_test.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tintline::vb {

// A code page by its number on Windows: 1252, 932, 10000 (Mac Roman), 65001 (UTF-8) ...
using CodePage = std::uint16_t;
inline constexpr CodePage kUtf8 = 65001;

struct Decoded {
  std::u8string text;        // line ends and all characters as they were; a mark is dropped
  CodePage codePage = 0;     // what it was read as
  std::size_t replaced = 0;  // bytes or units that are no character there: U+FFFD each
};

// Whether texts of that page can be decoded.
bool isKnown(CodePage page);

// The page that a name means: "utf-8", "windows-1252", "1252", "cp932", "macintosh" ... Nothing
// when there is none.
std::optional<CodePage> codePageNamed(std::string_view name);

// Whether the text begins with a byte-order mark, which no other text does.
bool hasMark(std::string_view bytes);

// Without `page`: by its byte-order mark (UTF-8, UTF-16), as UTF-8 when it is valid UTF-8 and not
// plain ASCII, else as `fallback`. With `page`: as that page; a byte-order mark of the page itself
// is dropped.
Decoded decode(std::string_view bytes, std::optional<CodePage> page = {}, CodePage fallback = 1252);

}  // namespace tintline::vb
