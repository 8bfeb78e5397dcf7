// See resolver.h. Tested by tests/unit/vb/project_test.cpp and the cases in tests/golden/language.
//
// The pass knows of each statement as much as its names need: the value of the expression in
// front of the token (`value_`), which a "." asks for its members, the values in front of the
// open parentheses, the With blocks, and whether an "=" would be an assignment.
#include "vb/resolver.h"

#include <utility>

#include "vb/fold.h"
#include "vb/name_table.h"
#include "vb/token_cursor.h"

namespace tintline::vb {

namespace {

// What an expression is, as far as its members are known.
struct Value {
  enum class Kind : std::uint8_t {
    Unknown,
    Instance,  // of the module `index`
    Record,    // of the Type `index`
    Enum,      // the Enum `index` itself
    Module,    // the standard module `index` itself
    Project
  };
  Kind kind = Kind::Unknown;
  bool isArray = false;
  bool takesArguments = false;  // a call that still lacks its arguments
  std::uint32_t index = 0;
};

// What is known of a name of the module, looked up once.
struct KnownName {
  std::uint32_t inProject = NameTable::kUnknown;  // its number there
  std::uint32_t local = kNone;                    // declaration in
  std::uint32_t localOf = kNone;                  // this procedure
  std::uint32_t label = kNone;                    // likewise
  std::uint32_t labelOf = kNone;
  bool bareFound = false, typeFound = false;
  Meaning bare, type;
};

class Resolver {
 public:
  Resolver(const Module& module, std::uint32_t index, const ProjectTables& tables)
      : module_(module), index_(index), tables_(tables), localTypes_(module.declarations.size()) {}

  std::vector<Reference> run() {
    at_ = module_.header.end;
    skipDeclarations();
    references_.reserve(module_.tokens.size() / 8);
    startStatement();
    while (kind() != TokenKind::End) token();
    return std::move(references_);
  }

 private:
  // The expression that a statement begins with: an "=" behind it assigns to it.
  enum class Target : std::uint8_t { Awaited, Open, None };

  TokenKind kind() const { return module_.tokens[at_].kind; }
  Word word() const { return module_.tokens[at_].word; }
  char8_t character(std::uint32_t token) const { return module_.text[module_.tokens[token].begin]; }

  // ---------------------------------------------------------------------------- tokens

  void token() {
    switch (kind()) {
      case TokenKind::Blank:
      case TokenKind::Continuation:
        ++at_;
        return;
      case TokenKind::LineEnd:
      case TokenKind::Comment:
        ++at_;
        return startStatement();
      case TokenKind::Directive:
        return directive();
      case TokenKind::Punctuation:
      case TokenKind::Operator:
        return punctuation(character(at_));
      case TokenKind::Keyword:
      case TokenKind::OperatorWord:
        keyword();
        ++at_;
        return;
      case TokenKind::Label:
        return label();
      default:
        if (isNameKind(kind())) return name();
        ++at_;
        return otherOperand();
    }
  }

  void startStatement() {
    if (with_.pending) pushWith(value_);
    if (at_ >= procedureEnd_) leaveProcedure();
    value_ = {};
    behindOperand_ = false;
    open_.clear();
    target_ = Target::Awaited;
    targetReference_ = kNone;
    assigned_ = Accessor::Let;
    statementWord_ = Word::None;
    lastWord_ = Word::None;
    typeExpected_ = eventExpected_ = isNew_ = typeOf_ = false;
  }

  // A string, number, type of the language or the like.
  void otherOperand() {
    value_ = {};
    behindOperand_ = true;
    typeExpected_ = isNew_ = eventExpected_ = false;
    if (open_.empty()) target_ = Target::None;
  }

  void punctuation(char8_t character) {
    switch (character) {
      case u8'.':
      case u8'!':
        return member(character == u8'!');
      case u8'(':
        return openParenthesis();
      case u8')':
        ++at_;
        value_ = {};
        behindOperand_ = true;
        if (open_.empty()) return;
        value_ = open_.back();
        open_.pop_back();
        return;
      case u8':':
        ++at_;
        return startStatement();
      case u8'=':
        if (open_.empty() && target_ == Target::Open) assign();
        break;
      default:
        break;
    }
    ++at_;
    value_ = {};
    behindOperand_ = false;
    if (open_.empty()) target_ = Target::None;
  }

  void keyword() {
    const Word word = this->word();
    const Word before = std::exchange(lastWord_, word);
    const bool first = target_ == Target::Awaited && open_.empty();
    if (statementWord_ == Word::None) statementWord_ = word;
    value_ = {};
    behindOperand_ = false;
    const bool newType = typeExpected_;
    typeExpected_ = eventExpected_ = isNew_ = false;
    switch (word) {
      case Word::Then:
      case Word::Else:
        return startStatement();
      case Word::Me:
        return me();
      case Word::Set:
        assigned_ = Accessor::Set;
        if (first) return;
        break;
      case Word::Let:
        if (first) return;
        break;
      case Word::New:
        isNew_ = !newType;
        typeExpected_ = true;
        break;
      case Word::As:
        typeExpected_ = statementWord_ != Word::Open && statementWord_ != Word::Name;
        break;
      case Word::Implements:
        typeExpected_ = true;
        break;
      case Word::TypeOf:
        typeOf_ = true;
        break;
      case Word::Is:
        typeExpected_ = std::exchange(typeOf_, false);
        break;
      case Word::RaiseEvent:
        eventExpected_ = true;
        break;
      case Word::With:
        if (before == Word::End)
          popWith();
        else
          with_.pending = true;
        break;
      default:
        break;
    }
    if (open_.empty()) target_ = Target::None;
  }

  void me() {
    beginOperand();
    if (!tables_.module(index_).standard) value_ = {.kind = Value::Kind::Instance, .index = index_};
  }

  // In the branches of "#If" the same With blocks are open at the start, and behind them those of
  // the first branch.
  void directive() {
    if (character(at_) == u8'#') {
      switch (directiveWord()) {
        case Word::If:
          branches_.push_back({with_.open, kUnset});
          break;
        case Word::ElseIf:
        case Word::Else:
          if (branches_.empty()) break;
          if (branches_.back().behindFirst == kUnset) branches_.back().behindFirst = with_.open;
          with_.open = branches_.back().before;
          break;
        case Word::End:
        case Word::EndIf:
          if (branches_.empty()) break;
          if (branches_.back().behindFirst != kUnset) with_.open = branches_.back().behindFirst;
          branches_.pop_back();
          break;
        default:
          break;
      }
    }
    while (kind() != TokenKind::LineEnd && kind() != TokenKind::End) ++at_;
  }

  Word directiveWord() {
    do ++at_;
    while (isGap(kind()));
    return word();
  }

  // ------------------------------------------------------------------------ expressions

  void beginOperand() {
    if (open_.empty()) {
      target_ = target_ == Target::Awaited ? Target::Open : Target::None;
      targetReference_ = kNone;
    }
    behindOperand_ = true;
  }

  // "(" behind an operand: its arguments or indices, else only a part of an expression. Behind a
  // blank at the start of a statement it is the first argument of a call.
  void openParenthesis() {
    const bool firstArgument =
        module_.tokens[at_].gap > 0 && open_.empty() && target_ == Target::Open;
    const Value called = behindOperand_ && !firstArgument ? call(value_) : Value{};
    if (!behindOperand_ && open_.empty()) target_ = Target::None;
    open_.push_back(called);
    ++at_;
    value_ = {};
    behindOperand_ = false;
  }

  // What a value is with "(...)" behind it.
  Value call(Value value) const {
    if (value.takesArguments || character(nextToken(at_)) == u8')') {
      value.takesArguments = false;
      return value;
    }
    // Objects whose default member gives objects again: nobody nests them deeply.
    for (int depth = 0; depth < 4; ++depth) {
      if (value.isArray || value.takesArguments) {
        (value.takesArguments ? value.takesArguments : value.isArray) = false;
        return value;
      }
      if (value.kind != Value::Kind::Instance) return {};
      const std::uint32_t member = tables_.module(value.index).defaultMember;
      if (member == kNone) return {};
      value = valueOf(member);
    }
    return {};
  }

  // "." or "!": of the operand in front of it, or of the With block when nothing or a blank is
  // there. (A continuation is not a blank.)
  void member(bool bang) {
    const bool glued = module_.tokens[at_].gap == 0 || (at_ > 0 && isContinuation(at_ - 1));
    const bool blank = at_ > 0 && module_.tokens[at_ - 1].kind == TokenKind::Blank;
    if (!behindOperand_ || !glued || blank) {
      beginOperand();
      value_ = with_.open == kNone ? Value{} : withs_[with_.open].value;
    }
    const Value owner = std::exchange(value_, {});
    at_ = nextToken(at_);
    if (open_.empty()) targetReference_ = kNone;
    if (!isNameKind(kind())) return;
    use(memberOf(owner, bang), owner.kind != Value::Kind::Instance);
    ++at_;
  }

  bool isContinuation(std::uint32_t token) const {
    return module_.tokens[token].kind == TokenKind::Continuation;
  }

  Meaning memberOf(const Value& owner, bool bang) {
    if (owner.kind == Value::Kind::Unknown || owner.isArray) return {};
    const std::uint32_t name = known(at_).inProject;
    switch (owner.kind) {
      case Value::Kind::Record:
      case Value::Kind::Enum:
        return tables_.part(owner.index, name);
      case Value::Kind::Project:
        return tables_.inProject(name);
      default:
        break;
    }
    const Meaning found = tables_.inModule(owner.index, name);
    if (owner.kind == Value::Kind::Module || found.kind != Meaning::Kind::Member) return found;
    const DeclarationKind kind = tables_.member(found.index).kind;
    const bool ofEnum = kind == DeclarationKind::Enum || kind == DeclarationKind::EnumMember;
    return ofEnum || (bang && kind != DeclarationKind::Control) ? Meaning{} : found;
  }

  // ------------------------------------------------------------------------------ names

  void name() {
    if (atDeclaration()) return declaredName();
    if (typeExpected_) return typeName();
    if (std::exchange(eventExpected_, false)) {
      use(tables_.event(index_, known(at_).inProject), true);
      value_ = {};
      behindOperand_ = true;
    } else {
      bareName();
    }
    ++at_;
  }

  void bareName() {
    const bool starts = target_ == Target::Awaited && open_.empty();
    beginOperand();
    value_ = {};
    const std::uint32_t number = numberOf(at_);
    KnownName& name = known_[number];
    if (name.localOf == procedure_ && procedure_ != kNone)
      local(name);
    else if (number == result_ && isResult(starts))
      value_ = resultValue();
    else
      use(bareMeaning(name), true);
  }

  const Meaning& bareMeaning(KnownName& name) {
    if (!std::exchange(name.bareFound, true)) name.bare = tables_.bareName(index_, name.inProject);
    return name.bare;
  }

  void local(KnownName& name) {
    const Declaration& declared = module_.declarations[name.local];
    if (declared.byReDim) {
      const Meaning& variable = bareMeaning(name);
      if (variable.kind == Meaning::Kind::Member &&
          tables_.member(variable.index).kind == DeclarationKind::Variable)
        return use(variable, true);
    }
    if (at_ != declared.name) references_.push_back({at_, index_, name.local});
    value_ = valueOf(localTypes_[name.local], declared.isArray, false);
  }

  // In a Function or Property Get its own name is the result, but with arguments, or alone as a
  // statement, a call.
  bool isResult(bool startsStatement) const {
    const std::uint32_t next = nextToken(at_);
    const TokenKind kind = module_.tokens[next].kind;
    const bool mark = kind == TokenKind::Punctuation || kind == TokenKind::Operator;
    if (mark && character(next) == u8'(') return !resultTakesArguments_;
    if (!startsStatement) return true;
    return mark &&
           (character(next) == u8'=' || character(next) == u8'.' || character(next) == u8'!');
  }

  Value resultValue() const {
    const Declaration& declared = module_.declarations[procedure_];
    return valueOf(localTypes_[procedure_], declared.isArray, false);
  }

  // Notes what the name at at_ means, and what value it has. `own`: if it is of this module, it
  // may be private.
  void use(Meaning meaning, bool own) {
    if (meaning.kind == Meaning::Kind::Project) value_ = {.kind = Value::Kind::Project};
    if (meaning.kind == Meaning::Kind::Module) {
      const bool standard = tables_.module(meaning.index).standard;
      value_ = {.kind = standard ? Value::Kind::Module : Value::Kind::Instance,
                .index = meaning.index};
      note(at_, meaning);
    }
    if (meaning.kind != Meaning::Kind::Member) return;
    meaning.index = accessorOf(meaning.index, Accessor::Get, own);
    if (meaning.index == kNone) return;
    if (open_.empty() && target_ == Target::Open) {
      targetReference_ = static_cast<std::uint32_t>(references_.size());
      targetMember_ = meaning.index;
      targetOwn_ = own;
    }
    note(at_, meaning);
    value_ = valueOf(meaning.index);
  }

  void note(std::uint32_t token, Meaning meaning) {
    if (meaning.kind == Meaning::Kind::Module) {
      references_.push_back({token, meaning.index, kNone});
    } else if (meaning.kind == Meaning::Kind::Member) {
      const Member& member = tables_.member(meaning.index);
      references_.push_back({token, member.module, member.declaration});
    }
  }

  // The accessor of a property that fits best, of another member itself; kNone when it may not be
  // named here.
  std::uint32_t accessorOf(std::uint32_t index, Accessor wanted, bool own) const {
    std::uint32_t found[4] = {kNone, kNone, kNone, kNone};
    std::uint32_t i = index;
    do {
      const Member& member = tables_.member(i);
      if (!member.isPrivate || (own && member.module == index_))
        found[static_cast<std::size_t>(member.accessor)] = i;
      i = member.nextAccessor;
    } while (i != index);
    if (tables_.member(index).kind != DeclarationKind::Property) return found[0];
    for (const Accessor accessor : {wanted, Accessor::Get, Accessor::Let, Accessor::Set})
      if (found[static_cast<std::size_t>(accessor)] != kNone)
        return found[static_cast<std::size_t>(accessor)];
    return kNone;
  }

  // "=" behind the statement's first expression.
  void assign() {
    if (targetReference_ == kNone || endOf(module_.tokens, at_) != module_.tokens[at_].begin + 1)
      return;
    const std::uint32_t index = accessorOf(targetMember_, assigned_, targetOwn_);
    if (index != kNone)
      references_[targetReference_].declaration = tables_.member(index).declaration;
  }

  Value valueOf(std::uint32_t index) const {
    const Member& member = tables_.member(index);
    switch (member.kind) {
      case DeclarationKind::Enum:
        return {.kind = Value::Kind::Enum, .index = index};
      case DeclarationKind::Sub:
      case DeclarationKind::Event:
      case DeclarationKind::EnumMember:
        return {};
      default:
        return valueOf(member.type, member.isArray, member.takesArguments);
    }
  }

  static Value valueOf(TypeReference type, bool isArray, bool takesArguments) {
    switch (type.kind) {
      case TypeReference::Kind::Instance:
        return {Value::Kind::Instance, isArray, takesArguments, type.index};
      case TypeReference::Kind::Record:
        return {Value::Kind::Record, isArray, takesArguments, type.index};
      default:
        return {};
    }
  }

  // ------------------------------------------------------------------------------ types

  void typeName() {
    const bool isNew = isNew_;
    otherOperand();
    const Meaning found = typePath(at_, true);
    if (isNameKind(kind())) ++at_;
    if (isNew) value_ = valueOf(tables_.typeReference(found), false, false);
  }

  // name, module.name, project.name or project.module.name, from the token `at`, which is left at
  // the last name.
  Meaning typePath(std::uint32_t& at, bool noted) {
    Meaning found;
    std::uint32_t dot = nextToken(at);
    if (!isDot(dot)) {
      found = typeMeaning(known(at));
      if (noted) note(at, found);
      return found;
    }
    Meaning qualifier = tables_.qualifier(index_, known(at).inProject);
    while (isDot(dot)) {
      if (noted) note(at, qualifier);
      at = nextToken(dot);
      if (!isNameKind(module_.tokens[at].kind)) return {};
      dot = nextToken(at);
      const std::uint32_t name = known(at).inProject;
      found = tables_.type(index_, qualifier, name);
      qualifier =
          qualifier.kind == Meaning::Kind::Project ? tables_.qualifier(index_, name) : Meaning{};
    }
    if (noted) note(at, found);
    return found;
  }

  bool isDot(std::uint32_t token) const {
    return module_.tokens[token].kind == TokenKind::Punctuation && character(token) == u8'.';
  }

  const Meaning& typeMeaning(KnownName& name) {
    if (!std::exchange(name.typeFound, true)) name.type = tables_.type(index_, name.inProject);
    return name.type;
  }

  // The declared type of a local, parameter or procedure.
  TypeReference declaredType(const Declaration& declared) {
    std::uint32_t at = declared.type.begin;
    if (declared.type.empty() || !isNameKind(module_.tokens[at].kind)) return {};
    return tables_.typeReference(typePath(at, false));
  }

  // ------------------------------------------------------------------------- procedures

  bool atDeclaration() const {
    return next_ < module_.declarations.size() && module_.declarations[next_].name == at_;
  }

  void skipDeclarations() {
    while (next_ < module_.declarations.size() && module_.declarations[next_].name < at_) ++next_;
  }

  void declaredName() {
    const Declaration& declared = module_.declarations[next_];
    if (!declared.body.empty() && procedure_ == kNone && isProcedure(declared.kind))
      enterProcedure(next_);
    ++next_;
    otherOperand();
    if (declared.byReDim) local(known(at_));
    ++at_;
  }

  static bool isProcedure(DeclarationKind kind) {
    return kind == DeclarationKind::Sub || kind == DeclarationKind::Function ||
           kind == DeclarationKind::Property;
  }

  void enterProcedure(std::uint32_t procedure) {
    const Declaration& declared = module_.declarations[procedure];
    procedure_ = procedure;
    procedureEnd_ = declared.body.end;
    resultTakesArguments_ = false;
    localTypes_[procedure] = declaredType(declared);
    if (declared.kind == DeclarationKind::Function || declared.accessor == Accessor::Get)
      result_ = numberOf(declared.name);
    for (std::uint32_t i = procedure + 1;
         i < module_.declarations.size() && module_.declarations[i].name < procedureEnd_; ++i)
      bind(i);
  }

  void bind(std::uint32_t index) {
    const Declaration& declared = module_.declarations[index];
    KnownName& name = known(declared.name);
    if (declared.kind == DeclarationKind::Label) {
      if (name.labelOf == procedure_) return;
      name.label = index;
      name.labelOf = procedure_;
    } else if (declared.kind == DeclarationKind::Parameter ||
               declared.kind == DeclarationKind::Local) {
      if (declared.scope == procedure_ && declared.kind == DeclarationKind::Parameter)
        resultTakesArguments_ = true;
      if (name.localOf == procedure_) return;
      name.local = index;
      name.localOf = procedure_;
      localTypes_[index] = declaredType(declared);  // (which may move `name`)
    }
  }

  void leaveProcedure() {
    procedure_ = result_ = procedureEnd_ = kNone;
    withs_.clear();
    with_ = {};
  }

  // A jump; where it leads lies in the same procedure.
  void label() {
    if (atDeclaration()) {
      ++next_;
    } else if (const KnownName& name = known(at_);
               name.labelOf == procedure_ && procedure_ != kNone) {
      references_.push_back({at_, index_, name.label});
    }
    ++at_;
  }

  // ------------------------------------------------------------------------ With blocks

  void pushWith(const Value& value) {
    withs_.push_back({value, with_.open});
    with_.open = static_cast<std::uint32_t>(withs_.size() - 1);
    with_.pending = false;
  }

  void popWith() {
    if (with_.open != kNone) with_.open = withs_[with_.open].outer;
  }

  // ------------------------------------------------------------------------------ names

  // The token behind `token` and the gaps there.
  std::uint32_t nextToken(std::uint32_t token) const {
    do ++token;
    while (isGap(module_.tokens[token].kind));
    return token;
  }

  std::uint32_t numberOf(std::uint32_t token) {
    const std::u8string_view name = plainName(module_.textOf(token));
    const std::uint32_t hash = foldedHash(name);
    const std::uint32_t number = names_.add(
        module_.text, name, hash, static_cast<std::size_t>(name.data() - module_.text.data()));
    if (number == known_.size()) known_.emplace_back().inProject = tables_.numberOf(name, hash);
    return number;
  }

  KnownName& known(std::uint32_t token) { return known_[numberOf(token)]; }

  // ------------------------------------------------------------------------------ state

  struct WithBlock {
    Value value;
    std::uint32_t outer;
  };
  struct WithState {
    std::uint32_t open = kNone;  // the innermost block
    bool pending = false;        // one begins behind the statement
  };
  static constexpr std::uint32_t kUnset = kNone - 1;
  struct WithBranches {  // the innermost blocks in front of an "#If", and behind its first branch
    std::uint32_t before, behindFirst;
  };

  const Module& module_;
  const std::uint32_t index_;
  const ProjectTables& tables_;
  std::vector<Reference> references_;
  NameTable names_;                        // of the module
  std::vector<KnownName> known_;           // by their numbers
  std::vector<TypeReference> localTypes_;  // by declaration
  std::uint32_t at_ = 0;                   // the token
  std::uint32_t next_ = 0;                 // the declaration that follows

  std::uint32_t procedure_ = kNone;
  std::uint32_t procedureEnd_ = kNone;  // token
  std::uint32_t result_ = kNone;        // the procedure's own name, when it stands for its result
  bool resultTakesArguments_ = false;
  std::vector<WithBlock> withs_;  // of the procedure
  WithState with_;
  std::vector<WithBranches> branches_;

  // Of the statement:
  Value value_;
  bool behindOperand_ = false;
  std::vector<Value> open_;  // by "(": what the parentheses and what is in front of them are
  Target target_ = Target::Awaited;
  std::uint32_t targetReference_ = kNone;  // of its last name
  std::uint32_t targetMember_ = kNone;
  bool targetOwn_ = false;
  Accessor assigned_ = Accessor::Let;
  Word statementWord_ = Word::None;  // its first keyword
  Word lastWord_ = Word::None;       // its last one
  bool typeExpected_ = false, eventExpected_ = false, isNew_ = false, typeOf_ = false;
};

}  // namespace

std::vector<Reference> resolveNames(const Module& module, std::uint32_t index,
                                    const ProjectTables& tables) {
  return Resolver(module, index, tables).run();
}

}  // namespace tintline::vb
