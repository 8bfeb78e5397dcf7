// What the user chooses about an exact listing.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/message.h"
#include "listing/palette.h"

namespace tintline::listing {

// JSON has no links but as data; rtf, md and lines have none to other files.
enum class Links : std::uint8_t {
  None,
  Procedures,  // procedures, Declares and events of the module itself
  Module,      // all that the module itself declares
  All          // the other modules of the project too
};

enum class Header : std::uint8_t { Fold, Show, Drop };  // what can fold nothing shows it
enum class Theme : std::uint8_t { Auto, Light, Dark };
enum class Style : std::uint8_t {
  Class,
  Inline  // one <pre> for mails and wikis: light, no classes
};
using tintline::Language;  // of what the listing itself says

// Lines of a module from 1, both ends included.
struct LineRange {
  std::uint32_t first;
  std::uint32_t last;
};

struct Options {
  Links links = Links::All;
  bool titles = true;  // links and index entries tell the head of what they lead to
  Header header = Header::Fold;
  Theme theme = Theme::Auto;
  Style style = Style::Class;  // of page, body and lines
  Language language = Language::German;
  bool lineNumbers = false;
  bool lineAnchors = false;           // lines have ids and links to them without their numbers, too
  std::vector<LineRange> lines = {};  // which are shown, in any order; empty: all
  UserColors colors = {};
  std::u8string css = {};  // of the user, behind the style sheet of the page
};

}  // namespace tintline::listing
