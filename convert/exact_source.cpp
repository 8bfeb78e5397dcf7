// See exact_source.h. Tested by tests/unit/convert/exact_source_test.cpp.
#include "convert/exact_source.h"

#include <limits>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "base/codepage.h"
#include "convert/exact.h"
#include "listing/palette.h"
#include "listing/token_names.h"
#include "reformat/line_text.h"

namespace tintline {
namespace {

constexpr std::u8string_view kLineEnds = u8"\r\n";

std::string_view withoutEnd(std::string_view line) {
  if (line.ends_with('\n')) line.remove_suffix(1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

// The chosen ones of the lines from `first` on; a range that holds no line when there are none.
std::vector<listing::LineRange> rangesOf(const std::vector<bool>& chosen, std::size_t first,
                                         std::uint32_t count) {
  std::vector<listing::LineRange> ranges;
  for (std::uint32_t line = 1; line <= count && first + line <= chosen.size(); ++line) {
    if (!chosen[first + line - 1]) continue;
    if (!ranges.empty() && ranges.back().last + 1 == line)
      ranges.back().last = line;
    else
      ranges.push_back({line, line});
  }
  if (ranges.empty()) ranges.push_back({0, 0});
  return ranges;
}

std::vector<vb::Module> readModules(const ExactSource& source, const vb::WordLists& words) {
  std::vector<vb::Module> modules;
  for (const ExactModule& module : source.modules()) {
    if (module.text.size() >= std::numeric_limits<std::uint32_t>::max())
      throw std::length_error("exact: a module of 4 GiB");
    modules.push_back(vb::readModule(module.text, module.name, module.kind, words));
  }
  return modules;
}

// One form of the modules; `anchors` gets the ids of their lines.
std::string written(Format format, const std::vector<vb::Module>& modules,
                    const ChosenLines& chosen, listing::Options options, std::u8string_view title,
                    LineAnchors* anchors = nullptr) {
  const auto place = modules.size() > 1 ? listing::Place::OnePage : listing::Place::OwnPages;
  ExactProject project(format, options, place);
  // Does `work` for each module while the options say which of its lines are chosen.
  const auto forEach = [&](auto work) {
    std::size_t first = 0;
    for (std::uint32_t i = 0; i < modules.size(); ++i) {
      if (chosen) options.lines = rangesOf(*chosen, first, modules[i].lines);
      work(modules[i], i);
      first += modules[i].lines;
    }
  };
  forEach([&](const vb::Module& module, std::uint32_t i) {
    project.add(module, {});
    if (anchors != nullptr) anchors->add(fromUtf8(project.linePrefix(i)), module.lines);
  });
  project.close();
  std::ostringstream out;
  const auto document = project.makeDocument(title, out);
  forEach([&](const vb::Module& module, std::uint32_t i) { project.write(module, i, *document); });
  document->close();
  return std::move(out).str();
}

// No background, and no class or line feed inside: what word processors and mail programs would
// lose.
std::string copyOpener(const listing::UserColors& colors) {
  return "<pre style=\"margin:0;font-family:Consolas,'Courier "
         "New',monospace;font-size:10pt;color:" +
         listing::colorText(listing::lightPalette(colors), listing::Tint::Text) + "\">";
}

// The lines of a text that all have a line feed behind them.
LineList splitLines(std::string_view text) {
  LineList lines;
  lines.reserveBytes(text.size());
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    lines.append(text.substr(0, end));
    text.remove_prefix(end + 1);
  }
  return lines;
}

void appendLines(LineList& lines, std::u8string_view text) {
  const LineList added = linesOf(text);
  lines.reserveBytes(lines.bytes() + added.bytes());
  for (std::size_t i = 0; i < added.size(); ++i) lines.append(withoutEnd(added[i]));
}

}  // namespace

LineList exactLines(std::u8string_view text) {
  LineList lines;
  appendLines(lines, text);
  return lines;
}

void ExactSource::append(std::u8string_view text) {
  if (modules_.empty()) modules_.emplace_back();
  std::u8string& last = modules_.back().text;
  if (!last.empty() && last.back() != u8'\n' && last.back() != u8'\r') last += kLineEnds;
  last += text;
}

void ExactSource::reformat(const Reformatting& pass) {
  for (ExactModule& module : modules_) module.text = reformatted(module.text, pass);
}

LineList ExactSource::lines() const {
  LineList lines;
  for (const ExactModule& module : modules_) appendLines(lines, module.text);
  return lines;
}

ExactResult convertExact(const ExactSource& source, const ChosenLines& chosen,
                         const listing::Options& options, const vb::WordLists& words,
                         std::u8string_view title) {
  const std::vector<vb::Module> modules = readModules(source, words);
  ExactResult result{.lines = splitLines(written(Format::Lines, modules, chosen, options, title)),
                     .page = {},
                     .preview = {},
                     .anchors = {}};
  result.page = written(Format::Page, modules, chosen, options, title, &result.anchors);
  listing::Options anchored = options;
  anchored.lineAnchors = true;
  const bool same = options.lineNumbers && options.style == listing::Style::Class;
  result.preview = same ? result.page : written(Format::Page, modules, chosen, anchored, title);
  return result;
}

// The modules count as one, so that nothing comes between them.
FormattedCopy formattedCopy(const ExactSource& source, const ChosenLines& chosen,
                            const listing::Options& options, const vb::WordLists& words) {
  ExactSource joined;
  for (const ExactModule& module : source.modules()) joined.append(module.text);
  const listing::Options plain{.links = listing::Links::None,
                               .style = listing::Style::Inline,
                               .lineNumbers = options.lineNumbers,
                               .colors = options.colors};
  const std::vector<vb::Module> modules = readModules(joined, words);
  const LineList html = splitLines(written(Format::Lines, modules, chosen, plain, {}));
  FormattedCopy copy{.html = copyOpener(plain.colors),
                     .rtf = written(Format::Rtf, modules, chosen, plain, {}),
                     .text = {}};
  for (std::size_t i = 0; i < html.size(); ++i) copy.html.append(html[i]) += "<br>";
  copy.html += "</pre>";
  const LineList lines = joined.lines();
  for (std::size_t i = 0; i < lines.size(); ++i)
    if (!chosen || (i < chosen->size() && (*chosen)[i])) copy.text += fromUtf8(lines[i]) + L"\r\n";
  return copy;
}

}  // namespace tintline
