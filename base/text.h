// Text functions of the processed language, as this program needs them.
//
// All texts are 8-bit text in the ANSI code page, one byte one character.
// "Blank" is code 32 alone; a tab is an ordinary character. "Without regard to
// case" follows a fixed table of Windows-1252, never the locale, so that every
// machine gives the same bytes.
//
// Tested by tests/unit/base/text_test.cpp.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tintline {

namespace detail {
constexpr std::array<char, 256> makeLowerTable() {
  std::array<char, 256> table{};
  for (unsigned code = 0; code < 256; ++code) {
    const bool latin = code >= 0xC0 && code <= 0xDE && code != 0xD7;
    const bool ascii = code >= 'A' && code <= 'Z';
    table[code] = static_cast<char>(latin || ascii ? code + 0x20 : code);
  }
  table[0x8A] = '\x9A';  // S with caron
  table[0x8C] = '\x9C';  // OE
  table[0x8E] = '\x9E';  // Z with caron
  table[0x9F] = '\xFF';  // Y with diaeresis
  return table;
}
inline constexpr std::array<char, 256> kLower = makeLowerTable();
}  // namespace detail

// The lower-case partner of a character, or the character itself.
constexpr char toLower(char c) { return detail::kLower[static_cast<unsigned char>(c)]; }

// The text without leading blanks, trailing blanks, or both.
constexpr std::string_view LTrim(std::string_view text) {
  while (text.starts_with(' ')) text.remove_prefix(1);
  return text;
}
constexpr std::string_view RTrim(std::string_view text) {
  while (text.ends_with(' ')) text.remove_suffix(1);
  return text;
}
constexpr std::string_view Trim(std::string_view text) { return LTrim(RTrim(text)); }

// Takes the first word off the front of the text, with the one blank that ends it.
constexpr std::string_view takeWord(std::string_view& text) {
  const std::size_t blank = text.find(' ');
  const std::string_view word = text.substr(0, blank == std::string_view::npos ? blank : blank + 1);
  text.remove_prefix(word.size());
  return word;
}

// `count` blanks; none when count is not positive.
std::string Space(std::ptrdiff_t count);

bool equalsIgnoreCase(std::string_view a, std::string_view b);
inline bool startsWithIgnoreCase(std::string_view text, std::string_view prefix) {
  if (text.size() < prefix.size()) return false;
  for (std::size_t i = 0; i < prefix.size(); ++i)
    if (toLower(text[i]) != toLower(prefix[i])) return false;
  return true;
}

// A text to look for without regard to case, prepared once for many searches.
class CaselessText {
 public:
  // `part` must live as long as this object. The search goes by its three
  // characters from `anchor` on: the rarer they are, the faster it is.
  explicit constexpr CaselessText(std::string_view part, std::size_t anchor = 0)
      : part_(part),
        anchor_(anchor),
        filtered_(part.size() > anchor + 2 && foldsByOneBit(part[anchor]) &&
                  foldsByOneBit(part[anchor + 1]) && foldsByOneBit(part[anchor + 2])) {
    if (!filtered_) return;
    for (std::size_t i = 0; i < 3; ++i) folded_[i].fill(static_cast<char>(part[anchor + i] | 0x20));
  }

  constexpr std::size_t size() const { return part_.size(); }

  // Position of the first occurrence in `text` at or behind `from`; npos when
  // there is none. An empty part is found at `from`.
  std::size_t findIn(std::string_view text, std::size_t from = 0) const;
  bool isIn(std::string_view text) const { return findIn(text) != std::string_view::npos; }

 private:
  // Whether c | 0x20 is equal for two characters that are equal without regard
  // to case: not so for the few partners that differ in other bits.
  static constexpr bool foldsByOneBit(char c) {
    const auto code = static_cast<unsigned char>(c);
    return code < 0x80 || (code >= 0xA0 && code < 0xFF);
  }

  std::size_t findOneByOne(std::string_view text, std::size_t from) const;

  std::string_view part_;
  std::size_t anchor_;
  bool filtered_;                     // folded_ tells where the part may stand
  std::array<char, 16> folded_[3]{};  // the three characters, each folded and repeated
};

// The same for a text that is looked for once.
std::size_t findIgnoreCase(std::string_view text, std::string_view part, std::size_t from = 0);
bool containsIgnoreCase(std::string_view text, std::string_view part);

// `text` with every occurrence of `from` (not empty) replaced, searched from
// left to right and never inside a replacement.
std::string Replace(std::string_view text, std::string_view from, std::string_view to);

// Takes every occurrence of `part` (not empty) out of the text, from left to right.
void eraseAll(std::string& text, std::string_view part);
void eraseAll(std::string& text, const CaselessText& part);

// The pieces between the separators; an empty text has no pieces. The views
// live as long as `text`.
std::vector<std::string_view> Split(std::string_view text, char separator);

}  // namespace tintline
