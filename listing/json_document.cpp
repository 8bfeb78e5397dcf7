// See json_document.h. Tested by tests/golden/exact.
#include "listing/json_document.h"

#include <array>
#include <string>
#include <vector>

#include "listing/data_text.h"
#include "listing/line_choice.h"
#include "listing/links.h"
#include "listing/module_targets.h"
#include "listing/token_names.h"
#include "listing/unique_ids.h"
#include "listing/utf8.h"
#include "vb/own_names.h"

namespace tintline::listing {
namespace {

using vb::DeclarationKind;
using vb::TokenKind;

// Where a token stands, in characters.
struct Position {
  std::uint32_t line = 1, column = 1, length = 0;

  // Goes behind the text.
  void pass(std::u8string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
      if (isContinuationByte(text[i])) continue;
      if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;
      ++length;
      ++column;
      if (text[i] != '\n' && text[i] != '\r') continue;
      ++line;
      column = 1;
    }
  }
};

// The ids of all declarations: those of the pages, and for parameters and locals such that no
// page has.
std::vector<std::u8string> allIds(const vb::Module& module, const ModuleTargets& targets) {
  std::vector<std::u8string> all;
  std::u8string text;
  UniqueIds ids;
  const auto add = [&](std::u8string_view wanted) {
    const std::size_t begin = text.size();
    text += wanted;
    ids.add(text, begin);
    return text.substr(begin);
  };
  for (std::uint32_t i = 0; i < module.declarations.size(); ++i) {
    all.emplace_back(targets.id(i));
    if (!all.back().empty()) add(all.back());
  }
  for (std::uint32_t i = 0; i < module.declarations.size(); ++i) {
    if (!all[i].empty()) continue;
    const vb::Declaration& declaration = module.declarations[i];
    std::u8string wanted;
    if (declaration.scope != vb::kNone) wanted = all[declaration.scope] + u8".";
    appendIdText(wanted, vb::plainName(module.textOf(declaration.name)));
    all[i] = add(wanted);
  }
  return all;
}

std::u8string_view typeOfSuffix(std::u8string_view name) {
  if (name.empty() || name.front() == u8'[') return {};
  switch (name.back()) {
    case u8'%':
      return u8"Integer";
    case u8'&':
      return u8"Long";
    case u8'^':
      return u8"LongLong";
    case u8'!':
      return u8"Single";
    case u8'#':
      return u8"Double";
    case u8'@':
      return u8"Currency";
    case u8'$':
      return u8"String";
    default:
      return {};
  }
}

bool hasParameters(DeclarationKind kind) {
  return isProcedure(kind) || kind == DeclarationKind::Declare || kind == DeclarationKind::Event;
}

}  // namespace

// One module.
struct JsonDocument::Writer {
  Output& out;
  const Options& options;
  const Targets& targets;
  const Source& source;
  const vb::Module& module = source.module;

  void write() {
    out << "{\"name\":";
    writeJsonString(out, module.name);
    out << ",\"kind\":\"" << dataName(module.kind) << "\",\"lines\":" << module.lines
        << ",\"tokens\":[";
    const std::vector<Position> links = writeTokens();
    out << "],\"declarations\":[";
    writeDeclarations();
    out << "],\"links\":[";
    writeLinks(links);
    out << "]}\n";
  }

  // Returns where the references stand; what is not shown stands nowhere.
  std::vector<Position> writeTokens() {
    std::vector<Position> places;
    places.reserve(source.references.size());
    const LineChoice choice(module, options);
    Position place{.line = module.firstLine};
    std::string_view separator = "[";
    std::size_t end = 0;  // of the token before
    for (std::uint32_t i = 0; module.tokens[i].kind != TokenKind::End; ++i) {
      const std::size_t begin = module.tokens[i].begin;
      place.pass(std::u8string_view(module.text).substr(end, begin - end));
      end = endOf(module.tokens, i);
      const Position start = place;
      place.length = 0;
      place.pass(module.textOf(i));
      const Position token{start.line, start.column, place.length};
      const bool bound =
          places.size() < source.references.size() && source.references[places.size()].token == i;
      const bool shown = choice.shows(token.line, i);
      if (bound) places.push_back(shown ? token : Position{0, 0, 0});
      if (!shown) continue;
      const std::string_view kind =
          classOf(bound ? vb::kindOfName(module.tokens[i]) : module.tokens[i].kind);
      if (kind.empty()) continue;
      out << separator << token.line << "," << token.column << "," << token.length << ",\"" << kind
          << "\"]";
      separator = ",[";
    }
    return places;
  }

  // Of a header that does not count, controls have none.
  void writeLine(std::uint32_t line) {
    if (line == 0)
      out << "null";
    else
      out << line;
  }

  void writeDeclarations() {
    const std::vector<std::u8string> ids = allIds(module, targets[source.index]);
    for (std::uint32_t i = 0; i < module.declarations.size(); ++i) {
      const vb::Declaration& declaration = module.declarations[i];
      out << (i == 0 ? "{\"id\":" : ",{\"id\":");
      writeJsonString(out, ids[i]);
      out << ",\"kind\":\"" << dataName(declaration.kind) << "\",\"name\":";
      writeJsonString(out, vb::plainName(module.textOf(declaration.name)));
      out << ",\"accessor\":";
      writeJsonWord(out, dataName(declaration.accessor));
      out << ",\"visibility\":";
      writeJsonWord(out, dataName(declaration.visibility));
      out << ",\"line\":";
      writeLine(declaration.line);
      out << ",\"endLine\":";
      writeLine(declaration.endLine);
      out << ",\"parameters\":";
      writeParameters(i);
      out << ",\"type\":";
      writeType(declaration);
      out << ",\"scope\":";
      if (declaration.scope == vb::kNone)
        out << "null";
      else
        writeJsonString(out, ids[declaration.scope]);
      out << "}";
    }
  }

  // They stand directly behind what they belong to.
  void writeParameters(std::uint32_t procedure) {
    if (!hasParameters(module.declarations[procedure].kind)) {
      out << "null";
      return;
    }
    out << "[";
    for (std::uint32_t i = procedure + 1; i < module.declarations.size(); ++i) {
      const vb::Declaration& parameter = module.declarations[i];
      if (parameter.kind != DeclarationKind::Parameter || parameter.scope != procedure) break;
      if (i > procedure + 1) out << ",";
      writeJsonString(out, vb::plainName(module.textOf(parameter.name)));
    }
    out << "]";
  }

  // As the words behind As or a type suffix say it.
  void writeType(const vb::Declaration& declaration) {
    std::u8string type;
    for (std::uint32_t i = declaration.type.begin; i < declaration.type.end; ++i)
      if (module.tokens[i].kind != TokenKind::Continuation) type += module.textOf(i);
    if (type.empty()) type = typeOfSuffix(module.textOf(declaration.name));
    if (type.empty())
      out << "null";
    else
      writeJsonString(out, type);
  }

  void writeLinks(const std::vector<Position>& places) {
    std::string_view separator = "[";
    for (std::size_t i = 0; i < places.size(); ++i) {
      const vb::Reference& reference = source.references[i];
      if (places[i].line == 0 || !isLink(reference, source.index, options, targets)) continue;
      const ModuleTargets& target = targets[reference.module];
      out << separator << places[i].line << "," << places[i].column << "," << places[i].length
          << ",";
      separator = ",[";
      if (reference.module == source.index)
        out << "null";
      else
        writeJsonString(out, target.name());
      out << ",";
      if (reference.declaration == vb::kNone)
        out << "null";
      else
        writeJsonString(out, target.id(reference.declaration));
      out << "]";
    }
  }
};

JsonDocument::JsonDocument(std::ostream& out, const Options& options, const Targets& targets)
    : out_(out), options_(options), targets_(targets) {}

void JsonDocument::add(const Source& source) { Writer{out_, options_, targets_, source}.write(); }

void JsonDocument::close() { out_.flush(); }

}  // namespace tintline::listing
