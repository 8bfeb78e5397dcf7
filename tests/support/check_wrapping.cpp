// Wraps a source and judges the result by its meaning.
#include "tests/support/check_wrapping.h"

#include <algorithm>

#include "base/text.h"
#include "reformat/wrapping.h"
#include "tests/support/convert.h"
#include "tests/support/vb_meaning.h"

namespace tintline::test {
namespace {

using Lines = std::vector<std::string>;

std::string shown(const Lines& lines) {
  std::string text;
  for (const std::string& line : lines) text += "\n|" + line + "|";
  return text;
}

std::string fault(const Lines& lines, const Lines& wrapped, std::size_t width) {
  const literal::Meaning before = literal::meaningOf(lines), after = literal::meaningOf(wrapped);
  if (before.statements != after.statements) return "other statements";
  if (before.comments != after.comments) return "other comments";
  if (after.continuations > std::max<std::size_t>(before.continuations, kMaxContinuations))
    return "too many continuations";
  for (std::size_t i = 0; i < wrapped.size(); ++i)
    if (RTrim(wrapped[i]).size() > width && literal::canBeBroken(wrapped, i, width))
      return "line " + std::to_string(i) + " can be broken";
  const auto endsInBlank = [](const std::string& line) { return line.ends_with(' '); };
  if (std::all_of(lines.begin(), lines.end(), endsInBlank) &&
      !std::all_of(wrapped.begin(), wrapped.end(), endsInBlank))
    return "a line lost its blank";
  if (std::none_of(lines.begin(), lines.end(), endsInBlank) &&
      std::any_of(wrapped.begin(), wrapped.end(), endsInBlank))
    return "a line got a blank";
  return "";
}

}  // namespace

std::string wrappingFault(const Lines& lines, int width, int unit) {
  const Lines wrapped = strings(*wrapLines(lineList(lines), width, unit));
  std::string found = fault(lines, wrapped, static_cast<std::size_t>(width));
  if (found.empty() && strings(*wrapLines(lineList(wrapped), width, unit)) != wrapped)
    found = "wrapping again changes something";
  if (found.empty()) return "";
  return found + " at width " + std::to_string(width) + shown(lines) + "\nbecame" + shown(wrapped);
}

}  // namespace tintline::test
