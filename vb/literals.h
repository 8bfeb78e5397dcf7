// Where numbers and dates of the language end.
//
// Tested by the cases in tests/golden/language.
#pragma once

#include <array>
#include <cstddef>

#include "vb/scan.h"

namespace tintline::vb {

// The end of the decimal number at `p`, a digit or a "." with a digit behind it. Type suffix
// included.
const char8_t* decimalEnd(const char8_t* p, const char8_t* end);

// The end of the number that the "&" at `p` begins (&HFF, &O17, &17), or null.
const char8_t* radixEnd(const char8_t* p, const char8_t* end);

// The end of the date that the "#" at `p` begins, or null: two or three parts (numbers, or one
// English name of a month) and/or a time of day, between two "#".
const char8_t* dateEnd(const char8_t* p, const char8_t* end);

// Whether a type suffix, or something else, begins with that byte.
inline bool mayBeSuffix(char8_t byte) {
  static constexpr auto kSuffixes = [] {
    std::array<bool, 256> suffixes{};
    for (const char8_t suffix : {u8'%', u8'&', u8'!', u8'#', u8'@', u8'$', u8'^'})
      suffixes[suffix] = true;
    return suffixes;
  }();
  return kSuffixes[byte];
}

// The bytes of the type suffix at `p`, directly behind a name or number: 0 or 1. "#" is one only
// where `hash` says so, since behind a keyword it begins a file number.
std::size_t suffixAt(const char8_t* p, const char8_t* end, bool hash);
inline std::size_t suffixLength(const char8_t* p, const char8_t* end, bool hash) {
  return p < end && mayBeSuffix(*p) ? suffixAt(p, end, hash) : 0;
}

}  // namespace tintline::vb
