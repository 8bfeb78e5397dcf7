// What is known of the projects of a site as data, for other programs.
//
// JSON, one document:
//
//     modules     [{project, name, kind, file, description, lines, commented, empty, declares}]
//     names       [{module, name, kind, accessor, visibility, scope, line, uses, unused}]
//                 all declarations but labels, parameters and locals
//     procedures  [{name, lines, commented, empty, parameters, nesting, branches, declares,
//                 description, parameterTexts: [{name, text}], returns}]
//     references  [{module, line, procedure, name}]
//
// `module`, `name`, `scope` and `procedure` count from 0 in `modules` and `names`; null: there is
// none. `unused` is "private", "public" or "onlyInTexts", null where it does not apply.
//
// CSV (RFC 4180: UTF-8, commas, CR LF), one table each, with names instead of numbers; the first
// line names the columns. A field that a spreadsheet would take for a formula, for it begins with
// = + - @, a tab or CR, gets a ' in front.
//
// Tested by tests/unit/site/site_test.cpp.
#pragma once

#include <array>
#include <cstdint>
#include <ostream>
#include <string_view>

#include "site/site.h"

namespace tintline::site {

void writeJson(std::ostream& out, const Site& site);

enum class Table : std::uint8_t { Procedures, Names, References };
inline constexpr std::array<std::u8string_view, 3> kTableFiles = {u8"prozeduren.csv", u8"namen.csv",
                                                                  u8"verweise.csv"};

void writeCsv(Table table, std::ostream& out, const Site& site);

}  // namespace tintline::site
