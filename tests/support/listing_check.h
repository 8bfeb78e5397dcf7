// What must hold for the listings of any text whatever, for property tests and fuzzing.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tintline::test {

// What an HTML document or fragment is made of.
struct CheckedHtml {
  std::u8string code;   // the texts of its <code> elements, joined
  std::u8string fault;  // what is wrong with it, empty: nothing
};

// Wrong are: elements or attributes that listings do not have, elements that are not closed,
// characters that mean something else, an id twice, a link that does not land.
CheckedHtml checkHtml(std::u8string_view html);

// The text as a page shows it: line ends as LF, what HTML does not allow by its pictures.
std::u8string shownText(std::u8string_view text);

// Reads the bytes as two modules of a project (NUL SOH between them, if it is there), lists them in
// all formats with the options that the bits of `choices` say, and returns the first fault.
std::u8string faultOfListings(std::string_view bytes, std::uint32_t choices);

}  // namespace tintline::test
