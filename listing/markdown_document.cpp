// See markdown_document.h. Tested by tests/golden/exact.
#include "listing/markdown_document.h"

#include <algorithm>
#include <string>

#include "listing/line_choice.h"
#include "listing/source_lines.h"

namespace tintline::listing {
namespace {

std::size_t longestRun(std::u8string_view text, char8_t character) {
  std::size_t longest = 0, run = 0;
  for (const char8_t c : text) {
    run = c == character ? run + 1 : 0;
    longest = std::max(longest, run);
  }
  return longest;
}

// Nothing in the text means anything to Markdown. Control characters, among them line ends,
// become blanks.
std::u8string escaped(std::u8string_view text) {
  std::u8string markdown;
  for (const char8_t c : text) {
    const bool punctuation = (c > ' ' && c < '0') || (c > '9' && c < 'A') || (c > 'Z' && c < 'a') ||
                             (c > 'z' && c < 0x7F);
    if (punctuation && c != '.') markdown += u8'\\';
    markdown += c < ' ' ? u8' ' : c;
  }
  return markdown;
}

// As code; the fence is longer than any in it.
void writeCodeSpan(Output& out, std::u8string text) {
  std::ranges::replace_if(
      text, [](char8_t c) { return c < ' '; }, u8' ');
  const std::string fence(longestRun(text, u8'`') + 1, '`');
  const std::string_view blank = fence.size() > 1 ? " " : "";
  out << fence << blank << text << blank << fence;
}

struct PlainLine {
  Output& out;

  bool isWanted(std::uint32_t) const { return false; }
  void marked(std::uint32_t, std::u8string_view text) { plain(text); }
  void plain(std::u8string_view text) {
    for (std::size_t nul; (nul = text.find(u8'\0')) != std::u8string_view::npos;) {
      out << text.substr(0, nul) << "\uFFFD";
      text.remove_prefix(nul + 1);
    }
    out << text;
  }
};

}  // namespace

MarkdownDocument::MarkdownDocument(std::ostream& out, const Options& options,
                                   const Targets& targets)
    : out_(out), options_(options), targets_(targets), words_(wordsOf(options.language)) {}

void MarkdownDocument::add(const Source& source) {
  if (!isFirst_) out_ << "\n";
  isFirst_ = false;
  out_ << "# " << escaped(source.module.name) << "\n\n" << summaryOf(source.module, words_) << "\n";
  if (!source.module.description.empty())
    out_ << "\n" << escaped(source.module.description) << "\n";
  writeIndex(source);
  writeCode(source);
}

void MarkdownDocument::close() { out_.flush(); }

void MarkdownDocument::writeIndex(const Source& source) {
  const auto lines = linesOfNames(source.module);
  for (std::size_t i = 0; i < kGroups; ++i) {
    const auto entries = targets_[source.index].group(static_cast<Group>(i));
    if (entries.empty()) continue;
    out_ << "\n## " << words_.groups[i] << "\n\n";
    std::u8string head;
    for (const IndexEntry& entry : entries) {
      headOf(head, source.module, source.module.declarations[entry.declaration]);
      out_ << "- ";
      writeCodeSpan(out_, head);
      out_ << " (" << words_.line << " " << lines[entry.declaration] << ")\n";
    }
  }
}

void MarkdownDocument::writeCode(const Source& source) {
  const std::size_t fence = std::max<std::size_t>(3, longestRun(source.module.text, u8'`') + 1);
  out_ << "\n## " << words_.code << "\n\n" << std::string(fence, '`') << "vb\n";
  PlainLine line{out_};
  forShownLines(source.module, options_, [&](SourceLines& lines) {
    if (options_.lineNumbers) out_ << lineNumber(source.module, lines.line());
    lines.visitLine(line);
    out_ << "\n";
  });
  out_ << std::string(fence, '`') << "\n";
}

}  // namespace tintline::listing
