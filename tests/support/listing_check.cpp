// See listing_check.h. Tested by tests/unit/any_text_property_test.cpp
#include "tests/support/listing_check.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <sstream>
#include <vector>

#include "listing/document.h"
#include "vb/text.h"

namespace tintline::test {
namespace {

using namespace tintline::listing;

constexpr std::u8string_view kAttributes[] = {
    u8"lang", u8"charset", u8"http-equiv", u8"content",  u8"name",      u8"class",      u8"href",
    u8"id",   u8"title",   u8"style",      u8"tabindex", u8"translate", u8"aria-label", u8"data-n"};
constexpr std::u8string_view kReferences[] = {u8"amp;", u8"lt;", u8"gt;", u8"quot;"};

// Reads HTML as listings write it, character by character.
struct HtmlReader {
  std::u8string_view rest;
  CheckedHtml result{};
  std::vector<std::u8string> open{};
  std::set<std::u8string> ids{};
  std::vector<std::u8string> links{};
  int codes = 0;

  void fail(std::u8string_view what, std::u8string_view where) {
    if (result.fault.empty())
      result.fault = std::u8string(what) + u8": " + std::u8string(where.substr(0, 80));
  }

  // Up to one of these characters, of which the first is taken as well if asked for.
  std::u8string_view take(std::u8string_view ends, bool andEnd = false) {
    const auto taken = rest.substr(0, rest.find_first_of(ends));
    rest.remove_prefix(taken.size());
    if (andEnd && rest.empty()) fail(u8"nothing ends", taken);
    if (andEnd && !rest.empty()) rest.remove_prefix(1);
    return taken;
  }

  void read() {
    if (rest.starts_with(u8"<!DOCTYPE html>")) take(u8">", true);
    while (!rest.empty() && result.fault.empty()) {
      if (rest.starts_with(u8"</"))
        readEndTag();
      else if (rest.starts_with(u8"<"))
        readTag();
      else
        readText();
    }
    if (!open.empty()) fail(u8"not closed", open.back());
    for (const auto& link : links)
      if (!ids.contains(link)) fail(u8"leads nowhere", link);
  }

  void readEndTag() {
    rest.remove_prefix(2);
    const auto name = take(u8">", true);
    if (open.empty() || open.back() != name) return fail(u8"closed", name);
    codes -= name == u8"code";
    open.pop_back();
  }

  void readTag() {
    rest.remove_prefix(1);
    const auto name = take(u8" >");
    while (rest.starts_with(u8" ")) readAttribute(name);
    if (!rest.starts_with(u8">")) return fail(u8"tag", rest);
    rest.remove_prefix(1);
    if (name == u8"style") take(u8"<");
    if (name == u8"meta") return;
    codes += name == u8"code";
    open.emplace_back(name);
    if (rest.starts_with(u8"\n") && name == u8"pre") fail(u8"a line end that is lost", rest);
  }

  void readAttribute(std::u8string_view element) {
    rest.remove_prefix(1);
    const auto name = take(u8"= >");
    if (!rest.starts_with(u8"=") || std::ranges::find(kAttributes, name) == std::end(kAttributes))
      return fail(u8"attribute", name);
    rest.remove_prefix(1);
    const bool quoted = rest.starts_with(u8"\"");
    if (quoted) rest.remove_prefix(1);
    const auto value = quoted ? take(u8"\"", true) : take(u8" >");
    if (value.find_first_of(u8"<>\n\r") != std::u8string_view::npos) fail(u8"value", value);
    unescaped(value);
    if (name == u8"id" && !ids.emplace(value).second) fail(u8"an id twice", value);
    if (name == u8"id" && (value.empty() || value.find_first_of(u8" \t&'%#") != value.npos))
      fail(u8"id", value);
    if (name != u8"href") return;
    if (element != u8"a" || !value.starts_with(u8"#")) return fail(u8"link", value);
    links.emplace_back(value.substr(1));
  }

  void readText() {
    const std::u8string shown = unescaped(take(u8"<"));
    if (codes > 0) result.code += shown;
  }

  std::u8string unescaped(std::u8string_view text) {
    std::u8string shown;
    for (std::size_t i = 0; i < text.size(); ++i) {
      const char8_t c = text[i];
      if ((c < 0x20 && c != '\t' && c != '\n' && c != '\f') || c == 0x7F || c == '>')
        fail(u8"character", text.substr(i));
      if (c == 0xC2 && text[i + 1] < 0xA0) fail(u8"control character", text.substr(i));
      if (c != '&') {
        shown += c;
        continue;
      }
      const auto reference = text.substr(i + 1, text.substr(i).find(u8';'));
      const auto* const known = std::ranges::find(kReferences, reference);
      if (known == std::end(kReferences)) return fail(u8"reference", text.substr(i)), shown;
      shown += u8"&<>\""[known - kReferences];
      i += reference.size();
    }
    return shown;
  }
};

Options optionsOf(std::uint32_t choices, Format format) {
  const auto choose = [&](std::uint32_t count) {
    const std::uint32_t chosen = choices % count;
    choices /= count;
    return chosen;
  };
  Options options;
  options.links = static_cast<Links>(choose(4));
  options.titles = choose(2) == 0;
  options.header = choose(2) == 0 && format == Format::Page ? Header::Fold : Header::Show;
  options.style = choose(2) == 0 ? Style::Class : Style::Inline;
  options.theme = static_cast<Theme>(choose(3));
  options.lineNumbers = choose(2) == 0 && options.style == Style::Class;
  options.language = static_cast<Language>(choose(2));
  if (choose(3) == 0) options.lines = {{5, 9}, {2, 6}, {12, 20}};
  return options;
}

// The lines of a shown text that are chosen.
std::u8string chosenLines(std::u8string_view text, const Options& options) {
  if (options.lines.empty()) return std::u8string(text);
  std::u8string chosen;
  for (std::uint32_t line = 1; !text.empty(); ++line) {
    const std::size_t size = std::min(text.find(u8'\n'), text.size() - 1) + 1;
    if (std::ranges::any_of(options.lines, [&](const LineRange& range) {
          return range.first <= line && line <= range.last;
        }))
      chosen += text.substr(0, size);
    text.remove_prefix(size);
  }
  return chosen;
}

std::u8string listed(Format format, const Options& options, const std::vector<vb::Module>& modules,
                     const vb::Project& project) {
  Targets targets(options, Place::OnePage);
  for (const vb::Module& module : modules) targets.add(module);
  std::ostringstream out;
  const DocumentMaker maker(format, options, Place::OnePage);
  const auto document = maker.make(out, targets, modules[0].name);
  for (std::uint32_t i = 0; i < modules.size(); ++i)
    document->add({modules[i], project.resolve(modules[i], i), i});
  document->close();
  const std::string text = out.str();
  return {text.begin(), text.end()};
}

}  // namespace

CheckedHtml checkHtml(std::u8string_view html) {
  HtmlReader reader{html};
  reader.read();
  return reader.result;
}

std::u8string shownText(std::u8string_view text) {
  std::u8string shown;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char8_t c = text[i];
    const bool nonCharacter =
        (c == 0xEF &&
         (text.substr(i, 3) == u8"\xEF\xBF\xBE" || text.substr(i, 3) == u8"\xEF\xBF\xBF" ||
          (text[i + 1] == 0xB7 && text[i + 2] >= 0x90 && text[i + 2] <= 0xAF))) ||
        (c >= 0xF0 && (text[i + 1] & 0x0F) == 0x0F && text[i + 2] == 0xBF && text[i + 3] >= 0xBE);
    if (c == '\r') {
      if (i + 1 == text.size() || text[i + 1] != '\n') shown += u8'\n';
    } else if (c == 0 || nonCharacter || (c == 0xC2 && text[i + 1] < 0xA0)) {
      shown += u8"\uFFFD";
      i += c == 0 ? 0 : c < 0xE0 ? 1 : c < 0xF0 ? 2 : 3;
    } else if (c == 0x7F) {
      shown += u8"\u2421";
    } else if (c < 0x20 && c != '\t' && c != '\n' && c != '\f') {
      shown += {u8'\xE2', u8'\x90', static_cast<char8_t>(0x80 + c)};
    } else {
      shown += c;
    }
  }
  return shown;
}

std::u8string faultOfListings(std::string_view bytes, std::uint32_t choices) {
  const std::size_t split = std::min(bytes.find(std::string_view("\0\x01", 2)), bytes.size());
  const vb::WordLists words;
  std::vector<vb::Module> modules;
  vb::Project project;
  const Options chosen = optionsOf(choices, Format::Page);
  std::u8string shown;
  for (const std::string_view each : {bytes.substr(0, split), bytes.substr(split)}) {
    const std::u8string text = vb::decode(each).text;
    shown += chosenLines(shownText(text), chosen);
    modules.push_back(vb::readModule(text, u8"A", static_cast<vb::ModuleKind>(choices % 3), words));
    project.add(modules.back());
  }
  project.close();
  for (const Format format : {Format::Page, Format::Body, Format::Lines}) {
    const Options options = optionsOf(choices, format);
    const CheckedHtml html = checkHtml(listed(format, options, modules, project));
    if (!html.fault.empty()) return html.fault;
    if (format != Format::Lines && html.code != shown) return u8"the code is another: " + html.code;
  }
  for (const Format format : {Format::Rtf, Format::Markdown, Format::Json})
    if (listed(format, optionsOf(choices, format), modules, project).empty()) return u8"nothing";
  return {};
}

}  // namespace tintline::test
