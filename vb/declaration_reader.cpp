// See declaration_reader.h. Tested by the cases in tests/golden/language/declarations
// and tests/unit/any_text_property_test.cpp.
//
// The reader goes through the statements once. One that begins with a word of a declaration is
// read to its end, any other is skipped. Procedures do not lie in each other, nor do types and
// enums: at most one of each is open.
#include "vb/declaration_reader.h"

#include <optional>
#include <vector>

#include "vb/attributes.h"
#include "vb/branches.h"
#include "vb/file_header.h"
#include "vb/token_cursor.h"

namespace tintline::vb {

namespace {

// The words in front of what a statement declares.
struct Lead {
  std::uint32_t first;  // token
  std::uint32_t line;
  Visibility visibility = Visibility::None;
  bool isStatic = false;
  bool any = false;
};

// What a name means so far.
struct Known {
  bool inModule = false;
  std::uint32_t procedure = kNone;  // the last one that has it as a local
};

class Reader {
 public:
  Reader(Module& module, const Breaks& breaks)
      : module_(module), cursor_(module.text, module.tokens, breaks) {}

  void read() {
    readFileHeader(module_, cursor_);
    for (const Declaration& control : module_.declarations) known(control.name).inModule = true;
    setPredeclared();
    while (!cursor_.atEnd()) {
      statement();
      cursor_.skipStatement();
      inBranch_ = cursor_.toNextStatement();
    }
    closeAll({cursor_.behindLast(), cursor_.lastLine()});
    const bool closed =
        module_.text.empty() || module_.text.ends_with(u8'\n') || module_.text.ends_with(u8'\r');
    module_.lines = cursor_.line() - (closed ? 1 : 0);
  }

 private:
  // Behind what has been read.
  struct Position {
    std::uint32_t token, line;
  };
  Position position() const { return {cursor_.behindLast(), cursor_.lastLine()}; }

  // ------------------------------------------------------------------------- statements

  void statement() {
    while (cursor_.kind() == TokenKind::Label && !inBranch_) label();
    before_ = position();
    if (cursor_.kind() == TokenKind::Directive) return directive();
    inHeader_ = false;
    if (cursor_.kind() == TokenKind::Keyword)
      keywordStatement();
    else if (block_ != kNone && cursor_.isName())
      member();
  }

  void keywordStatement() {
    Lead lead{cursor_.at(), cursor_.line()};
    while (readLead(lead)) cursor_.advance();
    switch (cursor_.word()) {
      case Word::Sub:
        return procedure(lead, DeclarationKind::Sub);
      case Word::Function:
        return procedure(lead, DeclarationKind::Function);
      case Word::Property:
        return procedure(lead, DeclarationKind::Property);
      case Word::Declare:
        return libraryProcedure(lead);
      case Word::Event:
        return event(lead);
      case Word::Type:
        return openBlock(lead, DeclarationKind::Type);
      case Word::Enum:
        return openBlock(lead, DeclarationKind::Enum);
      case Word::Const:
        return variables(lead);
      case Word::ReDim:
        return reDim(lead);
      case Word::End:
        return end();
      default:
        if (lead.any) variables(lead);
    }
  }

  bool readLead(Lead& lead) const {
    switch (cursor_.word()) {
      case Word::Public:
      case Word::Global:
        lead.visibility = Visibility::Public;
        break;
      case Word::Private:
        lead.visibility = Visibility::Private;
        break;
      case Word::Friend:
        lead.visibility = Visibility::Friend;
        break;
      case Word::Static:
        lead.isStatic = true;
        break;
      case Word::Dim:
        break;
      default:
        return false;
    }
    lead.any = true;
    return true;
  }

  void end() {
    cursor_.advance();
    const Word word = cursor_.word();
    const bool ofProcedure = word == Word::Sub || word == Word::Function || word == Word::Property;
    if (!ofProcedure && word != Word::Type && word != Word::Enum) return;
    cursor_.advance();
    if (ofProcedure)
      closeAll(position());
    else
      close(block_, position());
  }

  void label() {
    if (procedure_ != kNone) {
      const std::uint32_t index =
          declare(DeclarationKind::Label, {cursor_.at(), cursor_.line()}, procedure_);
      cursor_.advance();
      finish(index);
    } else {
      cursor_.advance();
    }
  }

  // --------------------------------------------------------------- directives, attributes

  void directive() {
    if (cursor_.word() == Word::Attribute) {
      if (!readAttribute(module_, cursor_, procedure_ != kNone ? procedure_ : lastVariable_))
        inHeader_ = false;
    } else {
      inHeader_ = false;
      cursor_.advance();  // "#"
      branches_.directive(cursor_.word());
    }
    cursor_.skipLine();
    if (inHeader_) module_.header.end = cursor_.at() + (cursor_.atEnd() ? 0 : 1);
  }

  void setPredeclared() {
    module_.predeclared = module_.kind == ModuleKind::Form || module_.kind == ModuleKind::Document;
  }

  // ------------------------------------------------------------------------- procedures

  void procedure(const Lead& lead, DeclarationKind kind) {
    cursor_.advance();
    Accessor accessor = Accessor::None;
    if (kind == DeclarationKind::Property) {
      accessor = accessorHere();
      if (accessor == Accessor::None) return;
      cursor_.advance();
    }
    if (!cursor_.isName()) return;
    endOpen();
    const bool otherHead = procedure_ != kNone;
    const std::uint32_t index = declare(kind, lead, kNone, Visibility::Public);
    module_.declarations[index].accessor = accessor;
    known(cursor_.at()).inModule = true;
    if (!otherHead) {
      procedure_ = index;
      procedureBranch_ = branches_.current();
    }
    cursor_.advance();
    parametersAndType(index);
    openBody(index);
  }

  Accessor accessorHere() const {
    switch (cursor_.word()) {
      case Word::Get:
        return Accessor::Get;
      case Word::Let:
        return Accessor::Let;
      case Word::Set:
        return Accessor::Set;
      default:
        return Accessor::None;
    }
  }

  // In another branch of the "#If" that holds the open procedure's head: a head there shares its
  // body, and what the module declares in front of that head does not end it.
  bool besideHead() const {
    return procedure_ != kNone && branches_.current().isBeside(procedureBranch_);
  }

  // What the module declares cannot lie in what is open.
  void endOpen() {
    close(block_, before_);
    if (!besideHead()) close(procedure_, before_);
  }

  void libraryProcedure(const Lead& lead) {
    endOpen();
    cursor_.advance();
    if (cursor_.word() == Word::PtrSafe) cursor_.advance();
    if (cursor_.word() != Word::Sub && cursor_.word() != Word::Function) return;
    cursor_.advance();
    if (!cursor_.isName()) return;
    const std::uint32_t index = declare(DeclarationKind::Declare, lead, kNone, Visibility::Public);
    cursor_.advance();
    while (!cursor_.atStatementEnd() && !cursor_.is(u8'(') && cursor_.word() != Word::As)
      cursor_.advance();  // CDecl, Lib "..." and Alias "..."
    parametersAndType(index);
  }

  void event(const Lead& lead) {
    endOpen();
    cursor_.advance();
    if (!cursor_.isName()) return;
    const std::uint32_t index = declare(DeclarationKind::Event, lead, kNone, Visibility::Public);
    cursor_.advance();
    parametersAndType(index);
  }

  void parametersAndType(std::uint32_t index) {
    if (cursor_.is(u8'(')) {
      cursor_.advance();
      while (!cursor_.atStatementEnd() && !cursor_.is(u8')')) {
        parameter(index);
        cursor_.skipItem();
        if (cursor_.is(u8',')) cursor_.advance();
      }
      if (cursor_.is(u8')')) cursor_.advance();
    }
    type(module_.declarations[index]);
    finish(index);
  }

  void parameter(std::uint32_t scope) {
    Declaration words;
    const Lead lead{cursor_.at(), cursor_.line()};
    while (readParameterWord(words)) cursor_.advance();
    if (!cursor_.isName()) return;
    if (isProcedure(module_.declarations[scope].kind)) known(cursor_.at()).procedure = procedure_;
    const std::uint32_t index = declare(DeclarationKind::Parameter, lead, scope);
    module_.declarations[index].optional = words.optional;
    module_.declarations[index].byValue = words.byValue;
    module_.declarations[index].paramArray = words.paramArray;
    cursor_.advance();
    restOfItem(index);
  }

  bool readParameterWord(Declaration& words) const {
    switch (cursor_.word()) {
      case Word::Optional:
        return words.optional = true;
      case Word::ByVal:
        return words.byValue = true;
      case Word::ParamArray:
        return words.paramArray = true;
      default:
        return cursor_.word() == Word::ByRef;
    }
  }

  // ----------------------------------------------------------------------- types, enums

  void openBlock(const Lead& lead, DeclarationKind kind) {
    endOpen();
    cursor_.advance();
    if (!cursor_.isName()) return;
    block_ = declare(kind, lead, kNone, Visibility::Public);
    cursor_.advance();
    finish(block_);
    openBody(block_);
  }

  void member() {
    const Declaration& block = module_.declarations[block_];
    const std::uint32_t index = declare(
        block.kind == DeclarationKind::Type ? DeclarationKind::Field : DeclarationKind::EnumMember,
        {cursor_.at(), cursor_.line()}, block_, block.visibility);
    cursor_.advance();
    restOfItem(index);
  }

  // ------------------------------------------------------------------ variables, constants

  // The list behind Dim, Public Const, Static ...
  void variables(const Lead& lead) {
    const bool constant = cursor_.word() == Word::Const;
    if (constant) cursor_.advance();
    const bool ofModule = lead.visibility != Visibility::None || procedure_ == kNone;
    if (ofModule) endOpen();
    const std::uint32_t scope = ofModule ? kNone : procedure_;
    DeclarationKind kind = constant ? DeclarationKind::Constant : DeclarationKind::Variable;
    if (!ofModule) kind = DeclarationKind::Local;
    const TokenRange words{lead.first, cursor_.behindLast()};
    for (bool first = true;; first = false) {
      Lead item = lead;
      if (!first) item.first = cursor_.at(), item.line = cursor_.line();
      const bool withEvents = cursor_.word() == Word::WithEvents;
      if (withEvents) cursor_.advance();
      if (!cursor_.isName()) return;
      const std::uint32_t index = declare(kind, item, scope, Visibility::Private);
      Declaration& declared = module_.declarations[index];
      declared.isConstant = constant && !ofModule;
      declared.withEvents = withEvents;
      if (!first) declared.lead = words;
      noteVariable(index);
      cursor_.advance();
      restOfItem(index);
      if (!cursor_.is(u8',')) return;
      cursor_.advance();
    }
  }

  void noteVariable(std::uint32_t index) {
    Known& name = known(module_.declarations[index].name);
    if (module_.declarations[index].kind == DeclarationKind::Local) {
      name.procedure = procedure_;
    } else {
      name.inModule = true;
      lastVariable_ = index;
    }
  }

  // Declares what nothing above declares.
  void reDim(const Lead& lead) {
    cursor_.advance();
    if (cursor_.word() == Word::Preserve) cursor_.advance();
    const TokenRange words{lead.first, cursor_.behindLast()};
    for (bool first = true; procedure_ != kNone && cursor_.isName(); first = false) {
      const std::uint32_t name = cursor_.at();
      Lead item = lead;
      if (!first) item.first = name, item.line = cursor_.line();
      cursor_.advance();
      const bool member = cursor_.is(u8'.') || cursor_.is(u8'!');
      if (!member && !isKnown(name)) {
        const std::uint32_t index = declare(DeclarationKind::Local, item, procedure_);
        Declaration& declared = module_.declarations[index];
        declared.name = name;
        declared.byReDim = true;
        if (!first) declared.lead = words;
        noteVariable(index);
        restOfItem(index);
      } else {
        cursor_.skipItem();
      }
      if (!cursor_.is(u8',')) return;
      cursor_.advance();
    }
  }

  // ------------------------------------------------------------------- parts of declarations

  // `visibility`: where no word says it.
  std::uint32_t declare(DeclarationKind kind, const Lead& lead, std::uint32_t scope,
                        Visibility visibility = Visibility::None) {
    Declaration declared;
    declared.kind = kind;
    declared.scope = scope;
    declared.name = cursor_.at();
    declared.line = lead.line;
    declared.isStatic = lead.isStatic;
    declared.branch = branches_.current().branch;
    declared.head.begin = lead.first;
    if (kind != DeclarationKind::Local)
      declared.visibility = lead.visibility == Visibility::None ? visibility : lead.visibility;
    module_.declarations.push_back(declared);
    return static_cast<std::uint32_t>(module_.declarations.size() - 1);
  }

  // Behind a name: bounds, type, length or value, up to the "," or ")" behind them.
  void restOfItem(std::uint32_t index) {
    Declaration& declared = module_.declarations[index];
    if (cursor_.is(u8'(')) {
      declared.isArray = true;
      cursor_.skipParentheses();
    }
    type(declared);
    cursor_.skipItem();
    finish(index);
  }

  // As [New] name.name [()]
  void type(Declaration& declared) {
    if (cursor_.word() != Word::As) return;
    cursor_.advance();
    declared.isNew = cursor_.word() == Word::New;
    if (declared.isNew) cursor_.advance();
    declared.type = {cursor_.at(), cursor_.at()};
    while (cursor_.isName() || cursor_.kind() == TokenKind::TypeWord ||
           cursor_.kind() == TokenKind::Keyword) {
      cursor_.advance();
      declared.type.end = cursor_.behindLast();
      if (!cursor_.is(u8'.')) break;
      cursor_.advance();
    }
    if (!cursor_.is(u8'(')) return;
    declared.isArray = true;
    cursor_.skipParentheses();
  }

  void finish(std::uint32_t index) {
    module_.declarations[index].head.end = cursor_.behindLast();
    module_.declarations[index].endLine = cursor_.lastLine();
  }

  void openBody(std::uint32_t index) {
    Declaration& declared = module_.declarations[index];
    declared.body = {declared.head.end, declared.head.end};
  }

  void closeAll(Position end) {
    close(block_, end);
    close(procedure_, end);
  }

  // What is open ends there. One whose End is missing ends in front of what cannot lie in it.
  void close(std::uint32_t& open, Position end) {
    if (open == kNone) return;
    Declaration& declared = module_.declarations[open];
    if (end.token > declared.body.begin) {
      declared.body.end = end.token;
      declared.endLine = end.line;
    }
    open = kNone;
  }

  // -------------------------------------------------------------------------------- names

  Known& known(std::uint32_t token) {
    const Word word = module_.tokens[token].word;
    const std::uint32_t number =
        isNumbered(word) ? numberOf(word)
                         : module_.names.add(module_.text, plainName(module_.textOf(token)));
    if (number >= known_.size()) known_.resize(module_.names.size());
    return known_[number];
  }

  bool isKnown(std::uint32_t token) {
    const Known& name = known(token);
    return name.inModule || name.procedure == procedure_;
  }

  Module& module_;
  TokenCursor cursor_;
  std::vector<Known> known_;  // by the number of the name
  Branches branches_;
  Position before_{};                // the statement
  bool inBranch_ = false;            // it stands behind Then or Else
  std::uint32_t procedure_ = kNone;  // that is open
  Branch procedureBranch_;           // of its head
  std::uint32_t block_ = kNone;      // type or enum that is open
  std::uint32_t lastVariable_ = kNone;
  bool inHeader_ = true;  // nothing but header and attributes so far
};

}  // namespace

void readDeclarations(Module& module, const Breaks& breaks) {
  module.declarations.reserve(module.tokens.size() / 32);
  Reader(module, breaks).read();
}

}  // namespace tintline::vb
