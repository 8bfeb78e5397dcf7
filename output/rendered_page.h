// The program's own HTML page as text with looks: what the preview shows where
// no browser can.
//
// The pages are those of output/html_document.h and of listing/. Comments stand in the
// former as the source has them, so a page may hold any bytes: tags other than the program's
// own are passed over like a browser passes over tags it does not know, and
// nothing is ever loaded, run or followed. Time and memory are linear in the
// page's size.
//
// Tested by tests/unit/output/rendered_page_test.cpp and fuzz/rendered_page_fuzz.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "output/page_markup.h"

namespace tintline {

struct TextLooks {
  std::optional<Color> color;         // nothing: the window's text colour
  std::optional<Color> background;    // nothing: the window's
  std::optional<std::uint32_t> link;  // index in RenderedPage::targets
  bool bold = false;
  bool italic = false;
  bool underlined = false;

  bool operator==(const TextLooks&) const = default;
};

// Positions count UTF-16 units of the text.
struct TextRun {
  std::size_t start = 0;
  std::size_t length = 0;
  TextLooks looks;
};

struct Anchor {
  std::wstring name;
  std::size_t position;
};

struct RenderedPage {
  // The lines, each but the last closed by one line feed. Rules and the upper and lower edges
  // of frames are lines of kRuleLength times kRuleCharacter.
  std::wstring text;
  std::vector<TextRun> runs;          // ascending; together they are the whole text
  std::vector<std::wstring> targets;  // of links, as they are written: see output/link_target.h
  std::vector<Anchor> anchors;        // in the order of their positions
  std::optional<Color> ground, ink;   // of the whole page, where it says them

  // Where the first anchor of that name stands.
  std::optional<std::size_t> anchorPosition(std::wstring_view name) const;

  // The run that holds the character at `position`, or nullptr behind the text.
  const TextRun* runAt(std::size_t position) const;
};

inline constexpr wchar_t kRuleCharacter = L'\u2500';
inline constexpr std::size_t kRuleLength = 80;

// `html`: a page in the ANSI code page, where a text without "<body" is read as a body; or an exact
// page, in UTF-8.
RenderedPage renderPage(std::string_view html);

}  // namespace tintline
