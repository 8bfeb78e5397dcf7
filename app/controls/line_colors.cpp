// See line_colors.h. Tested by tests/unit/app/line_colors_test.cpp.
#include "app/controls/line_colors.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/codepage.h"
#include "base/text.h"
#include "convert/exact.h"
#include "listing/token_names.h"
#include "vb/tokenizer.h"

namespace tintline {
namespace {

using listing::Tint;

constexpr std::size_t kLongest = 4000;  // units of a line that have colours

// By category.
constexpr std::array<Tint, kColorCategories> kTintOf = {Tint::Name, Tint::Word, Tint::Parameter,
                                                        Tint::Comment, Tint::String};

class Parts {
 public:
  void add(std::size_t end, std::optional<Tint> tint) {
    if (!parts_.empty() && parts_.back().tint == tint)
      parts_.back().end = end;
    else if (parts_.empty() || parts_.back().end < end)
      parts_.push_back({end, tint});
  }
  std::vector<InkedPart> take() { return std::move(parts_); }

 private:
  std::vector<InkedPart> parts_;
};

// Numbers have no colour in the classic conversion, nor has what is wrong.
std::optional<Tint> shown(std::optional<Tint> tint, const LineInks& inks) {
  if (inks.allTints || !tint) return tint;
  if (tint == Tint::Directive) return Tint::Word;
  return std::ranges::find(kTintOf, *tint) != kTintOf.end() ? tint : std::nullopt;
}

// How many units of a wide text these bytes of UTF-8 are.
std::size_t unitsOf(std::u8string_view bytes) {
  std::size_t units = 0;
  for (const char8_t byte : bytes)
    units += (byte & 0xC0) == 0x80 ? 0 : byte >= 0xF0 && sizeof(wchar_t) == 2 ? 2 : 1;
  return units;
}

void addSource(std::wstring_view line, const LineInks& inks, Parts& parts) {
  static const vb::WordLists kWords;
  const std::u8string text = exactText(line);
  const vb::Tokens tokens = vb::tokenize(text, kWords);
  std::size_t end = 0, bytes = 0;
  for (std::size_t i = 0; i + 1 < tokens.size(); ++i) {
    const std::size_t behind =
        listing::tintOf(tokens[i].kind) ? vb::endOf(tokens, i) : tokens[i + 1].begin;
    end += unitsOf(std::u8string_view(text).substr(bytes, behind - bytes));
    bytes = behind;
    parts.add(end, shown(listing::tintOf(tokens[i].kind), inks));
  }
}

// ---------------------------------------------------------------------------------- HTML

std::optional<Tint> tintOfClass(std::string_view name) {
  constexpr std::pair<std::string_view, ColorCategory> kClassic[] = {
      {"Sub", kProzeduren},  {"EndSub", kProzeduren}, {"Code", kReservierteWorte},
      {"Parms", kParameter}, {"Rem", kKommentare},    {"Marks", kStrings}};
  for (const auto& [known, category] : kClassic)
    if (name == known) return kTintOf[category];
  for (int kind = 0; kind <= static_cast<int>(vb::TokenKind::End); ++kind)
    if (listing::classOf(static_cast<vb::TokenKind>(kind)) == name && !name.empty())
      return listing::tintOf(static_cast<vb::TokenKind>(kind));
  return {};
}

// The value of an attribute of a tag, in whatever quotes it stands, or in none.
std::string_view attribute(std::string_view tag, std::string_view name) {
  const std::size_t at = tag.find(name);
  if (at == tag.npos || at + name.size() + 1 >= tag.size()) return {};
  const char quote = tag[at + name.size()];
  if (quote != '"' && quote != '\'') {
    const std::string_view value = tag.substr(at + name.size());
    return value.substr(0, value.find_first_of(" >"));
  }
  const std::string_view rest = tag.substr(at + name.size() + 1);
  return rest.substr(0, rest.find(quote));
}

std::optional<Tint> tintOfTag(std::string_view tag, const LineInks& inks) {
  if (const std::string_view name = attribute(tag, " class="); !name.empty())
    return shown(tintOfClass(name.substr(0, name.find(' '))), inks);
  const std::string_view style = attribute(tag, " style=");
  const std::size_t color = style.find("color:");
  if (color == style.npos) return {};
  const std::size_t begin = std::min(style.find('#', color), style.size());
  for (std::size_t i = 0; i < kColorCategories; ++i)
    if (equalsIgnoreCase(style.substr(begin, 7), inks.categories[i])) return kTintOf[i];
  return {};
}

// The end of the tag that begins there; npos for a "<" that begins none.
std::size_t endOfTag(std::string_view line, std::size_t at) {
  if (at + 1 >= line.size()) return line.npos;
  const char next = line[at + 1];
  const bool letter = (next | 0x20) >= 'a' && (next | 0x20) <= 'z';
  if (!letter && next != '/' && next != '!') return line.npos;
  const std::size_t end = line.find('>', at);
  return end == line.npos ? end : end + 1;
}

void addHtml(std::wstring_view line, const LineInks& inks, Parts& parts) {
  std::string plain;  // of the same length: only ASCII matters
  for (const wchar_t unit : line) plain += unit < 0x80 ? static_cast<char>(unit) : '?';
  std::vector<std::optional<Tint>> open;
  const auto current = [&] { return open.empty() ? std::nullopt : open.back(); };
  for (std::size_t at = 0; at < plain.size();) {
    const std::size_t end = plain[at] == '<' ? endOfTag(plain, at) : plain.npos;
    if (end == plain.npos) {
      const std::size_t next = std::min(plain.find('<', at + 1), plain.size());
      parts.add(next, current());
      at = next;
      continue;
    }
    const std::string_view tag = std::string_view(plain).substr(at, end - at);
    const std::string_view name = tag.substr(1, tag.find_first_of(" >/", 2) - 1);
    if (tag[1] == '/' && !open.empty())
      open.pop_back();
    else if (tag[1] != '/' && name != "br" && name != "hr")
      open.push_back(tintOfTag(tag, inks));
    parts.add(end, Tint::Quiet);
    at = end;
  }
}

}  // namespace

LineInks inksOf(LineInks::Lines lines, Mode mode, const ColorScheme& colors) {
  LineInks inks;
  inks.lines = lines;
  inks.allTints = mode == Mode::Exact;
  for (std::size_t i = 0; i < kColorCategories; ++i) inks.categories[i] = colors[i][kTextColor];
  listing::UserColors user = exactColors(colors);
  if (mode == Mode::Classic)
    user = {.procedures = listing::colorFromText(inks.categories[kProzeduren]),
            .reservedWords = listing::colorFromText(inks.categories[kReservierteWorte]),
            .parameters = listing::colorFromText(inks.categories[kParameter]),
            .comments = listing::colorFromText(inks.categories[kKommentare]),
            .strings = listing::colorFromText(inks.categories[kStrings])};
  inks.light = listing::lightPalette(user);
  inks.dark = listing::darkPalette(user);
  return inks;
}

std::vector<InkedPart> inkedParts(std::wstring_view line, const LineInks& inks) {
  Parts parts;
  if (inks.lines == LineInks::Lines::Source) addSource(line.substr(0, kLongest), inks, parts);
  if (inks.lines == LineInks::Lines::Html) addHtml(line.substr(0, kLongest), inks, parts);
  parts.add(line.size(), std::nullopt);
  return parts.take();
}

}  // namespace tintline
