// Short ways to convert lines in tests.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "engine/conversion.h"

namespace tintline::test {

inline LineList lineList(const std::vector<std::string>& lines) {
  LineList list;
  for (const std::string& line : lines) list.append(line);
  return list;
}

inline ColorScheme defaultColors() {
  ColorScheme scheme;
  modColor::Farbesetzen(scheme);
  return scheme;
}

// Of a LineList or HtmlLines.
std::vector<std::string> strings(const auto& lines) {
  std::vector<std::string> result;
  for (std::size_t i = 0; i < lines.size(); ++i) result.emplace_back(lines[i]);
  return result;
}

}  // namespace tintline::test
