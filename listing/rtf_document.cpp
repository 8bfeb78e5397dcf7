// See rtf_document.h. Tested by tests/golden/exact.
#include "listing/rtf_document.h"

#include <array>
#include <string>

#include "listing/line_choice.h"
#include "listing/source_lines.h"
#include "listing/token_names.h"
#include "listing/utf8.h"

namespace tintline::listing {
namespace {

// \uN has a signed number of 16 bits, and one character for readers that do not know it.
void writeUnit(Output& out, std::uint32_t unit) {
  out << "\\u";
  if (unit < 0x8000)
    out << unit;
  else
    out << "-" << 0x10000 - unit;
  out << "?";
}

void writeCharacter(Output& out, char32_t c) {
  if (c == 0) c = kReplacement;
  if (c == '\t') {
    out << "\\tab ";
  } else if (c >= 0x10000) {
    writeUnit(out, 0xD800 + ((c - 0x10000) >> 10));
    writeUnit(out, 0xDC00 + (c & 0x3FF));
  } else if (c < 0x20 || c >= 0x7F) {
    writeUnit(out, c);
  } else {
    if (c == '\\' || c == '{' || c == '}') out << "\\";
    const char8_t ascii = static_cast<char8_t>(c);
    out << std::u8string_view(&ascii, 1);
  }
}

bool isPlain(char8_t c) { return c >= 0x20 && c < 0x7F && c != '\\' && c != '{' && c != '}'; }

void writeText(Output& out, std::u8string_view text) {
  while (!text.empty()) {
    std::size_t plain = 0;
    while (plain < text.size() && isPlain(text[plain])) ++plain;
    out << text.substr(0, plain);
    text.remove_prefix(plain);
    if (text.empty()) return;
    writeCharacter(out, codePointOf(text));
    text.remove_prefix(sizeOfFirst(text));
  }
}

// The color table begins with the automatic color; Tint::Text is the first of ours.
std::size_t colorNumber(Tint tint) { return static_cast<std::size_t>(tint) + 1; }

struct RtfLine {
  Output& out;
  const vb::Module& module;

  bool isWanted(std::uint32_t) const { return false; }
  void plain(std::u8string_view text) { writeText(out, text); }
  void marked(std::uint32_t token, std::u8string_view text) {
    const vb::TokenKind kind = module.tokens[token].kind;
    out << "{\\cf" << colorNumber(*tintOf(kind));
    if (kind == vb::TokenKind::ProcedureName) out << "\\b";
    if (kind == vb::TokenKind::Comment) out << "\\i";
    out << " ";
    writeText(out, text);
    out << "}";
  }
};

}  // namespace

RtfDocument::RtfDocument(std::ostream& out, const Options& options) : out_(out), options_(options) {
  out_ << "{\\rtf1\\ansi\\ansicpg1252\\uc1{\\fonttbl{\\f0\\fmodern Consolas;}}{\\colortbl;";
  for (const Color color : lightPalette(options.colors))
    out_ << "\\red" << (color >> 16) << "\\green" << (color >> 8 & 0xFF) << "\\blue"
         << (color & 0xFF) << ";";
  out_ << "}\r\n\\pard\\plain\\f0\\fs20\\cf" << colorNumber(Tint::Text) << " ";
}

void RtfDocument::add(const Source& source) {
  if (!isFirst_) out_ << "\\page\r\n";
  isFirst_ = false;
  RtfLine line{out_, source.module};
  forShownLines(source.module, options_, [&](SourceLines& lines) {
    if (options_.lineNumbers)
      out_ << "{\\cf" << colorNumber(Tint::LineNumber) << " "
           << lineNumber(source.module, lines.line()) << "}";
    lines.visitLine(line);
    out_ << "\\line\r\n";
  });
}

void RtfDocument::close() {
  out_ << "}\r\n";
  out_.flush();
}

}  // namespace tintline::listing
