// The markup of the program's own pages, piece by piece: tags with the five
// attributes that mean something, character references, style declarations.
// Any bytes whatsoever may come in: comments of the source stand in the page
// unescaped, and so does markup that they hold.
//
// Tested by tests/unit/output/rendered_page_test.cpp.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/codepage.h"

namespace tintline {

using Color = std::uint32_t;  // 0xRRGGBB

// The looks that a rule of the style sheet or a style attribute gives.
struct Looks {
  std::optional<Color> color;
  std::optional<Color> background;  // nothing when inherited
  std::optional<Color> border;
  bool bold = false;
  bool italic = false;
};

// The looks of declarations like " color: #0000FF; font: italic bold;". What is
// not understood is passed over, as browsers pass over a "font" without a size.
Looks readDeclarations(std::string_view declarations);

struct Tag {
  std::string_view name;
  bool closing = false;
  // Values without their quotes; the first of several counts.
  std::optional<std::string_view> className, style, id, anchor, target;
};

// Reads tags off a text from left to right, as a browser finds them: "<" and a
// letter, up to the ">" outside of quoted values. A tag that never ends is text;
// the reader then says up to where, so that no text is searched twice.
class TagReader {
 public:
  explicit TagReader(std::string_view text);

  struct Result {
    std::size_t end;         // behind the tag or comment, or behind what is text
    bool isText = false;     // no tag and no comment: everything up to `end` is text
    std::optional<Tag> tag;  // nothing for a comment
  };

  // `at` is the position of a "<". Views live as long as the text.
  Result read(std::size_t at);

 private:
  Result readTag(std::size_t at);
  Result readComment(std::size_t at);
  std::size_t skipSpace(std::size_t at) const;
  std::optional<std::string_view> readQuoted(std::size_t quoteAt);

  std::string_view text_;
  std::size_t lastBracket_;                       // no tag ends behind the last ">"
  bool commentsEnd_ = true;                       // false: no "-->" is left
  std::array<bool, 2> quotesEnd_ = {true, true};  // false: no ' or no " is left
};

// The character that a reference at the front of `text` ("&lt;", "&#8364;")
// stands for, and its length. Nothing when it is none: then "&" is itself.
struct Reference {
  wchar_t character;
  std::size_t length;
};
std::optional<Reference> readReference(std::string_view text);

// An attribute's value as wide text, references replaced.
std::wstring attributeText(std::string_view value, TextEncoding encoding = TextEncoding::Ansi);

}  // namespace tintline
