// See indentation.h. Tested by tests/golden/run.py.
#include "reformat/indentation.h"

#include <algorithm>
#include <initializer_list>
#include <stdexcept>

#include "base/text.h"

namespace tintline {
namespace {

enum class Command { Formatieren, Formatieren2 };

// The keywords are compared with the letters that a line begins with: "Format"
// is a "For", "Without" a "With", "Elseif" an "Else". Kept on purpose.
bool beginsWith(std::string_view line, std::initializer_list<std::string_view> keywords) {
  return std::any_of(keywords.begin(), keywords.end(),
                     [line](std::string_view keyword) { return line.starts_with(keyword); });
}

// Without "PRIVATE TYPE", on purpose: it is compared with 11 characters and
// therefore never found.
bool opensType(std::string_view line) {
  return startsWithIgnoreCase(line, "TYPE") || startsWithIgnoreCase(line, "PUBLIC TYPE");
}

bool isOneLineIf(std::string_view line, LineText kind) {
  return line.starts_with("If") && !contentOf(line, kind).ends_with("Then");
}

bool isOutdented(std::string_view line, Command command, LineText kind) {
  return isOneLineIf(line, kind) || beginsWith(line, {"Else"}) || opensType(line) ||
         (command == Command::Formatieren && startsWithIgnoreCase(line, "END TYPE"));
}

bool opensBlock(std::string_view line) {
  return beginsWith(line, {"If", "For", "While", "With", "Else"}) || opensType(line);
}

bool closesBlock(std::string_view line, Command command) {
  return beginsWith(line, {"End If", "Next", "Wend", "End With"}) ||
         (command == Command::Formatieren2 && startsWithIgnoreCase(line, "END TYPE"));
}

// Of 8-bit text only spaces are indentation.
std::string_view withoutIndentation(std::string_view line, LineText kind) {
  return kind == LineText::Ansi ? LTrim(line) : line.substr(skipBlanks(line, 0, kind));
}

// How wide the indentation of decoded text can get: neither its lines nor open blocks are limited.
constexpr std::ptrdiff_t kWidest = 1000;

LineList indent(const LineList& List1, int unit, Command command, LineText kind) {
  if (kind == LineText::Ansi && List1.size() > kMaxLines)
    throw std::length_error("indentation: too many lines");
  const std::ptrdiff_t deepest = kind == LineText::Ansi ? kMaxLines : kWidest / std::max(unit, 1);
  LineList result;
  std::ptrdiff_t level = 0;
  for (std::size_t i = 0; i < List1.size(); ++i) {
    const std::string_view line = withoutIndentation(List1[i], kind);
    std::ptrdiff_t writtenAt = level;
    const auto outdent = [&] { writtenAt = level = std::max<std::ptrdiff_t>(level - 1, 0); };
    if (isOutdented(line, command, kind)) outdent();
    if (opensBlock(line))
      ++level;
    else if (closesBlock(line, command))
      outdent();
    auto shown = static_cast<std::int16_t>(std::min(writtenAt, deepest));
    result.append(fktEinrücken(unit, shown, line));
  }
  return result;
}

}  // namespace

std::string fktEinrücken(int unit, std::int16_t& level, std::string_view text) {
  level = std::max<std::int16_t>(level, 0);
  return Space(std::ptrdiff_t{level} * unit).append(text);
}

LineList Formatieren(const LineList& List1, int& unit, LineText kind) {
  if (List1.empty()) return {};
  ++unit;
  return indent(List1, unit, Command::Formatieren, kind);
}

LineList Formatieren2(const LineList& List1, int& unit, LineText kind) {
  if (List1.empty()) return {};
  unit = std::max(unit - 1, 0);
  return indent(List1, unit, Command::Formatieren2, kind);
}

}  // namespace tintline
