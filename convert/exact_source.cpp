// See exact_source.h. Tested by tests/unit/convert/exact_source_test.cpp.
#include "convert/exact_source.h"

#include <algorithm>
#include <limits>
#include <ostream>
#include <stdexcept>
#include <streambuf>
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

// How much is done, in lines: of each form as many are made as there are to read.
class Meter {
 public:
  Meter(const ExactSource& source, std::size_t forms, const Progress& progress)
      : progress_(progress) {
    if (!progress) return;
    for (const ExactModule& module : source.modules())
      all_ += (1 + forms) * (1 + static_cast<std::size_t>(std::ranges::count(module.text, u8'\n')));
  }

  void advance(std::size_t lines) {
    done_ = std::min(done_ + lines, all_);
    if (progress_) progress_(done_, all_);
  }

 private:
  const Progress& progress_;
  std::size_t done_ = 0, all_ = 0;
};

// Takes a text piece by piece, and lets be told of it.
class TextBuffer final : public std::streambuf {
 public:
  explicit TextBuffer(Meter& meter) : meter_(meter) {}
  std::string take() { return std::move(text_); }

 private:
  std::streamsize xsputn(const char* piece, std::streamsize size) override {
    text_.append(piece, static_cast<std::size_t>(size));
    meter_.advance(static_cast<std::size_t>(std::count(piece, piece + size, '\n')));
    return size;
  }
  int_type overflow(int_type c) override {
    if (c != traits_type::eof()) text_ += traits_type::to_char_type(c);
    return traits_type::not_eof(c);
  }

  Meter& meter_;
  std::string text_;
};

std::vector<vb::Module> readModules(const ExactSource& source, const vb::WordLists& words,
                                    Meter& meter) {
  std::vector<vb::Module> modules;
  for (const ExactModule& module : source.modules()) {
    if (module.text.size() >= std::numeric_limits<std::uint32_t>::max())
      throw std::length_error("exact: a module of 4 GiB");
    modules.push_back(vb::readModule(module.text, module.name, module.kind, words));
    meter.advance(modules.back().lines);
  }
  return modules;
}

// One form of the modules; `anchors` gets the ids of their lines.
std::string written(Format format, const std::vector<vb::Module>& modules,
                    const ChosenLines& chosen, listing::Options options, std::u8string_view title,
                    Meter& meter, LineAnchors* anchors = nullptr) {
  const auto place = modules.size() > 1 ? listing::Place::OnePage : listing::Place::OwnPages;
  const listing::DocumentMaker maker(listingFormat(format), options, place);
  ExactProject project(maker);
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
  meter.advance(0);
  TextBuffer text(meter);
  std::ostream out(&text);
  out.exceptions(std::ios::badbit);  // what the meter throws comes through
  const auto document = project.makeDocument(title, out);
  forEach([&](const vb::Module& module, std::uint32_t i) { project.write(module, i, *document); });
  document->close();
  return text.take();
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

std::wstring chosenText(const LineList& lines, const ChosenLines& chosen, Meter& meter) {
  constexpr std::size_t kStep = 4096;
  std::wstring text;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (i % kStep == kStep - 1) meter.advance(kStep);
    if (!chosen || (i < chosen->size() && (*chosen)[i])) text += fromUtf8(lines[i]) + L"\r\n";
  }
  return text;
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
                         std::u8string_view title, const Progress& progress, bool darkPreview) {
  listing::Options anchored = options;
  anchored.lineAnchors = true;
  if (darkPreview) anchored.theme = listing::Theme::Dark;
  const bool same = !darkPreview && options.lineNumbers && options.style == listing::Style::Class;
  Meter meter(source, same ? 2 : 3, progress);
  const std::vector<vb::Module> modules = readModules(source, words, meter);
  ExactResult result{
      .lines = splitLines(written(Format::Lines, modules, chosen, options, title, meter)),
      .page = {},
      .preview = {},
      .anchors = {}};
  result.page = written(Format::Page, modules, chosen, options, title, meter, &result.anchors);
  result.preview =
      same ? result.page : written(Format::Page, modules, chosen, anchored, title, meter);
  return result;
}

// The modules count as one, so that nothing comes between them.
FormattedCopy formattedCopy(const ExactSource& source, const ChosenLines& chosen,
                            const listing::Options& options, const vb::WordLists& words,
                            const Progress& progress) {
  ExactSource joined;
  for (const ExactModule& module : source.modules()) joined.append(module.text);
  const listing::Options plain{.links = listing::Links::None,
                               .style = listing::Style::Inline,
                               .lineNumbers = options.lineNumbers,
                               .colors = options.colors};
  Meter meter(joined, 3, progress);
  const std::vector<vb::Module> modules = readModules(joined, words, meter);
  const LineList html = splitLines(written(Format::Lines, modules, chosen, plain, {}, meter));
  FormattedCopy copy{.html = copyOpener(plain.colors),
                     .rtf = written(Format::Rtf, modules, chosen, plain, {}, meter),
                     .text = {}};
  for (std::size_t i = 0; i < html.size(); ++i) copy.html.append(html[i]) += "<br>";
  copy.html += "</pre>";
  copy.text = chosenText(joined.lines(), chosen, meter);
  return copy;
}

}  // namespace tintline
