// The bytes of a source as text.
//
// Tested by tests/cli/run.py.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "vb/text.h"

namespace tintline {

// For each source by itself: as its byte-order mark says, as UTF-8 when it is that and not plain
// ASCII, else in the ANSI code page.
inline constexpr vb::CodePage kAutomatic = 0;

// As text of that code page or kAutomatic; a byte-order mark counts more.
vb::Decoded decodeSource(std::string_view bytes, vb::CodePage page = kAutomatic);

// The name that browsers know the code page by; empty: they do not know it.
std::string htmlCharset(vb::CodePage page);

// The same in the ANSI code page, for the classic conversion. `replaced` is the number of
// characters that became "?".
std::string ansiSource(std::string_view bytes, vb::CodePage page, std::size_t& replaced);

}  // namespace tintline
