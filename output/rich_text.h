// A rendered page in the format that a rich-edit control reads.
//
// Positions in the control's text are those of the page: a line end is one
// character, and links are plain underlined text. (Some engines let a whole
// field vanish; where the links are, the runs tell.)
//
// Tested by tests/unit/output/rendered_page_test.cpp.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "output/rendered_page.h"

namespace tintline {

// Of all text and all paragraphs, in twips (a twentieth of a point).
inline constexpr int kFontHeight = 200;
inline constexpr int kLeftMargin = 120;  // 8 pixels, as browsers leave them
inline constexpr int kTabStops = 20;     // so many, every eight columns
inline constexpr int tabStop(int number) { return kLeftMargin + number * 8 * 120; }

struct RichTextColors {
  std::optional<Color> text;  // where the page says none; nothing: the window's
  bool ofPage = true;         // false: everything has the window's colours
};

// The characters from `from` up to `to` (at most the text's size) as a whole
// document of ASCII, to be put behind what stands before. A document that ends
// in a line end would lose it in some engines: let a piece begin with it.
std::string richText(const RenderedPage& page, std::size_t from, std::size_t to,
                     const RichTextColors& colors = {});

inline std::string richText(const RenderedPage& page) {
  return richText(page, 0, page.text.size());
}

// The last place to cut in front of a line end so that the piece from `from` on
// has at most `characters`; a longer line stays whole. The text's size when the
// rest is no longer than that.
std::size_t pieceEnd(const RenderedPage& page, std::size_t from, std::size_t characters);

}  // namespace tintline
