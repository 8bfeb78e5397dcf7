// See uses.h. Tested by tests/unit/site/site_test.cpp.
#include "site/uses.h"

#include <cstddef>

#include "vb/token_cursor.h"

namespace tintline::site {
namespace {

using vb::DeclarationKind;
using vb::TokenKind;

bool isWordByte(char8_t c) {
  return c >= 0x80 || c == '_' || (c >= '0' && c <= '9') ||
         ((c | 0x20) >= 'a' && (c | 0x20) <= 'z');
}

// Calls visit(word) for each run of letters, digits and "_" in a text.
template <class Visit>
void forWords(std::u8string_view text, Visit visit) {
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t begin = i;
    while (i < text.size() && isWordByte(text[i])) ++i;
    if (i > begin) visit(text.substr(begin, i - begin));
    i += i == begin;
  }
}

class UseReader {
 public:
  UseReader(const vb::Module& module, std::uint32_t index,
            std::span<const vb::Reference> references, ModuleFacts& facts, Names& names)
      : module_(module), index_(index), references_(references), facts_(facts), names_(names) {}

  std::vector<Use> run() {
    uses_.reserve(references_.size());
    for (at_ = 0; module_.tokens[at_].kind != TokenKind::End; ++at_) token();
    uses_.shrink_to_fit();
    return std::move(uses_);
  }

 private:
  void token() {
    if (module_.tokens[at_].word == vb::Word::Implements) implementsLine_ = line_;
    switch (module_.tokens[at_].kind) {
      case TokenKind::LineEnd:
      case TokenKind::Continuation:
        ++line_;
        return;
      case TokenKind::Comment:
        line_ += vb::lineEndsIn(module_.textOf(at_));
        return;
      case TokenKind::String:
        return forWords(module_.textOf(at_), [this](std::u8string_view word) {
          if (const auto number = names_.find(word); number != Names::kUnknown)
            names_.seeInText(number);
        });
      case TokenKind::HeaderWord:
        return unknown(vb::plainName(module_.textOf(at_)));
      case TokenKind::Label:
        return name();
      default:
        if (vb::isNameKind(module_.tokens[at_].kind)) name();
    }
  }

  void name() {
    const auto& declarations = module_.declarations;
    while (declaration_ < declarations.size() && declarations[declaration_].name < at_)
      ++declaration_;
    while (reference_ < references_.size() && references_[reference_].token < at_) ++reference_;
    bool known = declaration_ < declarations.size() && declarations[declaration_].name == at_;
    for (; reference_ < references_.size() && references_[reference_].token == at_; ++reference_) {
      refer(references_[reference_]);
      known = true;
    }
    if (known || module_.tokens[at_].kind == TokenKind::Label) return;
    const std::u8string_view text = module_.textOf(at_);
    if (text.front() == u8'[') forWords(text, [this](auto word) { unknown(word); });
    unknown(vb::plainName(text));
  }

  void refer(const vb::Reference& reference) {
    const bool own = reference.module == index_ && reference.declaration != vb::kNone;
    if (own) {
      Name& name = facts_.names[reference.declaration];
      if (name.kind == DeclarationKind::Parameter || name.kind == DeclarationKind::Label) return;
      if (name.kind == DeclarationKind::Local) {
        name.used = true;
        return;
      }
    }
    if (reference.declaration == vb::kNone && implementsLine_ == line_)
      facts_.interfaces.push_back(reference.module);
    uses_.push_back({.token = at_,
                     .module = reference.module,
                     .declaration = reference.declaration,
                     .procedure = procedureHere(),
                     .line = line_});
  }

  // A name of which nobody knows what it means; that of the procedure itself is its result.
  void unknown(std::u8string_view name) {
    const std::uint32_t number = names_.find(name);
    if (number == Names::kUnknown) return;
    const std::uint32_t procedure = procedureHere();
    const bool isResult = procedure != vb::kNone && facts_.names[procedure].number == number;
    const bool qualified = at_ > 0 && isMember(at_ - 1);
    if (!isResult || qualified) names_.seeInCode(number);
  }

  bool isMember(std::uint32_t token) const {
    const char8_t mark = module_.text[module_.tokens[token].begin];
    return module_.tokens[token].kind != TokenKind::End && (mark == u8'.' || mark == u8'!');
  }

  std::uint32_t procedureHere() {
    while (procedure_ < facts_.procedures.size() && facts_.procedures[procedure_].bodyEnd <= at_)
      ++procedure_;
    if (procedure_ == facts_.procedures.size()) return vb::kNone;
    const std::uint32_t declaration = facts_.procedures[procedure_].declaration;
    return module_.declarations[declaration].head.begin <= at_ ? declaration : vb::kNone;
  }

  const vb::Module& module_;
  const std::uint32_t index_;
  const std::span<const vb::Reference> references_;
  ModuleFacts& facts_;
  Names& names_;
  std::vector<Use> uses_;
  std::uint32_t at_ = 0;
  std::uint32_t line_ = 1;
  std::uint32_t implementsLine_ = 0;             // the last with an Implements
  std::size_t declaration_ = 0, reference_ = 0;  // the next of each
  std::size_t procedure_ = 0;                    // the last that begins in front of the token
};

}  // namespace

std::vector<Use> usesIn(const vb::Module& module, std::uint32_t index,
                        std::span<const vb::Reference> references, ModuleFacts& facts,
                        Names& names) {
  return UseReader(module, index, references, facts, names).run();
}

Callers::Callers(const std::vector<std::vector<Use>>& uses,
                 const std::vector<std::uint32_t>& names) {
  std::size_t count = 0;
  for (const std::uint32_t each : names) {
    first_.push_back(count);
    count += each;
  }
  // Counted, then filled: two rounds over the uses.
  begins_.resize(count + 1);
  const auto forAll = [&](auto visit) {
    for (std::uint32_t module = 0; module < uses.size(); ++module)
      for (std::uint32_t i = 0; i < uses[module].size(); ++i)
        if (const Use& use = uses[module][i]; use.declaration != vb::kNone)
          visit(first_[use.module] + use.declaration, Place{module, i});
  };
  forAll([&](std::size_t at, Place) { ++begins_[at + 1]; });
  for (std::size_t i = 0; i < count; ++i) begins_[i + 1] += begins_[i];
  places_.resize(begins_[count]);
  std::vector<std::uint32_t> next = begins_;
  forAll([&](std::size_t at, Place place) { places_[next[at]++] = place; });
}

}  // namespace tintline::site
