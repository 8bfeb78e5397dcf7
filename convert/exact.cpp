// The exact conversion as a whole. See exact.h.
// Tested by tests/cli/run.py and tests/golden.
#include "convert/exact.h"

#include <limits>
#include <optional>
#include <stdexcept>
#include <utility>

#include "base/codepage.h"
#include "base/ini.h"
#include "base/text.h"
#include "convert/source_text.h"
#include "listing/line_choice.h"
#include "listing/module_targets.h"

namespace tintline {
namespace {

// The text without the lines of attributes and, where it is not to be kept, of the file header.
std::u8string editorText(const vb::Module& module, bool keepHeader) {
  std::u8string text;
  std::size_t kept = 0;  // all in front of it is in the text, or dropped
  bool lineBegins = true;
  for (std::uint32_t i = keepHeader ? module.header.end : 0; i + 1 < module.tokens.size(); ++i) {
    const vb::Token& token = module.tokens[i];
    const bool attribute =
        token.kind == vb::TokenKind::Directive && token.word == vb::Word::Attribute;
    if (lineBegins && (i < module.header.end || attribute)) {
      const std::size_t begin = token.begin - token.gap;
      text.append(module.text, kept, begin - kept);
      while (module.tokens[i].kind != vb::TokenKind::LineEnd &&
             module.tokens[i].kind != vb::TokenKind::End)
        ++i;
      kept = module.tokens[i].kind == vb::TokenKind::End ? module.text.size()
                                                         : vb::endOf(module.tokens, i);
      if (module.tokens[i].kind == vb::TokenKind::End) break;
    } else {
      lineBegins = token.kind == vb::TokenKind::LineEnd;
    }
  }
  return text.append(module.text, kept);
}

// Lines count from behind the header.
void leaveHeaderOut(vb::Module& module) {
  std::uint32_t lines = 0;
  for (std::uint32_t i = 0; i < module.header.end; ++i) lines += listing::lineEndsIn(module, i);
  module.firstLine -= lines;
  module.lines -= lines;
  for (vb::Declaration& declaration : module.declarations) {
    const bool isControl = declaration.name < module.header.end;
    declaration.line -= isControl ? declaration.line : lines;
    declaration.endLine -= isControl ? declaration.endLine : lines;
  }
}

// The module as the editor shows it, lines counted as there. What header and attributes say of it
// still holds. A header with controls declares names: then it stays, to be hidden by the listing.
vb::Module asInEditor(vb::Module module, const vb::WordLists& words) {
  const bool hasControls =
      !module.declarations.empty() && module.declarations.front().name < module.header.end;
  vb::Module shown =
      vb::readModule(editorText(module, hasControls), module.name, module.kind, words);
  if (hasControls) leaveHeaderOut(shown);
  shown.kind = module.kind;
  shown.predeclared = module.predeclared;
  shown.description = std::move(module.description);
  for (std::size_t i = 0; i < shown.declarations.size() && i < module.declarations.size(); ++i)
    shown.declarations[i].defaultMember = module.declarations[i].defaultMember;
  return shown;
}

}  // namespace

vb::ModuleKind moduleKindOf(const std::filesystem::path& file) {
  using enum vb::ModuleKind;
  static constexpr std::pair<std::string_view, vb::ModuleKind> kKinds[] = {
      {".cls", Class},        {".frm", Form},         {".ctl", UserControl},
      {".pag", PropertyPage}, {".dob", UserDocument}, {".dsr", Designer}};
  const std::string extension = toAnsi(pathText(file.extension()));
  for (const auto& [known, kind] : kKinds)
    if (equalsIgnoreCase(extension, known)) return kind;
  return Standard;
}

vb::WordLists exactWords(std::string_view iniFile) {
  const std::u8string text = decodeSource(iniFile).text;
  const std::string_view file(reinterpret_cast<const char*>(text.data()), text.size());
  const auto section = [file](std::string_view name) {
    const std::string entries = ini::sectionText(file, name, file.size());
    return std::u8string(entries.begin(), entries.end());
  };
  return {section("Keywords 1"), section("Keywords 2")};
}

std::u8string exactStyleSheet(std::string_view bytes) { return decodeSource(bytes).text; }

listing::UserColors exactColors(const ColorScheme& colors) {
  ColorScheme defaults;
  modColor::Farbesetzen(defaults);
  const auto chosen = [&](std::size_t category) -> std::optional<listing::Color> {
    const std::string& text = colors[category][kTextColor];
    if (equalsIgnoreCase(text, defaults[category][kTextColor])) return {};
    return listing::colorFromText(text);
  };
  return {.procedures = chosen(kProzeduren),
          .reservedWords = chosen(kReservierteWorte),
          .parameters = chosen(kParameter),
          .comments = chosen(kKommentare),
          .strings = chosen(kStrings)};
}

std::u8string addressOf(const std::filesystem::path& page) {
  constexpr std::string_view kPlain = "-._~/";
  constexpr std::u8string_view kHex = u8"0123456789ABCDEF";
  std::u8string address;
  const std::filesystem::path slashed(page.generic_string<std::filesystem::path::value_type>());
  for (const char character : pathBytes(slashed)) {
    const auto byte = static_cast<unsigned char>(character);
    const bool letter = (byte | 0x20) >= 'a' && (byte | 0x20) <= 'z';
    if (letter || (byte >= '0' && byte <= '9') || kPlain.find(character) != kPlain.npos) {
      address += byte;
      continue;
    }
    address += u8'%';
    address += kHex[byte >> 4];
    address += kHex[byte & 15];
  }
  return address;
}

std::u8string exactText(std::wstring_view text) {
  const std::string utf8 = toUtf8(text);
  return std::u8string(utf8.begin(), utf8.end());
}

vb::Module readExact(std::u8string text, const std::filesystem::path& file,
                     const vb::WordLists& words, const std::vector<Reformatting>& passes,
                     bool inEditor) {
  for (std::size_t pass = 0;; ++pass) {
    if (text.size() >= std::numeric_limits<std::uint32_t>::max())
      throw std::length_error("exact: a module of 4 GiB");
    if (pass == passes.size()) break;
    text = reformatted(text, passes[pass]);
  }
  vb::Module module =
      vb::readModule(std::move(text), exactText(pathText(file.stem())), moduleKindOf(file), words);
  if (inEditor) return asInEditor(std::move(module), words);
  return module;
}

listing::Format listingFormat(Format format) {
  switch (format) {
    case Format::Body:
      return listing::Format::Body;
    case Format::Lines:
      return listing::Format::Lines;
    case Format::Rtf:
      return listing::Format::Rtf;
    case Format::Markdown:
      return listing::Format::Markdown;
    case Format::Json:
      return listing::Format::Json;
    default:
      return listing::Format::Page;
  }
}

ExactProject::ExactProject(const listing::DocumentMaker& maker)
    : maker_(maker), targets_(maker.options(), maker.place()) {}

std::uint32_t ExactProject::add(const vb::Module& module, const std::filesystem::path& page) {
  if (needsReferences()) project_.add(module);
  return targets_.add(module, listing::addressOf(page.u8string()));
}

std::u8string ExactProject::linePrefix(std::uint32_t index) const {
  return targets_[index].prefix();
}

std::unique_ptr<listing::Document> ExactProject::makeDocument(std::u8string_view title,
                                                              std::ostream& out) const {
  return maker_.make(out, targets_, title);
}

void ExactProject::write(const vb::Module& module, std::uint32_t index,
                         listing::Document& document) const {
  std::vector<vb::Reference> references;
  if (needsReferences()) references = project_.resolve(module, index);
  document.add({.module = module, .references = references, .index = index});
}

void ExactProject::write(const vb::Module& module, std::uint32_t index, std::u8string_view title,
                         std::ostream& out) const {
  const auto document = makeDocument(title, out);
  write(module, index, *document);
  document->close();
}

bool ExactProject::needsReferences() const {
  const listing::Format format = maker_.format();
  if (format == listing::Format::Rtf || format == listing::Format::Markdown) return false;
  return maker_.options().links != listing::Links::None || format == listing::Format::Json;
}

}  // namespace tintline
